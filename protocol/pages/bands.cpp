#include "protocol/pages/bands.h"

#include "protocol/pages/cells.h"
#include "protocol/pages/pageformat.h"

namespace {

constexpr int mostHeadingLines = 10;
constexpr double aboveTableCm = 0.1;

} // namespace

Drawing textBand(const TextMeasure &measure, const QString &text, bool heading, int level)
{
    Drawing band;
    const std::optional<TextStyle> style = protocolStyle(heading, level);
    if (!style)
        return band;
    const FittedText fitted = fittedText(measure, text, *style, contentWidthCm, mostHeadingLines);
    const double lineHeight = measure.lineHeight(fitted.style);
    double baseline = -measure.ascent(fitted.style);
    for (const QString &line : fitted.lines) {
        measure.add(band, measure.placed(line, {0.0, baseline}, fitted.style));
        baseline -= lineHeight;
    }
    band.reserve(lineHeight * static_cast<double>(fitted.lines.size()));
    return band;
}

Drawing tableHeading(const TextMeasure &measure, const QString &text, bool heading, int level)
{
    Drawing band = textBand(measure, text, heading, level);
    band.reserve(band.extents().height() + aboveTableCm);
    return band;
}

Drawing spacerBand(double height)
{
    Drawing band;
    band.reserve(height);
    return band;
}
