#pragma once

#include "core/urteil.h"

#include <QString>

#include <vector>

class Kalibrierung;

/// The plausibility check of a calibration as it is listed: no widgets, no document kept.
namespace plausibilitaet {

/// One row of the list.
struct Zeile
{
    enum class Art { Gruppe, Leer, Ergebnis };
    Art art = Art::Ergebnis;
    QString groesse; ///< the statistical quantity
    QString wert;    ///< "-" where it can't be computed; empty for groups and blank rows
    QString wertung; ///< "gut" or "kritisch" in one row, else empty
    bool operator==(const Zeile &) const = default;
};

/// All rows of \a document in their order. Raises nothing: what can't be computed is "-".
std::vector<Zeile> zeilen(Kalibrierung &document);

/// The verdict on \a document. Raises nothing: where the required minimum can't be read, the
/// sentence says so and the line isn't good.
Urteil urteil(Kalibrierung &document);

} // namespace plausibilitaet
