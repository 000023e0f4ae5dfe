#include "export/summenschritt.h"

#include <algorithm>
#include <cmath>

namespace {

// Terms of at most 2^27 steps: a million of them add up exactly, and what remains of each is small.
constexpr int stepsOfLargest = 26;
constexpr int smallestStep = -1000;

} // namespace

double schritt(std::initializer_list<double> sizes)
{
    double exponent = 0.0;
    for (const double size : sizes)
        exponent += std::log2(size);
    const double step =
        std::exp2(std::max<double>(std::floor(exponent) - stepsOfLargest, smallestStep));
    return std::isfinite(step) && std::isfinite(exponent) ? step : 1.0;
}

QString schrittformel(const QStringList &sizes)
{
    QStringList exponents;
    for (const QString &size : sizes)
        exponents += u"LOG(%1,2)"_qs.arg(size);
    return u"IFERROR(2^MAX(INT(%1)-%2,%3),1)"_qs.arg(exponents.join(u'+'))
        .arg(stepsOfLargest)
        .arg(smallestStep);
}

double abstand(const Stichprobe &sample, double mean)
{
    if (sample.werte.empty())
        return 0.0;
    const auto [smallest, largest] = std::minmax_element(sample.werte.begin(), sample.werte.end());
    return std::max(*largest - mean, mean - *smallest);
}

QString abstandsformel(const Stichprobe &sample, const QString &mean)
{
    return u"MAX(MAX(%1)-%2,%2-MIN(%1))"_qs.arg(sample.bereich, mean);
}

QString abweichungsprodukte(const Stichprobe &x, const QString &meanX, const Stichprobe &y,
                            const QString &meanY)
{
    return u"ISNUMBER(%1)*((%1-%2)*(%3-%4))"_qs.arg(x.bereich, meanX, y.bereich, meanY);
}
