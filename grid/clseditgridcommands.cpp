#include "grid/clseditgrid.h"

#include "grid/gridcontrol.h"
#include "grid/gridmodel.h"
#include "grid/gridprinter.h"
#include "grid/redrawhold.h"

#include <algorithm>

// What acts on the grid as a table: texts, rows, clearing, printing.

namespace {

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
    if (!m_grid)
        return {};
    const int firstCol = IncludeFixedCells ? 0 : m_grid->fixedCols();
    const int firstRow = IncludeFixedCells ? 0 : m_grid->fixedRows();
    return m_grid->rangeText({firstRow, m_grid->rows() - 1, firstCol, m_grid->cols() - 1},
                             ColTerminator, RowTerminator);
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

void clsEditGrid::RowsAdd(int BeforeRow, int Count)
{
    const Attachment attached(*this);
    for (int i = 0; i < Count && attached; ++i) {
        if (BeforeRow < m_grid->fixedRows() || BeforeRow > m_grid->rows())
            return;
        bool cancel = false;
        emit BeforeRowAdd(BeforeRow, cancel);
        if (!attached || cancel || BeforeRow > m_grid->rows())
            continue;
        m_grid->insertRows(BeforeRow, {QStringList()});
        if (attached)
            emit RowAdd(BeforeRow);
    }
}

void clsEditGrid::RowsDel(int StartRow, int EndRow)
{
    if (!m_grid)
        return;
    const RedrawHold hold(m_grid);
    RowTracker rows(*m_grid->model(), StartRow, EndRow);
    // Counted as well, for a handler could lengthen the run for ever.
    for (int round = StartRow; round <= EndRow; ++round) {
        if (rows.row() >= m_grid->rows() || !removeOffered(rows) || !rows.next())
            return;
    }
}

/// Offers the row that \a rows stands on and removes it unless vetoed. False when there is no grid
/// to go on with.
bool clsEditGrid::removeOffered(RowTracker &rows)
{
    const auto mayGo = [&] {
        return rows.isThere() && rows.row() >= m_grid->fixedRows() &&
               m_grid->rows() > m_grid->fixedRows() + 1;
    };
    if (!mayGo())
        return true;
    const Attachment attached(*this);
    bool cancel = false;
    emit BeforeRowRemove(rows.row(), cancel);
    if (!attached)
        return false;
    // The handler may have moved or removed rows itself, down to the last one.
    if (cancel || !mayGo())
        return true;
    const int row = rows.row();
    m_grid->removeItem(row);
    if (attached)
        emit RowRemove(row);
    return bool(attached);
}

void clsEditGrid::SelRowsDel()
{
    if (!m_grid)
        return;
    const Attachment attached(*this);
    const CellRange range = m_grid->selection();
    RowsDel(range.firstRow, range.lastRow);
    if (attached && m_grid->row() > m_grid->rows() - 1)
        m_grid->setRow(m_grid->rows() - 1);
}

void clsEditGrid::SelClear()
{
    if (m_grid)
        clear(m_grid->selection());
}

void clsEditGrid::clear(const CellRange &range)
{
    const Attachment attached(*this);
    const RedrawHold hold(m_grid);
    RowTracker rows(*m_grid->model(), range.firstRow, range.lastRow);
    do {
        for (int col = range.firstCol; col <= range.lastCol && attached; ++col) {
            if (!rows.isThere() || !m_grid->model()->contains(rows.row(), col) ||
                m_grid->isFixed(rows.row(), col))
                continue;
            m_grid->setTextMatrix(rows.row(), col, QString());
            emit CellClear(rows.row(), col);
        }
    } while (attached && rows.next());
}

bool clsEditGrid::PrintToPrinter(QPaintDevice *Printer, bool AssingToOnePage,
                                 bool PrintGridLines) const
{
    return m_grid && Printer && printGrid(*m_grid, *Printer, AssingToOnePage, PrintGridLines);
}
