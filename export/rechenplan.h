#pragma once

#include "core/merkmal.h"
#include "export/messwerteblatt.h"
#include "export/rechenzeile.h"

#include <array>

class Kalibrierung;

/// Where things lie that formulas of another sheet speak of. Rows and columns count from 0.
namespace tabellenplan {

inline const QString messwerte = QStringLiteral("Messwerte");
inline const QString auswertung = QStringLiteral("Auswertung");
inline const QString geraden = QStringLiteral("Kalibriergeraden");
inline const QString protokolldaten = QStringLiteral("Protokolldaten");

inline constexpr int gruppenhoehe = 5;   ///< rows of a group on "Auswertung": heading, three, blank
inline constexpr int geradenzeilen = 26; ///< heading of the lines on "Auswertung"
inline constexpr int grundlagenzeile = 34; ///< heading of what results rest on
inline constexpr int punktezeile = 35;
inline constexpr int minimumzeile = 36;
inline constexpr int wertspalte = 1;

} // namespace tabellenplan

/// One direction: x = anstieg * y + achsenabschnitt.
struct Geradenzeilen
{
    MerkmalEnum x = mDirekt;
    MerkmalEnum y = mIndirekt;
    Rechenzeile anstieg;
    Rechenzeile achsenabschnitt;
};

/// All results of a document as formulas over the sheet of measured values.
struct Rechenplan
{
    // By MerkmalEnum.
    std::array<Rechenzeile, 3> mittelwerte;
    std::array<Rechenzeile, 3> varianzen;
    std::array<Rechenzeile, 3> standardabweichungen;
    // Direct and indirect, direct and covariable, indirect and covariable.
    std::array<Rechenzeile, 3> kovarianzen;
    std::array<Rechenzeile, 3> bestimmtheitsmasse;
    // The same pairs, each in both directions.
    std::array<Geradenzeilen, 6> geraden;
    /// The option; without a value where it can't be read.
    std::optional<bool> gerundet;
};

/// The pairs in the order in which results name them.
inline constexpr std::array<std::pair<MerkmalEnum, MerkmalEnum>, 3> tabellenpaare{
    {{mDirekt, mIndirekt}, {mDirekt, mZ}, {mIndirekt, mZ}}};

/// Plans the results of \a document over \a table. Raises nothing: a result that can't be computed
/// says why.
Rechenplan rechenplan(Kalibrierung &document, const Messwerttabelle &table);
