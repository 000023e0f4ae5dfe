#include "wizard/zahlen.h"

#include "core/runtimeerror.h"
#include "core/values.h"

#include <algorithm>
#include <limits>

bool isNumberOrPointNumber(const QString &text, const Values &values)
{
    // The second reader knows the comma as a grouping character, which nobody means here.
    return values.isNumeric(text) || (!text.contains(u',') && Values(QLocale::c()).isNumeric(text));
}

std::optional<std::int32_t> readPlaces(const QString &text, const Values &values)
{
    if (!isNumberOrPointNumber(text, values))
        return std::nullopt;
    const Values::Reading reading = values.read(text);
    try {
        return toWhole(reading.status == Values::Reading::Status::Number ? reading.value
                                                                         : leadingNumber(text));
    } catch (const RunTimeError &) {
        return std::nullopt;
    }
}

std::int32_t readCount(const QString &text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return toWhole(std::clamp(leadingNumber(text), double{Limits::min()}, double{Limits::max()}));
}

Zahlenfeld::Step placesStep(const Values &values)
{
    return [&values](const QString &text, int direction) {
        const std::int32_t places = readPlaces(text, values).value_or(0);
        const std::int32_t next =
            std::clamp(std::clamp(places, -1, maximumDecimals + 1) + direction, 0, maximumDecimals);
        return values.text(Variant(next));
    };
}

Zahlenfeld::Step countStep(const Values &values)
{
    return [&values](const QString &text, int direction) {
        return values.text(std::clamp(leadingNumber(text) + direction, double{minimumCount},
                                      double{maximumCount}));
    };
}
