#pragma once

#include "grid/cellrange.h"

#include <optional>

class QKeyEvent;

/// Where the current cell may go: the cells that are not fixed, and how many rows a page has.
struct GridExtent
{
    CellRange cells;
    int pageRows = 1;
};

/// Where a navigation key leads from \a cursor; none for any other key. Shift moves the far corner
/// of the selection, Ctrl goes to the edge.
std::optional<GridCursor> navigated(const QKeyEvent &event, const GridCursor &cursor,
                                    const GridExtent &extent);

/// The cell after or before \a cursor in reading order; none at the end.
std::optional<GridCursor> stepped(bool forward, const GridCursor &cursor, const CellRange &cells);
