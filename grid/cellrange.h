#pragma once

#include <algorithm>

/// A block of cells, bounds included; first <= last in both directions.
struct CellRange
{
    int firstRow = 0;
    int lastRow = 0;
    int firstCol = 0;
    int lastCol = 0;

    int rowCount() const { return lastRow - firstRow + 1; }
    int colCount() const { return lastCol - firstCol + 1; }
    /// Given bounds can leave nothing of a range.
    bool isEmpty() const { return rowCount() < 1 || colCount() < 1; }
    bool operator==(const CellRange &) const = default;
};

/// The current cell and the far corner of the selection that starts at it, counted with the fixed
/// rows and columns. The current cell is the one where a selection began and an edit would open.
struct GridCursor
{
    int row = 0;
    int col = 0;
    int rowSel = 0;
    int colSel = 0;

    static GridCursor at(int row, int col) { return {row, col, row, col}; }
    CellRange range() const
    {
        return {std::min(row, rowSel), std::max(row, rowSel), std::min(col, colSel),
                std::max(col, colSel)};
    }
    bool operator==(const GridCursor &) const = default;
};
