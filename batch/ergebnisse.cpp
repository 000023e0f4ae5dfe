#include "batch/ergebnisse.h"

#include "core/kalibrierung.h"

namespace {

struct Paar
{
    MerkmalEnum x;
    MerkmalEnum y;
    QString schluessel;
    QString bezeichnung;
};

using Wert = double (Kalibrierung::*)(MerkmalEnum);
using Anzeige = QString (Kalibrierung::*)(MerkmalEnum);
using Paarwert = double (Kalibrierung::*)(MerkmalEnum, MerkmalEnum);
using Paaranzeige = QString (Kalibrierung::*)(MerkmalEnum, MerkmalEnum);

template <typename Value, typename Display>
Ergebnis ergebnis(const QString &key, const QString &caption, Value value, Display display)
{
    Ergebnis result{key, caption, {}, QStringLiteral("-"), {}};
    try {
        result.wert = value();
    } catch (const RunTimeError &error) {
        result.fehler = error;
        return result;
    }
    try {
        const QString text = display();
        if (text != u"(Fehler)")
            result.anzeige = text;
    } catch (const RunTimeError &) {
        // The value stands, its display format does not: shown as "-" like a missing one.
    }
    return result;
}

Ergebnisgruppe jeMerkmal(Kalibrierung &document, const QString &key, const QString &caption,
                         Wert value, Anzeige display)
{
    Ergebnisgruppe group{key, caption, {}};
    const auto add = [&](MerkmalEnum merkmal, const QString &memberKey, const QString &member) {
        group.ergebnisse.push_back(ergebnis(
            memberKey, member, [&] { return (document.*value)(merkmal); },
            [&] { return (document.*display)(merkmal); }));
    };
    add(mDirekt, QStringLiteral("direkt"), u"direktes Prüfmerkmal"_qs);
    add(mIndirekt, QStringLiteral("indirekt"), u"indirektes Prüfmerkmal"_qs);
    add(mZ, QStringLiteral("kovariable"), QStringLiteral("Kovariable"));
    return group;
}

Ergebnisgruppe jePaar(Kalibrierung &document, const QString &key, const QString &caption,
                      const std::vector<Paar> &pairs, Paarwert value, Paaranzeige display)
{
    Ergebnisgruppe group{key, caption, {}};
    for (const Paar &pair : pairs) {
        group.ergebnisse.push_back(ergebnis(
            pair.schluessel, pair.bezeichnung, [&] { return (document.*value)(pair.x, pair.y); },
            [&] { return (document.*display)(pair.x, pair.y); }));
    }
    return group;
}

// Pairs without direction.
std::vector<Paar> paare()
{
    return {{mDirekt, mIndirekt, QStringLiteral("direkt_indirekt"),
             u"direktes und indirektes Prüfmerkmal"_qs},
            {mDirekt, mZ, QStringLiteral("direkt_kovariable"),
             u"direktes Prüfmerkmal und Kovariable"_qs},
            {mIndirekt, mZ, QStringLiteral("indirekt_kovariable"),
             u"indirektes Prüfmerkmal und Kovariable"_qs}};
}

// Lines: the first of a pair depends on the second.
std::vector<Paar> richtungen()
{
    return {{mDirekt, mIndirekt, QStringLiteral("direkt_indirekt"), u"direkt aus indirekt"_qs},
            {mIndirekt, mDirekt, QStringLiteral("indirekt_direkt"), u"indirekt aus direkt"_qs},
            {mDirekt, mZ, QStringLiteral("direkt_kovariable"), u"direkt aus Kovariable"_qs},
            {mZ, mDirekt, QStringLiteral("kovariable_direkt"), u"Kovariable aus direkt"_qs},
            {mIndirekt, mZ, QStringLiteral("indirekt_kovariable"), u"indirekt aus Kovariable"_qs},
            {mZ, mIndirekt, QStringLiteral("kovariable_indirekt"), u"Kovariable aus indirekt"_qs}};
}

} // namespace

std::vector<Ergebnisgruppe> ergebnisse(Kalibrierung &document)
{
    using K = Kalibrierung;
    return {
        jeMerkmal(document, QStringLiteral("mittelwert"), QStringLiteral("Mittelwerte"),
                  &K::StatistikMittelwert, &K::StatistikMittelwertString),
        jeMerkmal(document, QStringLiteral("varianz"), QStringLiteral("Varianzen"),
                  &K::StatistikVarianz, &K::StatistikVarianzString),
        jeMerkmal(document, QStringLiteral("standardabweichung"),
                  QStringLiteral("Standardabweichungen"), &K::StatistikStandardabweichung,
                  &K::StatistikStandardabweichungString),
        jePaar(document, QStringLiteral("kovarianz"), QStringLiteral("Kovarianzen"), paare(),
               &K::StatistikKovarianz, &K::StatistikKovarianzString),
        jePaar(document, QStringLiteral("bestimmtheitsmass"), u"Bestimmtheitsmaße"_qs, paare(),
               &K::StatistikBestimmtheitsmaß, &K::StatistikBestimmtheitsmaßString),
        jePaar(document, QStringLiteral("anstieg"), u"Kalibriergeraden: Anstieg"_qs, richtungen(),
               &K::StatistikKalibriergeradeAnstieg, &K::StatistikKalibriergeradeAnstiegString),
        jePaar(document, QStringLiteral("achsenabschnitt"), u"Kalibriergeraden: Achsenabschnitt"_qs,
               richtungen(), &K::StatistikKalibriergeradeAchsenabschnitt,
               &K::StatistikKalibriergeradeAchsenabschnittString),
    };
}
