#include "grid/gridcontrol.h"

#include "grid/griddelegate.h"
#include "grid/gridmodel.h"
#include "grid/gridnavigation.h"
#include "grid/gridview.h"

#include <QEvent>
#include <QHeaderView>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <numeric>

namespace {
constexpr int rowPadding = 8; ///< a row is this much higher than its text
}

GridControl::GridControl(QWidget *parent)
    : QFrame(parent)
    , m_model(new GridModel(this))
    , m_view(new GridView(*this))
    , m_cursor(GridCursor::at(1, 0))
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setFocusProxy(m_view);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    m_view->setItemDelegate(new GridDelegate(*m_model, m_cursor, this));
    m_view->setModel(m_model);
    applyRowHeight();

    connect(m_view, &GridView::resized, this, [this] {
        applyColumnWeights();
        emit cellsMoved();
    });
    connect(m_view, &GridView::scrolled, this, &GridControl::cellsMoved);
    connect(m_view->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this] { emit cellsMoved(); });
    // After the view, so that its sections are up to date.
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &GridControl::clampCursor);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &GridControl::clampCursor);
    connect(m_model, &QAbstractItemModel::columnsInserted, this, &GridControl::clampCursor);
    connect(m_model, &QAbstractItemModel::columnsRemoved, this, &GridControl::clampCursor);
    connect(m_model, &QAbstractItemModel::modelReset, this, &GridControl::clampCursor);
    clampCursor();
}

GridControl::~GridControl()
{
    emit aboutToBeDestroyed();
}

int GridControl::rows() const
{
    return m_model->rows();
}

void GridControl::setRows(int rows)
{
    m_model->setRows(rows);
}

void GridControl::setSourcedRows(int rows, std::function<QStringList(int row)> source)
{
    m_model->setSourcedRows(rows, std::move(source));
}

int GridControl::cols() const
{
    return m_model->cols();
}

void GridControl::setCols(int cols)
{
    m_model->setCols(cols);
}

int GridControl::fixedRows() const
{
    return m_model->fixedRows();
}

void GridControl::setFixedRows(int rows)
{
    m_model->setFixedRows(rows);
    m_view->horizontalHeader()->setVisible(fixedRows() > 0);
}

int GridControl::fixedCols() const
{
    return m_model->fixedCols();
}

void GridControl::setFixedCols(int cols)
{
    m_model->setFixedCols(cols);
}

bool GridControl::isFixed(int row, int col) const
{
    return m_model->isFixed(row, col);
}

QString GridControl::textMatrix(int row, int col) const
{
    return m_model->text(row, col);
}

void GridControl::setTextMatrix(int row, int col, const QString &text)
{
    m_model->setText(row, col, text);
}

QString GridControl::rangeText(const CellRange &range, const QString &colTerminator,
                               const QString &rowTerminator) const
{
    QString text;
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        for (int col = range.firstCol; col <= range.lastCol; ++col)
            text += (col > range.firstCol ? colTerminator : QString()) + textMatrix(row, col);
        text += rowTerminator;
    }
    return text;
}

void GridControl::addItem(const QString &line, int row)
{
    m_model->insertRows(row < 0 ? rows() : row, {line.split(u'\t')});
}

void GridControl::insertRows(int row, const QList<QStringList> &lines)
{
    m_model->insertRows(row, lines);
}

void GridControl::removeItem(int row)
{
    m_model->removeRow(row);
}

void GridControl::setRow(int row)
{
    setCell(row, m_cursor.col);
}

void GridControl::setCol(int col)
{
    setCell(m_cursor.row, col);
}

void GridControl::setCell(int row, int col)
{
    setCursorCells(GridCursor::at(row, col));
}

void GridControl::setRowSel(int row)
{
    setCursorCells({m_cursor.row, m_cursor.col, row, m_cursor.colSel});
}

void GridControl::setColSel(int col)
{
    setCursorCells({m_cursor.row, m_cursor.col, m_cursor.rowSel, col});
}

void GridControl::setCursorCells(const GridCursor &cursor)
{
    if (m_model->contains(cursor.row, cursor.col) &&
        m_model->contains(cursor.rowSel, cursor.colSel) && cursor != m_cursor)
        applyCursor(cursor);
}

void GridControl::applyCursor(const GridCursor &cursor)
{
    const QPointer<GridControl> self(this);
    const GridCursor before = m_cursor;
    m_cursor = cursor;
    if (m_redraw) {
        const CellRange range = cursor.range();
        const QItemSelection cells(
            m_model->cell(std::max(range.firstRow, fixedRows()), range.firstCol),
            m_model->cell(range.lastRow, range.lastCol));
        QItemSelectionModel *selection = m_view->selectionModel();
        selection->setCurrentIndex(m_model->cell(cursor.row, cursor.col),
                                   QItemSelectionModel::NoUpdate);
        selection->select(cells, QItemSelectionModel::ClearAndSelect);
    }
    if (before.row != cursor.row || before.col != cursor.col)
        emit currentCellChanged(m_cursor.row, m_cursor.col);
    if (self && before != cursor)
        emit selectionChanged();
}

void GridControl::clampCursor()
{
    const QPointer<GridControl> self(this);
    const auto clamped = [](int value, int fixed, int count) {
        return std::max(0, std::clamp(value, std::min(fixed, count - 1), count - 1));
    };
    applyCursor({clamped(m_cursor.row, fixedRows(), rows()),
                 clamped(m_cursor.col, fixedCols(), cols()),
                 clamped(m_cursor.rowSel, fixedRows(), rows()),
                 clamped(m_cursor.colSel, fixedCols(), cols())});
    if (self)
        emit cellsMoved();
}

bool GridControl::stepCell(bool forward)
{
    const std::optional<GridCursor> next =
        stepped(forward, m_cursor, {fixedRows(), rows() - 1, fixedCols(), cols() - 1});
    if (next)
        setCursorCells(*next);
    return next.has_value();
}

int GridControl::colWidth(int col) const
{
    return m_view->columnWidth(col);
}

void GridControl::setColWidth(int col, int width)
{
    m_weights.clear();
    m_view->setColumnWidth(col, width);
}

int GridControl::rowHeight(int row) const
{
    return row < fixedRows() ? m_view->horizontalHeader()->sizeHint().height() / fixedRows()
                             : m_view->verticalHeader()->defaultSectionSize();
}

void GridControl::fitColumns(std::span<const double> weights)
{
    m_weights.assign(weights.begin(), weights.end());
    applyColumnWeights();
}

void GridControl::applyColumnWeights()
{
    const double total = std::accumulate(m_weights.begin(), m_weights.end(), 0.0);
    if (m_sizingColumns || total <= 0)
        return;
    // Narrower columns can make the header higher, that calls the vertical bar, and less width is
    // left: once more then.
    const QScopedValueRollback sizing(m_sizingColumns, true);
    for (int width = -1; width != m_view->viewport()->width();) {
        const bool again = width >= 0;
        width = m_view->viewport()->width();
        double sum = 0;
        int used = 0;
        for (int col = 0; col < std::min(cols(), int(m_weights.size())); ++col) {
            sum += m_weights[std::size_t(col)];
            const int edge = qRound(width * sum / total);
            m_view->setColumnWidth(col, edge - used);
            used = edge;
        }
        if (again)
            break;
    }
}

Qt::Alignment GridControl::colAlignment(int col) const
{
    return m_model->colAlignment(col);
}

void GridControl::setColAlignment(int col, Qt::Alignment alignment)
{
    m_model->setColAlignment(col, alignment);
}

void GridControl::setRedraw(bool redraw)
{
    if (redraw == m_redraw)
        return;
    m_redraw = redraw;
    m_model->setChangesHeld(!redraw);
    if (redraw)
        applyCursor(m_cursor);
    m_view->setUpdatesEnabled(redraw);
}

void GridControl::ensureVisible(int row, int col)
{
    const QModelIndex index = m_model->cell(row, std::max(col, 0));
    if (!index.isValid())
        return;
    QScrollBar *bar = m_view->horizontalScrollBar();
    const int left = bar->value();
    m_view->scrollTo(index);
    if (col < 0)
        bar->setValue(left);
}

bool GridControl::isRowVisible(int row) const
{
    const QRect cell = m_view->visualRect(m_model->cell(row, 0));
    return cell.isValid() && cell.top() >= 0 && cell.bottom() < m_view->viewport()->height();
}

void GridControl::refresh()
{
    m_view->viewport()->update();
    emit cellsMoved();
}

void GridControl::setCurrentCellColors(std::optional<QColor> back, std::optional<QColor> text)
{
    static_cast<GridDelegate *>(m_view->itemDelegate())->setCurrentCellColors(back, text);
    m_view->update(m_model->cell(m_cursor.row, m_cursor.col));
}

QRect GridControl::cellRect(int row, int col) const
{
    const QWidget *viewport = m_view->viewport();
    const QRect cell = m_view->visualRect(m_model->cell(row, col)) & viewport->rect();
    return cell.isEmpty() ? QRect() : cell.translated(viewport->mapTo(this, QPoint(0, 0)));
}

void GridControl::setAccessibleName(const QString &name)
{
    m_view->setAccessibleName(name);
}

void GridControl::leave(bool forward)
{
    focusNextPrevChild(forward);
}

QTableView *GridControl::table() const
{
    return m_view;
}

void GridControl::applyRowHeight()
{
    const int height = m_view->fontMetrics().height() + rowPadding;
    m_view->verticalHeader()->setDefaultSectionSize(height);
    m_view->verticalScrollBar()->setSingleStep(height);
}

void GridControl::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        applyRowHeight();
}
