#pragma once

#include "tests/core/support.h"

#include <vector>

namespace coretest {

/// A result or the number of the error that came instead.
struct Ergebnis
{
    double value = 0.0;
    std::int32_t error = 0;
};

template <typename Compute>
Ergebnis ergebnisOf(Compute compute)
{
    try {
        return {compute(), 0};
    } catch (const RunTimeError &error) {
        return {0.0, error.number()};
    }
}

/// Selectors in the lists of results: the three characteristics and one that names none.
inline constexpr std::int32_t selectors[] = {0, 1, 2, 9};

/// Every result of \a document in a fixed order: by selector mean, variance and deviation, then by
/// pair covariance, determination, slope and intercept.
inline std::vector<Ergebnis> alleErgebnisse(Kalibrierung &document)
{
    std::vector<Ergebnis> result;
    for (const std::int32_t x : selectors) {
        const auto X = static_cast<MerkmalEnum>(x);
        result.push_back(ergebnisOf([&] { return document.StatistikMittelwert(X); }));
        result.push_back(ergebnisOf([&] { return document.StatistikVarianz(X); }));
        result.push_back(ergebnisOf([&] { return document.StatistikStandardabweichung(X); }));
    }
    for (const std::int32_t x : selectors) {
        for (const std::int32_t y : selectors) {
            const auto X = static_cast<MerkmalEnum>(x);
            const auto Y = static_cast<MerkmalEnum>(y);
            result.push_back(ergebnisOf([&] { return document.StatistikKovarianz(X, Y); }));
            result.push_back(ergebnisOf([&] { return document.StatistikBestimmtheitsmaß(X, Y); }));
            result.push_back(
                ergebnisOf([&] { return document.StatistikKalibriergeradeAnstieg(X, Y); }));
            result.push_back(
                ergebnisOf([&] { return document.StatistikKalibriergeradeAchsenabschnitt(X, Y); }));
        }
    }
    return result;
}

} // namespace coretest
