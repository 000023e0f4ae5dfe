#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

/// A name with its prefix replaced by what the prefix stands for.
struct QualifiedName
{
    std::string_view space;
    std::string_view local;
};

/// The namespaces in force at the element where a walk through a parsed file stands. Lookups stay
/// fast however many prefixes a file declares. Texts belong to the parsed file.
class XmlNamespaces
{
public:
    /// Begins at \a root, of a file with \a declarations namespace declarations in all.
    XmlNamespaces(const pugi::xml_node &root, std::size_t declarations);

    /// Adds an element's declarations; leave() with the returned mark takes them back.
    std::size_t enter(const pugi::xml_node &element)
    {
        return m_fixed ? m_hidden.size() : declare(element);
    }
    void leave(std::size_t mark);

    /// The name of the current element. Raises 321 for a prefix that is not bound.
    QualifiedName element(std::string_view name);
    /// The name of an attribute of the current element; without prefix it is in no namespace.
    /// Raises 321 for a prefix that is not bound.
    QualifiedName attribute(std::string_view name) const;

private:
    std::size_t declare(const pugi::xml_node &element);
    void bind(std::string_view prefix, std::string_view space);
    std::string_view bound(std::string_view prefix) const;

    std::map<std::string_view, std::string_view> m_bound;
    std::vector<std::pair<std::string_view, std::string_view>> m_hidden; ///< what bind() replaced
    bool m_fixed = false; ///< all declarations stand on the root, as in nearly every file
    std::string_view m_lastName;
    QualifiedName m_last;
};
