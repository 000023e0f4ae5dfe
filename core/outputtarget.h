#pragma once

#include <QString>

/// Raises 75 where writing to \a target would replace the file of the calibration itself, also
/// where links or another spelling lead to it, and where it is not there at the moment.
/// \a calibration is empty where there is no file yet; \a output is what was to be written, with
/// its article: "die Tabelle".
void refuseCalibrationAsTarget(const QString &target, const QString &calibration,
                               const QString &output);
