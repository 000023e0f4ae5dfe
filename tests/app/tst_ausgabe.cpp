#include "app/ausgabe.h"
#include "app/fensterdienst.h"
#include "core/runtimeerror.h"
#include "protocol/windows/frmprotocollextradata.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/protocolservices.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/fakes.h"
#include "wizard/frmcalcoptions.h"
#include "wizard/frmexport.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

/// The commands of the output page, from the main window to the real windows behind them.
class TestAusgabe : public QObject
{
    Q_OBJECT

private slots:
    void previewIsModalToTheWindowAndDeletesItself();
    void exportWritesTheChosenFile();
    void exportSuggestsTheNameOfTheCalibration();
    void cancelledExportWritesNothing();
    void failedExportIsReported();
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
    QString choosePdfTarget(const QString &, QWidget *) override { return {}; }

    QStringList shown;
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

} // namespace

void TestAusgabe::previewIsModalToTheWindowAndDeletesItself()
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

void TestAusgabe::failedExportIsReported()
{
    OutputFixture f;
    f.target = f.path(u"kein/Ordner/a.xlsx"_qs);
    f.runExport();
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QVERIFY(f.dialogs.shown.front().text.startsWith(
        u"Beim Exportieren der Daten ist ein Fehler aufgetreten:\r\n"_qs));
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
