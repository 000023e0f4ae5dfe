#include "core/xmlnamespaces.h"

#include "core/runtimeerror.h"
#include "core/xmlpruefung.h"

#include <cstring>

XmlNamespaces::XmlNamespaces(const pugi::xml_node &root, std::size_t declarations)
{
    m_bound.emplace(std::string_view(), std::string_view());
    m_bound.emplace("xml", "http://www.w3.org/XML/1998/namespace");
    declare(root);
    m_fixed = m_hidden.size() == declarations;
}

void XmlNamespaces::leave(std::size_t mark)
{
    for (; m_hidden.size() > mark; m_hidden.pop_back())
        m_bound[m_hidden.back().first] = m_hidden.back().second;
}

QualifiedName XmlNamespaces::element(std::string_view name)
{
    // Row after row has the same name.
    if (m_fixed && name == m_lastName)
        return m_last;
    const std::size_t colon = name.find(':');
    m_lastName = name;
    if (colon == std::string_view::npos)
        m_last = {m_bound[{}], name};
    else
        m_last = {bound(name.substr(0, colon)), name.substr(colon + 1)};
    return m_last;
}

QualifiedName XmlNamespaces::attribute(std::string_view name) const
{
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos || name.starts_with("xmlns:"))
        return {{}, name};
    return {bound(name.substr(0, colon)), name.substr(colon + 1)};
}

std::size_t XmlNamespaces::declare(const pugi::xml_node &element)
{
    const std::size_t mark = m_hidden.size();
    for (const pugi::xml_attribute attribute : element.attributes()) {
        const char *name = attribute.name();
        if (std::strncmp(name, "xmlns", 5) != 0)
            continue;
        if (name[5] == '\0')
            bind({}, attribute.value());
        else if (name[5] == ':')
            bind(name + 6, attribute.value());
    }
    return mark;
}

void XmlNamespaces::bind(std::string_view prefix, std::string_view space)
{
    std::string_view &current = m_bound[prefix];
    m_hidden.emplace_back(prefix, current);
    current = space;
}

std::string_view XmlNamespaces::bound(std::string_view prefix) const
{
    const auto binding = m_bound.find(prefix);
    if (binding == m_bound.end() || binding->second.empty())
        throw RunTimeError(
            ErrorNumber::InvalidFileFormat,
            u"das Präfix „%1“ ist an keinen Namensraum gebunden"_qs.arg(forMessage(
                QString::fromUtf8(prefix.data(), static_cast<qsizetype>(prefix.size())))));
    return binding->second;
}
