#include "core/atomicfile.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace {

QString fromNative(const fs::path &path)
{
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.wstring());
#else
    return QFile::decodeName(path.c_str());
#endif
}

[[noreturn]] void raise(const std::error_code &error, const QString &detail = {})
{
    throw errorOf(error.default_error_condition().value(), ErrorNumber::PathFileAccess, detail);
}

// The file that a chain of symbolic links leads to, existing or not.
fs::path behindLinks(fs::path path)
{
    constexpr int longestChain = 40;
    std::error_code error;
    for (int i = 0; i < longestChain; ++i) {
        if (!fs::is_symlink(fs::symlink_status(path, error)))
            return path;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            raise(error);
        // Never shortened as text: behind a linked folder, ".." leads somewhere else.
        path = path.parent_path() / next;
    }
    throw RunTimeError(ErrorNumber::PathFileAccess, u"zu viele symbolische Verknüpfungen"_qs);
}

void checkTarget(const fs::path &target)
{
    std::error_code error;
    if (!fs::is_directory(target.parent_path(), error)) {
        if (error && error != std::errc::no_such_file_or_directory)
            raise(error);
        throw RunTimeError(ErrorNumber::PathNotFound);
    }
    const fs::file_status status = fs::status(target, error);
    const QString name = fromNative(target.filename());
    if (name.isEmpty())
        throw RunTimeError(ErrorNumber::PathFileAccess, u"der Dateiname fehlt"_qs);
    if (status.type() == fs::file_type::not_found)
        return;
    if (error)
        raise(error);
    if (!fs::is_regular_file(status))
        throw RunTimeError(ErrorNumber::PathFileAccess, u"„%1“ ist keine Datei"_qs.arg(name));
    if (!QFileInfo(fromNative(target)).isWritable())
        throw RunTimeError(ErrorNumber::PermissionDenied, u"die Datei ist schreibgeschützt"_qs);
}

// Makes the renaming itself survive a power failure. The file is in its place already and whole, so
// a folder that can't be synced is no failure.
void syncFolder([[maybe_unused]] const fs::path &folder)
{
#ifdef Q_OS_UNIX
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
#endif
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
    case EMFILE:
    case ENFILE:
        return ErrorNumber::PathFileAccess;
    case ENOMEM:
        return ErrorNumber::OutOfMemory;
    case EIO:
        return ErrorNumber::DeviceIo;
    default:
        return other;
    }
}

RunTimeError errorOf(int systemError, ErrorNumber other, const QString &detail)
{
    const bool tooManyOpen = systemError == EMFILE || systemError == ENFILE;
    return RunTimeError(errorNumberOf(systemError, other),
                        tooManyOpen ? u"zu viele offene Dateien"_qs : detail);
}

fs::path nativePath(const QString &name)
{
    if (name.contains(QChar::Null))
        throw RunTimeError(ErrorNumber::PathFileAccess, u"ungültiger Dateiname"_qs);
#ifdef Q_OS_WIN
    return fs::path(name.toStdWString());
#else
    return fs::path(QFile::encodeName(name).toStdString());
#endif
}

AtomicFile::AtomicFile(const QString &target)
{
    std::error_code error;
    m_target = fs::absolute(behindLinks(nativePath(target)), error);
    if (error)
        raise(error, u"der Dateiname fehlt"_qs);
    checkTarget(m_target);
    openBeside();
    keepAttributes();
}

AtomicFile::~AtomicFile()
{
    if (!m_committed)
        m_file.remove();
}

void AtomicFile::openBeside()
{
    // A short name of its own, so that it fits beside a target whose name is as long as a name may
    // be.
    constexpr int tries = 100;
    const fs::path folder = m_target.parent_path();
    const auto mode = QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered;
    std::error_code error;
    const bool replaces = fs::exists(m_target, error);
    for (int i = 0; i < tries; ++i) {
        const QString name = u"~wendral-%1.tmp"_qs.arg(QRandomGenerator::global()->generate(), 8,
                                                       16, QLatin1Char('0'));
        m_file.setFileName(fromNative(folder / nativePath(name)));
        errno = 0;
        // What replaces a file stays private until it has that file's permissions.
        if (replaces ? m_file.open(mode, QFile::ReadOwner | QFile::WriteOwner) : m_file.open(mode))
            return;
        if (errno != EEXIST)
            break;
    }
    throw errorOf(errno, ErrorNumber::PathFileAccess,
                  u"im Ordner „%1“ kann keine Datei angelegt werden"_qs.arg(fromNative(folder)));
}

// Gives the new file what can be kept of the old one's owner, group and permissions. What the
// system refuses stays as it is for a new file.
void AtomicFile::keepAttributes()
{
    std::error_code error;
    const fs::file_status status = fs::status(m_target, error);
    if (!fs::exists(status))
        return;
#ifdef Q_OS_UNIX
    struct stat old = {};
    if (::stat(m_target.c_str(), &old) == 0 &&
        ::fchown(m_file.handle(), old.st_uid, old.st_gid) != 0) {
        [[maybe_unused]] const int refused =
            ::fchown(m_file.handle(), static_cast<uid_t>(-1), old.st_gid);
    }
#endif
    fs::permissions(nativePath(m_file.fileName()), status.permissions() & fs::perms::all, error);
}

void AtomicFile::write(const QByteArray &bytes)
{
    errno = 0;
    const qint64 written = m_file.write(bytes);
    if (written != bytes.size())
        throw errorOf(errno, ErrorNumber::DiskFull);
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
        throw errorOf(errno, ErrorNumber::DiskFull);
#ifdef Q_OS_UNIX
    // Not every file system can sync; those that fail to for lack of space or by a fault must be
    // heard.
    if (m_file.isOpen() && ::fsync(m_file.handle()) != 0 && errno != EINVAL && errno != ENOTSUP)
        throw errorOf(errno, ErrorNumber::DeviceIo);
#endif
    m_file.close();
    checkSize();
    std::error_code error;
    fs::rename(nativePath(m_file.fileName()), m_target, error);
    if (error)
        raise(error);
    m_committed = true;
    syncFolder(m_target.parent_path());
}
