#pragma once

#include "protocol/pages/drawing.h"
#include "protocol/pages/pageformat.h"
#include "protocol/pages/textmeasure.h"

#include <QString>

#include <cstdint>

/// One sheet of the protocol. The drawing's origin is the sheet's lower left corner.
struct Page
{
    std::int32_t number = 0; ///< from 1
    QString name;            ///< "DrawDest " and the number
    PageFormat format;
    Drawing drawing;
};

/// An empty page number \a number: its number at the foot, the insertion point at the upper left
/// corner of the content; with \a diagnostics also its name and extents in the upper margin.
Page makePage(std::int32_t number, const PageFormat &format, const TextMeasure &measure,
              bool diagnostics = false);
