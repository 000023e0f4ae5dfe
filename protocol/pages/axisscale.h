#pragma once

#include <span>
#include <vector>

/// One axis of a diagram, in the unit of its values.
struct Axis
{
    double dataMinimum = 0.0;
    double dataMaximum = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;
    double step = 0.0; ///< a power of ten

    bool operator==(const Axis &) const = default;
};

/// The axis on which \a values and the \a extra values lie.
///
/// The step is the largest power of ten below their range, both ends are widened by a tenth of it;
/// then the minimum is truncated towards zero and the maximum rounded up to whole steps. So a
/// negative minimum can come to lie above the smallest value. Raises 5 where the range is 0 or
/// there are no values, 6 where the axis can't be computed in doubles.
Axis axisOf(std::span<const double> values, std::span<const double> extra = {});

/// The positions of the ticks, one every step from the axis minimum to its maximum.
std::vector<double> ticksOf(const Axis &axis);
