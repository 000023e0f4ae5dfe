#pragma once

#include "wizard/assistentdienste.h"

#include <QStringList>

#include <functional>

/// The compiled help of the program.
class HTMLHelp : public Hilfe
{
public:
    /// Kinds of help file.
    enum Kind : int { Application = 0, Test = 1 };

    /// Opens the help whose compiled file is \a path, at its table of contents.
    using Viewer = std::function<void(const QString &path)>;

    HTMLHelp(QString programFolder, Viewer viewer);

    void setHelpFile(const QString &path) override { m_helpFile = path; }
    void showHelp() override { show(Application); }

    /// The path of the help file of \a kind; empty for a kind that there isn't.
    QString path(int kind) const;
    /// Opens it. Where neither the file nor its pages exist nothing happens, and nothing is said.
    void show(int kind) const;

private:
    QString m_programFolder;
    QString m_helpFile = QStringLiteral("../Hilfe/Wendral.chm"); ///< until a window sets it
    Viewer m_viewer;
};

/// What the platform offers for opening help.
struct HelpPlatform
{
    /// Names of programs for compiled help, best first. Only this platform's own: elsewhere the
    /// same name may be another program's.
    QStringList viewers;
    /// The path of the program called \a name; empty where it isn't installed.
    std::function<QString(const QString &name)> findProgram;
    /// Starts \a program on \a file and does not wait for it. \returns whether it runs.
    std::function<bool(const QString &program, const QString &file)> start;
    /// Opens \a file with the program that the desktop has for its kind.
    std::function<void(const QString &file)> openDocument;

    static HelpPlatform system();
};

/// The first of the pages that the compiled file \a path is made of. They lie beside it, in a
/// folder of its name: "Wendral.chm" and "Wendral/index.html".
QString pagesOf(const QString &path);

/// Opens the compiled file \a path with a viewer for such files. Where there is none, or no such
/// file, its pages open in the browser; the desktop is asked about the file itself only where there
/// are no pages, for it claims success for kinds of file that no program of it can show.
void openHelp(const QString &path, const HelpPlatform &platform);

/// openHelp() on this system.
void openWithHelpViewer(const QString &path);
