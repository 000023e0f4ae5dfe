#include "grid/clseditgrid.h"

#include "grid/gridcontrol.h"
#include "grid/griddelegate.h"
#include "grid/gridmodel.h"
#include "grid/redrawhold.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QTableView>
#include <QWidget>

// Opening the editor over a cell, and what becomes of its text.

void clsEditGrid::BeginEdit()
{
    beginEdit(GridOpening());
}

bool clsEditGrid::canBeginEdit() const
{
    return m_active && !m_busy && m_grid && m_editor && m_editor.widget()->parent() == m_grid &&
           m_grid->model()->contains(m_grid->row(), m_grid->col()) &&
           !m_grid->isFixed(m_grid->row(), m_grid->col());
}

void clsEditGrid::beginEdit(const GridOpening &opening)
{
    const QPointer<clsEditGrid> self(this);
    if (m_editing && m_edit && m_grid && m_edit->row.row() == m_grid->row() &&
        m_edit->col == m_grid->col())
        return;
    // Another cell has become current without the editor losing the focus: its text is kept there.
    commitInPlace();
    if (!self || !canBeginEdit())
        return;
    QString text = m_grid->textMatrix(m_grid->row(), m_grid->col());
    if (!mayOpen(text) || !self)
        return;
    const GridCursor &cursor = m_grid->cursorCells();
    const CellRange range = cursor.range();
    const GridModel &model = *m_grid->model();
    m_edit.reset(new OpenEdit{{model, cursor.row, cursor.row},
                              {model, range.firstRow, range.lastRow},
                              cursor.col,
                              range.firstCol,
                              range.lastCol,
                              m_environment.secondsSinceMidnight()});
    showEditor(text, opening);
}

/// Commits an open edit as a loss of the focus does; the current cell stays.
void clsEditGrid::commitInPlace()
{
    const QPointer<clsEditGrid> self(this);
    // The grid takes the focus before the editor is hidden, or the next control of the page would
    // get it.
    if (m_editing && m_grid && m_editor.isPartOfIt(m_grid->window()->focusWidget()))
        m_grid->setFocus();
    if (self)
        endEdit(false, Leaving::FocusLoss);
}

bool clsEditGrid::mayOpen(QString &text)
{
    const QPointer<clsEditGrid> self(this);
    const Attachment attached(*this);
    const int row = m_grid->row();
    const int col = m_grid->col();
    const RowTracker here(*m_grid->model(), row, row);
    bool cancel = false;
    m_busy = true;
    emit BeforeCellEdit(row, col, text, cancel);
    if (!self)
        return false;
    m_busy = false;
    // Text belongs to the cell that was asked about; a handler that made another one current, or
    // moved the rows, stops the edit.
    return !cancel && attached && canBeginEdit() && m_grid->row() == row && m_grid->col() == col &&
           here.isThere() && here.row() == row;
}

void clsEditGrid::showEditor(const QString &text, const GridOpening &opening)
{
    const QPointer<QWidget> widget = m_editor.widget();
    const Attachment attached(*this);
    m_grid->ensureVisible(m_grid->row(), m_grid->col());
    if (!attached || !widget)
        return;
    const QModelIndex cell = m_grid->model()->cell(m_grid->row(), m_grid->col());
    m_editor.prepare(this, m_grid->colAlignment(m_grid->col()),
                     m_grid->table()->visualRect(cell).height());
    m_editor.setColors(m_focusBack, m_focusText);
    placeEditor();
    const QString heading = m_grid->textMatrix(m_grid->fixedRows() - 1, m_grid->col());
    widget->setAccessibleDescription(
        u"Zeile %1, %2"_qs.arg(QString::number(m_grid->row() - m_grid->fixedRows() + 1),
                               QString(heading).replace(u'\n', u' ')));
    widget->show();
    widget->raise();
    widget->setFocus();
    if (!attached || !widget || !m_edit || m_editor.widget() != widget)
        return;
    m_editor.setText(text);
    if (opening.typed)
        m_editor.replaceByTyping(*opening.typed);
    else if (opening.selectAll)
        m_editor.selectAll();
    else
        m_editor.caretToEnd();
    m_editing = true;
}

void clsEditGrid::placeEditor()
{
    if (!m_edit || !m_grid || !m_editor || !m_edit->stamp)
        return;
    const auto isGone = [this] {
        return !m_edit->row.isThere() || !m_grid->model()->contains(m_edit->row.row(), m_edit->col);
    };
    if (isGone()) {
        // Later, for this may be in the middle of the row's removal.
        QMetaObject::invokeMethod(
            this,
            [this, isGone] {
                if (m_edit && m_grid && isGone())
                    EndEdit(true);
            },
            Qt::QueuedConnection);
        return;
    }
    const int inset = m_editor.inset(GridDelegate::frameWidth());
    const QRect cell = m_grid->cellRect(m_edit->row.row(), m_edit->col);
    QRect place = cell.adjusted(inset, inset, -inset, -inset);
    // Scrolled out of view it keeps the focus, and with it the text, beyond the frame's edge.
    if (place.width() < 1 || place.height() < 1)
        place = QRect(-2, -2, 1, 1);
    m_editor.widget()->setGeometry(place);
}

void clsEditGrid::EndEdit(bool Cancel)
{
    endEdit(Cancel, Leaving::Commit);
}

void clsEditGrid::endEdit(bool cancel, Leaving leaving)
{
    if (!m_grid || !m_active || !m_editing || !m_edit || !m_edit->stamp)
        return;
    // Enter hides the editor, whose loss of the focus comes in here again: the first one counts.
    m_edit->stamp.reset();
    const QPointer<clsEditGrid> self(this);
    const Attachment attached(*this);
    if (!cancel && m_editor.widget() && m_editor.widget()->hasFocus())
        QGuiApplication::inputMethod()->commit();
    if (!attached || !m_edit)
        return;
    m_editing = false;
    m_busy = true;
    const std::unique_ptr<OpenEdit> edit = std::move(m_edit);
    if (cancel)
        discard();
    else
        commit(*edit, leaving);
    if (!self)
        return;
    m_busy = false;
    if (attached)
        emit ProcessReady();
}

void clsEditGrid::discard()
{
    const Attachment attached(*this);
    closeEditor(true);
    if (attached)
        m_grid->refresh();
    if (attached)
        emit CancelCellEdit(m_grid->row(), m_grid->col());
}

void clsEditGrid::commit(OpenEdit &edit, Leaving leaving)
{
    const Attachment attached(*this);
    const bool byFocusLoss = leaving == Leaving::FocusLoss;
    const QString typed = m_editor.text(!byFocusLoss);
    const QString text =
        m_formatString.isEmpty() ? typed : m_environment.format(typed, m_formatString);
    closeEditor(!byFocusLoss);
    if (attached)
        writeCommitted(edit, text);
    if (attached)
        m_grid->refresh();
    if (attached && m_autoRowAdd && m_grid->row() > m_grid->rows() - 2)
        appendRow();
    if (attached)
        moveOn(leaving);
}

void clsEditGrid::closeEditor(bool focusToGrid)
{
    const QPointer<clsEditGrid> self(this);
    const QPointer<QWidget> widget = m_editor.widget();
    if (!widget)
        return;
    // Before hiding: a hidden editor would hand the focus to the next control of the page.
    if (focusToGrid && m_grid)
        m_grid->setFocus();
    if (self && m_editor.widget() == widget)
        m_editor.restoreColors();
    if (widget)
        widget->hide();
}

void clsEditGrid::abandonEdit()
{
    if (!m_edit)
        return;
    m_edit.reset();
    m_editing = false;
    closeEditor(m_editor.widget() && m_editor.widget()->hasFocus());
}

void clsEditGrid::writeCommitted(OpenEdit &edit, const QString &text)
{
    const bool many = m_multipleEdit && (edit.rows.remaining() > 0 || edit.lastCol > edit.firstCol);
    RowTracker &rows = many ? edit.rows : edit.row;
    const int firstCol = many ? edit.firstCol : edit.col;
    const int lastCol = many ? edit.lastCol : edit.col;

    const Attachment attached(*this);
    const RedrawHold hold(m_grid);
    do {
        for (int col = firstCol; col <= lastCol && attached; ++col)
            commitCell(rows, col, text);
    } while (attached && rows.next());
}

void clsEditGrid::commitCell(RowTracker &rows, int col, const QString &text)
{
    // Since the edit began rows and columns may have gone, by a handler too.
    if (!rows.isThere() || !m_grid->model()->contains(rows.row(), col) ||
        m_grid->isFixed(rows.row(), col))
        return;
    const Attachment attached(*this);
    QString newText = text;
    bool cancel = false;
    emit AfterCellEdit(rows.row(), col, newText, cancel);
    if (attached && !cancel && rows.isThere())
        m_grid->setTextMatrix(rows.row(), col, newText);
}

void clsEditGrid::appendRow()
{
    const Attachment attached(*this);
    bool cancel = false;
    emit BeforeRowAdd(m_grid->rows(), cancel);
    if (!attached || cancel)
        return;
    // Not by setRows, whose new rows get texts from where the others come from.
    m_grid->insertRows(m_grid->rows(), {QStringList()});
    if (attached)
        emit RowAdd(m_grid->rows() - 1);
}

void clsEditGrid::moveOn(Leaving leaving)
{
    if (leaving == Leaving::FocusLoss)
        return;
    if (leaving == Leaving::Commit) {
        if (m_autoFocus)
            moveToNextCell();
        return;
    }
    const bool forward = leaving == Leaving::TabForward;
    const Attachment attached(*this);
    if (!m_grid->stepCell(forward))
        m_grid->leave(forward);
    else if (attached)
        m_grid->ensureVisible(m_grid->row(), m_grid->col());
}

void clsEditGrid::moveToNextCell()
{
    const int first = m_autoFocusColStart < 0 ? m_grid->fixedCols() : m_autoFocusColStart;
    const int last =
        m_autoFocusColEnd < 0 ? m_grid->cols() - 1 : qMin(m_autoFocusColEnd, m_grid->cols() - 1);
    int row = m_grid->row();
    int col = qMax(m_grid->col() + 1, first);
    if (col > last) {
        col = first;
        ++row;
    }
    if (row >= m_grid->rows())
        return;
    const Attachment attached(*this);
    m_grid->setCell(row, col);
    if (attached)
        m_grid->ensureVisible(row, col);
}
