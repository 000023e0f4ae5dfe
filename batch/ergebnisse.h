#pragma once

#include "core/runtimeerror.h"

#include <QString>

#include <optional>
#include <vector>

class Kalibrierung;

/// One result of an evaluation: its value, or why there is none, and how it is displayed.
struct Ergebnis
{
    QString schluessel;  ///< ASCII, within its group: "direkt", "direkt_indirekt"
    QString bezeichnung; ///< German, for people
    std::optional<double> wert;
    QString anzeige; ///< "-" where the result can't be computed or shown
    std::optional<RunTimeError> fehler;
};

/// Results of one kind.
struct Ergebnisgruppe
{
    QString schluessel; ///< ASCII: "mittelwert"
    QString bezeichnung;
    std::vector<Ergebnis> ergebnisse;
};

/// All results of \a document in their seven groups, in the order in which reports give them.
std::vector<Ergebnisgruppe> ergebnisse(Kalibrierung &document);
