#pragma once

#include "wizard/zahlenfeld.h"

#include <cstdint>
#include <optional>

class Values;

/// What the number boxes of this program make of their texts.

inline constexpr std::int32_t minimumCount = 3;    ///< of fields, and of points of a field
inline constexpr std::int32_t maximumCount = 9999; ///< that can be typed; a file may hold more

/// Whether \a text is a number of the locale, or one with a decimal point.
bool isNumberOrPointNumber(const QString &text, const Values &values);

/// The decimal places that \a text stands for: a number of the locale, else the leading number of
/// one with a point. Nothing where it is neither or too large.
std::optional<std::int32_t> readPlaces(const QString &text, const Values &values);

/// The leading number of \a text as a whole number, halves to even; the largest or smallest one
/// where it lies beyond.
std::int32_t readCount(const QString &text);

/// Counts decimal places up and down between 0 and the most that are shown.
Zahlenfeld::Step placesStep(const Values &values);

/// Counts fields up and down between minimumCount and maximumCount.
Zahlenfeld::Step countStep(const Values &values);
