#include "core/xmlpruefung.h"

#include "core/runtimeerror.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

constexpr std::string_view blanks = " \t\r\n";

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool endsName(char c)
{
    return isBlank(c) || c == '=' || c == '/' || c == '>' || c == '<' || c == '\'' || c == '"';
}

class Checker
{
public:
    explicit Checker(std::string_view text) : m_text(text) {}

    void checkCharacters();
    void checkStructure();
    const XmlCounts &counts() const { return m_counts; }

private:
    [[noreturn]] void fail(std::size_t position, const QString &what) const;
    std::size_t checkMultibyte(std::size_t position) const;
    void checkReferences(std::size_t first, std::size_t last) const;
    void checkReference(std::size_t position, std::string_view name) const;
    void checkTextOutside(std::size_t first, std::size_t last) const;
    std::size_t behind(std::size_t position, std::string_view mark) const;
    std::size_t checkMarkup(std::size_t position);
    std::size_t checkStartTag(std::size_t position);
    std::size_t checkAttribute(std::size_t position);
    std::size_t skipBlanks(std::size_t position) const;
    std::size_t skipName(std::size_t position) const;
    void count(std::size_t position);
    void checkDuplicates(std::size_t position);
    bool startsAt(std::size_t position, std::string_view mark) const
    {
        return m_text.substr(position, mark.size()) == mark;
    }

    std::string_view m_text;
    std::size_t m_depth = 0;
    std::size_t m_markup = 0;
    XmlCounts m_counts;
    bool m_rootSeen = false;
    std::vector<std::string_view> m_names; ///< attribute names of the current tag
};

void Checker::fail(std::size_t position, const QString &what) const
{
    const auto end =
        m_text.begin() + static_cast<std::ptrdiff_t>(std::min(position, m_text.size()));
    const auto line = 1 + std::count(m_text.begin(), end, '\n');
    throw RunTimeError(ErrorNumber::InvalidFileFormat, u"Zeile %1: %2"_qs.arg(line).arg(what));
}

void Checker::checkCharacters()
{
    std::size_t i = 0;
    while (i < m_text.size()) {
        // Eight bytes at once while all are ASCII and none is a control character.
        std::uint64_t word = 0;
        if (i + sizeof word <= m_text.size()) {
            std::memcpy(&word, m_text.data() + i, sizeof word);
            constexpr std::uint64_t high = 0x8080808080808080U;
            constexpr std::uint64_t space = 0x2020202020202020U;
            if (((word | (word - space)) & high) == 0) {
                i += sizeof word;
                continue;
            }
        }
        const auto byte = static_cast<unsigned char>(m_text[i]);
        if (byte >= 0x80) {
            i += checkMultibyte(i);
            continue;
        }
        if (!isXmlCharacter(byte))
            fail(i, u"Steuerzeichen U+%1 ist nicht erlaubt"_qs.arg(byte, 4, 16, QLatin1Char('0')));
        ++i;
    }
}

// Length of the UTF-8 sequence at the position.
std::size_t Checker::checkMultibyte(std::size_t position) const
{
    const auto lead = static_cast<unsigned char>(m_text[position]);
    const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    char32_t c = lead & (0x7fU >> length);
    bool good = lead >= 0xc2 && lead <= 0xf4 && position + length <= m_text.size();
    for (std::size_t i = 1; good && i < length; ++i) {
        const auto byte = static_cast<unsigned char>(m_text[position + i]);
        good = (byte & 0xc0) == 0x80;
        c = (c << 6) | (byte & 0x3fU);
    }
    const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    if (!good || overlong || !isXmlCharacter(c))
        fail(position, u"ungültige Zeichenkodierung (kein UTF-8)"_qs);
    return length;
}

void Checker::checkStructure()
{
    std::size_t i = 0;
    while (i < m_text.size()) {
        const std::size_t next = std::min(m_text.find('<', i), m_text.size());
        if (m_depth == 0)
            checkTextOutside(i, next);
        else
            checkReferences(i, next);
        i = next < m_text.size() ? checkMarkup(next) : next;
    }
    if (!m_rootSeen)
        fail(0, u"kein XML-Element"_qs);
    if (m_depth != 0)
        fail(m_text.size(), u"die Datei endet zu früh"_qs);
}

void Checker::checkTextOutside(std::size_t first, std::size_t last) const
{
    const std::size_t position = m_text.substr(first, last - first).find_first_not_of(blanks);
    if (position != std::string_view::npos)
        fail(first + position, u"Text außerhalb des Wurzelelements"_qs);
}

void Checker::checkReferences(std::size_t first, std::size_t last) const
{
    const std::string_view text = m_text.substr(first, last - first);
    for (std::size_t i = text.find('&'); i != std::string_view::npos; i = text.find('&', i + 1)) {
        const std::size_t end = text.find(';', i);
        if (end == std::string_view::npos)
            fail(first + i, u"einzelnes Zeichen „&“"_qs);
        checkReference(first + i, text.substr(i + 1, end - i - 1));
    }
}

void Checker::checkReference(std::size_t position, std::string_view name) const
{
    for (const std::string_view known : {"amp", "lt", "gt", "apos", "quot"}) {
        if (name == known)
            return;
    }
    std::uint32_t c = 0;
    const bool numeric = name.starts_with('#');
    const bool hexadecimal = name.starts_with("#x");
    const std::string_view digits =
        name.substr(std::min<std::size_t>(hexadecimal ? 2 : 1, name.size()));
    const auto end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, c, hexadecimal ? 16 : 10);
    if (!numeric || digits.empty() || read.ec != std::errc{} || read.ptr != end)
        fail(position, u"unbekannte Zeichenreferenz"_qs);
    if (!isXmlCharacter(c))
        fail(position, u"Zeichenreferenz auf ein unerlaubtes Zeichen"_qs);
}

// The position behind the next mark.
std::size_t Checker::behind(std::size_t position, std::string_view mark) const
{
    const std::size_t found = m_text.find(mark, position);
    if (found == std::string_view::npos)
        fail(m_text.size(), u"die Datei endet zu früh"_qs);
    return found + mark.size();
}

// The position behind the markup that begins at the position.
std::size_t Checker::checkMarkup(std::size_t position)
{
    count(position);
    if (startsAt(position, "<!--"))
        return behind(position + 4, "-->");
    if (m_depth > 0 && startsAt(position, "<![CDATA["))
        return behind(position, "]]>");
    if (startsAt(position, "<!"))
        fail(position, u"Dokumenttyp-Deklarationen sind nicht erlaubt"_qs);
    if (startsAt(position, "<?"))
        return behind(position + 2, "?>");
    if (startsAt(position, "</")) {
        if (m_depth == 0)
            fail(position, u"schließende Marke ohne öffnende"_qs);
        --m_depth;
        return behind(position, ">");
    }
    return checkStartTag(position);
}

std::size_t Checker::skipBlanks(std::size_t position) const
{
    while (position < m_text.size() && isBlank(m_text[position]))
        ++position;
    return position;
}

std::size_t Checker::skipName(std::size_t position) const
{
    while (position < m_text.size() && !endsName(m_text[position]))
        ++position;
    return position;
}

void Checker::count(std::size_t position)
{
    if (++m_markup > maximumMarkup)
        fail(position, u"mehr Elemente, als eine Kalibrierung haben kann"_qs);
}

std::size_t Checker::checkStartTag(std::size_t position)
{
    if (m_depth == 0 && m_rootSeen)
        fail(position, u"zweites Wurzelelement"_qs);
    m_rootSeen = true;
    ++m_counts.elements;
    m_names.clear();
    std::size_t i = skipName(position + 1);
    for (;;) {
        const std::size_t next = skipBlanks(i);
        if (startsAt(next, "/>")) {
            checkDuplicates(position);
            return next + 2;
        }
        if (startsAt(next, ">")) {
            checkDuplicates(position);
            ++m_depth;
            return next + 1;
        }
        if (next >= m_text.size())
            fail(next, u"die Datei endet zu früh"_qs);
        if (next == i)
            fail(next, u"Attribute müssen durch Leerraum getrennt sein"_qs);
        i = checkAttribute(next);
    }
}

// The position behind the attribute that begins at the position.
std::size_t Checker::checkAttribute(std::size_t position)
{
    count(position);
    const std::size_t nameEnd = skipName(position);
    const std::size_t equals = skipBlanks(nameEnd);
    if (nameEnd == position || !startsAt(equals, "="))
        fail(position, u"Attribut ohne Wert"_qs);
    m_names.push_back(m_text.substr(position, nameEnd - position));
    if (m_names.back().starts_with("xmlns"))
        ++m_counts.namespaceDeclarations;
    const std::size_t quote = skipBlanks(equals + 1);
    if (!startsAt(quote, "'") && !startsAt(quote, "\""))
        fail(quote, u"Attributwert ohne Anführungszeichen"_qs);
    const std::size_t end = m_text.find(m_text[quote], quote + 1);
    if (end == std::string_view::npos)
        fail(m_text.size(), u"die Datei endet zu früh"_qs);
    const std::string_view value = m_text.substr(quote + 1, end - quote - 1);
    if (const std::size_t bracket = value.find('<'); bracket != std::string_view::npos)
        fail(quote + 1 + bracket, u"Zeichen „<“ in einem Attributwert"_qs);
    checkReferences(quote + 1, end);
    return end + 1;
}

void Checker::checkDuplicates(std::size_t position)
{
    constexpr std::size_t few = 8; // up to here comparing each with each is faster than sorting
    bool duplicate = false;
    if (m_names.size() <= few) {
        for (auto name = m_names.begin(); name != m_names.end(); ++name)
            duplicate = duplicate || std::find(m_names.begin(), name, *name) != name;
    } else {
        std::sort(m_names.begin(), m_names.end());
        duplicate = std::adjacent_find(m_names.begin(), m_names.end()) != m_names.end();
    }
    if (duplicate)
        fail(position, u"doppeltes Attribut"_qs);
}

} // namespace

XmlCounts checkXml(std::string_view utf8)
{
    Checker checker(utf8);
    checker.checkCharacters();
    checker.checkStructure();
    return checker.counts();
}

QString forMessage(const QString &text)
{
    constexpr qsizetype longest = 60;
    QString result = text.left(longest);
    for (QChar &c : result) {
        if (c.unicode() < 0x20 || (c.unicode() >= 0x7f && c.unicode() < 0xa0) ||
            !isXmlCharacter(c.unicode()))
            c = QChar::ReplacementCharacter;
    }
    return text.size() > longest ? result + u'…' : result;
}
