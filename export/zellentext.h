#pragma once

#include <QByteArray>
#include <QString>

/// \a text as the bytes of a text cell: UTF-8, with what XML can't hold written as the file
/// format's own escapes ("_x0001_"; a text that looks like such an escape has its underscore
/// escaped).
///
/// Longer texts than a cell may hold end in "…".
QByteArray zellentext(const QString &text);

/// The most characters that one cell holds.
inline constexpr qsizetype maximumZellentext = 32767;
