#pragma once

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
    /// Raises 75 where that can't be.
    static std::unique_ptr<Wiederherstellungsplatz> create(const QString &folder);
    /// The place of the existing file \a path; null as long as another program uses it.
    static std::unique_ptr<Wiederherstellungsplatz> takeOver(const QString &path);

    /// The recovery files in \a folder, newest first, in use or not.
    static QStringList filesIn(const QString &folder);
    /// Removes what killed programs have left in \a folder beside their recovery files.
    static void tidy(const QString &folder);

    /// Gives the place back; the file stays.
    ~Wiederherstellungsplatz() = default;
    Q_DISABLE_COPY_MOVE(Wiederherstellungsplatz)

    const QString &path() const { return m_path; }
    /// Removes the file, if there is one.
    void removeFile() const;
    /// Renames the file, so that it is no recovery file any more.
    void setAside() const;

private:
    explicit Wiederherstellungsplatz(const QString &path);
    bool lock();

    QString m_path;
    QLockFile m_lock;
};
