#pragma once

#include "core/runtimeerror.h"
#include "wizard/dialogs.h"

#include <functional>

class QWidget;

/// The one way in which a failure reaches the user: one box, nothing logged, nothing tried again.
namespace fehlerbericht {

/// Where and how a failure is shown.
struct Rahmen
{
    QWidget *owner = nullptr;
    Dialogs::Icon icon = Dialogs::Icon::Exclamation;
    QString title;
    QString context; ///< a sentence that ends in a colon
};

/// Shows the box for error \a number; none for number 0, whatever the description.
void show(Dialogs &dialogs, const Rahmen &rahmen, std::int32_t number, const QString &description);

/// Runs \a step and shows the box if it fails. \returns whether it went through.
bool guarded(Dialogs &dialogs, const Rahmen &rahmen, const std::function<void()> &step);

} // namespace fehlerbericht
