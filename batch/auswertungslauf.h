#pragma once

#include "batch/optionen.h"

#include <QByteArray>

#include <functional>

/// Takes bytes for standard output or standard error; false where they can't be written.
using Ausgabe = std::function<bool(const QByteArray &)>;

/// Evaluates the files of \a options on as many threads as they say and writes the reports in the
/// files' order. \a output and \a errors are called one at a time, on any of the threads. Files
/// that can't be read are reported on \a errors, and the others go on. \returns the program's exit
/// code: 0 all well, 1 some file failed, 2 wrong usage.
int auswertungslauf(const Optionen &options, const Ausgabe &output, const Ausgabe &errors);
