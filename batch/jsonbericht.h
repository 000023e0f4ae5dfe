#pragma once

#include "core/runtimeerror.h"

#include <QByteArray>
#include <QString>

class Kalibrierung;

/// The evaluation of \a document, read from \a datei, as one JSON object on one line. A result that
/// can't be computed is null and stands under "fehler" with its path, number and text.
QByteArray jsonBericht(const QString &datei, Kalibrierung &document);

/// The object for a file that can't be read.
QByteArray jsonFehler(const QString &datei, const RunTimeError &error);
