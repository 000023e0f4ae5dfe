#include "app/wiederherstellungsplatz.h"

#include "core/runtimeerror.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

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

// Whether nobody holds the lock, though a process of its number runs: after a crash that number can
// belong to another program of this kind, to this one even. The system drops the lock itself when
// its process ends, and doesn't let it be taken before.
bool dropAbandonedLock(const QString &lockPath)
{
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(lockPath);
    const int handle = ::open(name.constData(), O_RDWR | O_CLOEXEC);
    if (handle < 0)
        return false;
    struct stat opened = {};
    struct stat named = {};
    // A program that started at the same moment may have put its own lock there meanwhile.
    const bool abandoned = ::flock(handle, LOCK_EX | LOCK_NB) == 0 &&
                           ::fstat(handle, &opened) == 0 && ::stat(name.constData(), &named) == 0 &&
                           opened.st_ino == named.st_ino;
    if (abandoned)
        ::unlink(name.constData());
    ::close(handle);
    return abandoned;
#else
    return QFile::remove(lockPath); // which the system refuses for a file in use
#endif
}

} // namespace

Wiederherstellungsplatz::Wiederherstellungsplatz(const QString &path)
    : m_path(path), m_lock(withSuffix(path, lockSuffix))
{
    m_lock.setStaleLockTime(0); // a program may run for weeks
}

bool Wiederherstellungsplatz::lock()
{
    return m_lock.tryLock(0) || (m_lock.error() == QLockFile::LockFailedError &&
                                 dropAbandonedLock(m_lock.fileName()) && m_lock.tryLock(0));
}

std::unique_ptr<Wiederherstellungsplatz> Wiederherstellungsplatz::create(const QString &folder)
{
    if (!QDir().mkpath(folder))
        throw RunTimeError(ErrorNumber::PathFileAccess);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    std::unique_ptr<Wiederherstellungsplatz> place(new Wiederherstellungsplatz(
        folder + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces) + fileSuffix));
    if (!place->lock())
        throw RunTimeError(ErrorNumber::PathFileAccess);
    return place;
}

std::unique_ptr<Wiederherstellungsplatz> Wiederherstellungsplatz::takeOver(const QString &path)
{
    std::unique_ptr<Wiederherstellungsplatz> place(new Wiederherstellungsplatz(path));
    if (!place->lock())
        return nullptr;
    // Its program may have ended in good order at this very moment.
    return QFileInfo::exists(path) ? std::move(place) : nullptr;
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
    QFile::remove(m_path);
}

void Wiederherstellungsplatz::setAside() const
{
    QFile::rename(m_path, withSuffix(m_path, brokenSuffix));
}
