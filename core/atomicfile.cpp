#include "core/atomicfile.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

// The file that a chain of symbolic links leads to, existing or not.
QString behindLinks(const QString &path)
{
    constexpr int longestChain = 40;
    QFileInfo info(path);
    for (int i = 0; i < longestChain; ++i) {
        if (!info.isSymLink())
            return info.absoluteFilePath();
        info.setFile(info.symLinkTarget());
    }
    throw RunTimeError(ErrorNumber::PathFileAccess, u"zu viele symbolische Verknüpfungen"_qs);
}

void checkTarget(const QString &target)
{
    const QFileInfo info(target);
    if (!info.absoluteDir().exists())
        throw RunTimeError(ErrorNumber::PathNotFound);
    if (info.fileName().isEmpty() || (info.exists() && !info.isFile()))
        throw RunTimeError(ErrorNumber::PathFileAccess, u"„%1“ ist keine Datei"_qs.arg(target));
    if (info.exists() && !info.isWritable())
        throw RunTimeError(ErrorNumber::PermissionDenied, u"die Datei ist schreibgeschützt"_qs);
}

} // namespace

ErrorNumber errorNumberOf(int systemError, ErrorNumber other)
{
    switch (systemError) {
    case ENOSPC:
    case EFBIG:
#ifdef EDQUOT
    case EDQUOT:
#endif
        return ErrorNumber::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return ErrorNumber::PermissionDenied;
    case ENOENT:
    case ENOTDIR:
        return ErrorNumber::PathNotFound;
    case ENAMETOOLONG:
    case EISDIR:
        return ErrorNumber::PathFileAccess;
    case ENOMEM:
        return ErrorNumber::OutOfMemory;
    case EIO:
        return ErrorNumber::DeviceIo;
    default:
        return other;
    }
}

AtomicFile::AtomicFile(const QString &target) : m_target(behindLinks(target))
{
    checkTarget(m_target);
    openBeside(m_target);
    const QFileInfo info(m_target);
    if (info.exists())
        m_file.setPermissions(info.permissions());
}

AtomicFile::~AtomicFile()
{
    if (!m_committed)
        m_file.remove();
}

void AtomicFile::openBeside(const QString &target)
{
    const QDir folder = QFileInfo(target).absoluteDir();
    // A short name of its own, so that it fits beside a target whose name is as long as a name may
    // be.
    constexpr int tries = 100;
    for (int i = 0; i < tries; ++i) {
        m_file.setFileName(folder.filePath(u"~wendral-%1.tmp"_qs.arg(
            QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0'))));
        errno = 0;
        if (m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
            return;
        if (errno != EEXIST)
            break;
    }
    const ErrorNumber number = errorNumberOf(errno, ErrorNumber::PathFileAccess);
    m_file.setFileName({});
    throw RunTimeError(number);
}

void AtomicFile::write(const QByteArray &bytes)
{
    errno = 0;
    const qint64 written = m_file.write(bytes);
    if (written != bytes.size())
        throw RunTimeError(errorNumberOf(errno, ErrorNumber::DiskFull));
    m_written += written;
}

void AtomicFile::checkSize() const
{
    if (m_file.error() != QFileDevice::NoError)
        throw RunTimeError(ErrorNumber::DeviceIo);
    if (m_written > 0 && QFileInfo(m_file.fileName()).size() != m_written)
        throw RunTimeError(ErrorNumber::DiskFull);
}

void AtomicFile::commit()
{
    errno = 0;
    if (m_file.isOpen() && !m_file.flush())
        throw RunTimeError(errorNumberOf(errno, ErrorNumber::DiskFull));
#ifdef Q_OS_UNIX
    // Not every file system can sync; those that fail to for lack of space or by a fault must be
    // heard.
    if (m_file.isOpen() && ::fsync(m_file.handle()) != 0 && errno != EINVAL && errno != ENOTSUP)
        throw RunTimeError(errorNumberOf(errno, ErrorNumber::DeviceIo));
#endif
    m_file.close();
    checkSize();
    std::error_code error;
    std::filesystem::rename(std::filesystem::path(m_file.fileName().toStdU16String()),
                            std::filesystem::path(m_target.toStdU16String()), error);
    if (error)
        throw RunTimeError(errorNumberOf(error.value(), ErrorNumber::PathFileAccess));
    m_committed = true;
}
