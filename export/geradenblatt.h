#pragma once

class Arbeitsmappe;
class Blatt;
class Kalibrierung;
struct Messwerttabelle;
struct Rechenplan;

/// Writes the sheet "Kalibriergeraden": slope and intercept of the six directions as formulas, and
/// a chart of points and line for each of the three pairs.
void schreibeGeraden(Arbeitsmappe &book, Blatt &sheet, Kalibrierung &document,
                     const Messwerttabelle &table, const Rechenplan &plan);
