#include "grid/clseditgrid.h"

#include "grid/gridcontrol.h"
#include "grid/gridmodel.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>

namespace {

QString itemDataKey(int row, int col)
{
    return u'k' + QString::number(row) + u'_' + QString::number(col);
}

bool endsAnEdit(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape ||
           key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

} // namespace

clsEditGrid::Attachment::Attachment(const clsEditGrid &edit) : m_edit(&edit), m_grid(edit.m_grid) {}

clsEditGrid::Attachment::operator bool() const
{
    return m_edit && m_grid && m_edit->m_grid == m_grid;
}

clsEditGrid::clsEditGrid(QObject *parent) : clsEditGrid(GridEnvironment::system(), parent) {}

clsEditGrid::clsEditGrid(GridEnvironment environment, QObject *parent)
    : QObject(parent), m_environment(std::move(environment))
{
}

clsEditGrid::~clsEditGrid()
{
    releaseEditor();
    setMSFlexGrid(nullptr);
}

QWidget *clsEditGrid::InputObject() const
{
    return m_editor.widget();
}

void clsEditGrid::setInputObject(QWidget *control)
{
    releaseEditor();
    if (m_editor.take(control))
        attachEditor(control);
}

void clsEditGrid::attachEditor(QWidget *widget)
{
    if (!widget || !m_grid)
        return;
    disconnect(widget, nullptr, this, nullptr);
    widget->hide();
    widget->setParent(m_grid);
    widget->installEventFilter(this);
    connect(widget, &QObject::destroyed, this, [this] {
        const bool wasOpen = m_edit != nullptr;
        abandonEdit();
        if (wasOpen && m_grid && !QApplication::focusWidget())
            m_grid->setFocus();
    });
}

void clsEditGrid::releaseEditor()
{
    abandonEdit();
    if (QWidget *widget = m_editor.widget()) {
        widget->removeEventFilter(this);
        disconnect(widget, nullptr, this, nullptr);
    }
    m_editor.release();
}

void clsEditGrid::setMSFlexGrid(GridControl *grid)
{
    if (grid == m_grid)
        return;
    const QPointer<clsEditGrid> self(this);
    abandonEdit();
    if (!self)
        return;
    if (m_grid) {
        disconnect(m_grid, nullptr, this, nullptr);
        m_grid->setCurrentCellColors({}, {});
    }
    m_grid = grid;
    if (!grid)
        return;
    connect(grid, &GridControl::keyPressed, this, &clsEditGrid::gridKeyPressed);
    connect(grid, &GridControl::textComposed, this, &clsEditGrid::gridTextComposed);
    connect(grid, &GridControl::cellDoubleClicked, this, &clsEditGrid::BeginEdit);
    connect(grid, &GridControl::cellsMoved, this, &clsEditGrid::placeEditor);
    connect(grid, &GridControl::aboutToBeDestroyed, this, [this] { setMSFlexGrid(nullptr); });
    attachEditor(m_editor.widget());
    showFocusColors();
}

void clsEditGrid::setActive(bool IsActive)
{
    const QPointer<clsEditGrid> self(this);
    if (!IsActive)
        EndEdit(false);
    if (!self)
        return;
    m_active = IsActive;
    showFocusColors();
}

void clsEditGrid::FocusColorsSet(std::int32_t BackColor, std::int32_t ForeColor)
{
    const auto color = [](std::int32_t value) {
        return value == -1 ? std::nullopt : std::optional(QColor(QRgb(value)));
    };
    m_focusBack = color(BackColor);
    m_focusText = color(ForeColor);
    showFocusColors();
}

void clsEditGrid::setHandleFocusColors(bool on)
{
    m_handleFocusColors = on;
    showFocusColors();
}

void clsEditGrid::showFocusColors()
{
    if (!m_grid)
        return;
    if (m_active && m_handleFocusColors)
        m_grid->setCurrentCellColors(m_focusBack, m_focusText);
    else
        m_grid->setCurrentCellColors({}, {});
    if (m_editing) {
        m_editor.restoreColors();
        m_editor.setColors(m_focusBack, m_focusText);
    }
}

QVariant clsEditGrid::ItemDataMatrix(int row, int col) const
{
    return m_itemData.value(itemDataKey(row, col));
}

void clsEditGrid::setItemDataMatrix(int row, int col, const QVariant &value)
{
    m_itemData.insert(itemDataKey(row, col), value);
}

void clsEditGrid::ItemDataMatrixClear()
{
    m_itemData.clear();
}

void clsEditGrid::gridKeyPressed(QKeyEvent *event)
{
    if (event->isAccepted())
        return;
    if (rowOrClearKey(*event) || clipboardKey(*event)) {
        event->accept();
        return;
    }
    const std::optional<GridOpening> opening = openingKey(*event);
    if (!opening || !canBeginEdit())
        return;
    // Accepted before, for a handler may delete this object; also a vetoed Enter is used up.
    event->accept();
    beginEdit(*opening);
}

bool clsEditGrid::rowOrClearKey(const QKeyEvent &event)
{
    const bool ctrl = isCtrlAlone(event);
    if (event.key() != Qt::Key_Insert && event.key() != Qt::Key_Delete)
        return false;
    if (ctrl && m_ignoreAddDelKeys)
        return false;
    if (event.key() == Qt::Key_Delete) {
        if (ctrl)
            SelRowsDel();
        else
            SelClear();
    } else if (ctrl) {
        const CellRange range = m_grid->selection();
        RowsAdd(range.firstRow, range.rowCount());
    }
    return true;
}

bool clsEditGrid::clipboardKey(const QKeyEvent &event)
{
    if (!isCtrlAlone(event) || m_ignoreClipboardKeys)
        return false;
    switch (event.key()) {
    case Qt::Key_C:
        ClipboardCopy();
        return true;
    case Qt::Key_X:
        ClipboardCut();
        return true;
    case Qt::Key_V:
        ClipboardPaste();
        return true;
    default:
        return false;
    }
}

void clsEditGrid::gridTextComposed(QInputMethodEvent *event)
{
    if ((event->commitString().isEmpty() && event->preeditString().isEmpty()) || !canBeginEdit())
        return;
    event->accept();
    const QPointer<clsEditGrid> self(this);
    const QPointer<QWidget> editor = m_editor.widget();
    const std::unique_ptr<QInputMethodEvent> forEditor(event->clone());
    // What is composed takes the place of the selected text, and only once there is something.
    beginEdit({true, std::nullopt});
    if (!self || !m_editing || !editor)
        return;
    if (m_editor.isTyped())
        QCoreApplication::sendEvent(editor, forEditor.get());
    else if (!forEditor->commitString().isEmpty())
        m_editor.replaceByTyping(forEditor->commitString());
}

void clsEditGrid::editorComposes(QObject *field, QInputMethodEvent &event)
{
    const QPointer<clsEditGrid> self(this);
    m_grid->ensureVisible(m_edit->row.row(), m_edit->col);
    if (!self)
        return;
    const CellEditor::Composition before = m_editor.composition();
    field->event(&event);
    if (self)
        m_editor.composed(event, before);
}

bool clsEditGrid::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_editing || !m_editor || !m_editor.isPartOfIt(watched))
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // A default button's Enter or a dialog's Esc must not come before the cell's.
        if (endsAnEdit(static_cast<QKeyEvent *>(event)->key())) {
            event->accept();
            return true;
        }
        break;
    case QEvent::InputMethod:
        editorComposes(watched, *static_cast<QInputMethodEvent *>(event));
        return true;
    case QEvent::KeyPress:
        if (editorKeyPressed(*static_cast<QKeyEvent *>(event)))
            return true;
        break;
    case QEvent::FocusOut:
    case QEvent::Hide:
        editorLeft(*event);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool clsEditGrid::editorKeyPressed(const QKeyEvent &event)
{
    const bool back = event.key() == Qt::Key_Backtab || event.modifiers() == Qt::ShiftModifier;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        endEdit(false, Leaving::Commit);
        return true;
    case Qt::Key_Escape:
        endEdit(true, Leaving::Commit);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        endEdit(false, back ? Leaving::TabBackward : Leaving::TabForward);
        return true;
    default:
        // The user may have scrolled away; what is typed must be seen.
        m_grid->ensureVisible(m_edit->row.row(), m_edit->col);
        return false;
    }
}

void clsEditGrid::editorLeft(const QEvent &event)
{
    if (event.type() == QEvent::Hide) {
        // A hidden page takes its editor along; the edit ends there when the focus moves on.
        if (!event.spontaneous() && m_grid && m_grid->isVisible())
            endEdit(false, Leaving::FocusLoss);
        return;
    }
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    const bool comesBack = reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason ||
                           reason == Qt::ActiveWindowFocusReason;
    if (!comesBack && !m_editor.isPartOfIt(QApplication::focusWidget()))
        endEdit(false, Leaving::FocusLoss);
}
