#include "export/geradenblatt.h"

#include "core/kalibrierung.h"
#include "export/arbeitsmappe.h"
#include "export/formeln.h"
#include "export/merkmalstexte.h"
#include "export/rechenplan.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace tabellenplan;

constexpr int endpunktkopf = 8; ///< heading row of the lines' ends
constexpr int diagrammzeile = 17;
constexpr int diagrammhoehe = 28; ///< in rows
constexpr int hinweisspalte =
    5; ///< the last one that is printed: what a slope lacks, its intercept lacks

// The genitive-free way to say which is computed from which.
QString richtung(MerkmalEnum x, MerkmalEnum y)
{
    return merkmalsart(x) + u" aus "_qs +
           (y == mZ        ? QStringLiteral("Kovariable")
            : y == mDirekt ? u"direktem Prüfmerkmal"_qs
                           : u"indirektem Prüfmerkmal"_qs);
}

class Geradenschreiber
{
public:
    Geradenschreiber(Arbeitsmappe &book, Blatt &sheet, Kalibrierung &document,
                     const Messwerttabelle &table, const Rechenplan &plan)
        : m_book(book), m_sheet(sheet), m_document(document), m_table(table), m_plan(plan)
    {
    }

    void schreibe();

private:
    void kopf();
    void rechenwegkopf(int column, const QString &result);
    void richtungen();
    void endpunkte(std::size_t pair);
    void diagramm(std::size_t pair);
    QString endpunktbereich(std::size_t pair, int column) const;

    Arbeitsmappe &m_book;
    Blatt &m_sheet;
    Kalibrierung &m_document;
    const Messwerttabelle &m_table;
    const Rechenplan &m_plan;
    qsizetype m_valueWidth = 14;
};

void Geradenschreiber::kopf()
{
    const Zellenstil head{.kopf = true};
    const std::array<QString, hinweisspalte + 2> captions{
        QStringLiteral("Kalibriergerade"),
        QStringLiteral("Anstieg"),
        QStringLiteral("Achsenabschnitt"),
        QStringLiteral("Anstieg bei der Ausgabe"),
        QStringLiteral("Achsenabschnitt bei der Ausgabe"),
        QStringLiteral("Hinweis"),
        QStringLiteral("Hinweis zum Anstieg")};
    m_sheet.zeilenhoehe(0, 45.0);
    for (std::size_t i = 0; i < captions.size(); ++i)
        m_sheet.text(0, static_cast<int>(i), captions[i], head);
    if (!m_plan.gerundet.value_or(false))
        return;
    rechenwegkopf(m_plan.geraden[0].anstieg.ort.rechenweg, QStringLiteral("Anstieg"));
    rechenwegkopf(m_plan.geraden[0].achsenabschnitt.ort.rechenweg,
                  QStringLiteral("Achsenabschnitt"));
}

void Geradenschreiber::rechenwegkopf(int column, const QString &result)
{
    const Zellenstil head{.kopf = true};
    m_sheet.text(0, column, result + u": Nachkommastellen"_qs, head);
    m_sheet.text(0, column + 1, result + u": ungerundet"_qs, head);
    m_sheet.text(0, column + 2, result + u": in Einheiten der letzten Stelle"_qs, head);
    m_sheet.text(0, column + 3, result + u": ganzzahlig gerundet"_qs, head);
    m_sheet.spaltenbreite(column, column + 3, 20);
}

void Geradenschreiber::richtungen()
{
    for (const Geradenzeilen &line : m_plan.geraden) {
        m_sheet.text(line.anstieg.ort.zeile, 0, richtung(line.x, line.y));
        line.anstieg.schreibe(m_sheet);
        line.achsenabschnitt.schreibe(m_sheet);
        for (const Rechenzeile *result : {&line.anstieg, &line.achsenabschnitt})
            m_valueWidth = std::max(m_valueWidth, result->anzeigebreite(m_document.values()));
    }
    m_sheet.text(7, 0, u"Das erste Merkmal = Anstieg · zweites Merkmal + Achsenabschnitt."_qs,
                 {.einzug = 1});
}

// Where there is no line, both ends lie on one point, so that the chart draws none: a chart takes
// an empty text for 0.
void Geradenschreiber::endpunkte(std::size_t pair)
{
    const Geradenzeilen &line = m_plan.geraden[2 * pair];
    const Stichprobe &x = m_table.stichproben[line.y]; // the independent one lies across
    const Stichprobe &y = m_table.stichproben[line.x];
    const auto smallest = [](const Stichprobe &sample) {
        return sample.werte.empty() ? 0.0
                                    : *std::min_element(sample.werte.begin(), sample.werte.end());
    };
    const double largest =
        x.werte.empty() ? 0.0 : *std::max_element(x.werte.begin(), x.werte.end());
    const QString known =
        formeln::allesZahlen({line.anstieg.wertzelle(), line.achsenabschnitt.wertzelle()});
    const bool isKnown = line.anstieg.wert && line.achsenabschnitt.wert;
    const int first = endpunktkopf + 1 + 2 * static_cast<int>(pair);
    for (const int end : {0, 1}) {
        const int row = first + end;
        const double at = end == 1 && isKnown ? largest : smallest(x);
        double height =
            isKnown ? *line.anstieg.wert * at + *line.achsenabschnitt.wert : smallest(y);
        if (!std::isfinite(height))
            height = smallest(y);
        m_valueWidth = std::max({m_valueWidth, merkmalsbreite(m_document, line.y, at),
                                 merkmalsbreite(m_document, line.x, height)});
        m_sheet.text(row, 0, richtung(line.x, line.y) + (end == 0 ? u": Anfang"_qs : u": Ende"_qs));
        m_sheet.formel(row, 1,
                       end == 0 ? u"MIN(%1)"_qs.arg(x.bereich)
                                : u"IF(%1,MAX(%2),MIN(%2))"_qs.arg(known, x.bereich),
                       at, {.zahlenformat = merkmalsformat(m_document, line.y)});
        m_sheet.formel(row, 2,
                       u"IF(%1,IFERROR(SUM(%2*%3,%4),MIN(%5)),MIN(%5))"_qs.arg(
                           known, line.anstieg.wertzelle(), formeln::zelle(geraden, row, 1),
                           line.achsenabschnitt.wertzelle(), y.bereich),
                       height, {.zahlenformat = merkmalsformat(m_document, line.x)});
        m_sheet.formel(row, hinweisspalte, u"IF(%1,\"\",\"keine Gerade\")"_qs.arg(known),
                       isKnown ? QString() : QStringLiteral("keine Gerade"), {.einzug = 1});
    }
}

QString Geradenschreiber::endpunktbereich(std::size_t pair, int column) const
{
    const int first = endpunktkopf + 1 + 2 * static_cast<int>(pair);
    return formeln::spaltenbereich(geraden, column, first, first + 1);
}

void Geradenschreiber::diagramm(std::size_t pair)
{
    const Geradenzeilen &line = m_plan.geraden[2 * pair];
    lxw_chart *chart = workbook_add_chart(m_book.handle(), LXW_CHART_SCATTER);
    if (!chart)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    const auto addSeries = [&](const QString &x, const QString &y, const char *name) {
        lxw_chart_series *series = chart_add_series(chart, (u'=' + x).toUtf8().constData(),
                                                    (u'=' + y).toUtf8().constData());
        if (!series)
            throw RunTimeError(ErrorNumber::OutOfMemory);
        chart_series_set_name(series, name);
        return series;
    };
    constexpr lxw_color_t blue = 0x1F4E79;
    constexpr lxw_color_t red = 0xC00000;
    constexpr lxw_color_t lightGrey = 0xD9D9D9;
    lxw_chart_series *points = addSeries(m_table.stichproben[line.y].bereich,
                                         m_table.stichproben[line.x].bereich, "Messwerte");
    lxw_chart_fill fill{};
    fill.color = blue;
    lxw_chart_line border{};
    border.color = blue;
    chart_series_set_marker_type(points, LXW_CHART_MARKER_CIRCLE);
    chart_series_set_marker_size(points, 6);
    chart_series_set_marker_fill(points, &fill);
    chart_series_set_marker_line(points, &border);

    lxw_chart_series *ends =
        addSeries(endpunktbereich(pair, 1), endpunktbereich(pair, 2), "Kalibriergerade");
    lxw_chart_line stroke{};
    stroke.color = red;
    stroke.width = 1.75F;
    chart_series_set_marker_type(ends, LXW_CHART_MARKER_NONE);
    chart_series_set_line(ends, &stroke);

    chart_title_set_name(chart, richtung(line.x, line.y).toUtf8().constData());
    const auto label = [&](lxw_chart_axis *axis, MerkmalEnum merkmal) {
        m_sheet.achsentitel(axis, merkmalMitEinheit(m_document, merkmal));
        // Below and beside the drawing, also where values are negative.
        chart_axis_set_label_position(axis, LXW_CHART_AXIS_LABEL_POSITION_LOW);
        lxw_chart_line grid{};
        grid.color = lightGrey;
        grid.width = 0.75F;
        chart_axis_major_gridlines_set_visible(axis, LXW_TRUE);
        chart_axis_major_gridlines_set_line(axis, &grid);
    };
    label(chart->x_axis, line.y);
    label(chart->y_axis, line.x);
    chart_legend_set_position(chart, LXW_CHART_LEGEND_BOTTOM);
    m_sheet.diagramm(diagrammzeile + static_cast<int>(pair) * diagrammhoehe, 0, chart);
}

void Geradenschreiber::schreibe()
{
    m_sheet.seite(false, 1);
    kopf();
    richtungen();
    const Zellenstil head{.kopf = true};
    m_sheet.text(endpunktkopf, 0, QStringLiteral("Gezeichnete Geraden"), head);
    m_sheet.text(endpunktkopf, 1, QStringLiteral("waagerecht"), head);
    m_sheet.text(endpunktkopf, 2, QStringLiteral("senkrecht"), head);
    for (std::size_t pair = 0; pair < tabellenpaare.size(); ++pair)
        endpunkte(pair);
    for (std::size_t pair = 0; pair < tabellenpaare.size(); ++pair)
        diagramm(pair);
    m_sheet.spaltenbreite(0, 0, 52);
    constexpr double margin = 2.0;
    m_sheet.spaltenbreite(1, 4, static_cast<double>(m_valueWidth) + margin);
    m_sheet.spaltenbreite(hinweisspalte, hinweisspalte + 1, 62);
    m_sheet.druckbereich(diagrammzeile + 3 * diagrammhoehe, hinweisspalte);
}

} // namespace

void schreibeGeraden(Arbeitsmappe &book, Blatt &sheet, Kalibrierung &document,
                     const Messwerttabelle &table, const Rechenplan &plan)
{
    Geradenschreiber(book, sheet, document, table, plan).schreibe();
}
