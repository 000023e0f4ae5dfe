#pragma once

#include <QDateTime>
#include <QString>

#include <functional>

class Kalibrierung;

/// Told how much is done, in percent and never less than before; false cancels. Called on the
/// thread that writes.
using Tabellenfortschritt = std::function<bool(int prozent)>;

/// Writes \a document as a spreadsheet (.xlsx) to \a target: measured values, evaluation as live
/// formulas with the computed values beside them, calibration lines with charts, protocol data.
///
/// The file at \a target is replaced as a whole, after the new one has been opened again and found
/// complete. \a created is the date that the file's properties tell. \a progress may be empty.
/// The document stays exactly as it is. Several threads may write files of their own.
///
/// \returns false when \a progress has cancelled; \a target is as it was then. Raises 6 for more
/// than 1,000,000 points and for counts too large, 13 for counts that are no numbers, 7, 57, 61,
/// 70, 75 or 76 where the file can't be written; \a target is as it was then, too.
bool schreibeTabelle(Kalibrierung &document, const QString &target, const QDateTime &created,
                     const Tabellenfortschritt &progress = {});
