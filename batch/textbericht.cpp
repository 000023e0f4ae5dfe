#include "batch/textbericht.h"

#include "batch/ergebnisse.h"
#include "batch/texttabelle.h"
#include "core/baskalibrierungwendral.h"
#include "core/kalibrierung.h"
#include "core/urteil.h"

namespace {

// The text that value() gives, or "(Fehler)" where it raises an error.
template <typename Value>
QString orFehler(Value value)
{
    try {
        return value();
    } catch (const RunTimeError &) {
        return QStringLiteral("(Fehler)");
    }
}

QString heading(const QString &text)
{
    return u'\n' + text + u'\n';
}

QString merkmale(Kalibrierung &document)
{
    TextTabelle table(QStringLiteral("llllr"));
    table.add({QString(), QStringLiteral("Name"), QStringLiteral("Formelzeichen"),
               QStringLiteral("Einheit"), QStringLiteral("Nachkommastellen")});
    const auto add = [&](const QString &caption, Prüfmerkmal &merkmal) {
        table.add({caption, orFehler([&] { return merkmal.Name(); }),
                   orFehler([&] { return merkmal.Formelzeichen(); }),
                   orFehler([&] { return merkmal.Einheit(); }),
                   orFehler([&] { return QString::number(merkmal.Nachkommastellen()); })});
    };
    add(u"Direktes Prüfmerkmal"_qs, document.DirektesPrüfmerkmal());
    add(u"Indirektes Prüfmerkmal"_qs, document.IndirektesPrüfmerkmal());
    add(QStringLiteral("Kovariable"), document.Kovariable());
    return heading(u"Prüfmerkmale"_qs) + table.text();
}

void addField(TextTabelle &table, Kalibrierung &document, std::int32_t field)
{
    const QString covariable = orFehler([&] {
        return document.values().display(document.PrüffeldWert(field),
                                         document.Kovariable().Nachkommastellen());
    });
    for (std::int32_t point = 1; point <= document.PrüffeldPrüfpunkte(field); ++point) {
        table.add({document.PrüffeldName(field), covariable, document.PrüfpunktName(point),
                   document.MesswertString(pmDirekt, field, point),
                   document.MesswertString(pmIndirekt, field, point)});
    }
}

QString messwerte(Kalibrierung &document)
{
    const std::int32_t fields = document.PrüffelderAnzahl();
    // Ends with an error where the rows would be too many; PrüfpunkteTotal would let a huge count
    // pass that a negative one of another field outweighs.
    const std::int32_t points = document.StatistikPrüfpunkte();
    TextTabelle table(QStringLiteral("lrlrr"));
    table.add({u"Prüffeld"_qs, QStringLiteral("Kovariable"), u"Prüfpunkt"_qs,
               u"Direktes Prüfmerkmal"_qs, u"Indirektes Prüfmerkmal"_qs});
    for (std::int32_t field = 1; field <= fields; ++field)
        addField(table, document, field);
    return u"Prüffelder: %1, Prüfpunkte: %2\n\n"_qs.arg(fields).arg(points) + table.text();
}

QString prüffelder(Kalibrierung &document)
{
    try {
        return u'\n' + messwerte(document);
    } catch (const RunTimeError &error) {
        return u"\nPrüffelder und Prüfpunkte: %1 (%2)\n"_qs.arg(error.description(),
                                                                QString::number(error.number()));
    }
}

QString auswertung(Kalibrierung &document)
{
    // One table for all groups, so that the values stand below each other throughout.
    TextTabelle table(QStringLiteral("lr"));
    for (const Ergebnisgruppe &group : ergebnisse(document)) {
        table.add({group.bezeichnung, QString()});
        for (const Ergebnis &result : group.ergebnisse)
            table.add({u"  "_qs + result.bezeichnung, result.anzeige});
    }
    return heading(u"Statistische Auswertung"_qs) + table.text();
}

QString urteilstext(Kalibrierung &document)
{
    try {
        const Urteil verdict = urteil(document, QStringLiteral("\n  "));
        return heading(u"Urteil: "_qs + verdict.wertung) + u"  "_qs + verdict.satz + u'\n';
    } catch (const RunTimeError &error) {
        return heading(u"Urteil: kritisch"_qs) +
               u"  Das minimale Bestimmtheitsmaß ist nicht lesbar: %1 (%2)\n"_qs.arg(
                   error.description(), QString::number(error.number()));
    }
}

} // namespace

QString textBericht(const QString &datei, Kalibrierung &document)
{
    return datei + u'\n' + QString(datei.size(), u'=') + u'\n' + merkmale(document) +
           prüffelder(document) + auswertung(document) + urteilstext(document);
}
