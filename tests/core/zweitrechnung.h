#pragma once

// A second computation of all results that shares nothing with the program's: plain loops over
// plain arrays, sums that are rounded once, rounding by comparing halves; and random calibrations
// for both.

#include "tests/core/ergebnisse.h"
#include "tests/core/exaktesumme.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace coretest {

struct Punkt
{
    double value[3]; // direct, indirect, covariable of its field
    bool missing[2] = {false, false};
};

struct Stellen
{
    int mean = 1, variance = 2, covariance = 2, determination = 2, slope = 4, intercept = 2;
};

// The second computation. Errors are thrown as their numbers.
class Zweitrechnung
{
public:
    std::vector<Punkt> points;
    Stellen places;
    bool rounding = false;

    double mean(int x) const
    {
        std::vector<double> terms;
        for (const Punkt &point : points)
            terms.push_back(valueOf(point, x));
        double s = exactSum(terms);
        if (s != 0.0)
            s = s / static_cast<double>(points.size());
        return rounded(s, places.mean);
    }

    double variance(int x) const
    {
        const double m = mean(x);
        std::vector<double> terms;
        for (const Punkt &point : points)
            terms.push_back((valueOf(point, x) - m) * (valueOf(point, x) - m));
        return rounded(dividedByOneLess(exactSum(terms)), places.variance);
    }

    double covariance(int x, int y) const
    {
        const double mx = mean(x);
        const double my = mean(y);
        const bool allowed = (x == 0 && y == 1) || (x == 1 && y == 0) || (x == 0 && y == 2) ||
                             (x == 2 && y == 0) || (x == 1 && y == 2) || (x == 2 && y == 1);
        if (!allowed)
            throw 5;
        std::vector<double> terms;
        for (const Punkt &point : points)
            terms.push_back((valueOf(point, x) - mx) * (valueOf(point, y) - my));
        return rounded(dividedByOneLess(exactSum(terms)), places.covariance);
    }

    double determination(int x, int y) const
    {
        const double c = covariance(x, y);
        const double vx = variance(x);
        const double vy = variance(y);
        return rounded(divided(c * c, vx * vy), places.determination);
    }

    double slope(int x, int y) const
    {
        double b = 0.0;
        if ((x == 0 && y == 1) || (x == 1 && y == 0)) {
            const double above = covariance(x, 2);
            b = divided(above, covariance(y, 2));
        } else if ((x == 0 || x == 1) && y == 2) {
            const double above = covariance(x, 2);
            b = divided(above, variance(2));
        } else if (x == 2 && (y == 0 || y == 1)) {
            const double above = variance(2);
            b = divided(above, covariance(y, 2));
        }
        return rounded(b, places.slope);
    }

    double intercept(int x, int y) const
    {
        const double mx = mean(x);
        const double b = slope(x, y);
        const double my = mean(y);
        return rounded(mx - b * my, places.intercept);
    }

private:
    static double valueOf(const Punkt &point, int x)
    {
        const int column = x == 0 ? 0 : x == 2 ? 2 : 1;
        if (column < 2 && point.missing[column])
            throw 94;
        return point.value[column];
    }

    static double divided(double above, double below)
    {
        if (below == 0.0)
            throw 11;
        return above / below;
    }

    double dividedByOneLess(double sum) const
    {
        return sum == 0.0 ? 0.0 : divided(sum, static_cast<double>(points.size()) - 1.0);
    }

    // To the nearest multiple of the power of ten; of two equally near ones the even one.
    double rounded(double value, int decimals) const
    {
        if (!rounding)
            return value;
        const double power = std::strtod(("1e" + std::to_string(-decimals)).c_str(), nullptr);
        const double scaled = value / power;
        const double below = std::floor(scaled);
        const double rest = scaled - below;
        double nearest = below;
        if (rest > 0.5 || (rest == 0.5 && std::fabs(std::fmod(below, 2.0)) == 1.0))
            nearest = below + 1.0;
        if (nearest < -2147483648.0 || nearest > 2147483647.0)
            throw 6;
        return nearest * power;
    }
};

inline std::vector<Ergebnis> alleErgebnisse(const Zweitrechnung &second)
{
    const auto guarded = [](auto compute) -> Ergebnis {
        try {
            return {compute(), 0};
        } catch (const int error) {
            return {0.0, error};
        }
    };
    std::vector<Ergebnis> result;
    for (const std::int32_t x : selectors) {
        result.push_back(guarded([&] { return second.mean(x); }));
        result.push_back(guarded([&] { return second.variance(x); }));
        result.push_back(guarded([&] { return std::sqrt(second.variance(x)); }));
    }
    for (const std::int32_t x : selectors) {
        for (const std::int32_t y : selectors) {
            result.push_back(guarded([&] { return second.covariance(x, y); }));
            result.push_back(guarded([&] { return second.determination(x, y); }));
            result.push_back(guarded([&] { return second.slope(x, y); }));
            result.push_back(guarded([&] { return second.intercept(x, y); }));
        }
    }
    return result;
}

using Random = std::mt19937_64;

inline int between(Random &random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

// Values as users type them, with ties on purpose; some large enough to overflow the rounding.
inline double randomValue(Random &random, int kind)
{
    switch (kind) {
    case 0:
        return between(random, -200, 2000) / 10.0;
    case 1:
        return between(random, 9000, 10500) / 100.0;
    case 2:
        return between(random, -4096, 4096) / 8.0;
    case 3:
        return between(random, -5, 5);
    case 4:
        return between(random, 1, 1000) * 997.25;
    default:
        return std::uniform_real_distribution<double>(-10.0, 90.0)(random);
    }
}

// Enters the same random calibration into the document and into the second computation.
inline void fillRandomly(Random &random, Kalibrierung &document, Zweitrechnung &second)
{
    const int fields = between(random, 0, 7);
    const int kinds[3] = {between(random, 0, 5), between(random, 0, 5), between(random, 0, 3)};
    const bool asText = between(random, 0, 1) == 1;
    const bool withGaps = between(random, 0, 19) == 0;
    KeyedStore &store = document.DataStore();
    const auto entered = [&](double value) {
        // Fifteen digits hold every value of these kinds but the last, which stays a number.
        return asText && kinds[0] < 5 && kinds[1] < 5 ? Variant(document.values().text(value))
                                                      : Variant(value);
    };
    store.set(u"Anzahl Prüffelder"_qs, std::int32_t{fields});
    for (std::int32_t f = 1; f <= fields; ++f) {
        const int points = between(random, 0, 9);
        const double z = randomValue(random, kinds[2]);
        store.set(u"Prüffeld Prüfpunktanzahl %1"_qs.arg(f), std::int32_t{points});
        store.set(u"Name Prüffeld %1"_qs.arg(f), entered(z));
        for (std::int32_t p = 1; p <= points; ++p) {
            Punkt point{};
            point.value[2] = z;
            for (const PrüfmerkmalEnum column : {pmDirekt, pmIndirekt}) {
                point.value[column] = randomValue(random, kinds[column]);
                point.missing[column] = withGaps && between(random, 0, 30) == 0;
                if (!point.missing[column])
                    store.set(document.MesswertKey(column, f, p), entered(point.value[column]));
            }
            second.points.push_back(point);
        }
    }
}

inline void setPlacesRandomly(Random &random, Kalibrierung &document, Zweitrechnung &second)
{
    const auto places = [&] { return between(random, -2, 6); };
    if (between(random, 0, 2) == 0)
        return; // the defaults
    Stellen &chosen = second.places;
    chosen = {places(), places(), places(), places(), places(), places()};
    document.setNachkommastellenMittelwerte(chosen.mean);
    document.setNachkommastellenVarianzen(chosen.variance);
    document.setNachkommastellenKovarianzen(chosen.covariance);
    document.setNachkommastellenBestimmtheitsmaße(chosen.determination);
    document.setNachkommastellenAnstieg(chosen.slope);
    document.setNachkommastellenAchsenabschnitt(chosen.intercept);
    document.setNachkommastellenStandardabweichung(places()); // rounds nothing
}

} // namespace coretest
