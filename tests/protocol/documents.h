#pragma once

#include "core/kalibrierung.h"

#include <QLocale>
#include <QString>

#include <memory>
#include <vector>

/// Documents that tests compose protocols of. All measurements are made up.
namespace documents {

/// One field's pairs of values: direct, indirect.
using Field = std::vector<std::pair<double, double>>;

inline std::unique_ptr<Kalibrierung> fresh()
{
    return std::make_unique<Kalibrierung>(QLocale(QLocale::German, QLocale::Germany));
}

inline void setCharacteristics(Kalibrierung &document)
{
    document.DirektesPrüfmerkmal().setName(u"Verdichtungsgrad"_qs);
    document.DirektesPrüfmerkmal().setFormelzeichen(u"D"_qs);
    document.DirektesPrüfmerkmal().setEinheit(u"%"_qs);
    document.IndirektesPrüfmerkmal().setName(u"Messwert"_qs);
    document.IndirektesPrüfmerkmal().setFormelzeichen(u"M"_qs);
    document.IndirektesPrüfmerkmal().setEinheit(u"MN/m²"_qs);
}

inline std::unique_ptr<Kalibrierung> of(const std::vector<Field> &fields)
{
    auto document = fresh();
    setCharacteristics(*document);
    document->setPrüffelderAnzahl(static_cast<std::int32_t>(fields.size()));
    std::int32_t field = 0;
    for (const Field &values : fields) {
        ++field;
        document->setPrüffeldPrüfpunkte(field, static_cast<std::int32_t>(values.size()));
        document->setPrüffeldWert(field, 2.0 * field);
        std::int32_t point = 0;
        for (const auto &[direct, indirect] : values) {
            ++point;
            document->setMesswert(pmDirekt, field, point, direct);
            document->setMesswert(pmIndirekt, field, point, indirect);
        }
    }
    document->setIsDirty(false);
    return document;
}

/// Both characteristics grow with the passes: a good calibration.
inline std::unique_ptr<Kalibrierung> good()
{
    return of({{{94.8, 28.4}, {95.6, 31.2}, {95.1, 30.1}, {94.3, 26.9}},
               {{96.7, 37.8}, {97.4, 40.6}, {96.2, 36.1}, {97.0, 38.9}},
               {{98.1, 44.7}, {98.9, 47.2}, {97.8, 43.0}, {98.5, 46.4}}});
}

/// The points scatter: a coefficient of determination that is too small.
inline std::unique_ptr<Kalibrierung> critical()
{
    return of({{{24.1, 17.8}, {31.9, 14.2}, {27.5, 22.6}},
               {{38.6, 19.9}, {29.8, 27.0}, {41.2, 21.3}},
               {{36.4, 24.9}, {47.7, 20.1}, {33.3, 31.8}}});
}

/// The indirect characteristic falls where the direct one grows.
inline std::unique_ptr<Kalibrierung> negativeSlope()
{
    return of({{{94.8, -2.4}, {95.6, -3.2}, {95.1, -2.9}},
               {{96.7, -5.8}, {97.4, -6.6}, {96.2, -4.1}},
               {{98.1, -8.7}, {98.9, -9.2}, {97.8, -7.0}}});
}

inline std::unique_ptr<Kalibrierung> withoutUnit()
{
    auto document = good();
    document->IndirektesPrüfmerkmal().setEinheit(u" - "_qs);
    return document;
}

/// \a fields x \a points values that grow with the fields and repeat nowhere.
inline std::unique_ptr<Kalibrierung> grid(std::int32_t fields, std::int32_t points)
{
    std::vector<Field> all;
    for (std::int32_t field = 1; field <= fields; ++field) {
        Field values;
        for (std::int32_t point = 1; point <= points; ++point) {
            const double wave = ((field * 7 + point * 13) % 11 - 5) * 0.1;
            values.emplace_back(90.0 + field * 0.5 + point * 0.01 + wave,
                                20.0 + field * 2.0 + point * 0.05 + wave * 3.0);
        }
        all.push_back(values);
    }
    return of(all);
}

/// Names and remarks that need several lines wherever they stand.
inline std::unique_ptr<Kalibrierung> longTexts()
{
    auto document = good();
    document->DirektesPrüfmerkmal().setName(
        u"Verdichtungsgrad aus dem Vergleich der Trockendichte mit der Proctordichte"_qs);
    document->IndirektesPrüfmerkmal().setName(
        u"Donaudampfschifffahrtsgesellschaftskapitänsmützenabzeichenmesswert"_qs);
    document->setPrüffeldName(2, u"Bereich zwischen Baustraße und Böschung"_qs);
    document->setPrüfpunktName(3, u"neben dem Schacht an der Ostseite"_qs);
    document->DataStoreLet(
        u"Protokoll Verdichtung Kalibrierfeld Bemerkungen"_qs,
        u"Erste Zeile der Bemerkungen.\r\nZweite Zeile, die so lang ist, dass sie in ihrer Zelle "
        u"nicht in eine Zeile passt und umgebrochen wird.\n\nVierte Zeile."_qs);
    document->DataStoreLet(u"Protokoll Verdichtung Unterlage Bemerkungen"_qs,
                           u"EinWortOhneJedeTrennstelleDasBreiterIstAlsDieZelleInDerEsSteht"_qs);
    return document;
}

} // namespace documents
