#pragma once

#include <QString>
#include <QStringList>

/// Pieces of spreadsheet formulas, without the leading "=", in the notation of the file: English
/// names, commas, points.
namespace formeln {

/// "Auswertung!$B$3" for row 2 and column 1, both counted from 0.
QString zelle(const QString &sheet, int row, int column);
/// "Messwerte!$E$2:$E$13".
QString spaltenbereich(const QString &sheet, int column, int firstRow, int lastRow);

/// \a text as a text constant.
QString text(const QString &text);

/// \a expression where every one of \a cells holds a number and the expression has a value, else
/// the empty text, so that no error ever shows.
QString geschuetzt(const QStringList &cells, const QString &expression);

/// The sum of \a terms, an expression over ranges, in two parts: multiples of \a step, a cell that
/// holds a power of two, and what remains. Spreadsheet programs add plainly, and the program does
/// not; with a step some 2^26 times smaller than the largest term the first part is exact, and the
/// second one too small for what it loses to matter.
QString genaueSumme(const QString &terms, const QString &step);

/// "COUNT(a,b)=2": whether every one of \a cells holds a number.
QString allesZahlen(const QStringList &cells);

} // namespace formeln
