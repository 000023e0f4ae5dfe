#pragma once

#include <QString>

#include <cstdint>
#include <variant>

/// No value yet: reads as 0, false or the empty text.
struct Empty
{
    bool operator==(const Empty &) const = default;
};

/// Explicitly no value: has no text and no number (error 94).
struct Null
{
    bool operator==(const Null &) const = default;
};

/// The kinds of value that the keyed store holds. After loading a file every value is text.
using Variant = std::variant<Empty, Null, std::int32_t, double, bool, QString>;
