#include "core/rowsetreader.h"

#include "core/runtimeerror.h"
#include "core/xmlencoding.h"
#include "core/xmlnamespaces.h"
#include "core/xmlpruefung.h"

#include <pugixml.hpp>

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view schemaSpace = "uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882";
constexpr std::string_view rowsetSpace = "urn:schemas-microsoft-com:rowset";
constexpr std::string_view rowSpace = "#RowsetSchema";

[[noreturn]] void refuse(const QString &why)
{
    throw RunTimeError(ErrorNumber::InvalidFileFormat, why);
}

QString textOf(std::string_view utf8)
{
    return forMessage(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
}

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
    Walker(const pugi::xml_node &root, std::string_view firstColumn, std::string_view secondColumn,
           const XmlCounts &counts)
        : m_root(root)
        , m_columns{firstColumn, secondColumn}
        , m_scope(root, counts.namespaceDeclarations)
    {
        m_rows.reserve(counts.elements);
    }

    std::vector<Rowset::Row> walk();

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

    pugi::xml_node m_root;
    std::string_view m_columns[2];
    std::string_view m_attributes[2]; ///< under which the rows hold the two columns
    std::string_view m_rowName;
    XmlNamespaces m_scope;
    std::vector<Rowset::Row> m_rows;
};

// Calls visit(child, name) for every child element, with the child's namespaces in scope.
template <typename Visit>
void Walker::forEachElement(const pugi::xml_node &parent, Visit visit)
{
    for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
        if (child.type() != pugi::node_element)
            continue;
        const std::size_t mark = m_scope.enter(child);
        visit(child, m_scope.element(child.name()));
        m_scope.leave(mark);
    }
}

std::vector<Rowset::Row> Walker::walk()
{
    if (std::string_view(m_root.name()) != "xml")
        refuse(u"das Wurzelelement heißt nicht „xml“"_qs);
    forEachElement(m_root, [this](const pugi::xml_node &child, const QualifiedName &name) {
        if (name.space == schemaSpace && name.local == "Schema")
            readSchema(child);
    });
    checkColumns();
    bool hasData = false;
    forEachElement(m_root, [&](const pugi::xml_node &child, const QualifiedName &name) {
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
    for (pugi::xml_attribute attribute = row.first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
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
    result.m_buffer = utf8Of(std::move(file));
    const std::string_view text(result.m_buffer.data(),
                                static_cast<std::size_t>(result.m_buffer.size()));
    const XmlCounts counts = checkXml(text);
    checkDeclaredEncoding(text);

    pugi::xml_document document;
    // Attribute white space stays as it is; parsing in the buffer copies no text.
    const pugi::xml_parse_result parsed = document.load_buffer_inplace(
        result.m_buffer.data(), static_cast<std::size_t>(result.m_buffer.size()),
        pugi::parse_escapes, pugi::encoding_utf8);
    if (parsed.status == pugi::status_out_of_memory)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    if (!parsed)
        refuse(u"die Elemente sind nicht richtig verschachtelt"_qs);
    result.m_rows = Walker(document.document_element(), firstColumn, secondColumn, counts).walk();
    return result;
}
