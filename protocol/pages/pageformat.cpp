#include "protocol/pages/pageformat.h"

#include <algorithm>

double PageFormat::scale() const
{
    constexpr double smallestUnscaled = 21.0;
    return std::min({1.0, sheetWidth / smallestUnscaled, sheetHeight / smallestUnscaled});
}
