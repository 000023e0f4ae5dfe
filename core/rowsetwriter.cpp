#include "core/rowsetwriter.h"

#include "core/runtimeerror.h"
#include "core/xmlpruefung.h"

namespace {

constexpr char fileStart[] =
    "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\r\n"
    "\txmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\r\n"
    "\txmlns:rs='urn:schemas-microsoft-com:rowset'\r\n"
    "\txmlns:z='#RowsetSchema'>\r\n"
    "<s:Schema id='RowsetSchema'>\r\n"
    "\t<s:ElementType name='row' content='eltOnly' rs:updatable='true'>\r\n";

constexpr char columnType[] =
    "\t\t<s:AttributeType name='%1' rs:number='%2' rs:write='true'>\r\n"
    "\t\t\t<s:datatype dt:type='string' dt:maxLength='4294967295' rs:precision='0' rs:long='true'"
    " rs:maybenull='false'/>\r\n"
    "\t\t</s:AttributeType>\r\n";

constexpr char schemaEnd[] = "\t\t<s:extends type='rs:rowbase'/>\r\n"
                             "\t</s:ElementType>\r\n"
                             "</s:Schema>\r\n"
                             "<rs:data>\r\n";

// The escape of an ASCII character, null where it stands for itself.
const char *escapeOf(char16_t c)
{
    switch (c) {
    case u'&':
        return "&#x26;";
    case u'<':
        return "&#x3c;";
    case u'>':
        return "&#x3e;";
    case u'\'':
        return "&#x27;";
    case u'"':
        return "&#x22;";
    case u'\t':
        return "&#x9;";
    case u'\r':
        return "&#xD;";
    case u'\n':
        return "&#xA;";
    default:
        return nullptr;
    }
}

void appendUtf8(QByteArray &out, char32_t c)
{
    if (c < 0x80) {
        out += static_cast<char>(c);
        return;
    }
    if (c < 0x800) {
        out += static_cast<char>(0xc0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            out += static_cast<char>(0xe0 | (c >> 12));
        } else {
            out += static_cast<char>(0xf0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3f));
        }
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3f));
    }
    out += static_cast<char>(0x80 | (c & 0x3f));
}

[[noreturn]] void refuse(const QString &row, char16_t c)
{
    const QString code =
        QString::number(c, 16).toUpper().rightJustified(4, u'0'); // as code charts write it
    throw RunTimeError(
        ErrorNumber::InvalidFileFormat,
        u"der Eintrag „%1“ enthält das Zeichen U+%2, das die Datei nicht aufnehmen kann"_qs.arg(
            forMessage(row), code));
}

} // namespace

RowsetWriter::RowsetWriter(const QString &firstColumn, const QString &secondColumn,
                           std::size_t expectedRows)
    : m_rowStart("\t<z:row " + firstColumn.toUtf8() + "='")
    , m_rowMiddle("' " + secondColumn.toUtf8() + "='")
{
    constexpr std::size_t typicalRow = 80; // bytes
    m_file.reserve(static_cast<qsizetype>(2000 + typicalRow * expectedRows));
    m_file += fileStart;
    m_file += QString::fromLatin1(columnType).arg(firstColumn).arg(1).toUtf8();
    m_file += QString::fromLatin1(columnType).arg(secondColumn).arg(2).toUtf8();
    m_file += schemaEnd;
}

void RowsetWriter::append(const QString &first, const QString &second)
{
    m_file += m_rowStart;
    appendEscaped(first, first);
    m_file += m_rowMiddle;
    appendEscaped(second, first);
    m_file += "'/>\r\n";
}

QByteArray RowsetWriter::finish()
{
    m_file += "</rs:data>\r\n</xml>";
    return std::move(m_file);
}

void RowsetWriter::appendEscaped(const QString &text, const QString &row)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (const char *escape = escapeOf(c)) {
            m_file += escape;
        } else if (!QChar::isSurrogate(c)) {
            if (!isXmlCharacter(c))
                refuse(row, c);
            appendUtf8(m_file, c);
        } else {
            const bool pair =
                QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate();
            if (!pair)
                refuse(row, c);
            appendUtf8(m_file, QChar::surrogateToUcs4(text[i], text[i + 1]));
            ++i;
        }
    }
}
