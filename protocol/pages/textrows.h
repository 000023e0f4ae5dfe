#pragma once

#include "protocol/pages/blockflow.h"
#include "protocol/pages/cells.h"

#include <QString>

#include <functional>
#include <vector>

/// The texts of one row, as many as there are columns.
struct RowTexts
{
    std::vector<QString> texts;
    bool isEquation = false; ///< stands at the left and breaks between its parts only
};

/// Rows of texts, each with a fine rule below it. A row higher than a page is cut between lines.
class TextRows : public RowSource
{
public:
    /// Row number \a row, counted from 0.
    using Texts = std::function<RowTexts(std::int32_t row)>;

    /// \a measure is borrowed. \a columns belong to the cells in their order.
    TextRows(const TextMeasure &measure, std::vector<Column> columns, std::int32_t count,
             Texts texts, QChar decimalPoint = u',');

    bool atEnd(const RowPosition &position) const override { return position.row >= m_count; }
    RowGroup group(const RowPosition &position, bool first, double mostHeight) override;

private:
    const std::vector<Cell> &cellsOf(std::int32_t row);

    const TextMeasure &m_measure;
    std::vector<Column> m_columns;
    std::int32_t m_count;
    Texts m_texts;
    QChar m_decimalPoint;
    std::int32_t m_cellsRow = -1; ///< whose cells are kept: a long row is asked for page by page
    std::vector<Cell> m_cells;
};
