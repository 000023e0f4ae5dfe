#pragma once

#include <QString>

#include <array>
#include <functional>
#include <vector>

class Arbeitsmappe;
class Blatt;
class Kalibrierung;

/// The sample of one characteristic as the sheet of measured values holds it.
struct Stichprobe
{
    std::vector<double> werte; ///< one a point; values that can't be read left out
    bool luecke = false;       ///< whether any was
    QString bereich;           ///< the sheet's cells, at least one
};

/// What was written into the sheet of measured values.
struct Messwerttabelle
{
    std::array<Stichprobe, 3> stichproben; ///< by MerkmalEnum
    int punkte = 0;
    QString feldnummern; ///< cells that hold one number for each point
};

/// Called after every row; false ends the writing early.
using Zeilenfortschritt = std::function<bool()>;

/// The points of each field of \a document, a negative count being an empty field. Raises 6 for
/// more than 1,000,000 points or fields, 13 and 6 for counts that are none.
std::vector<int> punkteJeFeld(Kalibrierung &document);

/// Writes the sheet "Messwerte": one row for each test point.
Messwerttabelle schreibeMesswerte(Blatt &sheet, Kalibrierung &document,
                                  const std::vector<int> &pointsOfFields,
                                  const Zeilenfortschritt &progress);
