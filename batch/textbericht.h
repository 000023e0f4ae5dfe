#pragma once

#include <QString>

class Kalibrierung;

/// The evaluation of \a document, read from \a datei, as a report for a terminal: characteristics,
/// fields and points with their values, all results as displayed, the verdict.
QString textBericht(const QString &datei, Kalibrierung &document);
