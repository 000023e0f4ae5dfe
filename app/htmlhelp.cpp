#include "app/htmlhelp.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

namespace {

// A viewer's remarks don't belong into the terminal that this program was started from.
bool startSilently(const QString &program, const QString &file)
{
    QProcess viewer;
    viewer.setProgram(program);
    viewer.setArguments({QDir::toNativeSeparators(file)});
    viewer.setStandardOutputFile(QProcess::nullDevice());
    viewer.setStandardErrorFile(QProcess::nullDevice());
    return viewer.startDetached();
}

} // namespace

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
    if (!file.isEmpty() && (QFileInfo(file).isFile() || QFileInfo(pagesOf(file)).isFile()))
        m_viewer(file);
}

HelpPlatform HelpPlatform::system()
{
#ifdef Q_OS_WIN
    const QStringList viewers{u"hh"_qs};
#else
    const QStringList viewers{u"kchmviewer"_qs, u"xchm"_qs};
#endif
    return {viewers, [](const QString &name) { return QStandardPaths::findExecutable(name); },
            startSilently,
            [](const QString &file) { QDesktopServices::openUrl(QUrl::fromLocalFile(file)); }};
}

QString pagesOf(const QString &path)
{
    const QFileInfo file(path);
    return file.absolutePath() + u'/' + file.completeBaseName() + u"/index.html"_qs;
}

void openHelp(const QString &path, const HelpPlatform &platform)
{
    const QFileInfo compiled(path);
    if (compiled.isFile()) {
        for (const QString &viewer : platform.viewers) {
            const QString program = platform.findProgram(viewer);
            if (!program.isEmpty() && platform.start(program, compiled.absoluteFilePath()))
                return;
        }
    }
    const QString pages = pagesOf(path);
    if (QFileInfo(pages).isFile())
        platform.openDocument(pages);
    else if (compiled.isFile())
        platform.openDocument(compiled.absoluteFilePath());
}

void openWithHelpViewer(const QString &path)
{
    openHelp(path, HelpPlatform::system());
}
