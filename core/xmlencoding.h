#pragma once

#include <QByteArray>

#include <string_view>

/// The text of an XML file as UTF-8 without byte order mark, whichever of UTF-8 and UTF-16 (with or
/// without mark, either byte order) the file is in. Raises 321 for what is no UTF-16; UTF-8 is not
/// checked here.
QByteArray utf8Of(QByteArray file);

/// Raises 321 for an XML declaration that names an encoding outside of Unicode: utf8Of() knows
/// nothing of it, and the umlauts would be wrong.
void checkDeclaredEncoding(std::string_view utf8);
