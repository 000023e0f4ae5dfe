#pragma once

#include <QString>

#include <cstddef>
#include <string_view>

/// What a document holds, counted on the way.
struct XmlCounts
{
    std::size_t elements = 0;
    std::size_t namespaceDeclarations = 0;
};

/// Refuses what is no well-formed XML 1.0 document of our kind, before the parser sees it: the
/// parser is fast because it takes bare & and <, unknown entities, duplicate attributes, text
/// around the root, two roots, invalid UTF-8 and control characters without a word. A document type
/// is refused as well, so that no entity is ever defined or expanded. Matching end tags are left to
/// the parser.
///
/// \a utf8 has no byte order mark. Raises 321, naming the line. Takes linear time and no recursion.
XmlCounts checkXml(std::string_view utf8);

/// More elements, attributes and other markup than this are refused, so that a small file can't
/// make the parser take all memory. The largest document that is evaluated has about six million.
inline constexpr std::size_t maximumMarkup = std::size_t{1} << 23;

/// Whether XML 1.0 can hold the code point.
constexpr bool isXmlCharacter(char32_t c)
{
    if (c < 0x20)
        return c == U'\t' || c == U'\n' || c == U'\r';
    return (c < 0xd800 || c > 0xdfff) && c != 0xfffe && c != 0xffff && c <= 0x10ffff;
}

/// \a text from a file or a store as it may stand in a message: short and without control
/// characters.
QString forMessage(const QString &text);
