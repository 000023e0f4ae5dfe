#pragma once

class Blatt;
class Kalibrierung;
struct Messwerttabelle;
struct Rechenplan;

/// Writes the sheet "Auswertung": the results in the order of the plausibility page, each as a
/// formula with its value, and the verdict.
void schreibeAuswertung(Blatt &sheet, Kalibrierung &document, const Messwerttabelle &table,
                        const Rechenplan &plan);
