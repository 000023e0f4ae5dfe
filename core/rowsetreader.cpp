#include "core/rowsetreader.h"

#include "core/runtimeerror.h"
#include "core/xmlpruefung.h"

#include <QStringDecoder>

#include <pugixml.hpp>

#include <string>
#include <utility>

namespace {

constexpr std::string_view schemaSpace = "uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882";
constexpr std::string_view rowsetSpace = "urn:schemas-microsoft-com:rowset";
constexpr std::string_view rowSpace = "#RowsetSchema";

[[noreturn]] void refuse(const QString &why)
{
    throw RunTimeError(ErrorNumber::InvalidFileFormat, why);
}

// UTF-8 without byte order mark, whatever the file's Unicode encoding is.
QByteArray toUtf8(QByteArray file)
{
    if (file.startsWith("\xef\xbb\xbf"))
        return file.remove(0, 3);
    const bool little = file.startsWith("\xff\xfe") || file.startsWith(QByteArray("<\0", 2));
    const bool big = file.startsWith("\xfe\xff") || file.startsWith(QByteArray("\0<", 2));
    if (!little && !big)
        return file;
    QStringDecoder decoder(little ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE,
                           QStringDecoder::Flag::Stateless);
    const QString text = decoder(file);
    if (decoder.hasError() || file.size() % 2 != 0)
        refuse(u"ungültige Zeichenkodierung (kein UTF-16)"_qs);
    return text.toUtf8();
}

// An XML declaration may only name an encoding that the bytes really have.
void checkDeclaration(std::string_view text)
{
    if (!text.starts_with("<?xml ") && !text.starts_with("<?xml\t") &&
        !text.starts_with("<?xml\r") && !text.starts_with("<?xml\n"))
        return;
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const std::size_t mark = declaration.find("encoding");
    const std::size_t open = declaration.find_first_of("'\"", mark);
    if (mark == std::string_view::npos || open == std::string_view::npos)
        return;
    const std::size_t close = declaration.find(declaration[open], open + 1);
    const QByteArray name =
        QByteArray::fromStdString(std::string(declaration.substr(open + 1, close - open - 1)))
            .toUpper();
    if (name != "UTF-8" && name != "UTF-16" && name != "UTF-16LE" && name != "UTF-16BE" &&
        name != "US-ASCII")
        refuse(u"die Zeichenkodierung %1 wird nicht unterstützt"_qs.arg(QString::fromLatin1(name)));
}

struct QualifiedName
{
    std::string_view space;
    std::string_view local;
};

// Namespace declarations of the elements on the way from the root to the current one.
class Scope
{
public:
    // Adds an element's declarations; leave() with the returned mark takes them back.
    std::size_t enter(const pugi::xml_node &element)
    {
        const std::size_t mark = m_bindings.size();
        for (const pugi::xml_attribute attribute : element.attributes()) {
            const std::string_view name = attribute.name();
            if (name == "xmlns")
                m_bindings.emplace_back(std::string_view(), attribute.value());
            else if (name.starts_with("xmlns:"))
                m_bindings.emplace_back(name.substr(6), attribute.value());
        }
        return mark;
    }
    void leave(std::size_t mark) { m_bindings.resize(mark); }

    QualifiedName element(std::string_view name) const
    {
        const std::size_t colon = name.find(':');
        if (colon == std::string_view::npos)
            return {find({}), name};
        return {bound(name.substr(0, colon)), name.substr(colon + 1)};
    }
    // An attribute without prefix is in no namespace.
    QualifiedName attribute(std::string_view name) const
    {
        const std::size_t colon = name.find(':');
        if (colon == std::string_view::npos || name.starts_with("xmlns:") ||
            name.starts_with("xml:"))
            return {{}, name};
        return {bound(name.substr(0, colon)), name.substr(colon + 1)};
    }

private:
    std::string_view find(std::string_view prefix) const
    {
        for (auto binding = m_bindings.rbegin(); binding != m_bindings.rend(); ++binding) {
            if (binding->first == prefix)
                return binding->second;
        }
        return {};
    }
    std::string_view bound(std::string_view prefix) const
    {
        const std::string_view space = find(prefix);
        if (space.empty())
            refuse(u"das Präfix „%1“ ist an keinen Namensraum gebunden"_qs.arg(
                QString::fromUtf8(prefix.data(), static_cast<qsizetype>(prefix.size()))));
        return space;
    }

    std::vector<std::pair<std::string_view, std::string_view>> m_bindings;
};

// Walks the parsed tree. No step recurses deeper than the format itself does.
class Walker
{
public:
    Walker(std::string_view firstColumn, std::string_view secondColumn)
        : m_columns{firstColumn, secondColumn}
    {
    }

    std::vector<Rowset::Row> walk(const pugi::xml_document &document);

private:
    // A row as it stands: which of the two columns it names, and their texts.
    struct Raw
    {
        bool named[2] = {false, false};
        std::string_view text[2];
    };

    template <typename Visit>
    void forEachElement(const pugi::xml_node &parent, Visit visit);
    void readSchema(const pugi::xml_node &schema);
    void readRowType(const pugi::xml_node &type);
    void readColumn(const pugi::xml_node &type);
    void readData(const pugi::xml_node &data);
    void readUpdate(const pugi::xml_node &update);
    bool isRow(const QualifiedName &name) const
    {
        return name.space == rowSpace && name.local == m_rowName;
    }
    Raw raw(const pugi::xml_node &row);
    void append(const Raw &row) { m_rows.push_back({row.text[0], row.text[1]}); }

    std::string_view m_columns[2];
    std::string_view m_attributes[2]; ///< under which the rows hold the two columns
    std::string_view m_rowName;
    Scope m_scope;
    std::vector<Rowset::Row> m_rows;
};

// Calls visit(child, name) for every child element, with the child's namespaces in scope.
template <typename Visit>
void Walker::forEachElement(const pugi::xml_node &parent, Visit visit)
{
    for (const pugi::xml_node child : parent.children()) {
        if (child.type() != pugi::node_element)
            continue;
        const std::size_t mark = m_scope.enter(child);
        visit(child, m_scope.element(child.name()));
        m_scope.leave(mark);
    }
}

std::vector<Rowset::Row> Walker::walk(const pugi::xml_document &document)
{
    const pugi::xml_node root = document.document_element();
    if (std::string_view(root.name()) != "xml")
        refuse(u"das Wurzelelement heißt nicht „xml“"_qs);
    m_scope.enter(root);
    forEachElement(root, [this](const pugi::xml_node &child, const QualifiedName &name) {
        if (name.space == schemaSpace && name.local == "Schema")
            readSchema(child);
    });
    if (m_attributes[0].empty() || m_attributes[1].empty())
        refuse(u"die Spalten „%1“ und „%2“ fehlen"_qs.arg(
            QString::fromUtf8(m_columns[0].data(), static_cast<qsizetype>(m_columns[0].size())),
            QString::fromUtf8(m_columns[1].data(), static_cast<qsizetype>(m_columns[1].size()))));
    bool hasData = false;
    forEachElement(root, [&](const pugi::xml_node &child, const QualifiedName &name) {
        if (name.space != rowsetSpace || name.local != "data")
            return;
        hasData = true;
        readData(child);
    });
    if (!hasData)
        refuse(u"der Datenblock fehlt"_qs);
    return std::move(m_rows);
}

void Walker::readSchema(const pugi::xml_node &schema)
{
    forEachElement(schema, [this](const pugi::xml_node &child, const QualifiedName &name) {
        if (name.space == schemaSpace && name.local == "ElementType")
            readRowType(child);
    });
}

void Walker::readRowType(const pugi::xml_node &type)
{
    if (!m_rowName.empty())
        refuse(u"mehrere Satzarten"_qs);
    m_rowName = type.attribute("name").value();
    forEachElement(type, [this](const pugi::xml_node &child, const QualifiedName &name) {
        if (name.space != schemaSpace)
            return;
        if (name.local == "ElementType")
            refuse(u"verschachtelte Satzarten"_qs);
        if (name.local == "AttributeType")
            readColumn(child);
    });
}

void Walker::readColumn(const pugi::xml_node &type)
{
    std::string_view attribute;
    std::string_view column;
    for (const pugi::xml_attribute candidate : type.attributes()) {
        const QualifiedName name = m_scope.attribute(candidate.name());
        if (name.local != "name")
            continue;
        if (name.space.empty())
            attribute = candidate.value();
        else if (name.space == rowsetSpace)
            column = candidate.value();
    }
    if (column.empty())
        column = attribute;
    for (const int i : {0, 1}) {
        if (column == m_columns[i])
            m_attributes[i] = attribute;
    }
}

void Walker::readData(const pugi::xml_node &data)
{
    forEachElement(data, [this](const pugi::xml_node &child, const QualifiedName &name) {
        if (isRow(name)) {
            append(raw(child));
        } else if (name.space == rowsetSpace && name.local == "insert") {
            forEachElement(child, [this](const pugi::xml_node &row, const QualifiedName &rowName) {
                if (isRow(rowName))
                    append(raw(row));
            });
        } else if (name.space == rowsetSpace && name.local == "update") {
            readUpdate(child);
        }
    });
}

// The rows of the original block, each overlaid with the changed columns of the row of the same
// number.
void Walker::readUpdate(const pugi::xml_node &update)
{
    std::vector<Raw> originals;
    std::size_t changed = 0;
    forEachElement(update, [&](const pugi::xml_node &child, const QualifiedName &name) {
        if (name.space == rowsetSpace && name.local == "original") {
            forEachElement(child, [&](const pugi::xml_node &row, const QualifiedName &rowName) {
                if (isRow(rowName))
                    originals.push_back(raw(row));
            });
        } else if (isRow(name)) {
            Raw result = raw(child);
            for (const int i : {0, 1}) {
                if (!result.named[i] && changed < originals.size())
                    result.text[i] = originals[changed].text[i];
            }
            ++changed;
            append(result);
        }
    });
}

Walker::Raw Walker::raw(const pugi::xml_node &row)
{
    Raw result;
    for (const pugi::xml_attribute attribute : row.attributes()) {
        const std::string_view name = attribute.name();
        if (name == m_attributes[0] || name == m_attributes[1]) {
            const int i = name == m_attributes[0] ? 0 : 1;
            result.named[i] = true;
            result.text[i] = attribute.value();
            continue;
        }
        const QualifiedName qualified = m_scope.attribute(name);
        if (qualified.space != rowsetSpace || qualified.local != "forcenull")
            continue;
        const std::string list = std::string(" ") + attribute.value() + " ";
        for (const int i : {0, 1}) {
            const bool isNull =
                list.find(" " + std::string(m_attributes[i]) + " ") != std::string::npos;
            result.named[i] = result.named[i] || isNull;
        }
    }
    forEachElement(row, [](const pugi::xml_node &, const QualifiedName &name) {
        if (name.space == rowSpace)
            refuse(u"verschachtelte Datensätze"_qs);
    });
    return result;
}

} // namespace

Rowset Rowset::parse(QByteArray file, std::string_view firstColumn, std::string_view secondColumn)
{
    Rowset result;
    result.m_buffer = toUtf8(std::move(file));
    const std::string_view text(result.m_buffer.data(),
                                static_cast<std::size_t>(result.m_buffer.size()));
    checkXml(text);
    checkDeclaration(text);

    pugi::xml_document document;
    // Attribute white space stays as it is; parsing in the buffer copies no text.
    const pugi::xml_parse_result parsed = document.load_buffer_inplace(
        result.m_buffer.data(), static_cast<std::size_t>(result.m_buffer.size()),
        pugi::parse_escapes, pugi::encoding_utf8);
    if (parsed.status == pugi::status_out_of_memory)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    if (!parsed)
        refuse(u"die Elemente sind nicht richtig verschachtelt"_qs);
    result.m_rows = Walker(firstColumn, secondColumn).walk(document);
    return result;
}
