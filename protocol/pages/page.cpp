#include "protocol/pages/page.h"

namespace {

constexpr double numberBaselineCm = 1.0; // above the sheet's lower edge
constexpr double diagnosticsTopCm = 0.9; // below the sheet's upper edge

void addPageNumber(Page &page, const TextMeasure &measure)
{
    const TextStyle style = styleOfPoints(12);
    const QString text = u"- "_qs + QString::number(page.number) + u" -"_qs;
    PlacedText placed = measure.placed(text, {}, style);
    placed.at = {(page.format.pageWidth() - placed.width) / 2, numberBaselineCm};
    measure.add(page.drawing, placed);
}

void addDiagnostics(Page &page, const TextMeasure &measure)
{
    const TextStyle style = styleOfPoints(8);
    const auto millimetres = [](double cm) { return QString::number(qRound(cm * 10)); };
    const QString extents = u"Zeichenfläche: 0, 0 bis "_qs + millimetres(page.format.pageWidth()) +
                            u", "_qs + millimetres(page.format.pageHeight()) + u" mm"_qs;
    double y = page.format.pageHeight() - diagnosticsTopCm;
    for (const QString &text : {u"Seite "_qs + QString::number(page.number), extents, page.name}) {
        measure.add(page.drawing, measure.placed(text, {page.format.leftMargin(), y}, style));
        y -= measure.lineHeight(style);
    }
}

} // namespace

Page makePage(std::int32_t number, const PageFormat &format, const TextMeasure &measure,
              bool diagnostics)
{
    Page page;
    page.number = number;
    page.name = u"DrawDest "_qs + QString::number(number);
    page.format = format;
    addPageNumber(page, measure);
    if (diagnostics)
        addDiagnostics(page, measure);
    page.drawing.setInsertionPoint({format.leftMargin(), format.pageHeight() - pageMarginCm});
    return page;
}
