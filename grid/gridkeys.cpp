#include "grid/gridkeys.h"

#include <QKeyEvent>

namespace {

bool isCharacter(const QString &text)
{
    return !text.isEmpty() && (text.at(0).isPrint() || text.at(0).isHighSurrogate());
}

} // namespace

std::optional<GridOpening> openingKey(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers commands =
        event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    // Where AltGr is no modifier of its own it arrives as Ctrl and Alt together with the character.
    const bool altGr = commands == (Qt::ControlModifier | Qt::AltModifier);
    if (commands && !(altGr && isCharacter(event.text())))
        return std::nullopt;
    switch (event.key()) {
    case Qt::Key_F2:
        return GridOpening{false, std::nullopt};
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return GridOpening{true, std::nullopt};
    case Qt::Key_Backspace:
        return GridOpening{false, QString()};
    default:
        break;
    }
    if (!isCharacter(event.text()))
        return std::nullopt;
    return GridOpening{false, event.text()};
}

bool isCtrlAlone(const QKeyEvent &event)
{
    return (event.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
}
