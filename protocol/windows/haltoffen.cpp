#include "protocol/windows/haltoffen.h"

#include <QEvent>
#include <QWidget>

HaltOffen::HaltOffen(QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget->isWindow())
            widget->installEventFilter(this);
    }
}

bool HaltOffen::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close)
        return QObject::eventFilter(watched, event);
    event->ignore();
    return true;
}
