#include "protocol/pages/resultblocks.h"

#include "core/kalibrierung.h"
#include "protocol/pages/bands.h"
#include "protocol/pages/cells.h"
#include "protocol/pages/diagram.h"
#include "protocol/pages/pageformat.h"
#include "protocol/pages/textrows.h"

#include <array>
#include <utility>
#include <vector>

namespace {

using Row = std::array<QString, 2>;

const QString failedText = u"(Fehler)"_qs; // the document's for what can't be computed

constexpr double statisticLabelCm = 11.4;
constexpr double statisticNumberEdgeCm = 2.2;

constexpr double lineLabelCm = 3.2;
constexpr double lineDirectionCm = 6.8;
constexpr double lineNumberEdgeCm = 1.6;

QString label(Kalibrierung &document, MerkmalEnum merkmal)
{
    const QString description = u" ("_qs + merkmalOf(document, merkmal).Bezeichung() + u')';
    switch (merkmal) {
    case mDirekt:
        return u"direktes Prüfmerkmal"_qs + description;
    case mIndirekt:
        return u"indirektes Prüfmerkmal"_qs + description;
    case mZ:
        break;
    }
    return u"Kovariable"_qs + description;
}

const QString &label(const MerkmalPair &pair)
{
    static const std::array<QString, 3> texts{u"direktes und indirektes Prüfmerkmal"_qs,
                                              u"direktes Prüfmerkmal und Kovariable"_qs,
                                              u"indirektes Prüfmerkmal und Kovariable"_qs};
    return texts[static_cast<std::size_t>(pair.first + pair.second - 1)];
}

QString followedBy(const QString &value, const QString &before, const QString &unit,
                   const QString &after)
{
    return unit.isEmpty() ? value : value + before + unit + after;
}

Block statisticBlock(Kalibrierung &document, const TextMeasure &measure, const QString &caption,
                     std::vector<Row> rows)
{
    const auto count = static_cast<std::int32_t>(rows.size());
    const std::vector<Column> columns{{0.0, statisticLabelCm, Alignment::Left, 0.0},
                                      {statisticLabelCm, contentWidthCm - statisticLabelCm,
                                       Alignment::Number, statisticNumberEdgeCm}};
    Block block;
    block.lead = tableHeading(measure, caption, false, 1);
    block.rows = std::make_unique<TextRows>(
        measure, columns, count,
        [rows = std::move(rows)](std::int32_t row) {
            const Row &texts = rows[static_cast<std::size_t>(row)];
            return RowTexts{{texts[0], texts[1]}};
        },
        document.values().decimalPoint());
    return block;
}

template <typename Value>
Block pairsBlock(Kalibrierung &document, const TextMeasure &measure, const QString &caption,
                 Value value)
{
    std::vector<Row> rows;
    for (const MerkmalPair &pair : protocolPairs)
        rows.push_back({label(pair), value(pair)});
    return statisticBlock(document, measure, caption, std::move(rows));
}

QString functionHead(const QString &dependent, const QString &independent)
{
    return dependent + u" = f("_qs + independent + u')';
}

// One direction of the regression: the texts below its function head.
std::array<QString, 3> directionTexts(Kalibrierung &document, MerkmalEnum dependent,
                                      MerkmalEnum independent)
{
    const QString a =
        document.StatistikKalibriergeradeAchsenabschnittString(dependent, independent);
    const QString b = document.StatistikKalibriergeradeAnstiegString(dependent, independent);
    const QString unit = a == failedText ? QString() : shownUnit(document, dependent);
    return {followedBy(a, u" ["_qs, unit, u"]"_qs), b,
            equationText(merkmalOf(document, dependent).Formelzeichen(), a, b,
                         merkmalOf(document, independent).Formelzeichen())};
}

} // namespace

QString shownUnit(Kalibrierung &document, MerkmalEnum merkmal)
{
    const QString unit = merkmalOf(document, merkmal).Einheit();
    return unit.trimmed() == u"-"_qs ? QString() : unit;
}

Block mittelwerteBlock(Kalibrierung &document, const TextMeasure &measure)
{
    std::vector<Row> rows;
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ})
        rows.push_back(
            {label(document, merkmal), followedBy(document.StatistikMittelwertString(merkmal),
                                                  u" "_qs, shownUnit(document, merkmal), {})});
    return statisticBlock(document, measure, u"Mittelwerte"_qs, std::move(rows));
}

// The covariable's variance and standard deviation stand without a unit.
Block varianzenBlock(Kalibrierung &document, const TextMeasure &measure)
{
    std::vector<Row> rows;
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        const QString unit = merkmal == mZ ? QString() : shownUnit(document, merkmal);
        rows.push_back(
            {label(document, merkmal),
             followedBy(document.StatistikVarianzString(merkmal), u" ("_qs, unit, u")²"_qs)});
    }
    return statisticBlock(document, measure, u"Varianzen"_qs, std::move(rows));
}

Block standardabweichungenBlock(Kalibrierung &document, const TextMeasure &measure)
{
    std::vector<Row> rows;
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        const QString unit = merkmal == mZ ? QString() : shownUnit(document, merkmal);
        rows.push_back(
            {label(document, merkmal),
             followedBy(document.StatistikStandardabweichungString(merkmal), u" "_qs, unit, {})});
    }
    return statisticBlock(document, measure, u"Standardabweichungen"_qs, std::move(rows));
}

Block kovarianzenBlock(Kalibrierung &document, const TextMeasure &measure)
{
    return pairsBlock(document, measure, u"Kovarianzen"_qs, [&](const MerkmalPair &pair) {
        return document.StatistikKovarianzString(pair.first, pair.second);
    });
}

Block bestimmtheitsmasseBlock(Kalibrierung &document, const TextMeasure &measure)
{
    return pairsBlock(document, measure, u"Bestimmtheitsmaße"_qs, [&](const MerkmalPair &pair) {
        return document.StatistikBestimmtheitsmaßString(pair.first, pair.second);
    });
}

QString equationText(const QString &dependent, const QString &intercept, const QString &slope,
                     const QString &independent)
{
    if (intercept == failedText || slope == failedText)
        return failedText;
    const bool negative = slope.startsWith(u'-');
    return dependent + u" = "_qs + intercept + (negative ? u" - "_qs : u" + "_qs) +
           (negative ? slope.sliced(1) : slope) + u" * "_qs + independent;
}

Block kalibriergeradeBlock(Kalibrierung &document, const TextMeasure &measure,
                           const MerkmalPair &pair)
{
    const QString first = merkmalOf(document, pair.first).Formelzeichen();
    const QString second = merkmalOf(document, pair.second).Formelzeichen();
    const std::array<QString, 3> forward = directionTexts(document, pair.second, pair.first);
    const std::array<QString, 3> backward = directionTexts(document, pair.first, pair.second);
    const std::array<QString, 3> labels{u"Achsenabschnitt a"_qs, u"Anstieg b"_qs, u"Gleichung"_qs};

    const std::vector<Column> columns{
        {0.0, lineLabelCm, Alignment::Left, 0.0},
        {lineLabelCm, lineDirectionCm, Alignment::Decimal, lineNumberEdgeCm},
        {lineLabelCm + lineDirectionCm, lineDirectionCm, Alignment::Decimal, lineNumberEdgeCm}};
    constexpr int mostHeaderLines = 6;
    std::vector<Cell> heads;
    for (const auto &[column, text] : {std::pair{columns[1], functionHead(second, first)},
                                       std::pair{columns[2], functionHead(first, second)}}) {
        Column left = column;
        left.alignment = Alignment::Left;
        heads.push_back(fittedCell(measure, left, text, *protocolStyle(false, 1), mostHeaderLines));
    }

    Block block;
    block.lead = tableHeading(
        measure, u"Kalibriergerade zwischen "_qs + first + u" und "_qs + second, true, 2);
    block.header = headerRow(measure, heads);
    block.rows = std::make_unique<TextRows>(
        measure, columns, std::int32_t{3},
        [=](std::int32_t row) {
            const auto i = static_cast<std::size_t>(row);
            const bool isEquation = i == 2;
            return RowTexts{{labels[i], forward[i], backward[i]}, isEquation};
        },
        document.values().decimalPoint());
    block.tail = diagramDrawing(diagramData(document, pair.first, pair.second), measure);
    return block;
}
