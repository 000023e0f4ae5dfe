#include "grid/gridview.h"

#include "grid/gridcontrol.h"
#include "grid/gridheader.h"
#include "grid/gridmodel.h"
#include "grid/gridnavigation.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTimerEvent>

namespace {

constexpr int autoScrollMs = 50;

CellRange freeCells(const GridControl &grid)
{
    return {grid.fixedRows(), grid.rows() - 1, grid.fixedCols(), grid.cols() - 1};
}

} // namespace

GridView::GridView(GridControl &grid) : QTableView(&grid), m_grid(grid)
{
    setHorizontalHeader(new GridHeader(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false);
    setAutoScroll(false);
    setWordWrap(false);
    // By rows, the view is pushed up to the last row's edge at the end, and a row appended by a
    // click elsewhere would let the cells jump away under the mouse.
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setCornerButtonEnabled(false);
    setFrameShape(NoFrame);
}

bool GridView::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool back = key->key() == Qt::Key_Backtab ||
                          (key->key() == Qt::Key_Tab && key->modifiers() == Qt::ShiftModifier);
        const bool plain = !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        const QPointer<GridView> self(this);
        if (plain && (back || key->key() == Qt::Key_Tab) && m_grid.stepCell(!back)) {
            if (self)
                m_grid.ensureVisible(m_grid.row(), m_grid.col());
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

void GridView::keyPressEvent(QKeyEvent *event)
{
    const QPointer<GridView> self(this);
    event->ignore();
    emit m_grid.keyPressed(event);
    if (!self || event->isAccepted())
        return;
    if (isLeavingByCtrlTab(*event)) {
        event->accept();
        return;
    }
    const std::optional<GridCursor> target =
        navigated(*event, m_grid.cursorCells(), {freeCells(m_grid), pageRows()});
    if (!target) {
        event->ignore();
        return;
    }
    event->accept();
    m_grid.setCursorCells(*target);
    if (self && event->key() != Qt::Key_A)
        m_grid.ensureVisible(target->rowSel, target->colSel);
}

bool GridView::isLeavingByCtrlTab(const QKeyEvent &event)
{
    // Tab walks the cells, thousands of them: this is the way out by key.
    const bool tab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    const Qt::KeyboardModifiers without = event.modifiers() & ~Qt::ShiftModifier;
    return tab && without == Qt::ControlModifier &&
           focusNextPrevChild(!event.modifiers().testFlag(Qt::ShiftModifier));
}

void GridView::inputMethodEvent(QInputMethodEvent *event)
{
    event->ignore();
    emit m_grid.textComposed(event);
}

QVariant GridView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImCursorRectangle)
        return m_grid.cellRect(m_grid.row(), m_grid.col()).translated(-pos());
    return QTableView::inputMethodQuery(query);
}

void GridView::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) {
        event->ignore();
        return;
    }
    const int row = m_grid.model()->gridRow(index);
    m_draggingRows = index.column() < m_grid.fixedCols();
    const int col = m_draggingRows ? m_grid.fixedCols() : index.column();
    const int colSel = m_draggingRows ? m_grid.cols() - 1 : index.column();
    m_dragging = true;
    const QPointer<GridView> self(this);
    if (event->modifiers().testFlag(Qt::ShiftModifier))
        m_grid.setCursorCells({m_grid.row(), m_draggingRows ? col : m_grid.col(), row, colSel});
    else
        m_grid.setCursorCells({row, col, row, colSel});
    if (self)
        m_grid.ensureVisible(row, m_draggingRows ? -1 : col);
}

void GridView::mouseMoveEvent(QMouseEvent *event)
{
    // A release can have gone to a window that the press has opened.
    if (!event->buttons().testFlag(Qt::LeftButton))
        endDrag();
    if (!m_dragging)
        return;
    const QPoint position = event->position().toPoint();
    if (viewport()->rect().contains(position))
        m_autoScroll.stop();
    else if (!m_autoScroll.isActive())
        m_autoScroll.start(autoScrollMs, this);
    dragTo(position);
}

void GridView::mouseReleaseEvent(QMouseEvent *)
{
    endDrag();
}

void GridView::endDrag()
{
    m_dragging = false;
    m_autoScroll.stop();
}

void GridView::dragTo(QPoint position)
{
    const CellRange cells = freeCells(m_grid);
    if (cells.rowCount() < 1 || cells.colCount() < 1)
        return;
    const QRect inner = viewport()->rect();
    int row = rowAt(qBound(inner.top(), position.y(), inner.bottom()));
    int col = columnAt(qBound(inner.left(), position.x(), inner.right()));
    row = row < 0 ? cells.lastRow : row + cells.firstRow;
    col = m_draggingRows || col < 0 ? cells.lastCol : qMax(col, cells.firstCol);
    // Outside of the view each move or tick goes one cell further.
    if (position.y() < inner.top())
        row = qMax(row - 1, cells.firstRow);
    else if (position.y() > inner.bottom())
        row = qMin(row + 1, cells.lastRow);
    if (!m_draggingRows && position.x() < inner.left())
        col = qMax(col - 1, cells.firstCol);
    else if (!m_draggingRows && position.x() > inner.right())
        col = qMin(col + 1, cells.lastCol);
    const QPointer<GridView> self(this);
    m_grid.setCursorCells({m_grid.row(), m_grid.col(), row, col});
    if (self)
        m_grid.ensureVisible(row, m_draggingRows ? -1 : col);
}

void GridView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_autoScroll.timerId())
        QTableView::timerEvent(event);
    else if (!QGuiApplication::mouseButtons().testFlag(Qt::LeftButton))
        endDrag();
    else
        dragTo(viewport()->mapFromGlobal(QCursor::pos()));
}

void GridView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) {
        event->ignore();
        return;
    }
    endDrag();
    if (index.column() < m_grid.fixedCols())
        return;
    const int row = m_grid.model()->gridRow(index);
    const QPointer<GridView> self(this);
    m_grid.setCell(row, index.column());
    if (self)
        emit m_grid.cellDoubleClicked(row, index.column());
}

void GridView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    emit resized();
}

void GridView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    emit scrolled();
}

int GridView::pageRows() const
{
    const int height = qMax(1, verticalHeader()->defaultSectionSize());
    return qMax(1, viewport()->height() / height - 1);
}
