#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class QWidget;

/// Checks boxes when the focus leaves them for another control of the same page or dialog.
///
/// A check runs after the focus event, so that a message box it shows can't upset the change of the
/// focus, and one box at a time. Menus, lists that pop up, other windows and controls outside of
/// the page set off no check.
class FocusChecks : public QObject
{
public:
    /// \a area is the page or dialog, and owns this object.
    explicit FocusChecks(QWidget *area);

    /// \a accepts checks \a box, tells the user what is wrong, and returns whether it may be left.
    /// After a refusal the focus returns to the box.
    void add(QWidget *box, std::function<bool()> accepts);
    /// Moving on to \a control sets off no check: it discards the entries.
    void exempt(QWidget *control) { m_exempt.push_back(control); }

    /// Moves the focus without setting off a check.
    void moveFocus(QWidget *target, Qt::FocusReason reason = Qt::OtherFocusReason);

private:
    struct Check
    {
        QWidget *box;
        std::function<bool()> accepts;
    };

    void focusChanged(QWidget *old, QWidget *now);
    void runPending();

    QWidget *m_area;
    std::vector<Check> m_checks;
    std::vector<QWidget *> m_exempt;
    std::vector<QPointer<QWidget>> m_pending;
    bool m_moving = false;
};
