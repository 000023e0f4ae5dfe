#include "core/outputtarget.h"

#include "core/atomicfile.h"

#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace {

bool isSameFile(const QString &one, const QString &other)
{
    if (QFileInfo(one).absoluteFilePath() == QFileInfo(other).absoluteFilePath())
        return true;
    std::error_code error;
    return std::filesystem::equivalent(nativePath(one), nativePath(other), error) && !error;
}

} // namespace

void refuseCalibrationAsTarget(const QString &target, const QString &calibration,
                               const QString &output)
{
    if (!calibration.isEmpty() && isSameFile(target, calibration))
        throw RunTimeError(ErrorNumber::PathFileAccess,
                           u"„%1“ ist die Datei dieser Kalibrierung, %2 braucht eine eigene"_qs.arg(
                               QFileInfo(target).fileName(), output));
}
