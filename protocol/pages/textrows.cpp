#include "protocol/pages/textrows.h"

#include "protocol/pages/pageformat.h"

#include <algorithm>
#include <utility>

TextRows::TextRows(const TextMeasure &measure, std::vector<Column> columns, std::int32_t count,
                   Texts texts, QChar decimalPoint)
    : m_measure(measure)
    , m_columns(std::move(columns))
    , m_count(count)
    , m_texts(std::move(texts))
    , m_decimalPoint(decimalPoint)
{
}

const std::vector<Cell> &TextRows::cellsOf(std::int32_t row)
{
    if (m_cellsRow == row)
        return m_cells;
    const RowTexts content = m_texts(row);
    m_cells.clear();
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        Column column = m_columns[i];
        if (content.isEquation)
            column.alignment = Alignment::Left;
        const auto make = content.isEquation ? &unbrokenWordsCell : &cellOf;
        m_cells.push_back(make(m_measure, column, content.texts[i], *protocolStyle(false, 0)));
    }
    m_cellsRow = row;
    return m_cells;
}

RowGroup TextRows::group(const RowPosition &position, bool, double mostHeight)
{
    const double lineHeight = m_measure.lineHeight(*protocolStyle(false, 0));
    const auto most =
        static_cast<std::ptrdiff_t>(std::max(1.0, (mostHeight - 2 * rowPaddingCm) / lineHeight));
    RowGroup group;
    std::ptrdiff_t shown = 1;
    bool more = false;
    for (const Cell &cell : cellsOf(position.row)) {
        const auto &lines = cell.text.lines;
        const auto count = static_cast<std::ptrdiff_t>(lines.size());
        const std::ptrdiff_t from = std::min<std::ptrdiff_t>(position.part, count);
        const std::ptrdiff_t to = std::min(from + most, count);
        more = more || to < count;
        shown = std::max(shown, to - from);
        const Cell part{cell.column, {{lines.begin() + from, lines.begin() + to}, cell.text.style}};
        drawCell(group.drawing, m_measure, part, -rowPaddingCm, m_decimalPoint);
    }
    const double height = lineHeight * static_cast<double>(shown) + 2 * rowPaddingCm;
    drawRule(group.drawing, 0.0, contentWidthCm, -height, fineRuleCm);
    group.drawing.reserve(height);
    group.next = more ? RowPosition{position.row, position.part + static_cast<std::int32_t>(most)}
                      : RowPosition{position.row + 1, 0};
    return group;
}
