#include "app/wiederherstellungsplatz.h"

#include "core/atomicfile.h"
#include "core/runtimeerror.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QUuid>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <vector>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

const QString fileSuffix = QStringLiteral(".xml");
const QString lockSuffix = QStringLiteral(".lock");
const QString brokenSuffix = QStringLiteral(".defekt");

QString withSuffix(const QString &path, const QString &suffix)
{
    return path.chopped(fileSuffix.size()) + suffix;
}

enum class Abandoned { No, Dropped, Stuck };

// Drops a lock that nobody holds, though a process of its number runs: after a crash that number
// can belong to another program of this kind, to this one even. The system drops the lock itself
// when its process ends, and doesn't let it be taken before.
Abandoned dropAbandonedLock(const QString &lockPath)
{
#ifdef Q_OS_UNIX
    // QLockFile creates, locks and fills its file one after the other.
    constexpr std::time_t secondsToFill = 10;
    const QByteArray name = QFile::encodeName(lockPath);
    const int handle = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return errno == ENOENT ? Abandoned::Dropped : Abandoned::No;
    const auto close = qScopeGuard([handle] { ::close(handle); });
    struct stat opened = {};
    struct stat named = {};
    // A program that started at the same moment may have put its own lock there meanwhile.
    if (::flock(handle, LOCK_EX | LOCK_NB) != 0 || ::fstat(handle, &opened) != 0 ||
        ::stat(name.constData(), &named) != 0 || opened.st_ino != named.st_ino)
        return Abandoned::No;
    if (opened.st_size == 0 && std::time(nullptr) - opened.st_mtime < secondsToFill)
        return Abandoned::No;
    return ::unlink(name.constData()) == 0 ? Abandoned::Dropped : Abandoned::Stuck;
#else
    // The system refuses it for a file in use.
    return QFile::remove(lockPath) ? Abandoned::Dropped : Abandoned::No;
#endif
}

// Which file a name leads to; 0 for none. An open file keeps its number.
quint64 numberOfFile([[maybe_unused]] const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat named = {};
    return ::stat(QFile::encodeName(path).constData(), &named) == 0 ? named.st_ino : 0;
#else
    return QFile::exists(path) ? 1 : 0;
#endif
}

// For nobody else to read.
void makeFolder(const QString &folder)
{
    std::error_code error;
    std::filesystem::create_directories(nativePath(folder), error);
    if (error == std::errc::not_a_directory)
        throw RunTimeError(ErrorNumber::PathFileAccess);
    if (error)
        throw errorOf(error.default_error_condition().value(), ErrorNumber::PathFileAccess);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Unlocking removes the lock by its name, whoever's it is by now.
void neverUnlock(std::unique_ptr<QLockFile> lock)
{
    static auto *const locks = new std::vector<std::unique_ptr<QLockFile>>;
    locks->push_back(std::move(lock));
}

} // namespace

Wiederherstellungsplatz::Wiederherstellungsplatz(const QString &path)
    : m_path(path), m_lock(std::make_unique<QLockFile>(withSuffix(path, lockSuffix))), m_file(path)
{
    m_lock->setStaleLockTime(0); // a program may run for weeks
}

Wiederherstellungsplatz::Sperre Wiederherstellungsplatz::lock()
{
    Abandoned abandoned = Abandoned::Dropped;
    bool locked = m_lock->tryLock(0);
    if (!locked && m_lock->error() == QLockFile::LockFailedError) {
        abandoned = dropAbandonedLock(m_lock->fileName());
        locked = abandoned == Abandoned::Dropped && m_lock->tryLock(0);
    }
    if (locked) {
        m_lockNumber = numberOfFile(m_lock->fileName());
        return Sperre::Eigen;
    }
    return m_lock->error() == QLockFile::LockFailedError && abandoned != Abandoned::Stuck
               ? Sperre::Fremd
               : Sperre::Unmöglich;
}

// A lock that needs nothing written.
Wiederherstellungsplatz::Sperre Wiederherstellungsplatz::lockFileItself()
{
#ifdef Q_OS_UNIX
    if (!m_file.open(QIODevice::ReadOnly))
        return Sperre::Unmöglich;
    if (::flock(m_file.handle(), LOCK_EX | LOCK_NB) == 0)
        return Sperre::Eigen;
    return errno == EWOULDBLOCK ? Sperre::Fremd : Sperre::Unmöglich;
#else
    return Sperre::Unmöglich; // an open file could not be replaced
#endif
}

void Wiederherstellungsplatz::raiseReason() const
{
    AtomicFile(m_path).write(QByteArray(1, ' ')); // fails for the same reason, and tells it
    throw RunTimeError(ErrorNumber::PathFileAccess);
}

std::unique_ptr<Wiederherstellungsplatz> Wiederherstellungsplatz::create(const QString &folder)
{
    makeFolder(folder);
    std::unique_ptr<Wiederherstellungsplatz> place(new Wiederherstellungsplatz(
        folder + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces) + fileSuffix));
    if (place->lock() != Sperre::Eigen)
        place->raiseReason();
    return place;
}

std::unique_ptr<Wiederherstellungsplatz> Wiederherstellungsplatz::takeOver(const QString &path)
{
    std::unique_ptr<Wiederherstellungsplatz> place(new Wiederherstellungsplatz(path));
    const Sperre beside = place->lock();
    // Its program may have ended in good order at this very moment.
    if (beside == Sperre::Fremd || !QFileInfo::exists(path))
        return nullptr;
    const Sperre itself = place->lockFileItself();
    if (itself == Sperre::Fremd)
        return nullptr;
    if (beside != Sperre::Eigen && itself != Sperre::Eigen)
        place->raiseReason();
    return place;
}

// Who is named by the lock beside the file, if this program has locked that.
Wiederherstellungsplatz::Sperre Wiederherstellungsplatz::ownerOfLock() const
{
    const quint64 number = numberOfFile(m_lock->fileName());
    if (number == 0)
        return Sperre::Unmöglich;
    return number == m_lockNumber ? Sperre::Eigen : Sperre::Fremd;
}

bool Wiederherstellungsplatz::isIntact() const
{
    // A write that found no room leaves an empty file where there was none.
    return QFileInfo(m_path).size() > 0 && (!m_lock->isLocked() || ownerOfLock() == Sperre::Eigen);
}

// Qt complains on the terminal about a lock that is gone, so it gets one to remove.
void Wiederherstellungsplatz::dropMissingLock()
{
    QFile lock(m_lock->fileName());
    if (lock.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        lock.close();
    m_lock->unlock();
}

Wiederherstellungsplatz::~Wiederherstellungsplatz()
{
    if (!m_lock->isLocked())
        return;
    switch (ownerOfLock()) {
    case Sperre::Eigen:
        break;
    case Sperre::Unmöglich:
        dropMissingLock();
        break;
    case Sperre::Fremd:
        neverUnlock(std::move(m_lock));
        break;
    }
}

bool Wiederherstellungsplatz::renewLock()
{
    makeFolder(QFileInfo(m_path).path());
    if (m_lock->isLocked()) {
        const Sperre owner = ownerOfLock();
        if (owner != Sperre::Unmöglich)
            return owner == Sperre::Eigen;
        dropMissingLock();
    }
    const Sperre renewed = lock();
    if (renewed == Sperre::Unmöglich)
        raiseReason();
    return renewed == Sperre::Eigen;
}

QStringList Wiederherstellungsplatz::filesIn(const QString &folder)
{
    QStringList paths;
    const QDir dir(folder);
    for (const QString &name : dir.entryList({u'*' + fileSuffix}, QDir::Files, QDir::Time))
        paths.append(dir.filePath(name));
    return paths;
}

void Wiederherstellungsplatz::tidy(const QString &folder)
{
    const QDir dir(folder);
    for (const QString &name : dir.entryList({u'*' + lockSuffix}, QDir::Files)) {
        const QString path = dir.filePath(name);
        QLockFile lock(path);
        lock.setStaleLockTime(0);
        if (!QFileInfo::exists(path.chopped(lockSuffix.size()) + fileSuffix) && lock.tryLock(0))
            lock.unlock(); // which removes it
    }
    const QDateTime yesterday = QDateTime::currentDateTime().addDays(-1);
    for (const QFileInfo &file : dir.entryInfoList({u"~wendral-*.tmp"_qs}, QDir::Files)) {
        if (file.lastModified() < yesterday) // of no program that is writing just now
            QFile::remove(file.filePath());
    }
}

void Wiederherstellungsplatz::removeFile() const
{
    if (m_lock->isLocked() && ownerOfLock() == Sperre::Fremd)
        return;
    if (!QFile::remove(m_path))
        QFile::resize(m_path, 0); // in a protected folder; nothing is no work to be offered
}

void Wiederherstellungsplatz::setAside() const
{
    QFile::rename(m_path, withSuffix(m_path, brokenSuffix));
}
