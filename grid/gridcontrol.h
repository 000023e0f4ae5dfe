#pragma once

#include "grid/cellrange.h"

#include <QFrame>
#include <QList>

#include <functional>
#include <optional>
#include <span>
#include <vector>

class GridModel;
class GridView;
class QInputMethodEvent;
class QKeyEvent;
class QTableView;

/// A grid that shows texts and lets the user walk and select; by itself it changes no cell.
///
/// Row and column numbers count the fixed rows (shown as column headers) and the fixed columns
/// (shown like headers, never current by mouse or key). Lengths are device-independent pixels.
/// Only visible cells cost time: 100,000 rows open as fast as 100.
///
/// The control is a frame around a table; editors that are laid over a cell belong into the frame
/// as siblings of the table, because screen readers do not see a child of a table's viewport.
class GridControl : public QFrame
{
    Q_OBJECT

public:
    /// A grid of two rows, the first one fixed, and two columns.
    explicit GridControl(QWidget *parent = nullptr);
    ~GridControl() override;

    int rows() const;
    /// New rows are empty and come last. Never below the number of fixed rows.
    void setRows(int rows);
    /// Gives the grid new rows, \a rows in all with the fixed ones, whose cell texts \a source
    /// knows by their row numbers. They are asked for when first needed, so that 10,000 rows come
    /// as fast as 10. Rows that setRows adds later have the same source.
    void setSourcedRows(int rows, std::function<QStringList(int row)> source);
    int cols() const;
    void setCols(int cols);
    int fixedRows() const;
    void setFixedRows(int rows);
    int fixedCols() const;
    void setFixedCols(int cols);
    bool isFixed(int row, int col) const;

    /// The text of a cell, also of a fixed one; empty outside of the grid. In a fixed row "\n"
    /// starts a new header line.
    QString textMatrix(int row, int col) const;
    /// Raises no event; does nothing outside of the grid.
    void setTextMatrix(int row, int col, const QString &text);
    /// The texts of \a range, the cells of a row parted by \a colTerminator, every row ended by
    /// \a rowTerminator.
    QString rangeText(const CellRange &range, const QString &colTerminator,
                      const QString &rowTerminator) const;
    /// Inserts a row before \a row, or last without one. The line's tabs part its cells; what goes
    /// beyond the last column is dropped. Rows can't be inserted among the fixed ones.
    void addItem(const QString &line, int row = -1);
    /// Inserts many rows at once, each a list of cell texts. A source of the other rows' texts is
    /// asked for all of them and then let go, for it knows them by their numbers; the same happens
    /// when a row is removed or columns are added.
    void insertRows(int row, const QList<QStringList> &lines);
    /// Removes a row that is not fixed; does nothing for others.
    void removeItem(int row);

    int row() const { return m_cursor.row; }
    int col() const { return m_cursor.col; }
    int rowSel() const { return m_cursor.rowSel; }
    int colSel() const { return m_cursor.colSel; }
    /// Moves the current cell and drops the selection, as setCol and setCell do. A fixed cell can
    /// be made current, but never edited. Numbers outside of the grid are ignored.
    void setRow(int row);
    void setCol(int col);
    void setCell(int row, int col);
    /// Moves the far corner of the selection.
    void setRowSel(int row);
    void setColSel(int col);
    /// Makes \a cursor the current cell and selection.
    void setCursorCells(const GridCursor &cursor);
    const GridCursor &cursorCells() const { return m_cursor; }
    CellRange selection() const { return m_cursor.range(); }
    /// One cell on or back in reading order over the cells that are not fixed. False at the end,
    /// where the current cell stays.
    bool stepCell(bool forward);

    /// Gives the focus to the next or previous control outside of the grid.
    void leave(bool forward);

    int colWidth(int col) const;
    void setColWidth(int col, int width);
    int rowHeight(int row) const;
    /// Shares the inner width among the columns by \a weights, one per column, so that they fill it
    /// without a horizontal bar; a vertical bar is allowed for. Stays in force when the grid is
    /// resized, until the next setColWidth.
    void fitColumns(std::span<const double> weights);
    Qt::Alignment colAlignment(int col) const;
    /// Horizontal alignment of a column's texts, left unless set.
    void setColAlignment(int col, Qt::Alignment alignment);

    /// While redraw is off nothing is painted and changed texts are announced to nobody; switching
    /// it on paints once. The way to set many texts.
    bool redraw() const { return m_redraw; }
    void setRedraw(bool redraw);
    /// Scrolls as far as needed; the current cell stays.
    void ensureVisible(int row, int col = -1);
    bool isRowVisible(int row) const;
    void refresh();

    /// The colours of the current cell; none: the palette's, with a frame in the highlight colour.
    void setCurrentCellColors(std::optional<QColor> back, std::optional<QColor> text);

    /// The visible part of a cell, in this frame's coordinates; empty when scrolled out of view.
    QRect cellRect(int row, int col) const;

    /// Hides QWidget's on purpose: the name belongs to the table inside, which readers announce.
    void setAccessibleName(const QString &name);

    QTableView *table() const;
    GridModel *model() const { return m_model; }

signals:
    void currentCellChanged(int Row, int Col);
    void selectionChanged();
    /// A key pressed on the grid, before the grid uses it. Whoever handles it accepts the event;
    /// the grid then does nothing with it.
    void keyPressed(QKeyEvent *Event);
    /// Text from an input method (dead keys, composed letters). Whoever uses it accepts the event.
    void textComposed(QInputMethodEvent *Event);
    void cellDoubleClicked(int Row, int Col);
    /// Cells have moved on the screen: scrolled, resized, rows inserted or removed.
    void cellsMoved();
    /// Raised first thing in the destructor, while everything still works.
    void aboutToBeDestroyed();

protected:
    void changeEvent(QEvent *event) override;

private:
    void clampCursor();
    void applyCursor(const GridCursor &cursor);
    void applyColumnWeights();
    void applyRowHeight();

    GridModel *m_model;
    GridView *m_view;
    GridCursor m_cursor;
    std::vector<double> m_weights;
    bool m_redraw = true;
    bool m_sizingColumns = false;
};
