#include "grid/celleditor.h"

#include "grid/tabtext.h"

#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTextLayout>

#include <algorithm>

int closestEntry(const QStringList &entries, const QString &text)
{
    int best = -1;
    qsizetype longest = 0;
    for (int i = 0; i < int(entries.size()); ++i) {
        const QString &entry = entries.at(i);
        if (!text.isEmpty() && entry == text)
            return i;
        const auto differ =
            std::mismatch(entry.begin(), entry.end(), text.begin(), text.end()).first;
        const qsizetype shared = differ - entry.begin();
        if (shared > longest) {
            longest = shared;
            best = i;
        }
    }
    return best;
}

namespace {

QStringList entriesOf(const QComboBox &combo)
{
    QStringList entries;
    for (int i = 0; i < combo.count(); ++i)
        entries.append(combo.itemText(i));
    return entries;
}

/// The margin below a line edit's text with which it stands exactly where a cell of \a cellHeight
/// pixels shows it. Both centre it, but a cell halves its height and the line's apart and rounds
/// both down, a line edit rounds half the difference to the font's height up.
int bottomMargin(const QFont &font, int cellHeight)
{
    QTextLayout layout(QStringLiteral("M"), font);
    layout.beginLayout();
    const QTextLine text = layout.createLine();
    layout.endLayout();
    const int top = cellHeight / 2 - qRound(text.height()) / 2;
    return cellHeight - QFontMetrics(font).height() + 1 - 2 * top;
}

} // namespace

CellEditor::~CellEditor()
{
    release();
}

bool CellEditor::take(QWidget *widget)
{
    release();
    m_widget = widget;
    if (!line() && !combo()) {
        m_widget.clear();
        return false;
    }
    if (line())
        line()->setFrame(false);
    else
        m_choosing =
            QObject::connect(combo(), &QComboBox::activated, widget, [this] { m_chosen = true; });
    return true;
}

void CellEditor::release()
{
    restoreColors();
    QObject::disconnect(m_choosing);
    m_widget.clear();
}

QLineEdit *CellEditor::line() const
{
    return qobject_cast<QLineEdit *>(m_widget.data());
}

QComboBox *CellEditor::combo() const
{
    return qobject_cast<QComboBox *>(m_widget.data());
}

QLineEdit *CellEditor::typingField() const
{
    return combo() ? combo()->lineEdit() : line();
}

bool CellEditor::isPartOfIt(const QObject *object) const
{
    return object && (object == widget() || object == typingField());
}

void CellEditor::prepare(QObject *watcher, Qt::Alignment alignment, int cellHeight)
{
    if (line()) {
        line()->setAlignment(alignment | Qt::AlignVCenter);
        line()->setTextMargins(-1, 0, -3, bottomMargin(line()->font(), cellHeight));
    }
    // A combo box can be given a line edit at any time.
    if (combo() && combo()->lineEdit())
        combo()->lineEdit()->installEventFilter(watcher);
}

void CellEditor::setText(const QString &text)
{
    m_openedWith = text;
    m_chosen = false;
    m_composition.reset();
    if (combo()) {
        combo()->setCurrentIndex(-1);
        m_openedIndex = closestEntry(entriesOf(*combo()), text);
        combo()->setCurrentIndex(m_openedIndex);
    }
    QLineEdit *field = typingField();
    if (field && field->text() != text)
        field->setText(text);
    m_shown = field ? field->text() : QString();
}

void CellEditor::selectAll()
{
    if (QLineEdit *field = typingField())
        field->selectAll();
}

void CellEditor::caretToEnd()
{
    if (QLineEdit *field = typingField()) {
        field->deselect();
        field->end(false);
    }
}

void CellEditor::replaceByTyping(const QString &text)
{
    if (QLineEdit *field = typingField()) {
        // In two steps, for over a text that it would not take itself a validator refuses nothing.
        const QString before = field->text();
        field->selectAll();
        field->insert(QString());
        const QString emptied = field->text();
        field->selectAll();
        field->insert(text);
        if (!text.isEmpty() && field->text() == emptied) {
            field->setText(before);
            field->selectAll();
        }
    } else if (combo()) {
        // A character that begins no entry chooses none, and the cell keeps its text.
        const int entry = text.isEmpty() ? -1 : combo()->findText(text, Qt::MatchStartsWith);
        if (text.isEmpty() || entry >= 0)
            combo()->setCurrentIndex(entry);
        m_openedWith = text.isEmpty() ? QString() : m_openedWith;
    }
}

QString CellEditor::text(bool confirmed) const
{
    // A text of several lines, or longer than the editor takes, stays as it is unless somebody
    // changed it; what was pasted into the editor is cleaned like any other paste.
    if (typingField())
        return typedText() == m_shown ? m_openedWith : tabtext::typed(typedText());
    if (!combo())
        return {};
    const QString shown = m_openedIndex < 0 ? QString() : combo()->itemText(m_openedIndex);
    const bool untouched =
        !m_chosen && combo()->currentIndex() == m_openedIndex && combo()->currentText() == shown;
    return untouched && (m_openedIndex < 0 || !confirmed) ? m_openedWith : combo()->currentText();
}

QString CellEditor::Composition::rest() const
{
    return QString(text).remove(selectionStart, selectionLength);
}

CellEditor::Composition CellEditor::composition() const
{
    const QLineEdit *field = typingField();
    if (m_composition || !field)
        return m_composition.value_or(Composition());
    return {field->text(), std::max(field->selectionStart(), 0), field->selectionLength()};
}

void CellEditor::composed(const QInputMethodEvent &event, const Composition &before)
{
    m_composition.reset();
    QLineEdit *field = typingField();
    if (!field)
        return;
    if (!event.preeditString().isEmpty()) {
        m_composition = before;
        m_composition->begun = true;
    } else if (before.begun && field->text() == before.rest()) {
        field->setText(before.text);
        field->setSelection(int(before.selectionStart), int(before.selectionLength));
    }
}

QString CellEditor::typedText() const
{
    const QString text = typingField()->text();
    return m_composition && text == m_composition->rest() ? m_composition->text : text;
}

void CellEditor::setColors(std::optional<QColor> back, std::optional<QColor> text)
{
    if (!widget() || (!back && !text))
        return;
    m_ownPalette = widget()->palette();
    QPalette palette = *m_ownPalette;
    for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Button}) {
        if (back)
            palette.setColor(role, *back);
    }
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText}) {
        if (text)
            palette.setColor(role, *text);
    }
    widget()->setPalette(palette);
}

void CellEditor::restoreColors()
{
    if (widget() && m_ownPalette)
        widget()->setPalette(*m_ownPalette);
    m_ownPalette.reset();
}
