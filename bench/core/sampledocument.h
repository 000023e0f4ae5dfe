#pragma once

#include "core/kalibrierung.h"

#include <QLocale>

#include <memory>

/// A German document with \a points test points in fields of 100, values with three decimals. The
/// same for the same number.
std::unique_ptr<Kalibrierung> sampleDocument(int points);

/// Every result that the program shows. \returns their sum, so that nothing is optimised away.
double allResults(Auswertung &evaluation);

inline const QLocale benchLocale(QLocale::German, QLocale::Germany);
