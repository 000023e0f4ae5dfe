#pragma once

#include "grid/gridcontrol.h"

#include <QPointer>

/// Switches a grid's redraw off, and back to what it was, unless the grid is gone by then.
class RedrawHold
{
public:
    explicit RedrawHold(GridControl *grid) : m_grid(grid), m_before(grid->redraw())
    {
        grid->setRedraw(false);
    }
    ~RedrawHold()
    {
        if (m_grid)
            m_grid->setRedraw(m_before);
    }
    Q_DISABLE_COPY_MOVE(RedrawHold)

private:
    QPointer<GridControl> m_grid;
    bool m_before;
};
