#include "tests/core/file/childprocess.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/fakes.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>

#include <sys/stat.h>

/// New, open, save and close with every answer and every failure.
class TestDateibefehle : public QObject
{
    Q_OBJECT

private slots:
    void cleanDocumentIsReplacedWithoutAQuestion();
    void newForgetsFileNameTitleAndPage();
    void newStartsWithTheWelcomePage();
    void cancelLeavesEverything_data();
    void cancelLeavesEverything();
    void typedTextAloneCountsAsAChange();
    void yesSavesFirst();
    void yesWithAFailedSaveStops();
    void yesWithAnEntryThatCannotBeStoredStops();
    void noDiscardsTypedEntries();
    void noAndThenACancelledOpenLeavesEverything();
    void noAndThenABrokenFileLeavesEverything();
    void openShowsTheFile();
    void openFailureIsReported_data();
    void openFailureIsReported();
    void openingDoesNotMarkTheDocumentDirty();
    void storedPageIsEntered_data();
    void storedPageIsEntered();
    void saveWritesThePageAndClearsTheFlag();
    void saveTakesTheVisiblePageOver();
    void saveStopsAtWhatCannotBeStored();
    void saveWithoutANameAsksForOne();
    void cancelledSaveAsChangesNothing();
    void failedSaveAsRestoresNameAndTitle();
    void workBelongsToTheOldFileWhileAFailureIsShown();
    void workOfUnknownContentDoesNotReplaceAFileUnasked();
    void failedSaveIsReported();
    void failedSaveLeavesTheStore_data();
    void failedSaveLeavesTheStore();
    void savedFileComesBack();
    void fileChangedByOthersIsNoticed_data();
    void fileChangedByOthersIsNoticed();
    void touchedOrDeletedFileRaisesNoQuestion();
    void closingAsksOnce_data();
    void closingAsksOnce();
    void titleIsProductAndBareName_data();
    void titleIsProductAndBareName();
    void recentFilesShowTheNewestFirst();
    void savingNeverTouchesTheRecentFiles();
    void openedAgainMovesUpWithoutADouble();
    void recentPathMayHoldAmpersands();
    void recentFileThatIsGoneIsReported();
    void recentFileAsksBeforeChangesAreLost();
    void droppedFileIsOpened();
    void droppedFileAsksBeforeChangesAreLost();
    void somethingElseDroppedIsRefused();
    void dialogsStartWhereTheFileIs();
    void shortcutsAreTheStandardOnes();
    void protectedFolderKeepsTheOldFile();

private:
    static QString saved(WizardFixture &f, const QString &name, const QString &directName,
                         const Variant &page = std::int32_t{1});
};

namespace {

const QString question = u"Kalibrierung nach Wendral: Sollen die Änderungen gespeichert werden?"_qs;
const QString openFailed = u"Beim Öffnen der Datei ist ein Fehler aufgetreten:\r\n"_qs;
const QString saveFailed = u"Beim Speichern der Datei ist ein Fehler aufgetreten:\r\n"_qs;
const QString productName = u"Kalibrierung nach Wendral"_qs;

void trigger(WizardFixture &f, const QString &name)
{
    f.find<QAction>(name)->trigger();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void overwrite(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write a test file");
}

// What must not change when a command is cancelled or fails.
struct State
{
    explicit State(WizardFixture &f)
        : content(f.document.ContentString())
        , dirty(f.document.IsDirty())
        , name(f.window->FileName())
        , title(f.window->windowTitle())
        , page(f.activePage())
        , box(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText())
    {
    }
    bool operator==(const State &) const = default;

    QByteArray content;
    bool dirty;
    QString name;
    QString title;
    int page;
    QString box;
};

} // namespace

// A file as the program writes it, with a name that tells it from others.
QString TestDateibefehle::saved(WizardFixture &f, const QString &name, const QString &directName,
                                const Variant &page)
{
    Kalibrierung other(QLocale(QLocale::German, QLocale::Germany));
    other.DirektesPrüfmerkmal().setName(directName);
    other.DataStore().set(u"AssistentActivePage"_qs, page);
    other.SaveFile(f.path(name));
    return f.path(name);
}

void TestDateibefehle::cleanDocumentIsReplacedWithoutAQuestion()
{
    WizardFixture f;
    f.open();
    trigger(f, u"mf_new"_qs);
    QVERIFY(f.dialogs.questions.isEmpty());
}

void TestDateibefehle::newForgetsFileNameTitleAndPage()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs, std::int32_t{5});
    f.open();
    f.window->FileOpen(path);
    QCOMPARE(f.activePage(), 5);
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    f.dialogs.answers = {Dialogs::Answer::No};
    trigger(f, u"mf_new"_qs);
    QCOMPARE(f.dialogs.questions, QStringList{question});
    QCOMPARE(f.window->FileName(), u""_qs);
    QCOMPARE(f.window->windowTitle(), productName);
    QCOMPARE(f.activePage(), 1);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u""_qs);
    QVERIFY(!f.document.IsDirty());
    QCOMPARE(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), u""_qs);
}

void TestDateibefehle::newStartsWithTheWelcomePage()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.activePage(), 1);
    trigger(f, u"mf_new"_qs);
    QCOMPARE(f.activePage(), 0);
    QTRY_VERIFY(f.find<QPushButton>(u"cmdNext"_qs)->hasFocus());
    QVERIFY(f.dialogs.questions.isEmpty());
}

void TestDateibefehle::cancelLeavesEverything_data()
{
    QTest::addColumn<QString>("command");
    for (const char *name : {"mf_new", "mf_open", "mf_LastFile1", "mf_exit"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestDateibefehle::cancelLeavesEverything()
{
    QFETCH(QString, command);
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    f.window->FileOpen(path);
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    const State before(f);
    f.dialogs.answers = {Dialogs::Answer::Cancel};
    f.dialogs.openNames = {path};
    trigger(f, command);
    QCOMPARE(f.dialogs.questions, QStringList{question});
    QVERIFY(State(f) == before);
    QVERIFY(f.window->isVisible());
    QVERIFY(f.dialogs.openedAt.isEmpty());
}

void TestDateibefehle::typedTextAloneCountsAsAChange()
{
    WizardFixture f;
    f.open();
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"2"_qs); // can't even be stored
    f.window->close();
    QCOMPARE(f.dialogs.questions, QStringList{question});
    QVERIFY(f.window->isVisible());
    QVERIFY(!f.document.IsDirty());
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"3"_qs); // as before: no change any more
    f.window->close();
    QCOMPARE(f.dialogs.questions.size(), 1);
    QVERIFY(!f.window->isVisible());
}

void TestDateibefehle::yesSavesFirst()
{
    WizardFixture f;
    const QString old = saved(f, u"a.xml"_qs, u"A"_qs);
    const QString other = saved(f, u"b.xml"_qs, u"B"_qs);
    f.open();
    f.window->FileOpen(old);
    f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u"getippt"_qs);
    f.dialogs.answers = {Dialogs::Answer::Yes};
    f.dialogs.openNames = {other};
    trigger(f, u"mf_open"_qs);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"B"_qs);
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(old);
    QCOMPARE(read.DirektesPrüfmerkmal().Name(), u"getippt"_qs);
}

void TestDateibefehle::yesWithAFailedSaveStops()
{
    WizardFixture f;
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    f.window->setFileName(f.path(u"no/such/folder/a.xml"_qs));
    const State before(f);
    f.dialogs.answers = {Dialogs::Answer::Yes};
    trigger(f, u"mf_new"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QVERIFY(f.dialogs.shown.front().text.startsWith(saveFailed));
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"B"_qs);
    QVERIFY(f.document.IsDirty());
    QCOMPARE(f.window->FileName(), before.name);
}

void TestDateibefehle::yesWithAnEntryThatCannotBeStoredStops()
{
    WizardFixture f;
    f.open();
    f.find<QLineEdit>(u"txtMessreiheStellen"_qs)->setText(u"abc"_qs);
    f.dialogs.answers = {Dialogs::Answer::Yes};
    f.window->close();
    QVERIFY(f.window->isVisible());
    QCOMPARE(f.dialogs.shown,
             std::vector{informationBox(u"Bitte geben Sie eine gültige Stellenanzahl an."_qs)});
    QCOMPARE(f.find<QLineEdit>(u"txtMessreiheStellen"_qs)->text(), u"abc"_qs);
}

void TestDateibefehle::noDiscardsTypedEntries()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"2"_qs);
    f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u"weg"_qs);
    f.dialogs.answers = {Dialogs::Answer::No};
    f.dialogs.openNames = {path};
    trigger(f, u"mf_open"_qs);
    QCOMPARE(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), u"A"_qs);
    QCOMPARE(f.find<QLineEdit>(u"txtMessreihen"_qs)->text(), u"3"_qs);
    QVERIFY(!f.document.IsDirty());
}

void TestDateibefehle::noAndThenACancelledOpenLeavesEverything()
{
    WizardFixture f;
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    const State before(f);
    f.dialogs.answers = {Dialogs::Answer::No};
    f.dialogs.openNames = {std::nullopt};
    trigger(f, u"mf_open"_qs);
    QCOMPARE(f.dialogs.openedAt.size(), 1);
    QVERIFY(f.dialogs.shown.empty());
    QVERIFY(State(f) == before);
    QVERIFY(f.document.IsDirty());
}

void TestDateibefehle::noAndThenABrokenFileLeavesEverything()
{
    WizardFixture f;
    const QString path = f.path(u"kaputt.xml"_qs);
    overwrite(path, "<xml this is no calibration");
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u"getippt"_qs);
    const State before(f);
    f.dialogs.answers = {Dialogs::Answer::No};
    f.dialogs.openNames = {path};
    trigger(f, u"mf_open"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QVERIFY(f.dialogs.shown.front().text.startsWith(openFailed));
    QVERIFY(f.dialogs.shown.front().text.endsWith(u" (321)"_qs));
    QVERIFY(State(f) == before);
    QVERIFY(f.document.IsDirty());
    QVERIFY(!f.find<QAction>(u"mf_LastFile1"_qs)->isVisible());
}

void TestDateibefehle::openShowsTheFile()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    f.dialogs.openNames = {path};
    trigger(f, u"mf_open"_qs);
    QVERIFY(f.dialogs.questions.isEmpty());
    QCOMPARE(f.window->FileName(), path);
    QCOMPARE(f.window->windowTitle(), productName + u" - a.xml"_qs);
    QCOMPARE(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), u"A"_qs);
    QCOMPARE(f.find<QAction>(u"mf_LastFile1"_qs)->text(), path);
}

void TestDateibefehle::openFailureIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("no such file") << u"gibt es nicht.xml"_qs << u"Datei nicht gefunden (53)"_qs;
    QTest::newRow("no such folder") << u"gibt/es/nicht.xml"_qs << u"Pfad nicht gefunden (76)"_qs;
}

void TestDateibefehle::openFailureIsReported()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    WizardFixture f;
    f.open();
    const State before(f);
    f.dialogs.openNames = {f.path(name)};
    trigger(f, u"mf_open"_qs);
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(openFailed + text)});
    QVERIFY(State(f) == before);
}

void TestDateibefehle::openingDoesNotMarkTheDocumentDirty()
{
    WizardFixture f;
    Kalibrierung other(QLocale(QLocale::German, QLocale::Germany));
    other.setIsDirty(true); // as every file says that was saved with changes
    other.SaveFile(f.path(u"a.xml"_qs));
    f.open();
    f.window->FileOpen(f.path(u"a.xml"_qs));
    QVERIFY(!f.document.IsDirty());
    f.window->close();
    QVERIFY(f.dialogs.questions.isEmpty());
}

void TestDateibefehle::storedPageIsEntered_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("page");
    QTest::newRow("0") << u"0"_qs << 0;
    QTest::newRow("5") << u"5"_qs << 5;
    QTest::newRow("6") << u"6"_qs << 1;
    QTest::newRow("-1") << u"-1"_qs << 1;
    QTest::newRow("2,5") << u"2,5"_qs << 1;
    QTest::newRow("word") << u"drei"_qs << 1;
    QTest::newRow("empty") << u""_qs << 1;
    QTest::newRow("huge") << u"1e300"_qs << 1;
    QTest::newRow("not showable") << u"3"_qs << 1;
}

void TestDateibefehle::storedPageIsEntered()
{
    QFETCH(QString, stored);
    QFETCH(int, page);
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs, stored);
    f.open().setPageShowable(3, false);
    f.window->FileOpen(path);
    QCOMPARE(f.activePage(), page);
    QVERIFY(f.find<QWidget>(u"picContainer"_qs + QString::number(page))->isVisible());
    if (page == 1) // entered again: shows what the file holds
        QCOMPARE(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), u"A"_qs);
}

void TestDateibefehle::saveWritesThePageAndClearsTheFlag()
{
    WizardFixture f;
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    f.window->setFileName(f.path(u"neu.xml"_qs));
    trigger(f, u"mf_save"_qs);
    QVERIFY(f.dialogs.savedAt.isEmpty());
    QVERIFY(!f.document.IsDirty());
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.path(u"neu.xml"_qs));
    QCOMPARE(read.values().text(read.DataStore().item(u"AssistentActivePage"_qs)), u"1"_qs);
}

void TestDateibefehle::saveTakesTheVisiblePageOver()
{
    WizardFixture f;
    f.open();
    f.find<QComboBox>(u"cboMessreiheEinheit"_qs)->setEditText(u"Stück"_qs);
    f.window->setFileName(f.path(u"neu.xml"_qs));
    trigger(f, u"mf_save"_qs);
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.path(u"neu.xml"_qs));
    QCOMPARE(read.Kovariable().Einheit(), u"Stück"_qs);
    QCOMPARE(f.activePage(), 1);
    f.window->close();
    QVERIFY(f.dialogs.questions.isEmpty()); // what was saved is no change any more
}

void TestDateibefehle::saveStopsAtWhatCannotBeStored()
{
    WizardFixture f;
    f.open();
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"2"_qs);
    f.window->setFileName(f.path(u"neu.xml"_qs));
    trigger(f, u"mf_save"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QVERIFY(!QFile::exists(f.path(u"neu.xml"_qs)));
    f.dialogs.saveNames = {f.path(u"anders.xml"_qs)};
    trigger(f, u"mf_saveas"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{2});
    QVERIFY(f.dialogs.savedAt.isEmpty()); // no name is asked for in vain
}

void TestDateibefehle::saveWithoutANameAsksForOne()
{
    WizardFixture f;
    f.open();
    f.dialogs.saveNames = {f.path(u"neu.xml"_qs)};
    trigger(f, u"mf_save"_qs);
    QCOMPARE(f.dialogs.savedAt, QStringList{u""_qs});
    QCOMPARE(f.window->FileName(), f.path(u"neu.xml"_qs));
    QCOMPARE(f.window->windowTitle(), productName + u" - neu.xml"_qs);
    QVERIFY(QFile::exists(f.path(u"neu.xml"_qs)));
}

void TestDateibefehle::cancelledSaveAsChangesNothing()
{
    WizardFixture f;
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    f.window->FileSave(f.path(u"a.xml"_qs));
    f.window->setFileName(f.path(u"a.xml"_qs));
    f.document.DirektesPrüfmerkmal().setName(u"C"_qs);
    const State before(f);
    trigger(f, u"mf_saveas"_qs);
    QCOMPARE(f.dialogs.savedAt, QStringList{f.path(u"a.xml"_qs)});
    QVERIFY(State(f) == before);
}

void TestDateibefehle::failedSaveAsRestoresNameAndTitle()
{
    WizardFixture f;
    f.open();
    f.window->FileSave(f.path(u"a.xml"_qs));
    f.window->setFileName(f.path(u"a.xml"_qs));
    f.document.DirektesPrüfmerkmal().setName(u"C"_qs);
    f.dialogs.saveNames = {f.path(u"no/folder/b.xml"_qs)};
    trigger(f, u"mf_saveas"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QCOMPARE(f.dialogs.shown.front().icon, Dialogs::Icon::Exclamation);
    QVERIFY(f.dialogs.shown.front().text.startsWith(saveFailed));
    QCOMPARE(f.window->FileName(), f.path(u"a.xml"_qs));
    QCOMPARE(f.window->windowTitle(), productName + u" - a.xml"_qs);
    QVERIFY(f.document.IsDirty());
}

void TestDateibefehle::workBelongsToTheOldFileWhileAFailureIsShown()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    f.window->FileOpen(path);
    f.document.DirektesPrüfmerkmal().setName(u"C"_qs);
    const Arbeitsstand before = f.window->work();
    QVERIFY(!before.contentOnDisk.isEmpty());
    bool same = false;
    f.dialogs.whileShown = [&] { same = f.window->work() == before; };
    f.dialogs.saveNames = {f.path(u"no/folder/b.xml"_qs)};
    trigger(f, u"mf_saveas"_qs);
    QVERIFY(same);
    QVERIFY(f.window->work() == before);
}

void TestDateibefehle::workOfUnknownContentDoesNotReplaceAFileUnasked()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"von anderen"_qs);
    const QByteArray theirs = contentOf(path);
    f.open();
    f.window->restoreWork({path, {}, 1, {}});
    trigger(f, u"mf_save"_qs);
    QCOMPARE(f.dialogs.conflicts.size(), 1);
    QCOMPARE(contentOf(path), theirs);
}

void TestDateibefehle::failedSaveIsReported()
{
    WizardFixture f;
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"C"_qs);
    f.window->setFileName(f.folder.path()); // a folder is no file
    trigger(f, u"mf_save"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QCOMPARE(f.dialogs.shown.front().title, productName);
    QVERIFY(f.dialogs.shown.front().text.startsWith(saveFailed));
    QVERIFY(f.document.IsDirty());
}

void TestDateibefehle::failedSaveLeavesTheStore_data()
{
    QTest::addColumn<Variant>("page");
    QTest::newRow("no page stored") << Variant();
    QTest::newRow("another page stored") << Variant(u"4"_qs);
}

void TestDateibefehle::failedSaveLeavesTheStore()
{
    QFETCH(Variant, page);
    const bool stored = page != Variant();
    WizardFixture f;
    if (stored)
        f.document.DataStore().set(u"AssistentActivePage"_qs, page);
    f.open();
    const State before(f);
    f.window->setFileName(f.folder.path()); // a folder is no file
    trigger(f, u"mf_save"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QCOMPARE(f.document.DataStore().exists(u"AssistentActivePage"), stored);
    QCOMPARE(f.document.ContentString(), before.content);
    QVERIFY(!f.document.IsDirty());
    // Nothing is left to be asked about.
    f.window->close();
    QVERIFY(f.dialogs.questions.isEmpty());
}

void TestDateibefehle::savedFileComesBack()
{
    WizardFixture f;
    f.open();
    f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u"Dichte"_qs);
    f.dialogs.saveNames = {f.path(u"a.xml"_qs)};
    trigger(f, u"mf_save"_qs);
    trigger(f, u"mf_new"_qs);
    QCOMPARE(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), u""_qs);
    f.dialogs.openNames = {f.path(u"a.xml"_qs)};
    trigger(f, u"mf_open"_qs);
    QCOMPARE(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), u"Dichte"_qs);
    QVERIFY(f.dialogs.questions.isEmpty());
}

void TestDateibefehle::fileChangedByOthersIsNoticed_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("keep mine") << int(Dialogs::Conflict::KeepMine);
    QTest::newRow("other name") << int(Dialogs::Conflict::OtherName);
    QTest::newRow("cancel") << int(Dialogs::Conflict::Cancel);
}

void TestDateibefehle::fileChangedByOthersIsNoticed()
{
    QFETCH(int, answer);
    const auto choice = static_cast<Dialogs::Conflict>(answer);
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    f.window->FileOpen(path);
    const QString theirs = saved(f, u"a.xml"_qs, u"von anderen"_qs);
    const QByteArray theirContent = contentOf(theirs);
    f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u"meins"_qs);
    f.dialogs.conflictAnswers = {choice};
    f.dialogs.saveNames = {f.path(u"anders.xml"_qs)};
    trigger(f, u"mf_save"_qs);
    QCOMPARE(f.dialogs.conflicts.size(), 1);
    QVERIFY(f.dialogs.conflicts.front().contains(u"a.xml"_qs));
    QCOMPARE(f.document.IsDirty(), choice == Dialogs::Conflict::Cancel);
    QCOMPARE(contentOf(path) == theirContent, choice != Dialogs::Conflict::KeepMine);
    QCOMPARE(QFile::exists(f.path(u"anders.xml"_qs)), choice == Dialogs::Conflict::OtherName);
    if (choice != Dialogs::Conflict::Cancel) { // saved once, it is ours again
        trigger(f, u"mf_save"_qs);
        QCOMPARE(f.dialogs.conflicts.size(), 1);
    }
}

void TestDateibefehle::touchedOrDeletedFileRaisesNoQuestion()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    f.window->FileOpen(path);
    overwrite(path, contentOf(path));
    trigger(f, u"mf_save"_qs);
    QVERIFY(QFile::remove(path));
    trigger(f, u"mf_save"_qs);
    QVERIFY(f.dialogs.conflicts.isEmpty());
    QVERIFY(QFile::exists(path));
}

void TestDateibefehle::closingAsksOnce_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closes");
    QTest::newRow("yes") << int(Dialogs::Answer::Yes) << true;
    QTest::newRow("no") << int(Dialogs::Answer::No) << true;
    QTest::newRow("cancel") << int(Dialogs::Answer::Cancel) << false;
}

void TestDateibefehle::closingAsksOnce()
{
    QFETCH(int, answer);
    QFETCH(bool, closes);
    WizardFixture f;
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    f.window->setFileName(f.path(u"a.xml"_qs));
    f.dialogs.answers = {static_cast<Dialogs::Answer>(answer)};
    trigger(f, u"mf_exit"_qs);
    QCOMPARE(f.dialogs.questions, QStringList{question});
    QCOMPARE(f.window->isVisible(), !closes);
    QCOMPARE(QFile::exists(f.path(u"a.xml"_qs)),
             static_cast<Dialogs::Answer>(answer) == Dialogs::Answer::Yes);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"B"_qs);
}

void TestDateibefehle::titleIsProductAndBareName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    QTest::newRow("none") << u""_qs << productName;
    QTest::newRow("folder") << u"/home/x/Feld 1.xml"_qs << productName + u" - Feld 1.xml"_qs;
    QTest::newRow("blanks") << u"/home/x/ Feld .xml "_qs << productName + u" - Feld .xml"_qs;
    QTest::newRow("Qt's mark") << u"/x/a[*].xml"_qs << productName + u" - a[*][*].xml"_qs;
}

void TestDateibefehle::titleIsProductAndBareName()
{
    QFETCH(QString, path);
    QFETCH(QString, title);
    WizardFixture f;
    f.open();
    f.window->setFileName(path);
    QCOMPARE(f.window->windowTitle(), title);
}

void TestDateibefehle::recentFilesShowTheNewestFirst()
{
    WizardFixture f;
    f.open();
    for (int i = 1; i <= 9; ++i)
        QVERIFY(!f.find<QAction>(u"mf_LastFile"_qs + QString::number(i))->isVisible());
    for (int i = 1; i <= 10; ++i) {
        f.window->FileOpen(saved(f, u"f%1.xml"_qs.arg(QString::number(i)), u"x"_qs));
        for (int k = 1; k <= 9; ++k)
            QCOMPARE(f.find<QAction>(u"mf_LastFile"_qs + QString::number(k))->isVisible(), k <= i);
    }
    QCOMPARE(f.find<QAction>(u"mf_LastFile1"_qs)->text(), f.path(u"f10.xml"_qs));
    QCOMPARE(f.find<QAction>(u"mf_LastFile9"_qs)->text(), f.path(u"f2.xml"_qs));
    QCOMPARE(f.settings.value(u"RecentFiles/File1"_qs).toString(), f.path(u"f10.xml"_qs));
    QCOMPARE(f.settings.value(u"RecentFiles/File9"_qs).toString(), f.path(u"f2.xml"_qs));
    f.open(); // a new window reads the same list
    QCOMPARE(f.find<QAction>(u"mf_LastFile1"_qs)->text(), f.path(u"f10.xml"_qs));
}

void TestDateibefehle::savingNeverTouchesTheRecentFiles()
{
    WizardFixture f;
    f.open();
    f.dialogs.saveNames = {f.path(u"neu.xml"_qs)};
    trigger(f, u"mf_saveas"_qs);
    trigger(f, u"mf_save"_qs);
    QVERIFY(QFile::exists(f.path(u"neu.xml"_qs)));
    QVERIFY(!f.find<QAction>(u"mf_LastFile1"_qs)->isVisible());
    QVERIFY(!f.settings.contains(u"RecentFiles/File1"_qs));
}

void TestDateibefehle::openedAgainMovesUpWithoutADouble()
{
    WizardFixture f;
    f.open();
    for (const QString &name : {u"a.xml"_qs, u"b.xml"_qs, u"c.xml"_qs})
        f.window->FileOpen(saved(f, name, name));
    trigger(f, u"mf_LastFile3"_qs);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"a.xml"_qs);
    QCOMPARE(f.find<QAction>(u"mf_LastFile1"_qs)->text(), f.path(u"a.xml"_qs));
    QCOMPARE(f.find<QAction>(u"mf_LastFile2"_qs)->text(), f.path(u"c.xml"_qs));
    QCOMPARE(f.find<QAction>(u"mf_LastFile3"_qs)->text(), f.path(u"b.xml"_qs));
    QVERIFY(!f.find<QAction>(u"mf_LastFile4"_qs)->isVisible());
}

void TestDateibefehle::recentPathMayHoldAmpersands()
{
    WizardFixture f;
    f.open();
    const QString path = saved(f, u"Müller & Söhne && Co.xml"_qs, u"A"_qs);
    f.window->FileOpen(path);
    auto *entry = f.find<QAction>(u"mf_LastFile1"_qs);
    QCOMPARE(entry->text(), QString(path).replace(u'&', u"&&"_qs));
    trigger(f, u"mf_new"_qs);
    entry->trigger();
    QCOMPARE(f.window->FileName(), path);
    QVERIFY(f.dialogs.shown.empty());
}

void TestDateibefehle::recentFileThatIsGoneIsReported()
{
    WizardFixture f;
    f.open();
    f.window->FileOpen(saved(f, u"a.xml"_qs, u"A"_qs));
    f.window->FileOpen(saved(f, u"b.xml"_qs, u"B"_qs));
    QVERIFY(QFile::remove(f.path(u"a.xml"_qs)));
    const State before(f);
    trigger(f, u"mf_LastFile2"_qs);
    QCOMPARE(f.dialogs.shown,
             std::vector{exclamationBox(openFailed + u"Datei nicht gefunden (53)"_qs)});
    QVERIFY(State(f) == before);
    QCOMPARE(f.find<QAction>(u"mf_LastFile1"_qs)->text(), f.path(u"b.xml"_qs));
    QCOMPARE(f.find<QAction>(u"mf_LastFile2"_qs)->text(), f.path(u"a.xml"_qs));
}

void TestDateibefehle::recentFileAsksBeforeChangesAreLost()
{
    WizardFixture f;
    f.open();
    f.window->FileOpen(saved(f, u"a.xml"_qs, u"A"_qs));
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    f.dialogs.answers = {Dialogs::Answer::No};
    trigger(f, u"mf_LastFile1"_qs);
    QCOMPARE(f.dialogs.questions, QStringList{question});
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"A"_qs);
}

namespace {

// Drags \a data over the window and drops it. \returns whether the window took it.
bool drop(WizardFixture &f, const QMimeData &data)
{
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                          Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(f.window.get(), &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent event(QPointF(50, 50), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(f.window.get(), &event);
    QCoreApplication::processEvents();
    return true;
}

} // namespace

void TestDateibefehle::droppedFileIsOpened()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QVERIFY(drop(f, data));
    QCOMPARE(f.window->FileName(), path);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"A"_qs);
    for (const auto *box : f.window->findChildren<QLineEdit *>())
        QVERIFY(!box->acceptDrops()); // else the box would take the path as a text
}

void TestDateibefehle::droppedFileAsksBeforeChangesAreLost()
{
    WizardFixture f;
    const QString path = saved(f, u"a.xml"_qs, u"A"_qs);
    f.open();
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    f.dialogs.answers = {Dialogs::Answer::Cancel};
    QVERIFY(drop(f, data));
    QCOMPARE(f.dialogs.questions, QStringList{question});
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"B"_qs);
}

void TestDateibefehle::somethingElseDroppedIsRefused()
{
    WizardFixture f;
    f.open();
    QMimeData text;
    text.setText(u"hallo"_qs);
    QVERIFY(!drop(f, text));
    QMimeData two;
    two.setUrls({QUrl::fromLocalFile(u"/a"_qs), QUrl::fromLocalFile(u"/b"_qs)});
    QVERIFY(!drop(f, two));
    QMimeData remote;
    remote.setUrls({QUrl(u"https://example.org/a.xml"_qs)});
    QVERIFY(!drop(f, remote));
}

void TestDateibefehle::dialogsStartWhereTheFileIs()
{
    WizardFixture f;
    f.open();
    f.window->FileOpen(saved(f, u"a.xml"_qs, u"A"_qs));
    trigger(f, u"mf_open"_qs);
    QCOMPARE(f.dialogs.openedAt, QStringList{f.path(u"a.xml"_qs)});
}

void TestDateibefehle::shortcutsAreTheStandardOnes()
{
    WizardFixture f;
    f.open();
    const auto shortcut = [&](const QString &name) { return f.find<QAction>(name)->shortcut(); };
    QCOMPARE(shortcut(u"mf_new"_qs), QKeySequence(QKeySequence::New));
    QCOMPARE(shortcut(u"mf_open"_qs), QKeySequence(QKeySequence::Open));
    QCOMPARE(shortcut(u"mf_save"_qs), QKeySequence(QKeySequence::Save));
    QCOMPARE(shortcut(u"mf_saveas"_qs), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    QCOMPARE(shortcut(u"mf_exit"_qs), QKeySequence(Qt::CTRL | Qt::Key_Q));
    QCOMPARE(shortcut(u"mh_Helpthemes"_qs), QKeySequence(Qt::Key_F1));
    QTest::keyClick(f.window.get(), Qt::Key_F1);
    QCOMPARE(f.help.times, 1);
}

void TestDateibefehle::protectedFolderKeepsTheOldFile()
{
    WizardFixture f;
    QDir(f.folder.path()).mkdir(u"zu"_qs);
    saved(f, u"zu/a.xml"_qs, u"A"_qs);
    const QByteArray before = contentOf(f.path(u"zu/a.xml"_qs));
    f.open();
    f.window->FileOpen(f.path(u"zu/a.xml"_qs));
    f.document.DirektesPrüfmerkmal().setName(u"B"_qs);
    const QByteArray folder = QFile::encodeName(f.folder.path());
    QVERIFY(::chmod(folder.constData(), 0755) == 0);
    QVERIFY(::chmod((folder + "/zu").constData(), 0555) == 0);
    QVERIFY(::chmod((folder + "/zu/a.xml").constData(), 0644) == 0);
    // In a process of its own, which can give up the superuser's rights.
    const std::optional<int> result = inChild([&f] {
        if (!becomeUnprivileged())
            return notPossible;
        trigger(f, u"mf_save"_qs);
        const bool told = f.dialogs.shown.size() == 1 &&
                          f.dialogs.shown.front().text.startsWith(saveFailed) &&
                          f.dialogs.shown.front().text.endsWith(u"(70)"_qs);
        return (told ? 1 : 0) + (f.document.IsDirty() ? 2 : 0);
    });
    ::chmod((folder + "/zu").constData(), 0755);
    QCOMPARE(result, std::optional(3));
    QCOMPARE(contentOf(f.path(u"zu/a.xml"_qs)), before);
    QCOMPARE(QDir(f.path(u"zu"_qs)).entryList(QDir::Files), QStringList{u"a.xml"_qs});
}

REGISTER_TEST(TestDateibefehle)
#include "tst_dateibefehle.moc"
