#include "grid/celleditor.h"

#include <QComboBox>
#include <QLineEdit>

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

} // namespace

CellEditor::~CellEditor()
{
    release();
}

bool CellEditor::take(QWidget *widget)
{
    release();
    m_line = qobject_cast<QLineEdit *>(widget);
    m_combo = qobject_cast<QComboBox *>(widget);
    if (m_line)
        m_line->setFrame(false);
    if (m_combo)
        m_choosing =
            QObject::connect(m_combo, &QComboBox::activated, m_combo, [this] { m_chosen = true; });
    return widget && widget == this->widget();
}

void CellEditor::release()
{
    restoreColors();
    QObject::disconnect(m_choosing);
    m_line.clear();
    m_combo.clear();
}

QWidget *CellEditor::widget() const
{
    return m_line ? static_cast<QWidget *>(m_line) : m_combo;
}

QLineEdit *CellEditor::typingField() const
{
    return m_combo ? m_combo->lineEdit() : m_line.data();
}

bool CellEditor::isPartOfIt(const QObject *object) const
{
    return object && (object == widget() || object == typingField());
}

void CellEditor::prepare(QObject *watcher, Qt::Alignment alignment)
{
    if (m_line)
        m_line->setAlignment(alignment | Qt::AlignVCenter);
    // A combo box can be given a line edit at any time.
    if (m_combo && m_combo->lineEdit())
        m_combo->lineEdit()->installEventFilter(watcher);
}

void CellEditor::setText(const QString &text)
{
    m_openedWith = text;
    m_chosen = false;
    if (m_combo) {
        m_combo->setCurrentIndex(-1);
        m_openedIndex = closestEntry(entriesOf(*m_combo), text);
        m_combo->setCurrentIndex(m_openedIndex);
    } else if (m_line && m_line->text() != text) {
        m_line->setText(text);
    }
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
        field->clear();
        field->insert(text);
    } else if (m_combo) {
        m_combo->setCurrentIndex(text.isEmpty() ? -1
                                                : m_combo->findText(text, Qt::MatchStartsWith));
        m_openedWith = text.isEmpty() ? QString() : m_openedWith;
    }
}

QString CellEditor::text(bool confirmed) const
{
    if (m_line)
        return m_line->text();
    if (!m_combo)
        return {};
    const QString shown = m_openedIndex < 0 ? QString() : m_combo->itemText(m_openedIndex);
    const bool untouched =
        !m_chosen && m_combo->currentIndex() == m_openedIndex && m_combo->currentText() == shown;
    return untouched && (m_openedIndex < 0 || !confirmed) ? m_openedWith : m_combo->currentText();
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
