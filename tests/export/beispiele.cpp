#include "tests/export/beispiele.h"

#include <QTest>

#include <cmath>
#include <cstring>
#include <random>

namespace {

using Felder = std::vector<std::vector<double>>;

const Felder gewoehnlichDirekt{{95.1, 96.3, 94.7}, {97.51, 98.2, 96.94, 97.3}, {99.4, 98.8, 100.2}};
const Felder gewoehnlichIndirekt{{31.2, 33.8, 30.1}, {38.7, 41.2, 36.4, 39.9}, {45.3, 43.1, 47.6}};

void gewoehnlich(Kalibrierung &document)
{
    document.DirektesPrüfmerkmal().setName(u"Verdichtungsgrad"_qs);
    document.DirektesPrüfmerkmal().setFormelzeichen(u"DPr"_qs);
    document.DirektesPrüfmerkmal().setEinheit(u"%"_qs);
    document.IndirektesPrüfmerkmal().setName(u"Messwert"_qs);
    document.IndirektesPrüfmerkmal().setFormelzeichen(u"FDVK"_qs);
    setzeWerte(document, gewoehnlichDirekt, gewoehnlichIndirekt);
}

void lade(Kalibrierung &document, const QString &name)
{
    document.LoadFile(QStringLiteral(PROJECT_DIR) + u"/examples/"_qs + name);
}

// Sixteen points, 0 and multiples of the mean only, so that no sum and no quotient loses a bit.
void mitMittelwert(Kalibrierung &document, double mean, int places)
{
    const double twice = 2 * mean;
    setzeWerte(document,
               {{0, twice, mean},
                {mean, mean, mean},
                {mean, mean, mean, twice, 0, mean, mean, mean, mean, mean}},
               {{1, 2, 4}, {3, 5, 4}, {6, 8, 7, 9, 6, 8, 7, 7, 9, 8}});
    document.setZwischenergebnisseRunden(true);
    document.setNachkommastellenMittelwerte(places);
}

// Added plainly, the direct values give a mean that rounds to 96,9; the program's is 97,0.
void summe(Kalibrierung &document)
{
    setzeWerte(document,
               {{95.22, 99.51, 100.29, 104.81},
                {100.87, 94.56, 90.06, 96.41},
                {99.35, 92.27, 91.32, 98.73}},
               {{31.2, 33.8, 30.1, 35.5}, {38.7, 41.2, 36.4, 39.9}, {45.3, 43.1, 47.6, 44.4}});
    document.setZwischenergebnisseRunden(true);
}

// Values with two decimals, as engineers type them.
void zufaellig(Kalibrierung &document, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> cents(-900, 900);
    std::uniform_int_distribution<std::size_t> points(3, 9);
    Felder direct(5);
    Felder indirect(5);
    for (std::size_t field = 0; field < direct.size(); ++field) {
        const std::size_t count = points(random);
        for (std::size_t point = 0; point < count; ++point) {
            direct[field].push_back((9000 + 200 * int(field) + cents(random)) / 100.0);
            indirect[field].push_back((3000 + 500 * int(field) + cents(random)) / 100.0);
        }
    }
    setzeWerte(document, direct, indirect);
    document.setZwischenergebnisseRunden(seed % 2 == 0);
}

void setzeMinimum(Kalibrierung &document, double minimum)
{
    document.DataStore().set(
        u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs, minimum);
}

// R2 of direct and indirect is 1E-18 or so.
void unabhaengig(Kalibrierung &document)
{
    setzeWerte(document, {{1, 2, 3}, {1, 2, 3}, {1, 2, 3}},
               {{7, 8, 7}, {7, 8, 7}, {7, 8, 7.00000001}});
}

// R2 of direct and indirect is 1, the minimum lies \a steps doubles above it.
void grenze(Kalibrierung &document, int steps)
{
    setzeWerte(document, {{1, 2, 3}, {2, 3, 4}, {3, 4, 5}}, {{2, 4, 6}, {4, 6, 8}, {6, 8, 10}});
    double minimum = document.StatistikBestimmtheitsmaß(mIndirekt, mDirekt);
    for (int i = 0; i < steps; ++i)
        minimum = std::nextafter(minimum, 2.0);
    setzeMinimum(document, minimum);
}

void sonderzeichen(Kalibrierung &document)
{
    gewoehnlich(document);
    document.DirektesPrüfmerkmal().setName(u"=1+1"_qs);
    document.IndirektesPrüfmerkmal().setName(u"@SUMME(A1)"_qs);
    document.Kovariable().setName(u"+\"'<&>[]:*?/\\ _x0041_ \u0001\u000b\r\n\t²"_qs);
    document.setPrüffeldName(1, u"=HYPERLINK(\"x\")"_qs);
    document.setPrüffeldName(2, u"'-2+3"_qs);
    document.setPrüffeldName(3, QString(40000, u'ß'));
    document.setPrüfpunktName(1, u" \u0002_x000D_ \U0001F600 "_qs);
    document.DataStoreLet(u"Protokoll Verdichtung Kalibrierfeld Bemerkungen"_qs,
                          QString(u"=A1"_qs + QString(70000, u'x')));
}

void setzeText(Kalibrierung &document, const QString &key, const QString &text)
{
    document.DataStore().set(key, text);
}

} // namespace

void setzeWerte(Kalibrierung &document, const std::vector<std::vector<double>> &direct,
                const std::vector<std::vector<double>> &indirect)
{
    document.setPrüffelderAnzahl(static_cast<int>(direct.size()));
    for (std::size_t field = 0; field < direct.size(); ++field) {
        const int f = static_cast<int>(field) + 1;
        document.setPrüffeldPrüfpunkte(f, static_cast<int>(direct[field].size()));
        for (std::size_t point = 0; point < direct[field].size(); ++point) {
            const int p = static_cast<int>(point) + 1;
            document.setMesswert(pmDirekt, f, p, direct[field][point]);
            document.setMesswert(pmIndirekt, f, p, indirect[field][point]);
        }
    }
}

std::vector<Beispiel> beispiele()
{
    using K = Kalibrierung;
    return {
        {"file, good", [](K &d) { lade(d, u"verdichtungsgrad.xml"_qs); }},
        {"file, critical, rounded", [](K &d) { lade(d, u"verformungsmodul.xml"_qs); }},
        {"ordinary", gewoehnlich},
        {"ordinary, rounded",
         [](K &d) {
             gewoehnlich(d);
             d.setZwischenergebnisseRunden(true);
         }},
        {"mean 2.45 to one place", [](K &d) { mitMittelwert(d, 2.45, 1); }},
        {"mean 2.35 to one place", [](K &d) { mitMittelwert(d, 2.35, 1); }},
        {"mean 0.125 to two places", [](K &d) { mitMittelwert(d, 0.125, 2); }},
        {"mean -2.5 to no place", [](K &d) { mitMittelwert(d, -2.5, 0); }},
        {"mean 1250 to tens", [](K &d) { mitMittelwert(d, 1250, -2); }},
        {"mean 0.35, by 0.1 a little less than 3.5", [](K &d) { mitMittelwert(d, 0.35, 1); }},
        {"mean 3.15, by 0.1 a little less than 31.5", [](K &d) { mitMittelwert(d, 3.15, 1); }},
        {"mean 1.245, by 0.01 a little more than 124.5", [](K &d) { mitMittelwert(d, 1.245, 2); }},
        {"rounding overflows", [](K &d) { mitMittelwert(d, 300000, 4); }},
        {"rounding to 400 places", [](K &d) { mitMittelwert(d, 2.45, 400); }},
        {"random 1", [](K &d) { zufaellig(d, 1); }},
        {"random 2, rounded", [](K &d) { zufaellig(d, 2); }},
        {"random 4, rounded", [](K &d) { zufaellig(d, 4); }},
        {"random 6, rounded", [](K &d) { zufaellig(d, 6); }},
        {"random 8, rounded", [](K &d) { zufaellig(d, 8); }},
        {"a sum that rounds otherwise when added plainly", summe},
        {"nothing entered", [](K &) {}},
        {"one value missing",
         [](K &d) {
             gewoehnlich(d);
             d.removeMesswert(pmDirekt, 2, 3);
         }},
        {"a value that is no number, one too large, one empty",
         [](K &d) {
             gewoehnlich(d);
             setzeText(d, d.MesswertKey(pmIndirekt, 1, 2), u"=1+1"_qs);
             setzeText(d, d.MesswertKey(pmIndirekt, 1, 3), u"1E999"_qs);
             setzeText(d, d.MesswertKey(pmDirekt, 1, 3), u""_qs);
         }},
        {"a covariable that is no number",
         [](K &d) {
             gewoehnlich(d);
             setzeText(d, u"Name Prüffeld 2"_qs, u"zwei"_qs);
         }},
        {"no covariance with the covariable",
         [](K &d) {
             setzeWerte(d, {{1, 2, 3}, {4, 5, 6}, {1, 2, 3}}, {{7, 8, 9}, {2, 2, 2}, {7, 8, 9}});
         }},
        {"no variance",
         [](K &d) {
             setzeWerte(d, {{5, 5, 5}, {5, 5, 5}, {5, 5, 5}}, {{1, 2, 3}, {2, 3, 4}, {3, 4, 5}});
         }},
        {"all zero",
         [](K &d) {
             setzeWerte(d, Felder(3, {0, 0, 0}), Felder(3, {0, 0, 0}));
         }},
        {"squares too large",
         [](K &d) {
             setzeWerte(d, {{1e200, -1e200, 3e200}, {1e200, 2e200, 2e200}, {0, 1e200, 9e200}},
                        {{1, 2, 3}, {2, 3, 5}, {3, 4, 7}});
         }},
        {"a line through the origin",
         [](K &d) {
             setzeWerte(d, {{0.1, 0.1, 0.1}, {0.2, 0.2, 0.2}, {0.3, 0.3, 0.3}},
                        {{0.3, 0.3, 0.3}, {0.6, 0.6, 0.6}, {0.9, 0.9, 0.9}});
         }},
        {"minimum reached", [](K &d) { grenze(d, 0); }},
        {"minimum missed by five last bits", [](K &d) { grenze(d, 5); }},
        {"minimum missed by nine last bits", [](K &d) { grenze(d, 9); }},
        {"R2 by the minimum too large",
         [](K &d) {
             gewoehnlich(d);
             setzeMinimum(d, 1e-309);
         }},
        {"R2 by the minimum too small",
         [](K &d) {
             unabhaengig(d);
             setzeMinimum(d, 1e308);
         }},
        {"no point", [](K &d) { setzeText(d, u"Anzahl Prüffelder"_qs, u"0"_qs); }},
        {"one point",
         [](K &d) {
             gewoehnlich(d);
             setzeText(d, u"Anzahl Prüffelder"_qs, u"1"_qs);
             setzeText(d, u"Prüffeld Prüfpunktanzahl 1"_qs, u"1"_qs);
         }},
        {"one point, rounded",
         [](K &d) {
             gewoehnlich(d);
             setzeText(d, u"Anzahl Prüffelder"_qs, u"1"_qs);
             setzeText(d, u"Prüffeld Prüfpunktanzahl 1"_qs, u"1"_qs);
             d.setZwischenergebnisseRunden(true);
             d.setNachkommastellenMittelwerte(0);
         }},
        {"a field without points",
         [](K &d) {
             gewoehnlich(d);
             setzeText(d, u"Prüffeld Prüfpunktanzahl 2"_qs, u"-4"_qs);
         }},
        {"options that can't be read",
         [](K &d) {
             gewoehnlich(d);
             setzeText(d, u"Zwischenergebnisse runden"_qs, u"vielleicht"_qs);
             setzeText(
                 d, u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs,
                 u"?"_qs);
         }},
        {"places that can't be read",
         [](K &d) {
             gewoehnlich(d);
             setzeText(d, u"Nachkommastellen Varianzen"_qs, u"1e99"_qs);
             setzeText(d, u"Direktes Prüfmerkmal Nachkommastellen"_qs, u"zwei"_qs);
         }},
        {"many places",
         [](K &d) {
             gewoehnlich(d);
             d.setNachkommastellenVarianzen(40);
         }},
        {"eighteen places",
         [](K &d) {
             gewoehnlich(d);
             d.setNachkommastellenAnstieg(18);
             d.setNachkommastellenAchsenabschnitt(18);
             d.IndirektesPrüfmerkmal().setNachkommastellen(18);
         }},
        {"odd names", sonderzeichen},
    };
}

std::unique_ptr<Kalibrierung> dokument(const Beispiel &example)
{
    auto document = std::make_unique<Kalibrierung>(QLocale(QLocale::German, QLocale::Germany));
    example.bereite(*document);
    return document;
}

std::unique_ptr<Kalibrierung> dokument(const char *name)
{
    for (const Beispiel &example : beispiele()) {
        if (std::strcmp(example.name, name) == 0)
            return dokument(example);
    }
    qFatal("no example %s", name);
    return nullptr;
}
