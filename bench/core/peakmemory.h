#pragma once

#include <QString>

/// Peak memory in bytes of a process of its own that loads the file at \a path, evaluates it and
/// saves it again; 0 where that fails.
double peakOfChild(const QString &path);

/// What that process does. \returns its exit code.
int loadEvaluateAndSave(const QString &path);

/// The argument that makes this program that process.
inline constexpr char peakArgument[] = "--peak-memory-of";
