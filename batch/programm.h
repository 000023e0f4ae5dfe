#pragma once

#include "batch/auswertungslauf.h"

/// What both command-line programs do around their run.
namespace programm {

/// Reads the command line as main() got it. Call it with the application object there: it settles
/// how the C library writes numbers.
Optionen optionen(int count, char **words);

/// Runs on standard output and standard error. \returns the exit code.
int laufe(const Optionen &options, const Protokollschreiber &writeProtocol = {});

/// Says \a fault, German, on standard error. \returns the exit code for it.
int scheitere(const QString &fault);

} // namespace programm
