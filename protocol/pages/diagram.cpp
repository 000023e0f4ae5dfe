#include "protocol/pages/diagram.h"

#include "core/auswertung.h"
#include "core/kalibrierung.h"
#include "protocol/pages/resultblocks.h"

#include <algorithm>

namespace {

std::vector<double> valuesOf(Kalibrierung &document, MerkmalEnum merkmal)
{
    const std::int32_t total = document.PrüfpunkteTotal();
    if (total > Auswertung::maximumPoints)
        throw RunTimeError(ErrorNumber::Overflow);
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(std::max(total, 0)));
    const std::int32_t fields = document.PrüffelderAnzahl();
    for (std::int32_t field = 1; field <= fields; ++field) {
        const std::int32_t points = document.PrüffeldPrüfpunkte(field);
        for (std::int32_t point = 1; point <= points; ++point) {
            values.push_back(merkmal == mZ
                                 ? document.PrüffeldWert(field)
                                 : document.values().number(document.Messwert(
                                       static_cast<PrüfmerkmalEnum>(merkmal), field, point)));
        }
    }
    return values;
}

LabelledAxis labelled(Kalibrierung &document, MerkmalEnum merkmal, const Axis &axis)
{
    const Prüfmerkmal &characteristic = merkmalOf(document, merkmal);
    LabelledAxis result{
        axis, characteristic.Formelzeichen() + u" ["_qs + characteristic.Einheit() + u']', {}};
    for (const double tick : ticksOf(axis))
        result.labels.push_back(document.values().display(tick, characteristic.Nachkommastellen()));
    return result;
}

} // namespace

DiagramData diagramData(Kalibrierung &document, MerkmalEnum dependent, MerkmalEnum independent)
{
    const std::vector<double> x = valuesOf(document, independent);
    const std::vector<double> y = valuesOf(document, dependent);
    const Axis horizontal = axisOf(x);
    const auto shown = [&document](const QString &text) {
        return document.values().number(QStringView(text));
    };
    const double slope =
        shown(document.StatistikKalibriergeradeAnstiegString(dependent, independent));
    const double intercept =
        shown(document.StatistikKalibriergeradeAchsenabschnittString(dependent, independent));
    const double ends[] = {slope * horizontal.dataMinimum + intercept,
                           slope * horizontal.dataMaximum + intercept};
    const Axis vertical = axisOf(y, ends);

    DiagramData data;
    data.horizontal = labelled(document, independent, horizontal);
    data.vertical = labelled(document, dependent, vertical);
    data.points.reserve(x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        data.points.emplace_back(x[i], y[i]);
    data.lineStart = {horizontal.dataMinimum, ends[0]};
    data.lineEnd = {horizontal.dataMaximum, ends[1]};
    return data;
}
