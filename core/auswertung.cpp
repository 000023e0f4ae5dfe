#include "core/auswertung.h"

#include "core/baskalibrierungwendral.h"
#include "core/kalibrierung.h"
#include "core/statistik.h"

#include <algorithm>
#include <cmath>

namespace {

double checkedFinite(double value)
{
    if (!std::isfinite(value))
        throw RunTimeError(ErrorNumber::Overflow);
    return value;
}

double quotient(double dividend, double divisor)
{
    if (divisor == 0.0)
        throw RunTimeError(ErrorNumber::DivisionByZero);
    return checkedFinite(dividend / divisor) + 0.0; // adding 0 turns -0 into 0
}

// Any selector but the covariable's and the direct one's reads the indirect characteristic.
MerkmalEnum known(MerkmalEnum merkmal)
{
    return merkmal == mDirekt || merkmal == mZ ? merkmal : mIndirekt;
}

bool isMeasured(MerkmalEnum merkmal)
{
    return merkmal == mDirekt || merkmal == mIndirekt;
}

bool isPairOfTwo(MerkmalEnum x, MerkmalEnum y)
{
    return x != y && (isMeasured(x) || x == mZ) && (isMeasured(y) || y == mZ);
}

} // namespace

double Auswertung::mittelwert(MerkmalEnum merkmal)
{
    dropOutdated();
    std::optional<double> &kept = m_means[static_cast<std::size_t>(known(merkmal))];
    if (kept)
        return *kept;
    const std::vector<double> &x = sample(known(merkmal));
    double mean = checkedFinite(statistik::sum(x));
    if (mean != 0.0)
        mean = quotient(mean, static_cast<double>(x.size()));
    mean = rounded(mean, m_document.NachkommastellenMittelwerte());
    kept = mean;
    return mean;
}

double Auswertung::varianz(MerkmalEnum merkmal)
{
    dropOutdated();
    std::optional<double> &kept = m_variances[static_cast<std::size_t>(known(merkmal))];
    if (kept)
        return *kept;
    const double mean = mittelwert(merkmal);
    const std::vector<double> &x = sample(known(merkmal));
    double variance = checkedFinite(statistik::sumOfSquares(x, mean));
    if (variance != 0.0)
        variance = quotient(variance, static_cast<double>(x.size()) - 1.0);
    variance = rounded(variance, m_document.NachkommastellenVarianzen());
    kept = variance;
    return variance;
}

double Auswertung::kovarianz(MerkmalEnum x, MerkmalEnum y)
{
    dropOutdated();
    const double meanX = mittelwert(x);
    const double meanY = mittelwert(y);
    if (!isPairOfTwo(x, y))
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    std::optional<double> &kept = m_covariances[static_cast<std::size_t>(x + y - 1)];
    if (kept)
        return *kept;
    const std::vector<double> &valuesX = sample(x);
    const std::vector<double> &valuesY = sample(y);
    double covariance = checkedFinite(statistik::sumOfProducts(valuesX, meanX, valuesY, meanY));
    if (covariance != 0.0)
        covariance = quotient(covariance, static_cast<double>(valuesX.size()) - 1.0);
    covariance = rounded(covariance, m_document.NachkommastellenKovarianzen());
    kept = covariance;
    return covariance;
}

double Auswertung::bestimmtheitsmass(MerkmalEnum x, MerkmalEnum y)
{
    const double covariance = kovarianz(x, y);
    const double varianceX = varianz(x);
    const double varianceY = varianz(y);
    const double squared = checkedFinite(covariance * covariance);
    const double determination = quotient(squared, checkedFinite(varianceX * varianceY));
    return rounded(determination, m_document.NachkommastellenBestimmtheitsmaße());
}

// X = b * Y + a, every slope derived from regressions on the covariable.
double Auswertung::anstieg(MerkmalEnum x, MerkmalEnum y)
{
    double slope = 0.0;
    if (isMeasured(x) && isMeasured(y) && x != y) {
        const double dividend = kovarianz(x, mZ);
        slope = quotient(dividend, kovarianz(y, mZ));
    } else if (isMeasured(x) && y == mZ) {
        const double dividend = kovarianz(x, mZ);
        slope = quotient(dividend, varianz(mZ));
    } else if (x == mZ && isMeasured(y)) {
        const double dividend = varianz(mZ);
        slope = quotient(dividend, kovarianz(y, mZ));
    }
    return rounded(slope, m_document.NachkommastellenAnstieg());
}

double Auswertung::achsenabschnitt(MerkmalEnum x, MerkmalEnum y)
{
    const double meanX = mittelwert(x);
    const double slope = anstieg(x, y);
    const double intercept = checkedFinite(meanX - slope * mittelwert(y));
    return rounded(intercept, m_document.NachkommastellenAchsenabschnitt());
}

void Auswertung::gather()
{
    dropOutdated();
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ})
        sample(merkmal);
}

void Auswertung::dropOutdated()
{
    const std::uint64_t revision = m_document.DataStore().revision();
    if (revision == m_revision)
        return;
    m_revision = revision;
    m_fieldSizes.reset();
    m_samples.fill({});
    m_means.fill({});
    m_variances.fill({});
    m_covariances.fill({});
}

const std::vector<double> &Auswertung::sample(MerkmalEnum merkmal)
{
    std::optional<Sample> &kept = m_samples[static_cast<std::size_t>(merkmal)];
    if (!kept)
        kept = gathered(merkmal);
    if (kept->error)
        throw *kept->error;
    return kept->values;
}

Auswertung::Sample Auswertung::gathered(MerkmalEnum merkmal)
{
    Sample result;
    try {
        const std::vector<std::int32_t> &sizes = fieldSizes().sizes;
        std::size_t total = 0;
        for (const std::int32_t size : sizes)
            total += static_cast<std::size_t>(size);
        result.values.reserve(total);
        std::int32_t field = 0;
        for (const std::int32_t size : sizes) {
            ++field;
            if (merkmal == mZ) {
                if (size > 0)
                    result.values.insert(result.values.end(), static_cast<std::size_t>(size),
                                         m_document.PrüffeldWert(field));
                continue;
            }
            for (std::int32_t point = 1; point <= size; ++point)
                result.values.push_back(m_document.values().number(
                    m_document.Messwert(static_cast<PrüfmerkmalEnum>(merkmal), field, point)));
        }
        // A count that is none is met only behind the values of the fields before it.
        if (fieldSizes().error)
            throw *fieldSizes().error;
    } catch (const RunTimeError &error) {
        result.error = error;
    }
    return result;
}

// Points per field; a negative count is an empty field. Ends with error 6 as soon as there are too
// many, so that a count of a thousand millions neither hangs nor takes memory.
const Auswertung::FieldSizes &Auswertung::fieldSizes()
{
    if (m_fieldSizes)
        return *m_fieldSizes;
    FieldSizes result;
    std::int64_t total = 0;
    try {
        const std::int32_t fields = m_document.PrüffelderAnzahl();
        for (std::int32_t field = 1; field <= fields; ++field) {
            const std::int32_t size = std::max(m_document.PrüffeldPrüfpunkte(field), 0);
            total += size;
            if (total > maximumPoints) {
                result.sizes.clear();
                throw RunTimeError(ErrorNumber::Overflow);
            }
            result.sizes.push_back(size);
        }
    } catch (const RunTimeError &error) {
        result.error = error;
    }
    m_fieldSizes = std::move(result);
    return *m_fieldSizes;
}

std::int32_t Auswertung::pointCount()
{
    dropOutdated();
    const FieldSizes &fields = fieldSizes();
    if (fields.error)
        throw *fields.error;
    std::int32_t total = 0;
    for (const std::int32_t size : fields.sizes)
        total += size;
    return total;
}

double Auswertung::rounded(double value, std::int32_t decimals)
{
    if (!m_document.ZwischenergebnisseRunden())
        return value;
    return basKalibrierungWendral::RoundDecimal(value, -static_cast<double>(decimals));
}
