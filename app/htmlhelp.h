#pragma once

#include "wizard/assistentdienste.h"

#include <functional>

/// The compiled help of the program.
class HTMLHelp : public Hilfe
{
public:
    /// Kinds of help file.
    enum Kind : int { Application = 0, Test = 1 };

    /// Opens a help file that exists, at its table of contents.
    using Viewer = std::function<void(const QString &path)>;

    HTMLHelp(QString programFolder, Viewer viewer);

    void setHelpFile(const QString &path) override { m_helpFile = path; }
    void showHelp() override { show(Application); }

    /// The path of the help file of \a kind; empty for a kind that there isn't.
    QString path(int kind) const;
    /// Opens it. Without the file nothing happens, and nothing is said.
    void show(int kind) const;

private:
    QString m_programFolder;
    QString m_helpFile = QStringLiteral("../Hilfe/Wendral.chm"); ///< until a window sets it
    Viewer m_viewer;
};

/// Opens \a path with the system's viewer for compiled help.
void openWithHelpViewer(const QString &path);
