#pragma once

#include <cmath>
#include <utility>
#include <vector>

namespace coretest {

/// Sum of \a values, rounded once: the partial sums never overlap, so nothing is lost (Shewchuk,
/// Discrete Comput. Geom. 18, 1997). Slow; an oracle for the program's own sums. The sums must stay
/// within a double's range.
inline double exactSum(const std::vector<double> &values)
{
    std::vector<double> parts; // increasing magnitude
    for (double value : values) {
        std::size_t kept = 0;
        for (double part : parts) {
            if (std::fabs(value) < std::fabs(part))
                std::swap(value, part);
            const double high = value + part;
            const double low = part - (high - value);
            if (low != 0.0)
                parts[kept++] = low;
            value = high;
        }
        parts.resize(kept);
        parts.push_back(value);
    }
    if (parts.empty())
        return 0.0;
    double high = parts.back();
    double low = 0.0;
    std::size_t left = parts.size() - 1;
    while (left > 0 && low == 0.0) {
        const double before = high;
        const double part = parts[--left];
        high = before + part;
        low = part - (high - before);
    }
    // Exactly half way between two doubles: the next part decides.
    if (left > 0 && (low < 0.0) == (parts[left - 1] < 0.0) && low != 0.0) {
        const double twice = low * 2.0;
        const double moved = high + twice;
        if (twice == moved - high)
            high = moved;
    }
    return high;
}

} // namespace coretest
