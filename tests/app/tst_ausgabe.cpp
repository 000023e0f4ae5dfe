#include "app/ausgabe.h"
#include "app/fensterdienst.h"
#include "core/atomicfile.h"
#include "core/runtimeerror.h"
#include "protocol/windows/frmprotocollextradata.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/protocolservices.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/fakes.h"
#include "wizard/frmcalcoptions.h"
#include "wizard/frmexport.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <set>
#include <system_error>
#include <utility>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <unistd.h>
#endif

/// The commands of the output page, from the main window to the real windows behind them.
class TestAusgabe : public QObject
{
    Q_OBJECT

private slots:
    void previewIsModalSuggestsTheCalibrationsNameAndDeletesItself();
    void exportWritesTheChosenFile();
    void exportSuggestsTheNameOfTheCalibration();
    void cancelledExportWritesNothing();
    void failedExportIsReported_data();
    void failedExportIsReported();
    void fullDiskIsReportedAndLeavesTheOldFile();
    void exportNeverReplacesTheCalibration_data();
    void exportNeverReplacesTheCalibration();
    void protocolNeverReplacesTheCalibration_data();
    void protocolNeverReplacesTheCalibration();
    void progressShowsAndEnds();
    void cancelInTheProgressLeavesTheOldFile_data();
    void cancelInTheProgressLeavesTheOldFile();
    void closingBeforeTheProgressShowsCancels_data();
    void closingBeforeTheProgressShowsCancels();
    void chosenNameEndsInTheSuffix_data();
    void chosenNameEndsInTheSuffix();
    void fileWithTheCompletedNameIsReplacedOnlyWhenAllowed();
    void documentsWindowsGetTheDocument();
    void extraDataOfAnUnreadableDocumentLeavesNoWindow();
};

namespace {

// No printers, no dialogs.
struct SilentProtocol : ProtocolServices
{
    void message(QWidget *, Icon, const QString &, const QString &text) override
    {
        shown.append(text);
    }
    bool isPrinterInstalled() override { return false; }
    bool choosePrinter(QPrinter &, QAbstractPrintDialog::PrintDialogOptions, QWidget *) override
    {
        return false;
    }
    bool setUpPrinter(QPrinter &, QWidget *) override { return false; }
    QString choosePdfTarget(const QString &suggestion, QWidget *) override
    {
        suggested = suggestion;
        return target;
    }

    QStringList shown;
    QString suggested;
    QString target;
};

class OutputFixture : public WizardFixture
{
public:
    OutputFixture()
    {
        for (int field = 1; field <= 3; ++field) {
            for (int point = 1; point <= 4; ++point) {
                document.setMesswert(pmDirekt, field, point, 95.0 + field + point / 8.0);
                document.setMesswert(pmIndirekt, field, point, 20.0 + field + point / 4.0);
            }
        }
        showProtocol = [this](Kalibrierung &shown, QWidget *owner) {
            ausgabe::showProtocol(services, shown, owner);
        };
        showExport = [this](Kalibrierung &exported, QWidget *owner) {
            ausgabe::showExport(services, exported, owner);
        };
        document.DataStore().set(u"AssistentActivePage"_qs, std::int32_t{5});
        document.SaveFile(path(u"Feld A.xml"_qs));
        open().FileOpen(path(u"Feld A.xml"_qs));
    }

    // Presses the export button and runs the one action of the list.
    void runExport()
    {
        find<QPushButton>(u"cmdOutExport"_qs)->click();
        auto *list = window->findChild<frmExport *>();
        list->findChild<QListWidget *>(u"List1"_qs)->setCurrentRow(0);
        list->findChild<QPushButton *>(u"cmdOk"_qs)->click();
    }

    // Enough for the progress to show more than its end.
    void addPoints()
    {
        constexpr int points = 8000;
        for (int field = 1; field <= 3; ++field) {
            document.setPrüffeldPrüfpunkte(field, points);
            for (int point = 1; point <= points; ++point) {
                document.setMesswert(pmDirekt, field, point, 95.0 + field + point % 97 / 8.0);
                document.setMesswert(pmIndirekt, field, point, 20.0 + field + point % 89 / 4.0);
            }
        }
        document.SaveFile(path(u"Feld A.xml"_qs));
        document.setIsDirty(false);
    }

    QByteArray contents(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    bool write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    // The names of addWaysToTheCalibration().
    bool makeWaysToTheCalibration() const
    {
        std::error_code error;
        std::filesystem::create_hard_link(nativePath(path(u"Feld A.xml"_qs)),
                                          nativePath(path(u"Zweitname.xml"_qs)), error);
        return !error && QDir(folder.path()).mkdir(u"zu"_qs) &&
               QFile::link(path(u"Feld A.xml"_qs), path(u"Verweis.xml"_qs));
    }

    SilentProtocol protocol;
    QString target;
    QString suggestion;
    ausgabe::Dienste services{protocol, dialogs,
                              [this](QWidget *, const QString &suggested) {
                                  suggestion = suggested;
                                  return target;
                              },
                              [] { return QDateTime(QDate(2024, 5, 6), QTime(7, 8)); }};
};

void addWaysToTheCalibration()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("its name") << u"Feld A.xml"_qs;
    QTest::newRow("another way to it") << u"zu/../Feld A.xml"_qs;
    QTest::newRow("a symbolic link to it") << u"Verweis.xml"_qs;
    QTest::newRow("a second name of it") << u"Zweitname.xml"_qs;
}

// Does \a act with the visible window of a kind again and again until the scope ends.
template <typename Window>
class Nutzer
{
public:
    explicit Nutzer(std::function<void(Window &)> act)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [act = std::move(act)] {
            for (QWidget *widget : QApplication::topLevelWidgets()) {
                auto *window = qobject_cast<Window *>(widget);
                if (window && window->isVisible())
                    act(*window);
            }
        });
        m_timer.start(0);
    }

private:
    QTimer m_timer;
};

// Types \a name into the file dialog and presses its button, once; a second time it is closed.
class Dateinutzer
{
public:
    Dateinutzer(QString name, int filter)
        : m_user([this, name = std::move(name), filter](QFileDialog &dialog) {
            if (QApplication::activeModalWidget() != &dialog)
                return; // a question lies above it
            if (m_typed)
                return dialog.reject();
            m_typed = true;
            dialog.selectNameFilter(dialog.nameFilters().at(filter));
            dialog.findChild<QLineEdit *>(u"fileNameEdit"_qs)->setText(name);
            QMetaObject::invokeMethod(&dialog, "accept");
        })
    {
    }

private:
    bool m_typed = false;
    Nutzer<QFileDialog> m_user;
};

} // namespace

void TestAusgabe::previewIsModalSuggestsTheCalibrationsNameAndDeletesItself()
{
    OutputFixture f;
    f.find<QPushButton>(u"cmdOutProtocoll"_qs)->click();
    const QPointer<frmProtocollPreview> preview = f.window->findChild<frmProtocollPreview *>();
    QVERIFY(preview);
    QVERIFY(preview->isVisible());
    QCOMPARE(preview->windowModality(), Qt::WindowModal);
    QCOMPARE(preview->parentWidget(), f.window.get());
    QTRY_VERIFY(!preview->isBusy());
    QVERIFY(f.dialogs.shown.empty());
    preview->tbProtokoll_ButtonClick(u"pdf"_qs);
    QCOMPARE(f.protocol.suggested, f.path(u"Feld A.pdf"_qs));
    preview->close();
    QTRY_VERIFY(!preview);
}

void TestAusgabe::exportWritesTheChosenFile()
{
    OutputFixture f;
    f.target = f.path(u"Ergebnis.xlsx"_qs);
    f.runExport();
    QVERIFY(f.dialogs.shown.empty());
    QFile file(f.target);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("PK"));
    QVERIFY(!f.document.IsDirty());
}

void TestAusgabe::exportSuggestsTheNameOfTheCalibration()
{
    OutputFixture f;
    f.runExport();
    QCOMPARE(f.suggestion, f.path(u"Feld A.xlsx"_qs));
}

void TestAusgabe::cancelledExportWritesNothing()
{
    OutputFixture f;
    f.runExport();
    QVERIFY(f.dialogs.shown.empty());
    QVERIFY(!QFile::exists(f.path(u"Feld A.xlsx"_qs)));
    QVERIFY(f.window->findChild<frmExport *>()->isVisible());
}

void TestAusgabe::failedExportIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("end");
    QTest::newRow("no folder") << u"kein/Ordner/a.xlsx"_qs << u"Pfad nicht gefunden (76)"_qs;
    QTest::newRow("a folder") << u"zu"_qs << u"„zu“ ist keine Datei (75)"_qs;
    QTest::newRow("a folder to read only") << u"zu/a.xlsx"_qs << u"angelegt werden (70)"_qs;
}

void TestAusgabe::failedExportIsReported()
{
    QFETCH(QString, name);
    QFETCH(QString, end);
    OutputFixture f;
    QVERIFY(QDir(f.folder.path()).mkdir(u"zu"_qs));
    using F = QFileDevice;
    const auto readable =
        F::ReadOwner | F::ExeOwner | F::ReadGroup | F::ExeGroup | F::ReadOther | F::ExeOther;
    QVERIFY(QFile::setPermissions(f.folder.path(), readable | F::WriteOwner));
    QVERIFY(QFile::setPermissions(f.path(u"zu"_qs), readable));
    f.target = f.path(name);
#ifdef Q_OS_UNIX
    constexpr uid_t nobody = 65534; // root may write everywhere
    const bool wasRoot = geteuid() == 0;
    QVERIFY(!wasRoot || seteuid(nobody) == 0);
#endif
    f.runExport();
#ifdef Q_OS_UNIX
    QVERIFY(!wasRoot || seteuid(0) == 0);
#endif
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    const QString text = f.dialogs.shown.front().text;
    QVERIFY(text.startsWith(u"Beim Exportieren der Daten ist ein Fehler aufgetreten:\r\n"_qs));
    QVERIFY2(text.endsWith(end), qPrintable(text));
    QVERIFY(f.window->findChild<frmExport *>()->isVisible());
    QVERIFY(QDir(f.path(u"zu"_qs)).isEmpty());
}

void TestAusgabe::fullDiskIsReportedAndLeavesTheOldFile()
{
#ifdef Q_OS_UNIX
    OutputFixture f;
    QVERIFY(f.write(u"a.xlsx"_qs, "old"));
    f.target = f.path(u"a.xlsx"_qs);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    QVERIFY(getrlimit(RLIMIT_FSIZE, &before) == 0);
    const rlimit small{5000, before.rlim_max};
    QVERIFY(setrlimit(RLIMIT_FSIZE, &small) == 0);
    f.runExport();
    QVERIFY(setrlimit(RLIMIT_FSIZE, &before) == 0);
    std::signal(SIGXFSZ, signalBefore);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QCOMPARE(f.dialogs.shown.front().text,
             u"Beim Exportieren der Daten ist ein Fehler aufgetreten:\r\nDatenträger voll (61)"_qs);
    QCOMPARE(f.contents(u"a.xlsx"_qs), QByteArray("old"));
#else
    QSKIP("no limit of a file's size here");
#endif
}

void TestAusgabe::exportNeverReplacesTheCalibration_data()
{
    addWaysToTheCalibration();
}

void TestAusgabe::exportNeverReplacesTheCalibration()
{
    QFETCH(QString, name);
    OutputFixture f;
    QVERIFY(f.makeWaysToTheCalibration());
    const QByteArray before = f.contents(u"Feld A.xml"_qs);
    QVERIFY(before.startsWith("<"));
    f.target = f.path(name);
    f.runExport();
    QCOMPARE(f.contents(u"Feld A.xml"_qs), before);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    const QString text = f.dialogs.shown.front().text;
    QVERIFY2(text.endsWith(u"“ ist die Datei dieser Kalibrierung, die Tabelle braucht eine "
                           u"eigene (75)"_qs),
             qPrintable(text));
}

void TestAusgabe::protocolNeverReplacesTheCalibration_data()
{
    addWaysToTheCalibration();
}

void TestAusgabe::protocolNeverReplacesTheCalibration()
{
    QFETCH(QString, name);
    OutputFixture f;
    QVERIFY(f.makeWaysToTheCalibration());
    const QByteArray before = f.contents(u"Feld A.xml"_qs);
    f.find<QPushButton>(u"cmdOutProtocoll"_qs)->click();
    auto *preview = f.window->findChild<frmProtocollPreview *>();
    QTRY_VERIFY(!preview->isBusy());
    f.protocol.shown.clear(); // that there is no printer
    f.protocol.target = f.path(name);
    preview->tbProtokoll_ButtonClick(u"pdf"_qs);
    QTRY_VERIFY(!preview->isBusy());
    QCOMPARE(f.contents(u"Feld A.xml"_qs), before);
    QCOMPARE(f.contents(name), before);
    QCOMPARE(f.protocol.shown,
             QStringList{u"Folgender Fehler ist aufgetreten:\r\nFehler beim Zugriff auf "
                         u"Pfad/Datei: „%1“ ist die Datei dieser Kalibrierung, das Protokoll "
                         u"braucht eine eigene (75)"_qs.arg(QFileInfo(name).fileName())});
}

void TestAusgabe::progressShowsAndEnds()
{
    OutputFixture f;
    f.addPoints();
    f.services.showProgressAfter = std::chrono::milliseconds(0);
    f.target = f.path(u"a.xlsx"_qs);
    std::set<int> seen;
    QString shown;
    const Nutzer<QProgressDialog> user([&](QProgressDialog &progress) {
        seen.insert(progress.value());
        shown = progress.windowTitle() + u": "_qs + progress.labelText();
        QCOMPARE(progress.windowModality(), Qt::WindowModal);
    });
    f.runExport();
    QVERIFY(f.dialogs.shown.empty());
    QVERIFY(f.contents(u"a.xlsx"_qs).startsWith("PK"));
    QCOMPARE(shown, u"Export in dritte Programme: Die Tabelle wird geschrieben."_qs);
    const auto between = [&seen](int low, int high) {
        return std::distance(seen.lower_bound(low), seen.upper_bound(high));
    };
    QVERIFY2(between(1, 60) >= 5, QByteArray::number(qlonglong(seen.size())));
    QVERIFY2(between(91, 99) >= 3, QByteArray::number(qlonglong(seen.size())));
    QVERIFY(!f.window->findChild<QProgressDialog *>());
}

void TestAusgabe::cancelInTheProgressLeavesTheOldFile_data()
{
    QTest::addColumn<int>("percent");
    QTest::newRow("among the rows") << 20;
    QTest::newRow("while it is packed") << 60;
    QTest::newRow("while it is checked") << 93;
}

void TestAusgabe::cancelInTheProgressLeavesTheOldFile()
{
    QFETCH(int, percent);
    OutputFixture f;
    f.addPoints();
    f.services.showProgressAfter = std::chrono::milliseconds(0);
    QVERIFY(f.write(u"a.xlsx"_qs, "old"));
    f.target = f.path(u"a.xlsx"_qs);
    int cancelledAt = -1;
    const Nutzer<QProgressDialog> user([&](QProgressDialog &progress) {
        if (progress.value() < percent || cancelledAt >= 0)
            return;
        cancelledAt = progress.value();
        for (QPushButton *button : progress.findChildren<QPushButton *>()) {
            if (button->text() == u"Abbrechen")
                button->click();
        }
    });
    f.runExport();
    QVERIFY(cancelledAt >= percent && cancelledAt < 100);
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.contents(u"a.xlsx"_qs), QByteArray("old"));
    QVERIFY(f.window->findChild<frmExport *>()->isVisible());
}

void TestAusgabe::closingBeforeTheProgressShowsCancels_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("the list") << true;
    QTest::newRow("the main window") << false;
}

void TestAusgabe::closingBeforeTheProgressShowsCancels()
{
    QFETCH(bool, byEscape);
    OutputFixture f;
    f.addPoints();
    QVERIFY(f.write(u"a.xlsx"_qs, "old"));
    f.target = f.path(u"a.xlsx"_qs);
    const QPointer<frmAssistent> window = f.window.get();
    bool closed = false;
    const Nutzer<frmExport> user([&](frmExport &list) {
        if (std::exchange(closed, true))
            return;
        if (byEscape)
            QTest::keyClick(&list, Qt::Key_Escape);
        else
            window->close();
    });
    f.runExport();
    QVERIFY(closed);
    QVERIFY(window && window->isVisible());
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.contents(u"a.xlsx"_qs), QByteArray("old"));
    const QPointer<frmExport> list = f.window->findChild<frmExport *>();
    QVERIFY(list && list->isVisible());
    QTest::keyClick(list, Qt::Key_Escape);
    QTRY_VERIFY(!list);
}

void TestAusgabe::chosenNameEndsInTheSuffix_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("plain") << u"Feld"_qs << 0 << u"Feld.xlsx"_qs;
    QTest::newRow("with a dot") << u"Feld 12.03"_qs << 0 << u"Feld 12.03.xlsx"_qs;
    QTest::newRow("with it") << u"Feld.xlsx"_qs << 0 << u"Feld.xlsx"_qs;
    QTest::newRow("in capitals") << u"FELD.XLSX"_qs << 0 << u"FELD.XLSX"_qs;
    QTest::newRow("with another one") << u"Feld.xml"_qs << 0 << u"Feld.xml.xlsx"_qs;
    QTest::newRow("any file") << u"Feld 12.03"_qs << 1 << u"Feld 12.03"_qs;
}

void TestAusgabe::chosenNameEndsInTheSuffix()
{
    QFETCH(QString, typed);
    QFETCH(int, filter);
    QFETCH(QString, chosen);
    QTemporaryDir folder;
    const Dateinutzer user(typed, filter);
    QCOMPARE(ausgabe::chooseSpreadsheet(nullptr, folder.filePath(u"Vorschlag.xlsx"_qs)),
             folder.filePath(chosen));
}

void TestAusgabe::fileWithTheCompletedNameIsReplacedOnlyWhenAllowed()
{
    QTemporaryDir folder;
    QFile existing(folder.filePath(u"Feld 12.03.xlsx"_qs));
    QVERIFY(existing.open(QIODevice::WriteOnly));
    QString question;
    auto answer = QMessageBox::No;
    const Nutzer<QMessageBox> reader([&](QMessageBox &box) {
        question = box.text();
        box.button(answer)->click();
    });
    const auto choose = [&] {
        const Dateinutzer user(u"Feld 12.03"_qs, 0);
        return ausgabe::chooseSpreadsheet(nullptr, folder.filePath(u"Vorschlag.xlsx"_qs));
    };
    QCOMPARE(choose(), QString());
    QCOMPARE(question, u"„Feld 12.03.xlsx“ gibt es schon. Soll die Datei ersetzt werden?"_qs);
    answer = QMessageBox::Yes;
    QCOMPARE(choose(), existing.fileName());
}

void TestAusgabe::documentsWindowsGetTheDocument()
{
    OutputFixture f;
    AssistentDienste services{f.dialogs, f.settings, f.help, f.folder.path()};
    Fensterdienst windows(services);
    const std::unique_ptr<QObject> options(windows.createCalcOptions(f.document));
    QVERIFY(qobject_cast<frmCalcOptions *>(options.get()));
    QCOMPARE(options->findChild<QLineEdit *>(u"txtMittelwerteStellen"_qs)->text(), u"1"_qs);
    const std::unique_ptr<QObject> data(windows.createProtocollExtraData(f.document));
    QVERIFY(qobject_cast<frmProtocollExtraData *>(data.get()));
}

void TestAusgabe::extraDataOfAnUnreadableDocumentLeavesNoWindow()
{
    OutputFixture f;
    f.document.DataStore().set(u"Anzahl Prüffelder"_qs, u"viele"_qs);
    AssistentDienste services{f.dialogs, f.settings, f.help, f.folder.path()};
    Fensterdienst windows(services);
    const auto before = QApplication::topLevelWidgets().size();
    QVERIFY_THROWS_EXCEPTION(RunTimeError, windows.createProtocollExtraData(f.document));
    QCOMPARE(QApplication::topLevelWidgets().size(), before);
}

REGISTER_TEST(TestAusgabe)
#include "tst_ausgabe.moc"
