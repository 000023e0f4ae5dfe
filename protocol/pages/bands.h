#pragma once

#include "protocol/pages/drawing.h"
#include "protocol/pages/textmeasure.h"

#include <QString>

/// A band of \a text in the protocol's style (\a heading, \a level), broken at the content's width.
/// Empty for a combination that has no style. A text that would fill several pages is made smaller.
Drawing textBand(const TextMeasure &measure, const QString &text, bool heading, int level);

/// The same with a little room below, as what stands above a table.
Drawing tableHeading(const TextMeasure &measure, const QString &text, bool heading, int level);

/// An empty band of \a height centimetres.
Drawing spacerBand(double height);
