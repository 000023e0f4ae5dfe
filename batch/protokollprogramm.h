#pragma once

#include <QString>

/// Goes on as the program that also writes protocols and lies beside this one. It needs the
/// graphics libraries, and every other call would pay for loading them.
///
/// \a words is the command line as main() got it. Returns only where that program can't be started.
/// \returns why, in German.
QString werdeProtokollprogramm(char **words);
