#include "core/rowsetreader.h"

#include "core/runtimeerror.h"
#include "core/xmlpruefung.h"

#include <QStringDecoder>

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <utility>

namespace {

constexpr std::string_view schemaSpace = "uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882";
constexpr std::string_view rowsetSpace = "urn:schemas-microsoft-com:rowset";
constexpr std::string_view rowSpace = "#RowsetSchema";
constexpr std::string_view xmlSpace = "http://www.w3.org/XML/1998/namespace";

[[noreturn]] void refuse(const QString &why)
{
    throw RunTimeError(ErrorNumber::InvalidFileFormat, why);
}

QString textOf(std::string_view utf8)
{
    return forMessage(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
}

// UTF-8 without byte order mark, whatever the file's Unicode encoding is. A file begins with an
// ASCII character, which tells the byte order where there is no mark.
QByteArray toUtf8(QByteArray file)
{
    if (file.startsWith("\xef\xbb\xbf"))
        return file.remove(0, 3);
    const bool two = file.size() >= 2;
    const bool little = file.startsWith("\xff\xfe") || (two && file[0] != 0 && file[1] == 0);
    const bool big = file.startsWith("\xfe\xff") || (two && file[0] == 0 && file[1] != 0);
    if (!little && !big)
        return file;
    QStringDecoder decoder(little ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE,
                           QStringDecoder::Flag::Stateless);
    const QString text = decoder(file);
    if (decoder.hasError() || file.size() % 2 != 0 || !text.isValidUtf16())
        refuse(u"ungültige Zeichenkodierung (kein UTF-16)"_qs);
    return text.toUtf8();
}

// An XML declaration that names another encoding than one of Unicode is a lie by now, and its
// umlauts would be wrong.
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
        refuse(u"die Zeichenkodierung „%1“ wird nicht unterstützt"_qs.arg(
            forMessage(QString::fromLatin1(name))));
}

struct QualifiedName
{
    std::string_view space;
    std::string_view local;
};

// Namespaces in force at the current element. Lookups stay fast however many prefixes a file
// declares.
class Scope
{
public:
    Scope() { m_bound.emplace("xml", xmlSpace); }

    // Adds an element's declarations; leave() with the returned mark takes them back.
    std::size_t enter(const pugi::xml_node &element)
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
    void leave(std::size_t mark)
    {
        for (; m_hidden.size() > mark; m_hidden.pop_back())
            m_bound[m_hidden.back().first] = m_hidden.back().second;
    }

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
        if (colon == std::string_view::npos || name.starts_with("xmlns:"))
            return {{}, name};
        return {bound(name.substr(0, colon)), name.substr(colon + 1)};
    }

private:
    void bind(std::string_view prefix, std::string_view space)
    {
        std::string_view &current = m_bound[prefix];
        m_hidden.emplace_back(prefix, current);
        current = space;
    }
    std::string_view find(std::string_view prefix) const
    {
        const auto binding = m_bound.find(prefix);
        return binding == m_bound.end() ? std::string_view() : binding->second;
    }
    std::string_view bound(std::string_view prefix) const
    {
        const std::string_view space = find(prefix);
        if (space.empty())
            refuse(u"das Präfix „%1“ ist an keinen Namensraum gebunden"_qs.arg(textOf(prefix)));
        return space;
    }

    std::map<std::string_view, std::string_view> m_bound;
    std::vector<std::pair<std::string_view, std::string_view>> m_hidden; ///< what bind() replaced
};

// Whether a list of words between white space holds the word.
bool listHolds(std::string_view list, std::string_view word)
{
    constexpr std::string_view space = " \t\r\n";
    std::size_t end = 0;
    for (;;) {
        const std::size_t begin = list.find_first_not_of(space, end);
        if (begin == std::string_view::npos)
            return false;
        end = std::min(list.find_first_of(space, begin), list.size());
        if (list.substr(begin, end - begin) == word)
            return true;
    }
}

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
    void checkColumns() const;
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
    checkColumns();
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

void Walker::checkColumns() const
{
    for (const int i : {0, 1}) {
        if (m_attributes[i].empty())
            refuse(u"die Spalte „%1“ fehlt"_qs.arg(textOf(m_columns[i])));
    }
}

// Columns stand inside the row type, or beside it where the type only refers to them.
void Walker::readSchema(const pugi::xml_node &schema)
{
    forEachElement(schema, [this](const pugi::xml_node &child, const QualifiedName &name) {
        if (name.space != schemaSpace)
            return;
        if (name.local == "ElementType")
            readRowType(child);
        else if (name.local == "AttributeType")
            readColumn(child);
    });
}

void Walker::readRowType(const pugi::xml_node &type)
{
    if (!m_rowName.empty())
        refuse(u"mehrere Satzarten"_qs);
    m_rowName = type.attribute("name").value();
    if (m_rowName.empty())
        refuse(u"eine Satzart ohne Namen"_qs);
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
        if (column != m_columns[i])
            continue;
        if (!m_attributes[i].empty())
            refuse(u"die Spalte „%1“ ist doppelt"_qs.arg(textOf(column)));
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
// number. An old row without a changed one is still a row.
void Walker::readUpdate(const pugi::xml_node &update)
{
    std::vector<Raw> rows;
    std::vector<Raw> changes;
    forEachElement(update, [&](const pugi::xml_node &child, const QualifiedName &name) {
        if (isRow(name))
            changes.push_back(raw(child));
        if (name.space != rowsetSpace || name.local != "original")
            return;
        forEachElement(child, [&](const pugi::xml_node &row, const QualifiedName &rowName) {
            if (isRow(rowName))
                rows.push_back(raw(row));
        });
    });
    rows.resize(std::max(rows.size(), changes.size()));
    for (std::size_t n = 0; n < changes.size(); ++n) {
        for (const int i : {0, 1}) {
            if (changes[n].named[i])
                rows[n].text[i] = changes[n].text[i];
        }
    }
    for (const Raw &row : rows)
        append(row);
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
        for (const int i : {0, 1})
            result.named[i] = result.named[i] || listHolds(attribute.value(), m_attributes[i]);
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
