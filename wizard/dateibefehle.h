#pragma once

#include "wizard/dialogs.h"

#include <QByteArray>
#include <QString>

#include <optional>

class Kalibrierung;
class QWidget;

/// The file commands of the main window: new, open, save, the question before changes are lost.
///
/// A command that is cancelled or fails leaves document, dirty flag, file name, title and page as
/// they were.
class Dateibefehle
{
public:
    /// What the commands need of the window that they belong to.
    class Fenster
    {
    public:
        virtual ~Fenster() = default;
        virtual QWidget *widget() = 0;
        /// Takes the visible page over into the document; false after a message about an entry.
        virtual bool takeOverVisiblePage() = 0;
        /// Whether the visible page holds entries that the document hasn't got.
        virtual bool visiblePageHasChanges() = 0;
        virtual int activePage() const = 0;
        virtual void enterFirstPage() = 0;
        /// Enters \a page, the current one again where there is no such page to be shown.
        virtual void enterPage(std::optional<int> page) = 0;
        virtual void fileNameChanged() = 0;
        /// \a path was opened and belongs into the list of recent files.
        virtual void fileOpened(const QString &path) = 0;
    };

    Dateibefehle(Kalibrierung &document, Dialogs &dialogs, Fenster &window);

    QString fileName() const { return m_fileName; }
    void setFileName(const QString &path);
    /// Digest of the file when it was last opened or saved here; empty where it was neither.
    QByteArray contentOnDisk() const { return m_contentOnDisk; }
    /// The document holds work that was based on the file \a path when its digest was
    /// \a contentOnDisk.
    void restoreFile(const QString &path, const QByteArray &contentOnDisk);

    void newDocument();
    void open();
    /// Opens \a path after the question; for recent files and files dropped on the window.
    void openPath(const QString &path);
    /// \returns whether the document has been saved.
    bool save();
    bool saveAs();
    /// Asks whether changes are to be saved, if there are any. \returns whether the command that
    /// would lose them may go on.
    bool mayProceed();

    /// Loads \a path, clears the dirty flag and enters the page that the file names. Raises what
    /// Kalibrierung::LoadFile raises, and nothing has changed then.
    void load(const QString &path);
    /// Stores the page number, writes to \a path and clears the dirty flag. Raises what
    /// Kalibrierung::SaveFile raises, and the document is as it was then.
    void write(const QString &path);

private:
    bool saveTo(const QString &path);
    bool changedOnDisk(const QString &path) const;

    Kalibrierung &m_document;
    Dialogs &m_dialogs;
    Fenster &m_window;
    QString m_fileName;
    QByteArray m_contentOnDisk;
};
