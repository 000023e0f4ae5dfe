#pragma once

#include <QString>

#include <optional>
#include <vector>

class Blatt;
class Values;

/// Where the cells of one result lie: all in one row of one sheet. The four columns from
/// \a rechenweg on show how it is rounded; \a schritt is used by sums only.
struct Ergebnisort
{
    QString blatt;
    int zeile = 0;
    int wert = 0;
    int ausgabe = 0;
    int hinweis = 0;
    int rechenweg = 0;
    int schritt = 0;
};

/// One result as the spreadsheet computes it: a formula, the value that it has now, and why there
/// is none where there is none.
struct Rechenzeile
{
    Ergebnisort ort;
    QString zahlenformat;
    int anzeigestellen = 9; ///< decimals that the format shows, for the width of the column
    /// The value that the program computes; empty where it can't.
    std::optional<double> wert;
    /// The value before it is rounded.
    std::optional<double> ungerundet;
    /// The formula of the value before it is rounded; gives the empty text where there is none.
    QString formel;
    /// Where the result is a sum: the formula of the step of which its terms are multiples but for
    /// small remainders, and the step now.
    QString schrittformel;
    double schritt = 1.0;
    /// The places to round to; empty where the result is not rounded.
    std::optional<int> stellen;

    /// Why there is no value; empty where there is one.
    QString hinweis;
    /// The formula of that text. Empty together with the other formulas where an option of the
    /// document can't be read: no formula knows what it means then.
    QString hinweisformel;

    QString wertzelle() const;
    QString hinweiszelle() const;
    QString schrittzelle() const;

    /// The most characters that the formatted value takes, with a sign that may come.
    qsizetype anzeigebreite(const Values &values) const;

    /// Writes the result's cells into \a sheet, which is that of \a ort.
    void schreibe(Blatt &sheet) const;

private:
    void schreibeRechenweg(Blatt &sheet) const;
    QString rechenzelle(int number) const;
};

/// What may stand in the way of a result, in the order in which it is looked for.
struct Hindernisse
{
    /// Results that this one is computed from.
    std::vector<const Rechenzeile *> grundlagen = {};
    /// A condition that holds where sample values are missing, whether it holds now, and the text
    /// for it; empty where the result reads no sample.
    QString lueckenbedingung = {};
    bool luecke = false;
    QString lueckentext = {};
    /// What the result is divided by; empty where nothing is.
    QString nenner = {};
};

/// Completes \a row, whose value and formula are set, with the text that says why there is no
/// value. \a dividedByZero says that the program's own reason was a division by zero.
void ergaenzeHinweis(Rechenzeile &row, const Hindernisse &obstacles, bool dividedByZero);
