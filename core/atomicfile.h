#pragma once

#include "core/runtimeerror.h"

#include <QFile>
#include <QString>

#include <filesystem>

/// Replaces a file as a whole: writes a temporary file beside it and renames that over it in the
/// end, so that a failure, a full disk or a killed program leaves the old file as it was.
///
/// Symbolic links are followed, permissions kept, owner and group where the system allows it. A
/// second name (hard link) of the file keeps the old contents. Own code rather than QSaveFile,
/// whose commit() succeeds with a truncated file after a short write and whose temporary names are
/// too long beside long names.
class AtomicFile
{
public:
    /// Opens the temporary file beside \a target. Raises 70, 75 or 76 where that can't be, 61 where
    /// no further file fits.
    explicit AtomicFile(const QString &target);
    /// Removes the temporary file unless commit() has renamed it.
    ~AtomicFile();
    Q_DISABLE_COPY_MOVE(AtomicFile)

    /// Appends \a bytes. Raises 57 or 61.
    void write(const QByteArray &bytes);
    /// For libraries that write into an open device or a file of a given name; whoever uses them
    /// checks their own errors before commit().
    QFile &device() { return m_file; }
    QString temporaryPath() const { return m_file.fileName(); }

    /// Checks that everything has reached the disk and puts the file in the target's place. Raises
    /// 57, 61, 70, 75 or 76, and the target is as it was then.
    void commit();

private:
    void openBeside();
    void keepAttributes();
    void checkSize() const;

    std::filesystem::path m_target; ///< absolute, behind all symbolic links
    QFile m_file;
    qint64 m_written = 0;
    bool m_committed = false;
};

/// The number that a failed operating system call's errno stands for; \a other where there is no
/// better one.
ErrorNumber errorNumberOf(int systemError, ErrorNumber other);
/// The same as an error to raise: with \a detail, or with the system's own reason where the number
/// would lead astray without it.
RunTimeError errorOf(int systemError, ErrorNumber other, const QString &detail = {});

/// \a name as the operating system takes it. Raises 75 for a name that holds U+0000.
std::filesystem::path nativePath(const QString &name);
