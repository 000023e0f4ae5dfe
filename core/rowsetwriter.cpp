#include "core/rowsetwriter.h"

#include "core/runtimeerror.h"
#include "core/xmlpruefung.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr char rowEnd[] = "'/>\r\n";

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

// What an ASCII character is written as: nothing for one that XML can't hold, itself or an escape.
constexpr std::array<std::string_view, 0x80> makeAsciiTexts()
{
    constexpr const char *characters =
        " !\"#$%&'()*+,-./"
        "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz"
        "{|}~\x7f";
    std::array<std::string_view, 0x80> texts;
    for (std::size_t c = 0x20; c < 0x80; ++c)
        texts[c] = std::string_view(characters + (c - 0x20), 1);
    texts['&'] = "&#x26;";
    texts['<'] = "&#x3c;";
    texts['>'] = "&#x3e;";
    texts['\''] = "&#x27;";
    texts['"'] = "&#x22;";
    texts['\t'] = "&#x9;";
    texts['\r'] = "&#xD;";
    texts['\n'] = "&#xA;";
    return texts;
}
constexpr std::array<std::string_view, 0x80> asciiTexts = makeAsciiTexts();

constexpr qsizetype longestText = 6; // bytes for one UTF-16 unit, or for both of a pair
static_assert(std::all_of(asciiTexts.begin(), asciiTexts.end(), [](std::string_view text) {
    return static_cast<qsizetype>(text.size()) <= longestText;
}));

// Writes a code point above ASCII as UTF-8. \returns the position behind it.
char *putUtf8(char *out, char32_t c)
{
    if (c < 0x800) {
        *out++ = static_cast<char>(0xc0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            *out++ = static_cast<char>(0xe0 | (c >> 12));
        } else {
            *out++ = static_cast<char>(0xf0 | (c >> 18));
            *out++ = static_cast<char>(0x80 | ((c >> 12) & 0x3f));
        }
        *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3f));
    }
    *out++ = static_cast<char>(0x80 | (c & 0x3f));
    return out;
}

// Writes the character at the position, escaped, and moves the position behind it. \returns where
// the next one goes; null, and moves nothing, where no file can hold it.
inline char *putCharacter(char *out, QStringView text, qsizetype &position)
{
    const char16_t c = text.utf16()[position];
    if (c < 0x80) {
        const std::string_view written = asciiTexts[c];
        if (written.empty())
            return nullptr;
        ++position;
        if (written.size() > 1)
            return std::copy(written.begin(), written.end(), out);
        *out = static_cast<char>(c);
        return out + 1;
    }
    char32_t whole = c;
    qsizetype units = 1;
    if (QChar::isHighSurrogate(c) && position + 1 < text.size() &&
        text[position + 1].isLowSurrogate()) {
        whole = QChar::surrogateToUcs4(c, text.utf16()[position + 1]);
        units = 2;
    }
    if (!isXmlCharacter(whole))
        return nullptr;
    position += units;
    return putUtf8(out, whole);
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
    constexpr qsizetype typicalRow = 80; // bytes
    m_file.reserve(2000 + typicalRow * static_cast<qsizetype>(expectedRows));
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
    m_file += rowEnd;
}

QByteArray RowsetWriter::finish()
{
    m_file += "</rs:data>\r\n</xml>";
    return std::move(m_file);
}

void RowsetWriter::appendEscaped(const QString &text, const QString &row)
{
    constexpr qsizetype slice = 4096;
    for (qsizetype i = 0; i < text.size();) {
        // Room for the worst case of a slice, given back behind it, so that no single character
        // has to ask for more.
        const qsizetype end = std::min(i + slice, text.size());
        const qsizetype before = m_file.size();
        m_file.resize(before + longestText * (end - i));
        char *const start = m_file.data() + before;
        char *out = start;
        while (i < end) {
            char *const behind = putCharacter(out, text, i);
            if (!behind)
                refuse(row, text[i].unicode());
            out = behind;
        }
        m_file.resize(before + (out - start));
    }
}
