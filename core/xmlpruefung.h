#pragma once

#include <string_view>

/// Refuses what is no well-formed XML 1.0 document of our kind, before the parser sees it: the
/// parser is fast because it takes bare & and <, unknown entities, duplicate attributes, text
/// around the root, two roots, invalid UTF-8 and control characters without a word. A document type
/// is refused as well, so that no entity is ever defined or expanded. Matching end tags are left to
/// the parser.
///
/// \a utf8 has no byte order mark. Raises 321, naming the line. Takes linear time and no recursion.
void checkXml(std::string_view utf8);
