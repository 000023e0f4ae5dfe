#include "wizard/auswahlfeld.h"

#include "grid/tabtext.h"

#include <QLineEdit>
#include <QWheelEvent>

Auswahlfeld::Auswahlfeld(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setAcceptDrops(false); // a file that is dropped here is for the window
    lineEdit()->setAcceptDrops(false);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { m_edited = true; });
    // A long name shows from its beginning, whoever has put it there.
    connect(this, &QComboBox::activated, this, [this] { lineEdit()->setCursorPosition(0); });
}

void Auswahlfeld::addPreset(const QString &entry)
{
    const QString before = currentText();
    const int index = currentIndex();
    addItem(entry);
    setCurrentIndex(index);
    setEditText(before);
    lineEdit()->setCursorPosition(0);
}

QString Auswahlfeld::text() const
{
    // Not while it is being edited: what is undone would be gone.
    return m_edited && currentText() != m_set ? tabtext::typed(currentText()) : currentText();
}

void Auswahlfeld::setText(const QString &text)
{
    m_set = text;
    m_edited = false;
    setCurrentIndex(findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    setEditText(text);
    lineEdit()->setCursorPosition(0);
}

void Auswahlfeld::setAccessibleTexts(const QString &name)
{
    setAccessibleDescription(name);
    lineEdit()->setAccessibleName(name);
}

void Auswahlfeld::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
