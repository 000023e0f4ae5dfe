#include "grid/gridnavigation.h"

#include <QKeyEvent>

namespace {

struct Place
{
    int row;
    int col;
};

std::optional<Place> target(int key, bool toEdge, Place from, const GridExtent &extent)
{
    const CellRange &cells = extent.cells;
    switch (key) {
    case Qt::Key_Left:
        return Place{from.row, toEdge ? cells.firstCol : from.col - 1};
    case Qt::Key_Right:
        return Place{from.row, toEdge ? cells.lastCol : from.col + 1};
    case Qt::Key_Up:
        return Place{toEdge ? cells.firstRow : from.row - 1, from.col};
    case Qt::Key_Down:
        return Place{toEdge ? cells.lastRow : from.row + 1, from.col};
    case Qt::Key_Home:
        return Place{toEdge ? cells.firstRow : from.row, cells.firstCol};
    case Qt::Key_End:
        return Place{toEdge ? cells.lastRow : from.row, cells.lastCol};
    case Qt::Key_PageUp:
        return toEdge ? std::nullopt : std::optional(Place{from.row - extent.pageRows, from.col});
    case Qt::Key_PageDown:
        return toEdge ? std::nullopt : std::optional(Place{from.row + extent.pageRows, from.col});
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<GridCursor> navigated(const QKeyEvent &event, const GridCursor &cursor,
                                    const GridExtent &extent)
{
    const CellRange &cells = extent.cells;
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);
    const bool ctrl = modifiers.testFlag(Qt::ControlModifier);
    if ((modifiers & ~(Qt::ShiftModifier | Qt::ControlModifier)) || cells.rowCount() < 1 ||
        cells.colCount() < 1)
        return std::nullopt;
    if (event.key() == Qt::Key_A && ctrl && !shift)
        return GridCursor{cells.firstRow, cells.firstCol, cells.lastRow, cells.lastCol};

    const Place from = shift ? Place{cursor.rowSel, cursor.colSel} : Place{cursor.row, cursor.col};
    const std::optional<Place> to = target(event.key(), ctrl, from, extent);
    if (!to)
        return std::nullopt;
    const int row = std::clamp(to->row, cells.firstRow, cells.lastRow);
    const int col = std::clamp(to->col, cells.firstCol, cells.lastCol);
    return shift ? GridCursor{cursor.row, cursor.col, row, col} : GridCursor::at(row, col);
}

std::optional<GridCursor> stepped(bool forward, const GridCursor &cursor, const CellRange &cells)
{
    if (cells.rowCount() < 1 || cells.colCount() < 1)
        return std::nullopt;
    int row = cursor.row;
    int col = cursor.col + (forward ? 1 : -1);
    if (col > cells.lastCol) {
        col = cells.firstCol;
        ++row;
    } else if (col < cells.firstCol) {
        col = forward ? cells.firstCol : cells.lastCol;
        row -= forward ? 0 : 1;
    }
    if (row < cells.firstRow && forward)
        return GridCursor::at(cells.firstRow, cells.firstCol);
    if (row < cells.firstRow || row > cells.lastRow)
        return std::nullopt;
    return GridCursor::at(row, col);
}
