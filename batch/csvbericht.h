#pragma once

#include "core/runtimeerror.h"

#include <QByteArray>
#include <QString>

class Kalibrierung;

/// The names of the columns, as the first line.
QByteArray csvKopf();

/// The results of \a document, read from \a datei, one on a line: file, group, result, value with a
/// point and up to 17 digits, text as displayed, number and text of the error. A result that can't
/// be computed has no value. The verdict comes last, with 1 for "gut" and 0 for "kritisch".
QByteArray csvBericht(const QString &datei, Kalibrierung &document);

/// The line for a file that can't be read; its group is "datei".
QByteArray csvFehler(const QString &datei, const RunTimeError &error);
