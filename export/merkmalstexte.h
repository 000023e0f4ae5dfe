#pragma once

#include "core/merkmal.h"

#include <QString>

class Kalibrierung;

/// "direktes Prüfmerkmal", "indirektes Prüfmerkmal" or "Kovariable".
QString merkmalsart(MerkmalEnum merkmal);

/// Name and symbol of a characteristic of \a document; empty where they can't be read.
QString merkmalsbezeichnung(Kalibrierung &document, MerkmalEnum merkmal);

/// The same and the unit in brackets; parts that are empty are left out.
QString merkmalMitEinheit(Kalibrierung &document, MerkmalEnum merkmal);

/// The number format of a characteristic's values; empty where its decimal places can't be read, so
/// that all digits show.
QString merkmalsformat(Kalibrierung &document, MerkmalEnum merkmal);

/// The most characters that a value of this \a size takes in that format, with a sign.
qsizetype merkmalsbreite(Kalibrierung &document, MerkmalEnum merkmal, double size);
