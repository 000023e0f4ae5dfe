#include "app/htmlhelp.h"
#include "core/kalibrierung.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/fakes.h"
#include "wizard/frmassistent.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A program folder, and a platform that writes down what it is asked to open.
struct Fixture
{
    QTemporaryDir folder;
    QStringList installed; ///< names of the viewers that there are
    QStringList broken;    ///< those of them that don't start
    QStringList opened;
    HTMLHelp help{folder.path(), [this](const QString &path) { openHelp(path, platform()); }};

    Fixture() { help.setHelpFile(compiled()); }

    QString compiled() const { return folder.filePath(u"Wendral.chm"_qs); }
    QString pages() const { return folder.filePath(u"Wendral/index.html"_qs); }

    HelpPlatform platform()
    {
        return {{u"first"_qs, u"second"_qs, u"third"_qs},
                [this](const QString &name) {
                    return installed.contains(name) ? u"/programs/"_qs + name : QString();
                },
                [this](const QString &program, const QString &file) {
                    opened += program + u' ' + file;
                    return !broken.contains(QFileInfo(program).fileName());
                },
                [this](const QString &file) { opened += u"desktop "_qs + file; }};
    }
};

void makeFile(const QString &path)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

/// Which program opens the help, and that nothing happens where there is none.
class TestHtmlHelp : public QObject
{
    Q_OBJECT

private slots:
    void pathDependsOnTheKind_data();
    void pathDependsOnTheKind();
    void viewersAreTriedInTurn_data();
    void viewersAreTriedInTurn();
    void viewersAreThePlatformsOwn();
    void pagesOpenWhereTheCompiledFileIsMissing();
    void withoutPagesTheDesktopIsAskedForTheFile();
    void withoutAnyHelpNothingOpens_data();
    void withoutAnyHelpNothingOpens();
    void pagesOfTheProgramAreNotThoseOfTheTestFile();
    void folderIsNoHelpFile();
    void relativePathReachesTheViewerInFull();
    void startedViewerGetsTheFile();
    void viewerThatCannotStartIsReported();
    void mainWindowOpensTheHelpBesideTheProgram_data();
    void mainWindowOpensTheHelpBesideTheProgram();
};

void TestHtmlHelp::pathDependsOnTheKind_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("path");
    QTest::newRow("application") << 0 << u"/programs/Wendral.chm"_qs;
    QTest::newRow("test") << 1 << u"/programs/test.chm"_qs;
    QTest::newRow("2") << 2 << QString();
    QTest::newRow("-1") << -1 << QString();
    QTest::newRow("largest") << 32767 << QString();
    QTest::newRow("smallest") << -32768 << QString();
}

void TestHtmlHelp::pathDependsOnTheKind()
{
    QFETCH(int, kind);
    QFETCH(QString, path);
    HTMLHelp help(u"/programs"_qs, [](const QString &) {});
    QCOMPARE(help.path(HTMLHelp::Application), u"../Hilfe/Wendral.chm"_qs);
    help.setHelpFile(u"/programs/Wendral.chm"_qs);
    QCOMPARE(help.path(kind), path);
}

void TestHtmlHelp::viewersAreTriedInTurn_data()
{
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QStringList>("broken");
    QTest::addColumn<QStringList>("expected"); // %1 is the compiled file, %2 the first page
    const QString first = u"/programs/first %1"_qs;
    const QString second = u"/programs/second %1"_qs;
    const QString third = u"/programs/third %1"_qs;
    const QString pages = u"desktop %2"_qs;
    const QStringList all{u"third"_qs, u"second"_qs, u"first"_qs};
    QTest::newRow("all") << all << QStringList() << QStringList{first};
    QTest::newRow("two") << all.first(2) << QStringList() << QStringList{second};
    QTest::newRow("one") << all.first(1) << QStringList() << QStringList{third};
    QTest::newRow("one broken") << all.first(2) << QStringList{u"second"_qs}
                                << QStringList{second, third};
    QTest::newRow("all broken") << all << all << QStringList{first, second, third, pages};
    QTest::newRow("none") << QStringList() << QStringList() << QStringList{pages};
    QTest::newRow("others only") << QStringList{u"evince"_qs} << QStringList()
                                 << QStringList{pages};
}

void TestHtmlHelp::viewersAreThePlatformsOwn()
{
    const QStringList viewers = HelpPlatform::system().viewers;
#ifdef Q_OS_WIN
    QCOMPARE(viewers, QStringList{u"hh"_qs});
#else
    QCOMPARE(viewers, (QStringList{u"kchmviewer"_qs, u"xchm"_qs}));
#endif
}

void TestHtmlHelp::viewersAreTriedInTurn()
{
    QFETCH(QStringList, installed);
    QFETCH(QStringList, broken);
    QFETCH(QStringList, expected);
    Fixture f;
    makeFile(f.compiled());
    makeFile(f.pages());
    f.installed = installed;
    f.broken = broken;
    f.help.showHelp();
    expected.replaceInStrings(u"%1"_qs, f.compiled());
    expected.replaceInStrings(u"%2"_qs, f.pages());
    QCOMPARE(f.opened, expected);
}

void TestHtmlHelp::pagesOpenWhereTheCompiledFileIsMissing()
{
    Fixture f;
    makeFile(f.pages());
    f.installed = {u"first"_qs};
    f.help.showHelp();
    QCOMPARE(f.opened, QStringList{u"desktop "_qs + f.pages()});
}

void TestHtmlHelp::withoutPagesTheDesktopIsAskedForTheFile()
{
    Fixture f;
    makeFile(f.compiled());
    f.help.showHelp();
    QCOMPARE(f.opened, QStringList{u"desktop "_qs + f.compiled()});
}

void TestHtmlHelp::withoutAnyHelpNothingOpens_data()
{
    QTest::addColumn<int>("kind");
    for (const int kind : {0, 1, 2, -1})
        QTest::addRow("kind %d", kind) << kind;
}

void TestHtmlHelp::withoutAnyHelpNothingOpens()
{
    QFETCH(int, kind);
    Fixture f;
    f.installed = {u"first"_qs};
    f.help.show(kind);
    QCOMPARE(f.opened, QStringList());
    QVERIFY(!QApplication::activeModalWidget());
}

void TestHtmlHelp::pagesOfTheProgramAreNotThoseOfTheTestFile()
{
    Fixture f;
    makeFile(f.compiled());
    makeFile(f.pages());
    f.help.show(HTMLHelp::Test);
    QCOMPARE(f.opened, QStringList());
    f.help.show(2);
    QCOMPARE(f.opened, QStringList());
    makeFile(f.folder.filePath(u"test.chm"_qs));
    f.help.show(HTMLHelp::Test);
    QCOMPARE(f.opened, QStringList{u"desktop "_qs + f.folder.filePath(u"test.chm"_qs)});
}

void TestHtmlHelp::folderIsNoHelpFile()
{
    Fixture f;
    f.installed = {u"first"_qs};
    QVERIFY(QDir().mkpath(f.compiled()));
    f.help.showHelp();
    QCOMPARE(f.opened, QStringList());
}

void TestHtmlHelp::relativePathReachesTheViewerInFull()
{
    Fixture f;
    makeFile(f.compiled());
    f.installed = {u"third"_qs};
    f.help.setHelpFile(QDir::current().relativeFilePath(f.compiled()));
    f.help.showHelp();
    QCOMPARE(f.opened, QStringList{u"/programs/third "_qs + f.compiled()});
}

void TestHtmlHelp::startedViewerGetsTheFile()
{
#ifndef Q_OS_UNIX
    QSKIP("the stand-in for the viewer is a shell script");
#endif
    // The name holds what a shell would take for something else: none reads it.
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"Prüfung $HOME; 'a'.chm"_qs);
    const QString viewer = folder.filePath(u"viewer"_qs);
    QFile script(viewer);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(
        "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > \"$0.new\"\nmv \"$0.new\" \"$0.got\"\n");
    script.close();
    QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(HelpPlatform::system().start(viewer, file));
    QFile got(viewer + u".got"_qs);
    QTRY_VERIFY_WITH_TIMEOUT(got.exists(), 60'000); // another process
    QVERIFY(got.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(got.readAll()), u"1|"_qs + file);
}

void TestHtmlHelp::viewerThatCannotStartIsReported()
{
    const QTemporaryDir folder;
    QVERIFY(!HelpPlatform::system().start(folder.filePath(u"no-viewer"_qs), u"Wendral.chm"_qs));
    QVERIFY(HelpPlatform::system().findProgram(u"no-viewer-of-this-name"_qs).isEmpty());
}

void TestHtmlHelp::mainWindowOpensTheHelpBesideTheProgram_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<bool>("isThere");
    QTest::newRow("menu, no help file") << false << false;
    QTest::newRow("F1, no help file") << true << false;
    QTest::newRow("menu") << false << true;
    QTest::newRow("F1") << true << true;
}

void TestHtmlHelp::mainWindowOpensTheHelpBesideTheProgram()
{
    QFETCH(bool, byKey);
    QFETCH(bool, isThere);
    Fixture f;
    f.help.setHelpFile({}); // the window is to set it
    f.installed = {u"first"_qs};
    if (isThere)
        makeFile(f.compiled());
    QSettings settings(f.folder.filePath(u"s.ini"_qs), QSettings::IniFormat);
    FakeDialogs dialogs;
    FakeWindows windows;
    Kalibrierung document(QLocale(QLocale::German), &windows);
    frmAssistent window(document, {dialogs, settings, f.help, f.folder.path()});
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    if (byKey) {
        QTest::keyClick(&window, Qt::Key_F1);
    } else {
        auto *entry = window.findChild<QAction *>(u"mh_Helpthemes"_qs);
        QVERIFY(entry);
        entry->trigger();
    }
    QCOMPARE(f.opened,
             isThere ? QStringList{u"/programs/first "_qs + f.compiled()} : QStringList());
    QCOMPARE(dialogs.shown, std::vector<FakeDialogs::Shown>());
    QVERIFY(!QApplication::activeModalWidget());
}

REGISTER_TEST(TestHtmlHelp)
#include "tst_htmlhelp.moc"
