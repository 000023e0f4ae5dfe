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
    // What can't be seen is not taken over from other programs, and no file could hold it.
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString &entered) {
        const QString kept = tabtext::typed(entered);
        if (kept == entered)
            return;
        const int behind = static_cast<int>(entered.size()) - lineEdit()->cursorPosition();
        setEditText(kept);
        lineEdit()->setCursorPosition(static_cast<int>(kept.size()) - behind);
    });
    // A long name shows from its beginning, whoever has put it there.
    connect(this, &QComboBox::activated, this, [this] { lineEdit()->setCursorPosition(0); });
}

void Auswahlfeld::addPreset(const QString &entry)
{
    const QString before = text();
    const int index = currentIndex();
    addItem(entry);
    setCurrentIndex(index);
    setEditText(before);
    lineEdit()->setCursorPosition(0);
}

void Auswahlfeld::setText(const QString &text)
{
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
