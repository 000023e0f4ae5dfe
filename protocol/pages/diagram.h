#pragma once

#include "core/merkmal.h"
#include "protocol/pages/axisscale.h"
#include "protocol/pages/drawing.h"
#include "protocol/pages/pageformat.h"
#include "protocol/pages/textmeasure.h"

#include <QPointF>
#include <QString>

#include <vector>

class Kalibrierung;

/// How large a diagram is drawn; lengths in centimetres. As it is: for the protocol.
struct DiagramSize
{
    double frameWidth = 10.0;
    double frameHeight = 7.0;
    double contentWidth =
        contentWidthCm;         ///< the frame stands in its middle where the texts leave room
    double farthestFrame = 7.6; ///< left end of the frame, however far left of it points lie
    double farthestText = contentWidthCm; ///< right end of the labels below the frame
};

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

/// The diagram, its top at 0. Points that lie outside of the axes are drawn and have room in the
/// extents.
Drawing diagramDrawing(const DiagramData &data, const TextMeasure &measure,
                       const DiagramSize &size = {});
