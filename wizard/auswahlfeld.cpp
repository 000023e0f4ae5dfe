#include "wizard/auswahlfeld.h"

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
}

void Auswahlfeld::addPreset(const QString &entry)
{
    const QString before = text();
    const int index = currentIndex();
    addItem(entry);
    setCurrentIndex(index);
    setEditText(before);
}

void Auswahlfeld::setText(const QString &text)
{
    setCurrentIndex(findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    setEditText(text);
    lineEdit()->setCursorPosition(0); // a long name shows from its beginning
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
