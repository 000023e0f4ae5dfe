#pragma once

#include <QList>
#include <QStringList>

/// Tables as plain text with tabs between the cells.
namespace tabtext {

/// The lines of \a text, ended by CR LF, LF or CR; line breaks at the end of the text add none.
/// Control characters other than tabs are dropped.
QStringList lines(const QString &text);

/// The cells of a text as spreadsheets write it: one line break at its end adds no row. A cell in
/// quotation marks may hold line breaks (they become "\n"), tabs (they become blanks) and doubled
/// quotation marks; a mark that nothing closes is an ordinary character. Other control characters
/// are dropped.
QList<QStringList> cells(const QString &text);

} // namespace tabtext
