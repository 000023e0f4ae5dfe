#pragma once

#include <QString>

class Kalibrierung;

/// What the evaluation says about using the calibration line.
struct Urteil
{
    bool gut = false;
    /// "gut" or "kritisch".
    QString wertung;
    /// Two sentences, joined with \a lineBreak of urteil(); the minimum as a plain number of the
    /// locale.
    QString satz;
};

/// The verdict on \a document. Raises 13 or 6 where the stored minimum is no number.
Urteil urteil(Kalibrierung &document, const QString &lineBreak = QStringLiteral("\r\n"));
