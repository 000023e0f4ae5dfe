#pragma once

#include <QString>
#include <QWidget>

/// The control of \a window with the object name \a name; ends the test program where there is
/// none.
template <typename Control>
Control *control(const QWidget &window, const QString &name)
{
    auto *found = window.findChild<Control *>(name);
    if (!found)
        qFatal("no control %s", qPrintable(name));
    return found;
}

/// A caption as it is seen: without the marks of the keys.
inline QString seen(QString caption)
{
    return caption.remove(u'&');
}
