#pragma once

#include <QByteArray>
#include <QLocale>

#include <functional>

/// Reads one environment variable; empty where it isn't set.
using Environment = std::function<QByteArray(const char *name)>;

/// The locale in which the user reads and writes numbers: what the environment names for numbers,
/// and de_DE where it names none (C, POSIX). On systems without such variables it is the system's.
QLocale userLocale(const Environment &environment = [](const char *name) { return qgetenv(name); });
