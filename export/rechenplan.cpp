#include "export/rechenplan.h"

#include "core/baskalibrierungwendral.h"
#include "core/kalibrierung.h"
#include "core/statistik.h"
#include "export/formeln.h"
#include "export/summenschritt.h"

#include <cmath>
#include <functional>
#include <tuple>

namespace {

using namespace tabellenplan;

// An option of the document: its value, or why it can't be read.
template <typename Value>
struct Einstellung
{
    std::optional<Value> wert;
    QString fehler;

    template <typename Read>
    static Einstellung von(Read read)
    {
        try {
            return {read(), {}};
        } catch (const RunTimeError &error) {
            return {std::nullopt, error.description()};
        }
    }
};

// What distinguishes one result from the next.
struct Rechnung
{
    QString formel;
    QString schrittformel; ///< of a sum
    double schritt = 1.0;
    std::function<double()> programm; ///< the document's own result
    std::function<double()> ungerundet;
    Hindernisse hindernisse;
};

class Planer
{
public:
    Planer(Kalibrierung &document, const Messwerttabelle &table)
        : m_document(document)
        , m_table(table)
        , m_round(Einstellung<bool>::von([&] { return document.ZwischenergebnisseRunden(); }))
        , m_n(formeln::zelle(auswertung, punktezeile, wertspalte))
    {
        m_plan.gerundet = m_round.wert;
    }

    Rechenplan plane();

private:
    using Stellen = std::int32_t (Kalibrierung::*)();

    Ergebnisort ortAufAuswertung(int group, int member) const;
    void vollende(Rechenzeile &row, const Rechnung &calculation, Stellen places, bool rounds);
    void mittelwert(MerkmalEnum merkmal);
    void varianz(MerkmalEnum merkmal);
    void standardabweichung(MerkmalEnum merkmal);
    void kovarianz(std::size_t pair);
    void bestimmtheitsmass(std::size_t pair);
    void gerade(std::size_t direction);
    Rechnung anstieg(MerkmalEnum x, MerkmalEnum y) const;

    const Rechenzeile &kovarianzOf(MerkmalEnum x, MerkmalEnum y) const
    {
        return m_plan.kovarianzen[static_cast<std::size_t>(x + y - 1)];
    }
    double durchFreiheitsgrade(double sum) const
    {
        return sum == 0.0 ? 0.0 : sum / (static_cast<double>(m_table.punkte) - 1.0);
    }
    QString durchFreiheitsgrade(const QString &sum) const
    {
        // A sum that is not 0 can't be divided with a single point.
        return u"IF(%1>1,%2/(%1-1),IF(%2=0,0,1/(%1-1)))"_qs.arg(m_n, sum);
    }

    Kalibrierung &m_document;
    const Messwerttabelle &m_table;
    Einstellung<bool> m_round;
    QString m_n; ///< the cell with the number of points
    Rechenplan m_plan;
};

double wertOf(const Rechenzeile &row)
{
    return row.wert.value_or(std::nan(""));
}

Ergebnisort Planer::ortAufAuswertung(int group, int member) const
{
    return {.blatt = auswertung,
            .zeile = 2 + group * gruppenhoehe + member,
            .wert = wertspalte,
            .ausgabe = 3,
            .hinweis = 4,
            .rechenweg = 6,
            .schritt = 5};
}

void Planer::vollende(Rechenzeile &row, const Rechnung &calculation, Stellen places, bool rounds)
{
    const auto digits = Einstellung<int>::von([&] { return (m_document.*places)(); });
    if (digits.wert) {
        row.zahlenformat = basKalibrierungWendral::NumberFormat(*digits.wert);
        row.anzeigestellen = *digits.wert;
    }
    if (rounds && (!m_round.wert || !digits.wert)) {
        row.hinweis = u"Eine Berechnungsoption ist nicht lesbar: "_qs +
                      (m_round.wert ? digits.fehler : m_round.fehler);
        return;
    }
    row.formel = calculation.formel;
    row.schrittformel = calculation.schrittformel;
    row.schritt = calculation.schritt;
    if (rounds && *m_round.wert)
        row.stellen = digits.wert;
    bool dividedByZero = false;
    try {
        row.wert = calculation.programm();
    } catch (const RunTimeError &error) {
        dividedByZero = error.errorNumber() == ErrorNumber::DivisionByZero;
    }
    if (const double raw = calculation.ungerundet(); std::isfinite(raw))
        row.ungerundet = raw;
    ergaenzeHinweis(row, calculation.hindernisse, dividedByZero);
}

void Planer::mittelwert(MerkmalEnum merkmal)
{
    const Stichprobe &sample = m_table.stichproben[merkmal];
    Rechenzeile &row = m_plan.mittelwerte[merkmal];
    row.ort = ortAufAuswertung(0, merkmal);
    Rechnung calculation;
    calculation.formel = u"IF(COUNT(%1)=%2,IFERROR(IF(%2=0,0,%3/%2),\"\"),\"\")"_qs.arg(
        sample.bereich, m_n, formeln::genaueSumme(sample.bereich, row.schrittzelle()));
    calculation.schrittformel = schrittformel({u"MAX(MAX(%1),-MIN(%1))"_qs.arg(sample.bereich)});
    calculation.schritt = schritt({abstand(sample, 0.0)});
    calculation.programm = [&] { return m_document.StatistikMittelwert(merkmal); };
    calculation.ungerundet = [&] {
        if (sample.luecke)
            return std::nan("");
        const double sum = statistik::sum(sample.werte);
        return sum == 0.0 ? 0.0 : sum / static_cast<double>(m_table.punkte);
    };
    calculation.hindernisse.lueckenbedingung = u"COUNT(%1)<%2"_qs.arg(sample.bereich, m_n);
    calculation.hindernisse.luecke = sample.luecke;
    calculation.hindernisse.lueckentext =
        merkmal == mZ ? u"Ein Wert der Kovariable fehlt oder ist keine Zahl"_qs
        : merkmal == mDirekt
            ? u"Ein Messwert des direkten Prüfmerkmals fehlt oder ist keine Zahl"_qs
            : u"Ein Messwert des indirekten Prüfmerkmals fehlt oder ist keine Zahl"_qs;
    vollende(row, calculation, &Kalibrierung::NachkommastellenMittelwerte, true);
}

void Planer::varianz(MerkmalEnum merkmal)
{
    const Stichprobe &sample = m_table.stichproben[merkmal];
    const Rechenzeile &mean = m_plan.mittelwerte[merkmal];
    Rechenzeile &row = m_plan.varianzen[merkmal];
    row.ort = ortAufAuswertung(1, merkmal);
    Rechnung calculation;
    calculation.formel = formeln::geschuetzt(
        {mean.wertzelle()},
        durchFreiheitsgrade(formeln::genaueSumme(
            abweichungsprodukte(sample, mean.wertzelle(), sample, mean.wertzelle()),
            row.schrittzelle())));
    const QString size = abstandsformel(sample, mean.wertzelle());
    calculation.schrittformel = schrittformel({size, size});
    if (mean.wert)
        calculation.schritt = schritt({abstand(sample, *mean.wert), abstand(sample, *mean.wert)});
    calculation.programm = [&] { return m_document.StatistikVarianz(merkmal); };
    calculation.ungerundet = [&] {
        return mean.wert ? durchFreiheitsgrade(statistik::sumOfSquares(sample.werte, *mean.wert))
                         : std::nan("");
    };
    calculation.hindernisse = {.grundlagen = {&mean}, .nenner = u"(%1-1)"_qs.arg(m_n)};
    vollende(row, calculation, &Kalibrierung::NachkommastellenVarianzen, true);
}

void Planer::standardabweichung(MerkmalEnum merkmal)
{
    const Rechenzeile &variance = m_plan.varianzen[merkmal];
    Rechenzeile &row = m_plan.standardabweichungen[merkmal];
    row.ort = ortAufAuswertung(2, merkmal);
    Rechnung calculation;
    calculation.formel =
        formeln::geschuetzt({variance.wertzelle()}, u"SQRT(%1)"_qs.arg(variance.wertzelle()));
    calculation.programm = [&] { return m_document.StatistikStandardabweichung(merkmal); };
    calculation.ungerundet = [&] { return std::sqrt(wertOf(variance)); };
    calculation.hindernisse.grundlagen = {&variance};
    vollende(row, calculation, &Kalibrierung::NachkommastellenStandardabweichung, false);
}

void Planer::kovarianz(std::size_t pair)
{
    const auto [x, y] = tabellenpaare[pair];
    const Stichprobe &sampleX = m_table.stichproben[x];
    const Stichprobe &sampleY = m_table.stichproben[y];
    const Rechenzeile &meanX = m_plan.mittelwerte[x];
    const Rechenzeile &meanY = m_plan.mittelwerte[y];
    Rechenzeile &row = m_plan.kovarianzen[pair];
    row.ort = ortAufAuswertung(3, static_cast<int>(pair));
    Rechnung calculation;
    calculation.formel = formeln::geschuetzt(
        {meanX.wertzelle(), meanY.wertzelle()},
        durchFreiheitsgrade(formeln::genaueSumme(
            abweichungsprodukte(sampleX, meanX.wertzelle(), sampleY, meanY.wertzelle()),
            row.schrittzelle())));
    calculation.schrittformel = schrittformel(
        {abstandsformel(sampleX, meanX.wertzelle()), abstandsformel(sampleY, meanY.wertzelle())});
    if (meanX.wert && meanY.wert)
        calculation.schritt =
            schritt({abstand(sampleX, *meanX.wert), abstand(sampleY, *meanY.wert)});
    calculation.programm = [this, x = x, y = y] { return m_document.StatistikKovarianz(x, y); };
    calculation.ungerundet = [&] {
        return meanX.wert && meanY.wert
                   ? durchFreiheitsgrade(statistik::sumOfProducts(sampleX.werte, *meanX.wert,
                                                                  sampleY.werte, *meanY.wert))
                   : std::nan("");
    };
    calculation.hindernisse = {.grundlagen = {&meanX, &meanY}, .nenner = u"(%1-1)"_qs.arg(m_n)};
    vollende(row, calculation, &Kalibrierung::NachkommastellenKovarianzen, true);
}

void Planer::bestimmtheitsmass(std::size_t pair)
{
    const auto [x, y] = tabellenpaare[pair];
    const Rechenzeile &covariance = m_plan.kovarianzen[pair];
    const Rechenzeile &varianceX = m_plan.varianzen[x];
    const Rechenzeile &varianceY = m_plan.varianzen[y];
    const QString divisor = u"(%1*%2)"_qs.arg(varianceX.wertzelle(), varianceY.wertzelle());
    Rechenzeile &row = m_plan.bestimmtheitsmasse[pair];
    row.ort = ortAufAuswertung(4, static_cast<int>(pair));
    Rechnung calculation;
    calculation.formel =
        formeln::geschuetzt({covariance.wertzelle(), varianceX.wertzelle(), varianceY.wertzelle()},
                            u"%1*%1/%2"_qs.arg(covariance.wertzelle(), divisor));
    calculation.programm = [this, x = x, y = y] {
        return m_document.StatistikBestimmtheitsmaß(x, y);
    };
    calculation.ungerundet = [&] {
        return wertOf(covariance) * wertOf(covariance) / (wertOf(varianceX) * wertOf(varianceY));
    };
    calculation.hindernisse = {.grundlagen = {&covariance, &varianceX, &varianceY},
                               .nenner = divisor};
    vollende(row, calculation, &Kalibrierung::NachkommastellenBestimmtheitsmaße, true);
}

// Every slope is a quotient of two results that have the covariable in common.
Rechnung Planer::anstieg(MerkmalEnum x, MerkmalEnum y) const
{
    const Rechenzeile &dividend = x == mZ ? m_plan.varianzen[mZ] : kovarianzOf(x, mZ);
    const Rechenzeile &divisor = y == mZ ? m_plan.varianzen[mZ] : kovarianzOf(y, mZ);
    Rechnung calculation;
    calculation.formel = formeln::geschuetzt({dividend.wertzelle(), divisor.wertzelle()},
                                             dividend.wertzelle() + u'/' + divisor.wertzelle());
    calculation.programm = [this, x, y] {
        return m_document.StatistikKalibriergeradeAnstieg(x, y);
    };
    calculation.ungerundet = [&dividend, &divisor] { return wertOf(dividend) / wertOf(divisor); };
    calculation.hindernisse = {.grundlagen = {&dividend, &divisor}, .nenner = divisor.wertzelle()};
    return calculation;
}

void Planer::gerade(std::size_t direction)
{
    Geradenzeilen &line = m_plan.geraden[direction];
    std::tie(line.x, line.y) = tabellenpaare[direction / 2];
    if (direction % 2 == 1)
        std::swap(line.x, line.y);
    const int row = 1 + static_cast<int>(direction);
    line.anstieg.ort = {geraden, row, 1, 3, 6, 8};
    line.achsenabschnitt.ort = {geraden, row, 2, 4, 5, 12};
    vollende(line.anstieg, anstieg(line.x, line.y), &Kalibrierung::NachkommastellenAnstieg, true);

    const Rechenzeile &meanX = m_plan.mittelwerte[line.x];
    const Rechenzeile &meanY = m_plan.mittelwerte[line.y];
    Rechnung calculation;
    // By SUM, because a minus at the end of a formula may make 0 of a small difference.
    calculation.formel = formeln::geschuetzt(
        {meanX.wertzelle(), line.anstieg.wertzelle(), meanY.wertzelle()},
        u"SUM(%1,-%2*%3)"_qs.arg(meanX.wertzelle(), line.anstieg.wertzelle(), meanY.wertzelle()));
    calculation.programm = [&] {
        return m_document.StatistikKalibriergeradeAchsenabschnitt(line.x, line.y);
    };
    calculation.ungerundet = [&] { return wertOf(meanX) - wertOf(line.anstieg) * wertOf(meanY); };
    calculation.hindernisse.grundlagen = {&meanX, &line.anstieg, &meanY};
    vollende(line.achsenabschnitt, calculation, &Kalibrierung::NachkommastellenAchsenabschnitt,
             true);
}

Rechenplan Planer::plane()
{
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        mittelwert(merkmal);
        varianz(merkmal);
        standardabweichung(merkmal);
    }
    for (std::size_t pair = 0; pair < tabellenpaare.size(); ++pair) {
        kovarianz(pair);
        bestimmtheitsmass(pair);
    }
    for (std::size_t direction = 0; direction < m_plan.geraden.size(); ++direction)
        gerade(direction);
    return m_plan;
}

} // namespace

Rechenplan rechenplan(Kalibrierung &document, const Messwerttabelle &table)
{
    return Planer(document, table).plane();
}
