#include "protocol/pages/fieldblocks.h"

#include "core/auswertung.h"
#include "core/baskalibrierungwendral.h"
#include "core/kalibrierung.h"
#include "protocol/pages/bands.h"
#include "protocol/pages/pageformat.h"
#include "protocol/pages/textrows.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

struct LabelAndKey
{
    QStringView label;
    QStringView key; ///< without the prefix; empty for a row without a value
};

constexpr std::array<LabelAndKey, 9> unterlageRows{{
    {u"Bodenart nach DIN 4022 bzw. DIN EN ISO 14688-1: ", u"Unterlage Bodenart DIN 4022"},
    {u"Bodenart nach DIN 18196: ", u"Unterlage Bodengruppe DIN 18196"},
    {u"Anzahl der Verdichtungsübergänge: ", u"Unterlage Anzahl Verdichtungsübergänge"},
    {u"Wassergehalt: ", u"Unterlage Wassergehalt"},
    {u"Trockendichte: ", u"Unterlage Trockendichte"},
    {u"Proctordichte: ", u"Unterlage Proctordichte"},
    {u"Verdichtungsgrad: ", u"Unterlage Verdichtungsgrad"},
    {u"Verformungsmodul EV2: ", u"Unterlage Verformungsmodul"},
    {u"Bemerkungen: ", u"Unterlage Bemerkungen"},
}};

constexpr std::array<LabelAndKey, 12> rowsAboveFields{{
    {u"Bodenart nach DIN 4022 bzw. DIN EN ISO 14688-1:", u"Kalibrierfeld Bodenart DIN 4022"},
    {u"Bodenart nach DIN 18196:", u"Kalibrierfeld Bodengruppe DIN 18196"},
    {u"Geometrische Abmessungen:", u"Kalibrierfeld Geometrie"},
    {u"Schütthöhe:", u"Kalibrierfeld Schütthöhe"},
    {u"Proctordichte:", u"Kalibrierfeld Proctordichte"},
    {u"Grenzwassergehalt für einen Verdichtungsgrad von:", u"Kalibrierfeld Grenzwassergehalt"},
    {u"optimaler Wassergehalt:", u"Kalibrierfeld optimaler Wassergehalt"},
    {u"verwendeter Walzentyp:", u"Kalibrierfeld Walzentyp"},
    {u"    Fahrgeschwindigkeit:", u"Kalibrierfeld Fahrgeschwindigkeit Walze"},
    {u"    Amplitude:", u"Kalibrierfeld Verdichtungsamplitude Walze"},
    {u"    Frequenz:", u"Kalibrierfeld Verdichtungsfrequenz Walze"},
    {u"Anzahl der Verdichtungsübergänge dynamisch/statisch im:", u""},
}};

constexpr std::array<LabelAndKey, 9> rowsBelowFields{{
    {u"Verdichtung am/bei", u""},
    {u"    Datum:", u"Kalibrierfeld Datum bei Verdichtung"},
    {u"    Witterung:", u"Kalibrierfeld Witterung bei Verdichtung"},
    {u"    Temperatur:", u"Kalibrierfeld Temperatur bei Verdichtung"},
    {u"Prüfung am/bei", u""},
    {u"    Datum:", u"Kalibrierfeld Datum bei Prüfung"},
    {u"    Witterung:", u"Kalibrierfeld Witterung bei Prüfung"},
    {u"    Temperatur:", u"Kalibrierfeld Temperatur bei Prüfung"},
    {u"Bemerkungen:", u"Kalibrierfeld Bemerkungen"},
}};

constexpr double labelWidthCm = 10.2; // the longest label on one line

std::vector<Column> labelAndValue()
{
    return {{0.0, labelWidthCm, Alignment::Left, 0.0},
            {labelWidthCm, contentWidthCm - labelWidthCm, Alignment::Left, 0.0}};
}

QString stored(const Kalibrierung &document, const QString &key)
{
    const Variant *value = document.DataStore().find(u"Protokoll Verdichtung "_qs + key);
    return value ? basKalibrierungWendral::VarToString(*value, document.values()) : QString();
}

RowTexts texts(const Kalibrierung &document, const LabelAndKey &row)
{
    return {{row.label.toString(),
             row.key.isEmpty() ? QString() : stored(document, row.key.toString())}};
}

RowTexts fieldTexts(const Kalibrierung &document, std::int32_t field)
{
    const QString number = QString::number(field);
    const QString key =
        u"Kalibrierfeld Kovariable (Anzahl der Verdichtungsübergänge) - Prüffeld "_qs + number;
    return {{u"    "_qs + number + u". Prüffeld"_qs, stored(document, key)}};
}

Block blockOf(const TextMeasure &measure, const QString &heading, std::int32_t count,
              TextRows::Texts rows)
{
    Block block;
    block.lead = tableHeading(measure, heading, true, 2);
    block.rows = std::make_unique<TextRows>(measure, labelAndValue(), count, std::move(rows));
    return block;
}

} // namespace

Block unterlageBlock(Kalibrierung &document, const TextMeasure &measure, const QString &number)
{
    return blockOf(measure, number + u".1 Unterlage"_qs, std::int32_t{std::size(unterlageRows)},
                   [&document](std::int32_t row) {
                       return texts(document, unterlageRows[static_cast<std::size_t>(row)]);
                   });
}

Block kalibrierfeldBlock(Kalibrierung &document, const TextMeasure &measure, const QString &number)
{
    constexpr std::int32_t above = std::size(rowsAboveFields);
    constexpr std::int32_t below = std::size(rowsBelowFields);
    const std::int32_t fields = std::max(document.PrüffelderAnzahl(), 0);
    if (fields > Auswertung::maximumPoints)
        throw RunTimeError(ErrorNumber::Overflow);
    return blockOf(
        measure, number + u".2 Kalibrierfeld"_qs, above + fields + below,
        [&document, fields](std::int32_t row) {
            if (row < above)
                return texts(document, rowsAboveFields[static_cast<std::size_t>(row)]);
            if (row < above + fields)
                return fieldTexts(document, row - above + 1);
            return texts(document, rowsBelowFields[static_cast<std::size_t>(row - above - fields)]);
        });
}
