#pragma once

#include "batch/optionen.h"

#include <QByteArray>

#include <functional>

class Kalibrierung;

/// Takes bytes for standard output or standard error; false where they can't be written.
using Ausgabe = std::function<bool(const QByteArray &)>;

/// Writes the protocol of a document of a type (0, 1) to a file; may raise a RunTimeError. Called
/// on several threads at a time, each with its own document.
using Protokollschreiber =
    std::function<void(Kalibrierung &document, int type, const QString &target)>;

/// Evaluates the files of \a options on as many threads as they say and writes the reports in the
/// files' order; protocols with \a writeProtocol, which must be there where they are asked for. \a
/// output and \a errors are called one at a time, on any of the threads. Files that can't be read
/// are reported on \a errors, and the others go on. \returns the program's exit code: 0 all well, 1
/// some file failed, 2 wrong usage.
int auswertungslauf(const Optionen &options, const Ausgabe &output, const Ausgabe &errors,
                    const Protokollschreiber &writeProtocol = {});
