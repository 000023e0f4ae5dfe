#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// \a text as the bytes of a text cell: UTF-8, with what XML can't hold written as the file
/// format's own escapes ("_x0001_"; a text that looks like such an escape has its underscore
/// escaped). Every line ends in a line feed, whatever it ended in before.
///
/// Longer texts than a cell may hold end in "…".
QByteArray zellentext(const QString &text);

/// \a text in as many pieces as it takes cells, at least one; zellentext() writes each of them
/// whole. Lines end as they do there.
QStringList zellenstuecke(const QString &text);

/// \a text as a title in a chart: on one line, without control characters, and at most
/// \a longest long. Charts don't know the escapes of cells.
QString diagrammtext(const QString &text, qsizetype longest);

/// The most characters that one cell holds, escapes counted as they are written.
inline constexpr qsizetype maximumZellentext = 32767;
