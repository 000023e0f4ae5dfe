#pragma once

#include <QFile>
#include <QLockFile>
#include <QString>
#include <QStringList>

#include <memory>

/// The place of one recovery file. As long as the object lives, a lock beside the file tells other
/// programs that it is in use.
class Wiederherstellungsplatz
{
public:
    /// A new place for this program, without a file yet. Makes the folder where it is missing.
    /// Raises 61, 70, 75 or 76 where that can't be.
    static std::unique_ptr<Wiederherstellungsplatz> create(const QString &folder);
    /// The place of the existing file \a path; null as long as another program uses it. On a full
    /// or protected disk the file itself is locked. Raises 61, 70, 75 or 76 where not even that can
    /// be.
    static std::unique_ptr<Wiederherstellungsplatz> takeOver(const QString &path);

    /// The recovery files in \a folder, newest first, in use or not.
    static QStringList filesIn(const QString &folder);
    /// Removes what killed programs have left in \a folder beside their recovery files.
    static void tidy(const QString &folder);

    /// Gives the place back; the file stays.
    ~Wiederherstellungsplatz();
    Q_DISABLE_COPY_MOVE(Wiederherstellungsplatz)

    const QString &path() const { return m_path; }
    /// Whether the file, with something in it, and the lock beside it are still there.
    bool isIntact() const;
    /// To be called before the file is written: locks the place again where the lock beside it is
    /// missing, which a clean-up may have removed, with the folder even. \returns false where
    /// another program has taken the place. Raises 61, 70, 75 or 76 where it can't be locked.
    bool renewLock();
    /// Removes the file, if there is one and no other program has taken the place.
    void removeFile() const;
    /// Renames the file, so that it is no recovery file any more.
    void setAside() const;

private:
    explicit Wiederherstellungsplatz(const QString &path);
    enum class Sperre { Eigen, Fremd, Unmöglich };
    Sperre lock();
    Sperre lockFileItself();
    Sperre ownerOfLock() const;
    void dropMissingLock();
    [[noreturn]] void raiseReason() const;

    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
    quint64 m_lockNumber = 0; ///< of the lock beside the file, as the disk counts files
    QFile m_file;             ///< open as long as it is locked itself
};
