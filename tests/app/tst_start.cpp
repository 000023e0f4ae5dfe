#include "app/fensterdienst.h"
#include "app/start.h"
#include "core/kalibrierung.h"
#include "core/runtimeerror.h"
#include "tests/core/file/childprocess.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/fakes.h"
#include "wizard/frminfo.h"

#include <QPointer>
#include <QPushButton>
#include <QTimer>

/// Start-up and the windows that a document opens.
class TestStart : public QObject
{
    Q_OBJECT

private slots:
    void debugWordCountsAnywhereInAnyCase_data();
    void debugWordCountsAnywhereInAnyCase();
    void mainShowsTheWindowBeforeTheDebugBox();
    void documentLivesAsLongAsItsWindow();
    void modalFormBlocksUntilItIsClosed();
    void formsDeleteThemselvesWhenClosed();
    void fileSizeLimitIsAnError();
    void buttonsSpeakGerman();
};

void TestStart::debugWordCountsAnywhereInAnyCase_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("debug");
    QTest::newRow("empty") << u""_qs << false;
    QTest::newRow("-debug") << u"-debug"_qs << true;
    QTest::newRow("/debug") << u"/debug"_qs << true;
    QTest::newRow("within a word") << u"xdebugx"_qs << true;
    QTest::newRow("with a value") << u"DEBUG=1"_qs << true;
    QTest::newRow("mixed case, second word") << u"datei.xml DeBuG"_qs << true;
    QTest::newRow("with a blank inside") << u"DEBU G"_qs << false;
    QTest::newRow("another word") << u"datei.xml"_qs << false;
}

void TestStart::debugWordCountsAnywhereInAnyCase()
{
    QFETCH(QString, line);
    QFETCH(bool, debug);
    QCOMPARE(basKalibrierungWendral::asksForDebugMode(line), debug);
    FakeWindows windows;
    FakeDialogs dialogs;
    // Without a real window the document has nowhere to live, so one is put in its place.
    struct : FakeWindows
    {
        QObject *createAssistent(Kalibrierung &) override { return &window; }
        QObject window;
    } service;
    basKalibrierungWendral::Main(line, QLocale(QLocale::German), service, dialogs);
    QCOMPARE(basKalibrierungWendral::debugMode(), debug);
    const std::vector<FakeDialogs::Shown> expected{informationBox(u"Debug-Modus aktiviert"_qs)};
    QCOMPARE(dialogs.shown, debug ? expected : std::vector<FakeDialogs::Shown>());
    QCOMPARE(service.calls, QStringList{u"modeless"_qs});
    QVERIFY(!service.owner);
}

namespace {

// A program around a real wizard window.
struct Program
{
    struct WatchingDialogs : FakeDialogs
    {
        void message(QWidget *owner, Icon icon, const QString &title, const QString &text) override
        {
            FakeDialogs::message(owner, icon, title, text);
            windowWasThere = !visibleWindows().isEmpty();
            lastOwner = owner;
        }
        static QList<frmAssistent *> visibleWindows()
        {
            QList<frmAssistent *> found;
            for (QWidget *window : QApplication::topLevelWidgets()) {
                if (auto *wizard = qobject_cast<frmAssistent *>(window);
                    wizard && wizard->isVisible())
                    found.append(wizard);
            }
            return found;
        }
        bool windowWasThere = false;
        QWidget *lastOwner = nullptr;
    };

    QTemporaryDir folder;
    QSettings settings{folder.filePath(u"s.ini"_qs), QSettings::IniFormat};
    WatchingDialogs dialogs;
    FakeHelp help;
    Fensterdienst windows{{dialogs, settings, help, folder.path()}};
};

} // namespace

void TestStart::mainShowsTheWindowBeforeTheDebugBox()
{
    Program program;
    basKalibrierungWendral::Main(u"debug"_qs, QLocale(QLocale::German), program.windows,
                                 program.dialogs);
    QVERIFY(program.dialogs.windowWasThere);
    const auto windows = Program::WatchingDialogs::visibleWindows();
    QCOMPARE(windows.size(), 1);
    QVERIFY(!windows.front()->parent());
    QCOMPARE(program.dialogs.lastOwner, windows.front());
    windows.front()->close();
}

void TestStart::documentLivesAsLongAsItsWindow()
{
    Program program;
    basKalibrierungWendral::Main({}, QLocale(QLocale::German), program.windows, program.dialogs);
    frmAssistent *window = Program::WatchingDialogs::visibleWindows().value(0);
    QVERIFY(window);
    const QPointer<Kalibrierung> document = window->findChild<Kalibrierung *>();
    QVERIFY(document);
    const QPointer<frmAssistent> watched(window);
    window->close();
    QTRY_VERIFY(!watched);
    QVERIFY(!document);
}

void TestStart::modalFormBlocksUntilItIsClosed()
{
    Program program;
    Kalibrierung document(QLocale(QLocale::German), &program.windows);
    QWidget owner;
    owner.show();
    bool wasModal = false;
    QTimer::singleShot(50, this, [&] {
        auto *box = qobject_cast<frmInfo *>(QApplication::activeModalWidget());
        wasModal = box && box->parentWidget() == &owner;
        if (box)
            box->findChild<QPushButton *>(u"cmdClose"_qs)->click();
    });
    document.ShowInfo(true, &owner); // returns after the close
    QVERIFY(wasModal);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestStart::formsDeleteThemselvesWhenClosed()
{
    Program program;
    QPointer<QObject> form = program.windows.createInfo();
    program.windows.showForm(form, false, nullptr);
    auto *window = qobject_cast<QWidget *>(form.data());
    QVERIFY(window->isVisible());
    QVERIFY(!window->isModal());
    window->close();
    QTRY_VERIFY(!form);
    QObject noWindow;
    QVERIFY_THROWS_EXCEPTION(RunTimeError, program.windows.showForm(&noWindow, false, nullptr));
}

void TestStart::fileSizeLimitIsAnError()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.xml"_qs);
    const auto save = [&path](bool prepared) {
        return inChild([&] {
            std::signal(SIGXFSZ, SIG_DFL); // whatever the test was started with
            if (prepared)
                takeFileSizeLimitAsError();
            const rlimit tooSmall{512, 512};
            if (::setrlimit(RLIMIT_FSIZE, &tooSmall) != 0)
                return notPossible;
            try {
                Kalibrierung(QLocale(QLocale::German)).SaveFile(path);
                return 0;
            } catch (const RunTimeError &error) {
                return error.number();
            }
        });
    };
    QCOMPARE(save(false), std::nullopt); // the end of the program
    QCOMPARE(save(true), std::optional(61));
    QVERIFY(!QFile::exists(path));
}

void TestStart::buttonsSpeakGerman()
{
    QVERIFY(installGermanTexts(*QCoreApplication::instance()));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), u"Abbrechen"_qs);
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "&Yes"), u"&Ja"_qs);
}

REGISTER_TEST(TestStart)
#include "tst_start.moc"
