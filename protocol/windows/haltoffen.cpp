#include "protocol/windows/haltoffen.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

HaltOffen::HaltOffen(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget->isWindow())
            m_windows.append(widget);
    }
    // Sees the events of all objects. A window that is just asking whether it may close gets no
    // second close event, and the program would end as if it had agreed.
    QCoreApplication::instance()->installEventFilter(this);
}

bool HaltOffen::eventFilter(QObject *watched, QEvent *event)
{
    const bool isEnd = event->type() == QEvent::Quit && watched == QCoreApplication::instance();
    const bool isClose = event->type() == QEvent::Close && m_windows.contains(watched);
    if (!isEnd && !isClose)
        return QObject::eventFilter(watched, event);
    event->ignore();
    return true;
}
