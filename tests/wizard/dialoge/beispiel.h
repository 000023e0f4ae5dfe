#pragma once

#include "core/kalibrierung.h"

#include <array>

/// Test documents with values that are made up for the tests.
namespace beispiel {

inline const QLocale german(QLocale::German, QLocale::Germany);
inline const QLocale english(QLocale::English, QLocale::UnitedStates);

/// Names of the three characteristics that the pages show.
inline void nameCharacteristics(Kalibrierung &document)
{
    document.DirektesPrüfmerkmal().setName(QStringLiteral("Verdichtungsgrad"));
    document.DirektesPrüfmerkmal().setFormelzeichen(QStringLiteral("DPr"));
    document.IndirektesPrüfmerkmal().setName(u"Messwert"_qs);
    document.IndirektesPrüfmerkmal().setFormelzeichen(QStringLiteral("F"));
}

/// Three fields of three points, covariable 1 to 3, the direct values 1 to 9. The coefficient of
/// determination between direct and indirect is 64^2 / (60 * 78) = 0.8752...
inline void enterValues(Kalibrierung &document)
{
    constexpr std::array<double, 9> indirect{3, 1, 4, 6, 5, 7, 9, 8, 11};
    nameCharacteristics(document);
    std::size_t next = 0;
    for (std::int32_t field = 1; field <= 3; ++field) {
        document.setPrüffeldPrüfpunkte(field, 3);
        for (std::int32_t point = 1; point <= 3; ++point) {
            document.setMesswert(pmDirekt, field, point, static_cast<double>(next + 1));
            document.setMesswert(pmIndirekt, field, point, indirect.at(next));
            ++next;
        }
    }
}

} // namespace beispiel
