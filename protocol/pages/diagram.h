#pragma once

#include "core/merkmal.h"
#include "protocol/pages/axisscale.h"
#include "protocol/pages/drawing.h"
#include "protocol/pages/textmeasure.h"

#include <QPointF>
#include <QString>

#include <vector>

class Kalibrierung;

/// Width and height of a diagram's frame.
inline constexpr double frameWidthCm = 10.0;
inline constexpr double frameHeightCm = 7.0;

/// One axis with its texts.
struct LabelledAxis
{
    Axis axis;
    QString title;               ///< symbol and unit
    std::vector<QString> labels; ///< one for each tick, from the axis minimum on
};

/// What a diagram shows; values in the characteristics' units.
struct DiagramData
{
    LabelledAxis horizontal;
    LabelledAxis vertical;
    std::vector<QPointF> points; ///< (independent, dependent) of every test point
    QPointF lineStart;           ///< at the independent characteristic's smallest value
    QPointF lineEnd;             ///< at its largest
};

/// The scatter of all test points and the calibration line dependent = f(independent).
///
/// The line is that of the slope and intercept as the protocol shows them. Raises 5 where all
/// values of a characteristic are equal or there are none, 13 where a value, slope or intercept is
/// no number, 94 for a missing value, 6 for an overflow or too many points.
DiagramData diagramData(Kalibrierung &document, MerkmalEnum dependent, MerkmalEnum independent);

/// The diagram, its top at 0, its frame in the middle of the content where the texts leave room.
/// Points that lie outside of the axes are drawn and have room in the extents.
Drawing diagramDrawing(const DiagramData &data, const TextMeasure &measure);
