#include "protocol/pages/valuerows.h"

#include "core/auswertung.h"
#include "core/kalibrierung.h"
#include "protocol/pages/bands.h"
#include "protocol/pages/pageformat.h"

#include <algorithm>

namespace {

constexpr int mostCellLines = 8;
constexpr int mostHeaderLines = 12;

// Numbers end at an edge that puts a number of four digits and its decimal places under the middle
// of the header, whatever values follow further down.
double numberEdge(const Kalibrierung &document, const TextMeasure &measure, const Column &column,
                  std::int32_t decimals)
{
    constexpr double typical = 1000.0;
    const double width =
        measure.width(document.values().display(typical, decimals), *protocolStyle(false, 0));
    return std::min((column.width + width) / 2, column.width - cellPaddingCm);
}

std::array<Column, 4> columnsFor(Kalibrierung &document, const TextMeasure &measure)
{
    std::array<Column, 4> columns{{{0.0, 3.5, Alignment::Left, 0.0},
                                   {3.5, 2.9, Alignment::Left, 0.0},
                                   {6.4, 5.2, Alignment::Number, 0.0},
                                   {11.6, 5.2, Alignment::Number, 0.0}}};
    columns[2].numberEdge = numberEdge(document, measure, columns[2],
                                       document.IndirektesPrüfmerkmal().Nachkommastellen());
    columns[3].numberEdge = numberEdge(document, measure, columns[3],
                                       document.DirektesPrüfmerkmal().Nachkommastellen());
    return columns;
}

QString characteristicHead(const QString &kind, const Prüfmerkmal &merkmal)
{
    return kind + merkmal.Bezeichung() + u'\n' + u'[' + merkmal.Einheit() + u']';
}

} // namespace

Block messwerteBlock(Kalibrierung &document, const TextMeasure &measure, const QString &heading)
{
    if (document.PrüfpunkteTotal() > Auswertung::maximumPoints ||
        document.PrüffelderAnzahl() > Auswertung::maximumPoints)
        throw RunTimeError(ErrorNumber::Overflow);
    const std::array<Column, 4> columns = columnsFor(document, measure);
    const std::array<QString, 4> heads{
        u"Prüffeld\nNr."_qs, u"Prüfpunkt\nNr."_qs,
        characteristicHead(u"Indirektes Prüfmerkmal "_qs, document.IndirektesPrüfmerkmal()),
        characteristicHead(u"Direktes Prüfmerkmal "_qs, document.DirektesPrüfmerkmal())};
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Column column = columns[i];
        if (column.alignment == Alignment::Number)
            column.alignment = Alignment::Centre;
        cells.push_back(
            fittedCell(measure, column, heads[i], *protocolStyle(false, 1), mostHeaderLines));
    }
    Block block;
    block.lead = tableHeading(measure, heading, true, 1);
    block.header = headerRow(measure, cells);
    block.rows = std::make_unique<ValueRows>(document, measure, columns);
    return block;
}

ValueRows::ValueRows(Kalibrierung &document, const TextMeasure &measure,
                     std::array<Column, 4> columns)
    : m_document(document)
    , m_measure(measure)
    , m_columns(columns)
    , m_fields(document.PrüffelderAnzahl())
{
}

bool ValueRows::atEnd(const RowPosition &position) const
{
    return position.row >= m_fields;
}

std::int32_t ValueRows::pointsOf(std::int32_t field) const
{
    return std::max(m_document.PrüffeldPrüfpunkte(field), 0);
}

const Cell &ValueRows::fieldCell(std::int32_t field)
{
    if (m_fieldCellOf == field)
        return m_fieldCell;
    const QString text = u"Prüffeld "_qs + QString::number(field) + u"\nKovariable "_qs +
                         m_document.Kovariable().Formelzeichen() + u" = "_qs +
                         m_document.values().text(m_document.PrüffeldWert(field));
    m_fieldCell =
        fittedCell(m_measure, m_columns[0], text, *protocolStyle(false, 0), mostCellLines);
    m_fieldCellOf = field;
    return m_fieldCell;
}

double ValueRows::drawRow(Drawing &drawing, std::int32_t field, std::int32_t point, double top)
{
    const TextStyle style = *protocolStyle(false, 0);
    const std::array<QString, 3> texts{m_document.PrüfpunktName(point),
                                       m_document.MesswertString(pmIndirekt, field, point),
                                       m_document.MesswertString(pmDirekt, field, point)};
    double height = m_measure.lineHeight(style);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Column &column = m_columns[i + 1];
        const Cell cell = column.holdsNumbers()
                              ? cellOf(m_measure, column, texts[i], style)
                              : fittedCell(m_measure, column, texts[i], style, mostCellLines);
        drawCell(drawing, m_measure, cell, top - rowPaddingCm);
        height = std::max(height, cell.height(m_measure));
    }
    return height + 2 * rowPaddingCm;
}

// A group is as many rows as the field's header cell needs beside it, else one row; for a field
// without points the header cell alone.
RowGroup ValueRows::group(const RowPosition &position, bool first, double)
{
    const std::int32_t field = position.row + 1;
    std::int32_t point = position.part + 1;
    const std::int32_t points = pointsOf(field);
    RowGroup group;
    double needed = 0.0;
    if (first || point == 1) {
        const Cell &cell = fieldCell(field);
        drawCell(group.drawing, m_measure, cell, -rowPaddingCm);
        needed = cell.height(m_measure) + 2 * rowPaddingCm;
    }
    group.rows = 0;
    double height = 0.0;
    while (point <= points && (group.rows == 0 || height < needed)) {
        if (group.rows > 0)
            drawRule(group.drawing, m_columns[1].left, contentWidthCm, -height, fineRuleCm);
        height += drawRow(group.drawing, field, point, -height);
        ++point;
        ++group.rows;
    }
    group.rows = std::max(group.rows, 1);
    height = std::max(height, needed);
    const double left = point > points ? 0.0 : m_columns[1].left;
    drawRule(group.drawing, left, contentWidthCm, -height, fineRuleCm);
    group.drawing.reserve(height);
    group.next = point > points ? RowPosition{field, 0} : RowPosition{field - 1, point - 1};
    return group;
}
