#include "protocol/pages/clsbander.h"

#include "core/runtimeerror.h"

#include <limits>

void clsBander::DrawBand(const Drawing &band)
{
    const double height = band.extents().height();
    if (UsedHeight + height > space() && !PageEmpty) {
        NewPage();
        UsedHeight = 0.0;
    }
    if (!Target)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    UsedHeight += height;
    Target->insert(band);
    PageEmpty = false;
    Target->offsetInsertionPoint(0.0, -height);
}

void clsBander::NewPage()
{
    if (PageCount > 0)
        emit CompletePage();
    emit clsBanderEvents::NewPage();
    if (PageCount == std::numeric_limits<std::int32_t>::max())
        throw RunTimeError(ErrorNumber::Overflow);
    ++PageCount;
    PageEmpty = true;
    emit PageStarted();
}
