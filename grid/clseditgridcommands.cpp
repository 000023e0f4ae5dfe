#include "grid/clseditgrid.h"

#include "grid/gridcontrol.h"
#include "grid/gridmodel.h"
#include "grid/gridprinter.h"
#include "grid/tabtext.h"

#include <algorithm>

// What acts on the grid as a table: clipboard, rows, clearing, printing.

namespace {

QString rowText(const GridControl &grid, int row, int firstCol, int lastCol,
                const QString &terminator)
{
    QStringList cells;
    for (int col = firstCol; col <= lastCol; ++col)
        cells.append(grid.textMatrix(row, col));
    return cells.join(terminator);
}

/// Splits at terminators: what follows the last one is a piece only when it is not empty.
QStringList pieces(const QString &text, const QString &terminator)
{
    if (terminator.isEmpty())
        return {text};
    QStringList all = text.split(terminator);
    if (all.last().isEmpty())
        all.removeLast();
    return all;
}

/// Switches a grid's redraw off, and back to what it was.
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

} // namespace

void clsEditGrid::EnsureVisibleRow(int row)
{
    if (m_grid)
        m_grid->ensureVisible(row);
}

QString clsEditGrid::GridText(int row, int col) const
{
    return m_grid ? m_grid->textMatrix(row, col) : QString();
}

void clsEditGrid::setGridText(int row, int col, const QString &text)
{
    if (m_grid)
        m_grid->setTextMatrix(row, col, text);
}

QString clsEditGrid::GridText(bool IncludeFixedCells, const QString &ColTerminator,
                              const QString &RowTerminator) const
{
    QString text;
    if (!m_grid)
        return text;
    const int firstCol = IncludeFixedCells ? 0 : m_grid->fixedCols();
    for (int row = IncludeFixedCells ? 0 : m_grid->fixedRows(); row < m_grid->rows(); ++row)
        text += rowText(*m_grid, row, firstCol, m_grid->cols() - 1, ColTerminator) + RowTerminator;
    return text;
}

void clsEditGrid::setGridText(const QString &Text, bool HoldCols, bool IncludeFixedCells,
                              const QString &ColTerminator, const QString &RowTerminator)
{
    if (!m_grid)
        return;
    const int firstRow = IncludeFixedCells ? 0 : m_grid->fixedRows();
    const int firstCol = IncludeFixedCells ? 0 : m_grid->fixedCols();
    QList<QStringList> rows;
    qsizetype widest = 0;
    for (const QString &line : pieces(Text, RowTerminator)) {
        rows.append(ColTerminator.isEmpty() ? QStringList(line) : line.split(ColTerminator));
        widest = std::max(widest, rows.last().size());
    }
    const RedrawHold hold(m_grid);
    if (!HoldCols)
        m_grid->setCols(std::max(m_grid->cols(), firstCol + int(widest)));
    m_grid->setRows(std::max(firstRow + int(rows.size()), m_grid->fixedRows() + 1));
    for (int row = firstRow; row < m_grid->rows(); ++row) {
        const QStringList cells = rows.value(row - firstRow);
        for (int col = firstCol; col < m_grid->cols(); ++col)
            m_grid->setTextMatrix(row, col, cells.value(col - firstCol));
    }
}

void clsEditGrid::Refresh()
{
    if (!m_grid)
        return;
    showFocusColors();
    m_grid->refresh();
}

CellRange clsEditGrid::copiedRange(std::optional<int> startCol, std::optional<int> startRow,
                                   std::optional<int> endCol, std::optional<int> endRow) const
{
    CellRange range = m_grid->selection();
    if (m_wholeLine) {
        range.firstCol = m_grid->fixedCols();
        range.lastCol = m_grid->cols() - 1;
    }
    range.firstCol = std::max(startCol.value_or(range.firstCol), 0);
    range.firstRow = std::max(startRow.value_or(range.firstRow), 0);
    range.lastCol = std::min(endCol.value_or(range.lastCol), m_grid->cols() - 1);
    range.lastRow = std::min(endRow.value_or(range.lastRow), m_grid->rows() - 1);
    return range;
}

void clsEditGrid::ClipboardCopy(std::optional<int> StartCol, std::optional<int> StartRow,
                                std::optional<int> EndCol, std::optional<int> EndRow)
{
    if (!m_grid)
        return;
    const CellRange range = copiedRange(StartCol, StartRow, EndCol, EndRow);
    QString text;
    for (int row = range.firstRow; row <= range.lastRow; ++row)
        text += rowText(*m_grid, row, range.firstCol, range.lastCol, QStringLiteral("\t")) +
                QStringLiteral("\r\n");
    m_environment.setClipboardText(text);
}

void clsEditGrid::ClipboardCut(std::optional<int> StartCol, std::optional<int> StartRow,
                               std::optional<int> EndCol, std::optional<int> EndRow)
{
    if (!m_grid)
        return;
    // Exactly what was copied goes, never more.
    const CellRange range = copiedRange(StartCol, StartRow, EndCol, EndRow);
    ClipboardCopy(StartCol, StartRow, EndCol, EndRow);
    if (!m_wholeLine)
        clear(range);
    else if (StartRow || EndRow)
        RowsDel(range.firstRow, range.lastRow);
    else
        SelRowsDel();
}

void clsEditGrid::ClipboardPaste()
{
    if (!m_grid)
        return;
    const int row = std::max(m_grid->selection().firstRow, m_grid->fixedRows());
    if (m_wholeLine)
        m_grid->setCol(m_grid->fixedCols());
    const QString indent(m_grid->selection().firstCol, u'\t');
    QList<QStringList> rows;
    for (const QString &line : tabtext::lines(m_environment.clipboardText()))
        rows.append((indent + line).split(u'\t'));
    m_grid->insertRows(row, rows);
    m_grid->refresh();
}

void clsEditGrid::ClipboardPasteOver()
{
    const QPointer<clsEditGrid> self(this);
    EndEdit(false);
    if (!self || !m_grid || !m_active || m_busy)
        return;
    const QList<QStringList> cells = tabtext::cells(m_environment.clipboardText());
    if (cells.isEmpty())
        return;
    const CellRange range = m_grid->selection();
    const QPointer<GridControl> grid = m_grid;
    RowTracker rows(*m_grid->model(), range.firstRow, m_grid->rows() - 1);
    int pasted = 0;
    int vetoed = 0;
    int leftOut = 0;
    int lastRow = range.firstRow;
    int lastCol = range.firstCol;
    {
        const RedrawHold hold(m_grid);
        bool fits = true;
        for (const QStringList &line : cells) {
            int col = range.firstCol;
            for (const QString &text : line) {
                if (!fits || !rows.isThere() || !grid->model()->contains(rows.row(), col) ||
                    grid->isFixed(rows.row(), col)) {
                    ++leftOut;
                } else {
                    lastRow = std::max(lastRow, rows.row());
                    lastCol = std::max(lastCol, col);
                    const bool written = pasteCell(rows, col, text);
                    if (!self || !grid || grid != m_grid)
                        return;
                    ++(written ? pasted : vetoed);
                }
                ++col;
            }
            fits = fits && rows.next();
        }
    }
    m_grid->setCursorCells({range.firstRow, range.firstCol, lastRow, lastCol});
    emit ProcessReady();
    if (self)
        emit CellsPasted(pasted, vetoed, leftOut);
}

bool clsEditGrid::pasteCell(RowTracker &rows, int col, const QString &text)
{
    const QPointer<clsEditGrid> self(this);
    QString opened = m_grid->textMatrix(rows.row(), col);
    bool cancel = false;
    m_busy = true;
    emit BeforeCellEdit(rows.row(), col, opened, cancel);
    if (self && m_grid && !cancel && rows.isThere()) {
        QString newText =
            m_formatString.isEmpty() ? text : m_environment.format(text, m_formatString);
        emit AfterCellEdit(rows.row(), col, newText, cancel);
        if (self && m_grid && !cancel && rows.isThere())
            m_grid->setTextMatrix(rows.row(), col, newText);
    }
    if (!self)
        return false;
    m_busy = false;
    return !cancel && rows.isThere();
}

void clsEditGrid::RowsAdd(int BeforeRow, int Count)
{
    const QPointer<clsEditGrid> self(this);
    for (int i = 0; i < Count && self && m_grid; ++i) {
        if (BeforeRow < m_grid->fixedRows() || BeforeRow > m_grid->rows())
            return;
        bool cancel = false;
        emit BeforeRowAdd(BeforeRow, cancel);
        if (!self || !m_grid || cancel || BeforeRow > m_grid->rows())
            continue;
        m_grid->insertRows(BeforeRow, {QStringList()});
        emit RowAdd(BeforeRow);
    }
}

void clsEditGrid::RowsDel(int StartRow, int EndRow)
{
    if (!m_grid)
        return;
    const QPointer<clsEditGrid> self(this);
    const RedrawHold hold(m_grid);
    int row = StartRow;
    for (int i = StartRow; i <= EndRow && self && m_grid; ++i) {
        if (row >= m_grid->rows())
            return;
        if (m_grid->rows() <= m_grid->fixedRows() + 1)
            continue;
        if (row < m_grid->fixedRows()) {
            ++row;
            continue;
        }
        bool cancel = false;
        emit BeforeRowRemove(row, cancel);
        if (!self || !m_grid)
            return;
        // The handler may have removed rows itself, down to the last one.
        if (cancel || row >= m_grid->rows() || m_grid->rows() <= m_grid->fixedRows() + 1) {
            ++row;
            continue;
        }
        m_grid->removeItem(row);
        emit RowRemove(row);
    }
}

void clsEditGrid::SelRowsDel()
{
    if (!m_grid)
        return;
    const QPointer<clsEditGrid> self(this);
    const CellRange range = m_grid->selection();
    RowsDel(range.firstRow, range.lastRow);
    if (self && m_grid && m_grid->row() > m_grid->rows() - 1)
        m_grid->setRow(m_grid->rows() - 1);
}

void clsEditGrid::SelClear()
{
    if (m_grid)
        clear(m_grid->selection());
}

void clsEditGrid::clear(const CellRange &range)
{
    const QPointer<clsEditGrid> self(this);
    const QPointer<GridControl> grid = m_grid;
    const RedrawHold hold(m_grid);
    RowTracker rows(*m_grid->model(), range.firstRow, range.lastRow);
    do {
        for (int col = range.firstCol; col <= range.lastCol; ++col) {
            if (!self || !grid || grid != m_grid)
                return;
            if (!rows.isThere() || grid->isFixed(rows.row(), col))
                continue;
            grid->setTextMatrix(rows.row(), col, QString());
            emit CellClear(rows.row(), col);
        }
    } while (self && grid && grid == m_grid && rows.next());
}

bool clsEditGrid::PrintToPrinter(QPaintDevice *Printer, bool AssingToOnePage,
                                 bool PrintGridLines) const
{
    return m_grid && Printer && printGrid(*m_grid, *Printer, AssingToOnePage, PrintGridLines);
}
