#include "wizard/focuschecks.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <utility>

FocusChecks::FocusChecks(QWidget *area) : QObject(area), m_area(area)
{
    connect(qApp, &QApplication::focusChanged, this, &FocusChecks::focusChanged);
}

void FocusChecks::add(QWidget *box, std::function<bool()> accepts)
{
    m_checks.push_back({box, std::move(accepts)});
}

void FocusChecks::moveFocus(QWidget *target, Qt::FocusReason reason)
{
    m_pending.clear();
    m_moving = true;
    target->setFocus(reason);
    m_moving = false;
}

void FocusChecks::focusChanged(QWidget *old, QWidget *now)
{
    // isAncestorOf() ends at a window, so that a list that pops up is no part of the area.
    if (m_moving || !old || !now || !m_area->isAncestorOf(now))
        return;
    const auto is = [old](const Check &check) { return check.box == old; };
    if (std::none_of(m_checks.begin(), m_checks.end(), is) ||
        std::find(m_exempt.begin(), m_exempt.end(), now) != m_exempt.end())
        return;
    m_pending.emplace_back(old);
    QMetaObject::invokeMethod(this, &FocusChecks::runPending, Qt::QueuedConnection);
}

void FocusChecks::runPending()
{
    for (const QPointer<QWidget> &box : std::exchange(m_pending, {})) {
        // Meanwhile the page can have been left, or the focus have returned to the box.
        const QWidget *focus = QApplication::focusWidget();
        if (!box || !box->isVisible() || box->hasFocus() || !focus || !m_area->isAncestorOf(focus))
            continue;
        const auto is = [&box](const Check &check) { return check.box == box; };
        const auto check = std::find_if(m_checks.begin(), m_checks.end(), is);
        if (check != m_checks.end() && !check->accepts()) {
            moveFocus(box);
            return;
        }
    }
}
