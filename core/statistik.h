#pragma once

#include <span>

/// Sums over samples. All are compensated: a long or badly scaled column loses nothing that a
/// double can show (error-free transformation of Knuth, TAOCP vol. 2, 4.2.2, theorem B). Where a
/// sum leaves the range of a double the result is not finite; callers check.
namespace statistik {

/// Sum of \a x.
double sum(std::span<const double> x);

/// Sum of (x - meanX)^2.
double sumOfSquares(std::span<const double> x, double meanX);

/// Sum of (x - meanX) * (y - meanY) over pairs. Precondition: \a x and \a y have the same length.
double sumOfProducts(std::span<const double> x, double meanX, std::span<const double> y,
                     double meanY);

} // namespace statistik
