#include "protocol/pages/cells.h"

#include "protocol/pages/pageformat.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace {

constexpr QRgb fineRuleColour = qRgb(150, 150, 150);

// Width of what ends at the number edge, of a line that is \a lineWidth wide.
double numberWidth(const TextMeasure &measure, const QString &line, double lineWidth,
                   const Cell &cell, QChar decimalPoint)
{
    qsizetype end = line.indexOf(u' ');
    if (end < 0)
        end = line.size();
    if (cell.column.alignment == Alignment::Decimal) {
        const qsizetype point = line.indexOf(decimalPoint);
        if (point >= 0 && point < end)
            end = point;
    }
    return end == line.size() ? lineWidth : measure.width(line.left(end), cell.text.style);
}

// A text that would leave the cell is moved back into it.
double leftEnd(const TextMeasure &measure, const QString &line, double lineWidth, const Cell &cell,
               QChar decimalPoint)
{
    const Column &column = cell.column;
    const double first = column.textLeft();
    if (column.alignment == Alignment::Left)
        return first;
    const double last = column.left + column.width - cellPaddingCm - lineWidth;
    if (column.alignment == Alignment::Centre)
        return column.left + (column.width - lineWidth) / 2;
    const double wanted =
        column.left + column.numberEdge - numberWidth(measure, line, lineWidth, cell, decimalPoint);
    return std::max(first, std::min(wanted, last));
}

} // namespace

FittedText fittedText(const TextMeasure &measure, const QString &text, TextStyle style,
                      double widthCm, int mostLines)
{
    FittedText result{measure.lines(text, style, widthCm), style};
    while (static_cast<int>(result.lines.size()) > mostLines && result.style.pixelSize > 1) {
        result.style.pixelSize = std::max(1, result.style.pixelSize * 4 / 5);
        result.lines = measure.lines(text, result.style, widthCm);
    }
    return result;
}

double Column::textLeft() const
{
    return left > 0.0 ? left + cellPaddingCm : left;
}

double Column::textWidth() const
{
    return left + width - cellPaddingCm - textLeft();
}

double Cell::height(const TextMeasure &measure) const
{
    return measure.lineHeight(text.style) * static_cast<double>(text.lines.size());
}

Cell cellOf(const TextMeasure &measure, const Column &column, const QString &text,
            const TextStyle &style)
{
    const double width = column.textWidth();
    if (!column.holdsNumbers())
        return {column, {measure.lines(text, style, width), style}};
    const TextStyle leastReadable = styleOfPoints(7);
    TextStyle used = measure.shrunk(text, style, width);
    if (used.pixelSize < leastReadable.pixelSize)
        used = measure.shrunk(text.section(u' ', 0, 0), style, width);
    return {column, {measure.lines(text, used, width), used}};
}

Cell unbrokenWordsCell(const TextMeasure &measure, const Column &column, const QString &text,
                       const TextStyle &style)
{
    const double width = column.textWidth();
    TextStyle used = style;
    for (const QString &word : text.split(u' '))
        used = measure.shrunk(word, used, width);
    return {column, {measure.lines(text, used, width), used}};
}

Cell fittedCell(const TextMeasure &measure, const Column &column, const QString &text,
                const TextStyle &style, int mostLines)
{
    return {column, fittedText(measure, text, style, column.textWidth(), mostLines)};
}

void drawCell(Drawing &drawing, const TextMeasure &measure, const Cell &cell, double top,
              QChar decimalPoint)
{
    const TextStyle &style = cell.text.style;
    // A number that had to get smaller stands on its row's baseline.
    const TextStyle &first = cell.column.holdsNumbers() ? *protocolStyle(false, 0) : style;
    double baseline = top - measure.ascent(first);
    for (std::size_t i = 0; i < cell.text.lines.size(); ++i) {
        const QString &line = cell.text.lines[i];
        if (!line.isEmpty()) {
            PlacedText placed = measure.placed(line, {}, style);
            const bool isRestOfUnit = i > 0 && cell.column.holdsNumbers();
            const double left = isRestOfUnit
                                    ? cell.column.textLeft()
                                    : leftEnd(measure, line, placed.width, cell, decimalPoint);
            placed.at = {left, baseline};
            measure.add(drawing, std::move(placed));
        }
        baseline -= measure.lineHeight(style);
    }
}

Drawing headerRow(const TextMeasure &measure, std::span<const Cell> cells)
{
    double height = 0.0;
    for (const Cell &cell : cells)
        height = std::max(height, cell.height(measure));
    Drawing row;
    for (const Cell &cell : cells)
        drawCell(row, measure, cell, -rowPaddingCm - height + cell.height(measure));
    const double bottom = -height - 2 * rowPaddingCm;
    drawRule(row, 0.0, contentWidthCm, 0.0, strongRuleCm);
    drawRule(row, 0.0, contentWidthCm, bottom, strongRuleCm);
    return row;
}

void drawRule(Drawing &drawing, double left, double right, double y, double width)
{
    const QRgb colour = width < strongRuleCm ? fineRuleColour : qRgb(0, 0, 0);
    drawing.add(PlacedLine{{left, y}, {right, y}, width, colour});
}
