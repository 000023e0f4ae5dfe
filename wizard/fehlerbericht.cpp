#include "wizard/fehlerbericht.h"

#include <new>

void fehlerbericht::show(Dialogs &dialogs, const Rahmen &rahmen, std::int32_t number,
                         const QString &description)
{
    if (number == 0)
        return;
    dialogs.message(rahmen.owner, rahmen.icon, rahmen.title,
                    errorReport(rahmen.context, number, description));
}

bool fehlerbericht::guarded(Dialogs &dialogs, const Rahmen &rahmen,
                            const std::function<void()> &step)
{
    try {
        step();
        return true;
    } catch (const RunTimeError &error) {
        show(dialogs, rahmen, error.number(), error.description());
    } catch (const std::bad_alloc &) {
        const RunTimeError error(ErrorNumber::OutOfMemory);
        show(dialogs, rahmen, error.number(), error.description());
    }
    return false;
}
