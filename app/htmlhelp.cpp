#include "app/htmlhelp.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

HTMLHelp::HTMLHelp(QString programFolder, Viewer viewer)
    : m_programFolder(std::move(programFolder)), m_viewer(std::move(viewer))
{
}

QString HTMLHelp::path(int kind) const
{
    switch (kind) {
    case Application:
        return m_helpFile;
    case Test:
        return m_programFolder + u"/test.chm"_qs;
    default:
        return {};
    }
}

void HTMLHelp::show(int kind) const
{
    const QString file = path(kind);
    if (QFileInfo(file).isFile())
        m_viewer(file);
}

void openWithHelpViewer(const QString &path)
{
    // Named viewers first: the desktop may know none for this kind of file.
    for (const QString &viewer : {u"hh"_qs, u"kchmviewer"_qs, u"xchm"_qs}) {
        const QString program = QStandardPaths::findExecutable(viewer);
        if (!program.isEmpty() && QProcess::startDetached(program, {path}))
            return;
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
