#include "wizard/tabelle.h"

#include "grid/clseditgrid.h"
#include "grid/gridcontrol.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

Tabelle::Tabelle(const TabellenNamen &names, const GridEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_grid(new GridControl(this))
    , m_controller(new clsEditGrid(environment, this))
    , m_editor(new QLineEdit(this))
{
    m_grid->setObjectName(names.grid);
    m_grid->setAccessibleName(names.accessibleName);
    m_editor->setObjectName(names.editor);
    m_editor->setAccessibleName(names.accessibleName + u": Eingabe"_qs);
    m_editor->setFrame(false);
    m_editor->setAcceptDrops(false); // a file that is dropped here is for the window

    m_controller->setInputObject(m_editor);
    m_controller->setMSFlexGrid(m_grid);
    m_controller->setGridIgnoreClipboardKeys(true);
    m_controller->setGridIgnoreAddDelKeys(true);
    m_controller->setClipboardDoWholeLine(false);
    connect(m_controller, &clsEditGrid::AfterCellEdit, this, &Tabelle::AfterCellEdit);
    connect(m_controller, &clsEditGrid::ProcessReady, this, &Tabelle::changed);
    connect(m_controller, &clsEditGrid::CellClear, this, &Tabelle::changed);
    connect(m_controller, &clsEditGrid::CellsPasted, this, [this](int, int, int leftOut) {
        if (leftOut > 0)
            emit pastedTooMuch(leftOut);
    });
    connect(m_grid, &GridControl::keyPressed, this, &Tabelle::clipboardKey);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_grid);
    setFocusProxy(m_grid);
}

// The controller ends its edit while the grid is still there.
Tabelle::~Tabelle()
{
    delete m_controller;
}

void Tabelle::setColumns(const QStringList &headers, int fixedCols, std::span<const double> weights)
{
    const auto count = static_cast<int>(headers.size());
    m_grid->setCols(count);
    if (m_grid->fixedCols() != fixedCols)
        m_grid->setFixedCols(fixedCols);
    for (int col = 0; col < count; ++col)
        m_grid->setTextMatrix(0, col, headers.at(col));
    m_grid->fitColumns(weights);
}

void Tabelle::showCell(int row, int col)
{
    m_grid->setCell(row, col);
    m_grid->ensureVisible(row, col);
}

void Tabelle::finishEditing()
{
    m_controller->EndEdit(false);
}

void Tabelle::addOpenEditor(Eingaben &entries) const
{
    if (!m_controller->isEditing())
        return;
    const int row = m_grid->row();
    const int col = m_grid->col();
    if (m_editor->text() != m_grid->textMatrix(row, col))
        entries.insert(eingaben::cell(m_editor->objectName(), row, col), m_editor->text());
}

void Tabelle::reopenEditor(const Eingaben &entries)
{
    const auto reopen = [this](int row, int col, const QString &text) {
        if (!hasCell(row, col))
            return;
        showCell(row, col);
        m_controller->BeginEdit();
        if (m_controller->isEditing())
            m_editor->setText(text);
        else
            m_grid->setTextMatrix(row, col, text);
    };
    eingaben::forEachCell(entries, m_editor->objectName(), reopen);
}

void Tabelle::restoreCells(const Eingaben &entries)
{
    const auto restore = [this](int row, int col, const QString &text) {
        if (hasCell(row, col))
            m_grid->setTextMatrix(row, col, text);
    };
    eingaben::forEachCell(entries, m_grid->objectName(), restore);
}

bool Tabelle::hasCell(int row, int col) const
{
    return row >= 0 && row < m_grid->rows() && col >= 0 && col < m_grid->cols() &&
           !m_grid->isFixed(row, col);
}

void Tabelle::clipboardKey(QKeyEvent *event)
{
    if (event->isAccepted() || event->modifiers() != Qt::ControlModifier)
        return;
    switch (event->key()) {
    case Qt::Key_C:
        m_controller->ClipboardCopy();
        break;
    case Qt::Key_X:
        m_controller->ClipboardCut();
        break;
    case Qt::Key_V:
        m_controller->ClipboardPasteOver();
        break;
    default:
        return;
    }
    event->accept();
}
