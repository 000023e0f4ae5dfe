#include "protocol/pages/axisscale.h"

#include "core/baskalibrierungwendral.h"
#include "core/runtimeerror.h"
#include "core/values.h"

#include <cmath>

namespace {

// Widths of an axis lie between 1 and 12 steps; more only where doubles are too coarse.
constexpr double mostSteps = 20.0;

void include(Axis &axis, double value, bool first)
{
    if (first || value < axis.dataMinimum)
        axis.dataMinimum = value;
    if (first || value > axis.dataMaximum)
        axis.dataMaximum = value;
}

} // namespace

Axis axisOf(std::span<const double> values, std::span<const double> extra)
{
    Axis axis;
    bool first = true;
    for (const std::span<const double> part : {values, extra}) {
        for (const double value : part) {
            include(axis, value, first);
            first = false;
        }
    }
    const double range = axis.dataMaximum - axis.dataMinimum;
    if (!std::isfinite(range))
        throw RunTimeError(ErrorNumber::Overflow);
    const double exponent = basKalibrierungWendral::Log10(range);
    axis.step = std::pow(10.0, -roundDown(-exponent) - 1);
    const double lower = axis.dataMinimum - axis.step / 10;
    const double upper = axis.dataMaximum + axis.step / 10;
    axis.minimum = truncate(lower / axis.step) * axis.step + 0.0;
    axis.maximum = -roundDown(-upper / axis.step) * axis.step + 0.0;
    const double steps = (axis.maximum - axis.minimum) / axis.step;
    if (!(axis.step > 0.0 && steps > 0.0 && steps <= mostSteps))
        throw RunTimeError(ErrorNumber::Overflow);
    return axis;
}

std::vector<double> ticksOf(const Axis &axis)
{
    const double first = std::nearbyint(axis.minimum / axis.step);
    const int count = static_cast<int>(std::lround((axis.maximum - axis.minimum) / axis.step));
    std::vector<double> ticks;
    for (int i = 0; i <= count; ++i)
        ticks.push_back((first + i) * axis.step);
    return ticks;
}
