#pragma once

#include <QList>
#include <QObject>

class QWidget;

/// As long as it lives, a window and those that it belongs to can't be closed, and the program
/// can't be told to end.
///
/// For whoever waits for a dialog of that window: the end of a session closes windows behind modal
/// dialogs as well, and they would be gone when the wait is over. It can be ended again.
class HaltOffen : public QObject
{
public:
    /// Keeps the window that \a widget is in; only the program for null.
    explicit HaltOffen(const QWidget *widget);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<const QObject *> m_windows;
};
