#pragma once

#include <QString>
#include <QStringList>

class Values;

/// Magnification of the preview; 1 shows pages in their real size.
namespace zoom {

inline constexpr double largest = 75.0;

/// The texts of the list, from large to small.
QStringList listed();

/// The factor that \a text means: what stands before a "%" divided by 100, without one the number
/// itself, so that "50" is 5000 %. Raises 13 for a text that is no number of the locale, 380 for 0,
/// negative and larger factors than the largest.
double factorOf(const QString &text, const Values &values);

/// The next text of the list that is larger (\a steps > 0) or smaller than \a factor; empty
/// where there is none.
QString neighbour(double factor, int steps, const Values &values);

} // namespace zoom
