#include "export/rechenzeile.h"

#include "core/values.h"
#include "export/arbeitsmappe.h"
#include "export/formeln.h"

#include <cmath>

namespace {

const QString divisionText = QStringLiteral("Nicht berechenbar: Division durch Null");
const QString overflowText = u"Nicht berechenbar: Überlauf"_qs;

QString wenn(const QString &condition, const QString &yes, const QString &no)
{
    return u"IF("_qs + condition + u',' + yes + u',' + no + u')';
}

// The text for a value that is infinite, or not there because \a divisor is zero.
QString ursache(const QString &divisor)
{
    const QString overflow = formeln::text(overflowText);
    if (divisor.isEmpty())
        return overflow;
    return u"IFERROR("_qs + wenn(divisor + u"=0"_qs, formeln::text(divisionText), overflow) + u',' +
           overflow + u')';
}

// A cell that shows a number now, or the empty text where there is none.
void schreibeFormel(Blatt &sheet, int row, int column, const QString &formula,
                    const std::optional<double> &value, const Zellenstil &style)
{
    if (value && std::isfinite(*value))
        sheet.formel(row, column, formula, *value, style);
    else
        sheet.formel(row, column, formula, QString(), style);
}

} // namespace

QString Rechenzeile::wertzelle() const
{
    return formeln::zelle(ort.blatt, ort.zeile, ort.wert);
}

QString Rechenzeile::hinweiszelle() const
{
    return formeln::zelle(ort.blatt, ort.zeile, ort.hinweis);
}

QString Rechenzeile::schrittzelle() const
{
    return formeln::zelle(ort.blatt, ort.zeile, ort.schritt);
}

qsizetype Rechenzeile::anzeigebreite(const Values &values) const
{
    return wert ? values.display(-std::abs(*wert), anzeigestellen).size() : 0;
}

QString Rechenzeile::rechenzelle(int number) const
{
    return formeln::zelle(ort.blatt, ort.zeile, ort.rechenweg + number);
}

void Rechenzeile::schreibe(Blatt &sheet) const
{
    const Zellenstil number{.zahlenformat = zahlenformat};
    const Zellenstil note{.einzug = 1};
    if (hinweisformel.isEmpty()) {
        sheet.text(ort.zeile, ort.hinweis, hinweis, note);
        return;
    }
    if (stellen) {
        schreibeRechenweg(sheet);
        schreibeFormel(sheet, ort.zeile, ort.wert,
                       wenn(formeln::allesZahlen({rechenzelle(3)}),
                            u"IFERROR(%1*10^(-%2),\"\")"_qs.arg(rechenzelle(3), rechenzelle(0)),
                            u"\"\""_qs),
                       wert, number);
    } else {
        schreibeFormel(sheet, ort.zeile, ort.wert, formel, wert, number);
    }
    if (wert)
        sheet.zahl(ort.zeile, ort.ausgabe, *wert, number);
    if (!schrittformel.isEmpty())
        sheet.formel(ort.zeile, ort.schritt, schrittformel, schritt);
    sheet.formel(ort.zeile, ort.hinweis, hinweisformel, hinweis, note);
}

// The program divides by the power of ten, takes the nearest whole number, of two equally near ones
// the even one, and multiplies again. The spreadsheet's own ROUND takes the larger one and looks at
// decimal digits, its comparisons and differences forgive the last bits. A logarithm does not: that
// of twice the part behind the point is 0 for a half and for nothing else.
void Rechenzeile::schreibeRechenweg(Blatt &sheet) const
{
    const QString places = rechenzelle(0);
    const QString raw = rechenzelle(1);
    const QString quotient = rechenzelle(2);
    const double power = std::pow(10.0, -static_cast<double>(*stellen));
    std::optional<double> multiple;
    if (ungerundet && power != 0.0 && std::isfinite(*ungerundet / power))
        multiple = *ungerundet / power;
    std::optional<double> whole;
    if (wert && multiple)
        whole = std::nearbyint(*multiple) + 0.0;

    sheet.zahl(ort.zeile, ort.rechenweg, *stellen);
    schreibeFormel(sheet, ort.zeile, ort.rechenweg + 1, formel, ungerundet, {});
    schreibeFormel(sheet, ort.zeile, ort.rechenweg + 2,
                   formeln::geschuetzt({raw}, u"%1/10^(-%2)"_qs.arg(raw, places)), multiple, {});
    const QString fraction = u"(%1-INT(%1))"_qs.arg(quotient);
    const QString nearest =
        u"INT(%1)+IF(%2<0.25,0,CHOOSE(SIGN(LN(2*%2))+2,0,IF(ISODD(INT(%1)),1,0),1))"_qs.arg(
            quotient, fraction);
    // What lies outside a 32-bit whole number is an overflow in the program.
    schreibeFormel(sheet, ort.zeile, ort.rechenweg + 3,
                   formeln::geschuetzt(
                       {quotient}, wenn(u"AND(%1>=-2147483648.5,%1<2147483647.5)"_qs.arg(quotient),
                                        nearest, u"\"\""_qs)),
                   whole, {});
}

void ergaenzeHinweis(Rechenzeile &row, const Hindernisse &obstacles, bool dividedByZero)
{
    QString formula = ursache(obstacles.nenner);
    if (row.stellen) {
        const QString raw = formeln::zelle(row.ort.blatt, row.ort.zeile, row.ort.rechenweg + 1);
        const QString places = formeln::zelle(row.ort.blatt, row.ort.zeile, row.ort.rechenweg);
        // The power of ten becomes 0 beyond so many places; the spreadsheets don't agree on it.
        const QString noPower =
            wenn(places + u">323"_qs, formeln::text(divisionText), formeln::text(overflowText));
        formula = wenn(formeln::allesZahlen({raw}), noPower, formula);
    }
    if (!obstacles.lueckenbedingung.isEmpty())
        formula = wenn(obstacles.lueckenbedingung, formeln::text(obstacles.lueckentext), formula);
    for (auto base = obstacles.grundlagen.rbegin(); base != obstacles.grundlagen.rend(); ++base)
        formula = wenn((*base)->hinweiszelle() + u"<>\"\""_qs, (*base)->hinweiszelle(), formula);
    row.hinweisformel = wenn(formeln::allesZahlen({row.wertzelle()}), u"\"\""_qs, formula);

    if (row.wert)
        return;
    row.hinweis = dividedByZero ? divisionText : overflowText;
    if (obstacles.luecke)
        row.hinweis = obstacles.lueckentext;
    for (auto base = obstacles.grundlagen.rbegin(); base != obstacles.grundlagen.rend(); ++base) {
        if (!(*base)->hinweis.isEmpty())
            row.hinweis = (*base)->hinweis;
    }
}
