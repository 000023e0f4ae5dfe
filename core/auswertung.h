#pragma once

#include "core/merkmal.h"
#include "core/runtimeerror.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

class Kalibrierung;

/// The results of one document: gathers the samples, applies the formulas and rounds in their
/// order.
///
/// Samples, means, variances and covariances are kept until the store changes, so that thirty
/// results over a million points cost a few passes. What every result raises is said at the members
/// of Kalibrierung.
class Auswertung
{
public:
    explicit Auswertung(Kalibrierung &document) : m_document(document) {}

    double mittelwert(MerkmalEnum merkmal);
    double varianz(MerkmalEnum merkmal);
    double kovarianz(MerkmalEnum x, MerkmalEnum y);
    double bestimmtheitsmass(MerkmalEnum x, MerkmalEnum y);
    double anstieg(MerkmalEnum x, MerkmalEnum y);
    double achsenabschnitt(MerkmalEnum x, MerkmalEnum y);

    /// Gathers the samples of all three characteristics now rather than with the first result.
    void gather();

    /// Points that the samples hold; a field with a negative count has none. Raises 13 or 6 where a
    /// count is no number, and 6 where there are more than maximumPoints.
    std::int32_t pointCount();

    /// More points than this are not evaluated (error 6), before anything is allocated for them.
    static constexpr std::int32_t maximumPoints = 1'000'000;

private:
    // One value per point, field by field; or what went wrong while gathering them.
    struct Sample
    {
        std::vector<double> values;
        std::optional<RunTimeError> error;
    };

    // Points per field up to the first count that is none, and what is wrong with that one.
    struct FieldSizes
    {
        std::vector<std::int32_t> sizes;
        std::optional<RunTimeError> error;
    };

    void dropOutdated();
    const std::vector<double> &sample(MerkmalEnum merkmal);
    Sample gathered(MerkmalEnum merkmal);
    const FieldSizes &fieldSizes();
    double rounded(double value, std::int32_t decimals);

    Kalibrierung &m_document; ///< borrowed: the document owns its evaluation
    std::uint64_t m_revision = 0;
    std::optional<FieldSizes> m_fieldSizes;
    std::array<std::optional<Sample>, 3> m_samples;
    std::array<std::optional<double>, 3> m_means;
    std::array<std::optional<double>, 3> m_variances;
    std::array<std::optional<double>, 3>
        m_covariances; ///< under the sum of the two selectors minus 1
};
