#include "batch/zahlentext.h"

#include <array>
#include <charconv>

QByteArray zahlentext(double value)
{
    std::array<char, 40> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::general, 17)
                         .ptr;
    return {digits.data(), end - digits.data()};
}
