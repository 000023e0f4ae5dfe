#include "protocol/windows/zoom.h"

#include "core/runtimeerror.h"
#include "core/values.h"

#include <algorithm>

namespace zoom {

QStringList listed()
{
    return {QStringLiteral("200%"), QStringLiteral("150%"), QStringLiteral("100%"),
            QStringLiteral("75%"),  QStringLiteral("50%"),  QStringLiteral("25%"),
            QStringLiteral("10%")};
}

double factorOf(const QString &text, const Values &values)
{
    constexpr double percent = 100.0;
    const qsizetype sign = text.indexOf(u'%');
    const double factor = sign < 0 ? values.number(QStringView(text))
                                   : values.number(QStringView(text).first(sign)) / percent;
    if (!(factor > 0.0 && factor <= largest))
        throw RunTimeError(ErrorNumber::InvalidPropertyValue);
    return factor;
}

QString neighbour(double factor, int steps, const Values &values)
{
    QStringList texts = listed();
    QString result;
    // The last text that still lies beyond the factor is the nearest one.
    if (steps < 0)
        std::reverse(texts.begin(), texts.end());
    for (const QString &text : texts) {
        const double candidate = factorOf(text, values);
        if (steps > 0 ? candidate > factor : candidate < factor)
            result = text;
    }
    return result;
}

} // namespace zoom
