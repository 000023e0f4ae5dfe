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
