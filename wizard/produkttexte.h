#pragma once

#include <QString>

/// "Version " and the three numbers of this version.
QString versionText();

/// \a text for a label: its lines, joined with CR LF, joined with line feeds.
QString shownLines(QString text);
