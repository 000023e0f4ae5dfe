#include "grid/clseditgrid.h"

#include "grid/gridmodel.h"
#include "grid/redrawhold.h"
#include "grid/tabtext.h"

#include <algorithm>

// The exchange with other programs as tab-separated text.

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
    if (range.isEmpty())
        return;
    m_environment.setClipboardText(
        m_grid->rangeText(range, QStringLiteral("\t"), QStringLiteral("\r\n")));
}

void clsEditGrid::ClipboardCut(std::optional<int> StartCol, std::optional<int> StartRow,
                               std::optional<int> EndCol, std::optional<int> EndRow)
{
    if (!m_grid)
        return;
    // Exactly what was copied goes, never more.
    const CellRange range = copiedRange(StartCol, StartRow, EndCol, EndRow);
    if (range.isEmpty())
        return;
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
    const Attachment attached(*this);
    const int row = std::max(m_grid->selection().firstRow, m_grid->fixedRows());
    if (m_wholeLine)
        m_grid->setCol(m_grid->fixedCols());
    if (!attached)
        return;
    const QString indent(m_grid->selection().firstCol, u'\t');
    QList<QStringList> rows;
    for (const QString &line : tabtext::lines(m_environment.clipboardText()))
        rows.append((indent + line).split(u'\t'));
    m_grid->insertRows(row, rows);
    if (attached)
        m_grid->refresh();
}

/// A paste over cells under way: where it is, and what has become of its cells so far.
struct clsEditGrid::OverPaste
{
    tabtext::CellReader clipboard;
    RowTracker rows;
    int firstCol;
    int pasted = 0;
    int vetoed = 0;
    int leftOut = 0;
    GridCursor written = {}; ///< from the first cell to the last one that was offered
};

void clsEditGrid::ClipboardPasteOver()
{
    const QPointer<clsEditGrid> self(this);
    commitInPlace();
    if (!self || !m_grid || !m_active || m_busy)
        return;
    const Attachment attached(*this);
    const CellRange range = m_grid->selection();
    OverPaste paste{tabtext::CellReader(m_environment.clipboardText()),
                    {*m_grid->model(), range.firstRow, m_grid->rows() - 1},
                    range.firstCol};
    paste.written = GridCursor::at(range.firstRow, range.firstCol);
    if (!paste.clipboard.nextRow())
        return;
    {
        const RedrawHold hold(m_grid);
        bool fits = true;
        do {
            if (!pasteLine(paste, fits))
                return;
            fits = fits && paste.rows.next();
        } while (paste.clipboard.nextRow());
    }
    if (attached)
        m_grid->setCursorCells(paste.written);
    if (attached)
        emit ProcessReady();
    if (attached)
        emit CellsPasted(paste.pasted, paste.vetoed, paste.leftOut);
}

bool clsEditGrid::pasteLine(OverPaste &paste, bool fits)
{
    const Attachment attached(*this);
    int col = paste.firstCol;
    for (; const std::optional<QString> text = paste.clipboard.nextCell(); ++col) {
        const int row = paste.rows.row();
        if (!fits || !paste.rows.isThere() || !m_grid->model()->contains(row, col) ||
            m_grid->isFixed(row, col)) {
            ++paste.leftOut;
            continue;
        }
        paste.written.rowSel = std::max(paste.written.rowSel, row);
        paste.written.colSel = std::max(paste.written.colSel, col);
        const bool written = pasteCell(paste.rows, col, *text);
        if (!attached)
            return false;
        ++(written ? paste.pasted : paste.vetoed);
    }
    return true;
}

bool clsEditGrid::pasteCell(RowTracker &rows, int col, const QString &text)
{
    const QPointer<clsEditGrid> self(this);
    const Attachment attached(*this);
    QString opened = m_grid->textMatrix(rows.row(), col);
    bool cancel = false;
    m_busy = true;
    emit BeforeCellEdit(rows.row(), col, opened, cancel);
    if (attached && !cancel && rows.isThere()) {
        QString newText =
            m_formatString.isEmpty() ? text : m_environment.format(text, m_formatString);
        emit AfterCellEdit(rows.row(), col, newText, cancel);
        if (attached && !cancel && rows.isThere())
            m_grid->setTextMatrix(rows.row(), col, newText);
    }
    if (!self)
        return false;
    m_busy = false;
    return !cancel && rows.isThere();
}
