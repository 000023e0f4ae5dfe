#include "tests/app/programmlauf.h"
#include "tests/support/testregistry.h"

#include "core/runtimeerror.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStatusTipEvent>

/// Unsaved work is kept, comes back as it was typed, and is not kept longer than needed.
class TestWiederherstellung : public QObject
{
    Q_OBJECT

private slots:
    void cleanWorkIsNotKept();
    void workIsKeptSoonAfterAChange();
    void fewSecondsAreLostAtMost();
    void typingOnDoesNotPutItOff();
    void unchangedWorkIsNotWrittenAgain();
    void keepingChangesNothing_data();
    void keepingChangesNothing();
    void everythingTypedComesBack_data();
    void everythingTypedComesBack();
    void openEditorComesBack_data();
    void openEditorComesBack();
    void restoredWorkIsUnsavedWorkOfItsFile();
    void workWithoutANameComesBack();
    void textsThatNoFileHoldsComeBack();
    void englishNumbersComeBack();
    void changedFileIsNoticedAfterwards_data();
    void changedFileIsNoticedAfterwards();
    void savedWorkIsForgotten_data();
    void savedWorkIsForgotten();
    void failedSaveForgetsNothing();
    void cancelledQuestionForgetsNothing();
    void orderlyEndForgets_data();
    void orderlyEndForgets();
    void endWithoutAnAnswerForgetsNothing();
    void failureIsToldOnceAndDisturbsNothing();
    void workIsKeptAgainWhenItCanBe();
    void whatIsClearedAwayIsMadeAgain_data();
    void whatIsClearedAwayIsMadeAgain();
    void anEndWithoutItsLockIsQuiet();
    void nobodyElseReadsIt();
};

namespace {

const QString question = u"Kalibrierung nach Wendral: Sollen die Änderungen gespeichert werden?"_qs;

void typeIntoOpenEditor(const Programmlauf &run, const QString &gridName, int row, int col,
                        const QString &text)
{
    GridControl &grid = run.grid(gridName);
    grid.setFocus();
    grid.setCell(row, col);
    QTest::keyClick(grid.table(), Qt::Key_Return);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    if (!editor)
        qFatal("no editor");
    editor->selectAll();
    editor->insert(text);
}

// Types what can be stored and what can't, on every page something of its kind.
void typeHalfEntries(const Programmlauf &run)
{
    switch (run.firstPage) {
    case 1:
        run.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u""_qs);
        run.find<QComboBox>(u"cboMessreiheEinheit"_qs)->setEditText(u"<Stück> & \"mehr\""_qs);
        run.find<QLineEdit>(u"txtIndirektesPrüfmerkmalStellen"_qs)->setText(u"abc"_qs);
        run.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"2"_qs);
        break;
    case 2:
        run.type(fieldsGrid, 1, 0, u"Nord "_qs);
        run.type(fieldsGrid, 2, 1, u"9"_qs);
        QTRY_COMPARE(run.grid(pointsGrid).rows(), 10);
        run.type(pointsGrid, 9, 1, u"neun"_qs);
        run.type(pointsGrid, 2, 1, u""_qs);
        run.type(fieldsGrid, 2, 1, u"zwei"_qs); // and "neun" is not listed any more
        QTRY_COMPARE(run.grid(pointsGrid).rows(), 5);
        run.type(fieldsGrid, 3, 2, u"drei"_qs);
        break;
    case 3:
        run.type(valuesGrid, 1, 2, u"abc"_qs);
        run.type(valuesGrid, 2, 2, u""_qs);
        run.type(valuesGrid, 12, 3, u"1234,5"_qs);
        break;
    default:
        break;
    }
}

} // namespace

void TestWiederherstellung::cleanWorkIsNotKept()
{
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    for (int page = 3; page <= 5; ++page) {
        run.recovery->check();
        QVERIFY(!QFile::exists(run.folderOfRecovery)); // not even a folder
        run.click(u"cmdNext"_qs);
    }
}

void TestWiederherstellung::workIsKeptSoonAfterAChange()
{
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start(std::chrono::milliseconds(20));
    typeIntoOpenEditor(run, valuesGrid, 1, 2, u"9"_qs); // of the page alone
    QTRY_COMPARE(run.files().size(), 1);

    Programmlauf other(1, disk.filePath(u"x"_qs));
    other.start(std::chrono::milliseconds(20));
    other.document.setMinBestimmtheitsmaßIndirektDirekt(0.7); // of the document alone
    QTRY_COMPARE(other.files().size(), 1);
    // While it is dirty already, as a dialog changes it.
    const QString path = other.folderOfRecovery + u'/' + other.files().front();
    const auto content = [&path] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QVERIFY(!content().contains("0,8125"));
    other.document.setMinBestimmtheitsmaßIndirektDirekt(0.8125);
    QTRY_VERIFY(content().contains("0,8125"));
}

void TestWiederherstellung::fewSecondsAreLostAtMost()
{
    QVERIFY(Wiederherstellung::Umgebung{}.delay <= std::chrono::seconds(5));
}

void TestWiederherstellung::typingOnDoesNotPutItOff()
{
    const QTemporaryDir disk;
    Programmlauf run(1, disk.filePath(u"w"_qs));
    run.start(std::chrono::milliseconds(60));
    auto *box = run.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs);
    for (int letters = 0; letters < 200 && run.files().isEmpty(); ++letters) {
        QTest::keyClick(box, Qt::Key_X);
        QTest::qWait(10); // never as long as the delay
    }
    QCOMPARE(run.files().size(), 1);
}

void TestWiederherstellung::unchangedWorkIsNotWrittenAgain()
{
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    const auto kept = [&] {
        QFile file(run.folderOfRecovery + u'/' + run.files().value(0));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray before = kept();
    run.now = run.now.addSecs(3); // stands in the file
    run.recovery->check();
    QCOMPARE(kept(), before);
    run.type(valuesGrid, 1, 2, u"8"_qs);
    run.recovery->check();
    QVERIFY(kept() != before);
}

void TestWiederherstellung::keepingChangesNothing_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("grid");
    QTest::newRow("parameters") << 1 << QString();
    QTest::newRow("fields") << 2 << fieldsGrid;
    QTest::newRow("points") << 2 << pointsGrid;
    QTest::newRow("values") << 3 << valuesGrid;
}

void TestWiederherstellung::keepingChangesNothing()
{
    QFETCH(int, page);
    QFETCH(QString, grid);
    const QTemporaryDir disk;
    Programmlauf run(page, disk.filePath(u"w"_qs));
    run.start();
    typeHalfEntries(run);
    if (!grid.isEmpty())
        typeIntoOpenEditor(run, grid, 2, grid == fieldsGrid || grid == pointsGrid ? 1 : 2,
                           u"12,"_qs);
    const QWidget *focus = QApplication::focusWidget();
    const auto *editor = qobject_cast<const QLineEdit *>(focus);
    const int cursor = editor ? editor->cursorPosition() : 0;
    const Arbeitsstand before = run.window->work();
    const QByteArray content = run.document.ContentString();
    QVERIFY(!run.document.IsDirty());
    const QSignalSpy dirty(&run.document, &Kalibrierung::IsDirtyChanged);

    run.recovery->check();
    QCoreApplication::processEvents();
    QCOMPARE(run.files().size(), 1);
    QCOMPARE(run.document.ContentString(), content);
    QCOMPARE(dirty.size(), 0);
    QCOMPARE(QApplication::focusWidget(), focus);
    QVERIFY(!editor || (editor->isVisible() && editor->cursorPosition() == cursor));
    QVERIFY(run.window->work() == before);
    QVERIFY(run.dialogs.shown.empty());
    QVERIFY(run.dialogs.questions.isEmpty());
    QVERIFY(!run.window->findChild<QStatusBar *>());
}

void TestWiederherstellung::everythingTypedComesBack_data()
{
    QTest::addColumn<int>("page");
    for (int page = 1; page <= 3; ++page)
        QTest::newRow(qPrintable(QString::number(page))) << page;
}

void TestWiederherstellung::everythingTypedComesBack()
{
    QFETCH(int, page);
    const QTemporaryDir disk;
    Programmlauf run(page, disk.filePath(u"w"_qs));
    run.document.setMesswert(pmDirekt, 2, 2, 97.456789012345); // shown rounded
    run.start();
    typeHalfEntries(run);
    const Arbeitsstand before = run.window->work();
    QVERIFY(before.entries.size() >= 3);
    run.recovery->check();

    Programmlauf next(0, run.crash(disk));
    next.startEmpty();
    next.answersToOffers = {Programmlauf::Antwort::Wiederherstellen};
    next.recovery->offer();
    QCOMPARE(next.offers.size(), std::size_t{1});
    QCOMPARE(next.activePage(), page);
    QCOMPARE(next.window->work().entries, before.entries);
    QVERIFY(next.window->work() == before);
    QCOMPARE(textsOf(next.document), textsOf(run.document));
    QVERIFY(next.document.IsDirty());
    QVERIFY(next.dialogs.shown.empty());
    QVERIFY(!next.document.DataStore().exists(u"Wiederherstellung"));

    // The pages take the entries for what they are: changes that the document hasn't got.
    if (page == 2) {
        next.type(fieldsGrid, 2, 1, u"9"_qs);
        QTRY_COMPARE(next.grid(pointsGrid).rows(), 10);
        QCOMPARE(next.grid(pointsGrid).textMatrix(9, 1), u"neun"_qs);
    }
    if (page == 3) {
        next.type(valuesGrid, 1, 2, u"95"_qs);
        next.click(u"cmdPrevious"_qs);
        QVERIFY(next.dialogs.shown.empty());
        QCOMPARE(next.document.MesswertString(pmIndirekt, 3, 4), u"1.234,50"_qs);
        QCOMPARE(next.document.MesswertString(pmDirekt, 1, 2), u""_qs);
        QCOMPARE(next.document.values().number(next.document.Messwert(pmDirekt, 2, 2)),
                 97.456789012345);
    }
}

void TestWiederherstellung::openEditorComesBack_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("grid");
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("text");
    QTest::newRow("field's name") << 2 << fieldsGrid << 0 << u"Nord"_qs;
    QTest::newRow("covariable") << 2 << fieldsGrid << 2 << u"12,"_qs;
    QTest::newRow("point's name") << 2 << pointsGrid << 1 << u"Eck"_qs;
    QTest::newRow("value") << 3 << valuesGrid << 2 << u"97,456"_qs;
    QTest::newRow("no number") << 3 << valuesGrid << 3 << u"abc"_qs;
    QTest::newRow("emptied") << 3 << valuesGrid << 3 << u""_qs;
}

void TestWiederherstellung::openEditorComesBack()
{
    QFETCH(int, page);
    QFETCH(QString, grid);
    QFETCH(int, col);
    QFETCH(QString, text);
    const QTemporaryDir disk;
    Programmlauf run(page, disk.filePath(u"w"_qs));
    run.start();
    typeIntoOpenEditor(run, grid, 3, col, text);
    const QString name = QApplication::focusWidget()->objectName();
    run.recovery->check();

    Programmlauf next(0, run.crash(disk));
    next.startEmpty();
    next.answersToOffers = {Programmlauf::Antwort::Wiederherstellen};
    next.recovery->offer();
    QCOMPARE(next.activePage(), page);
    auto *editor = next.find<QLineEdit>(name);
    QVERIFY(editor->isVisible());
    QCOMPARE(editor->text(), text);
    QCOMPARE(next.grid(grid).row(), 3);
    QCOMPARE(next.grid(grid).col(), col);
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(next.grid(grid).textMatrix(3, col), text == u"97,456"_qs ? u"97,46"_qs
                                                 : text == u"12,"_qs  ? u"12"_qs
                                                                      : text);
}

void TestWiederherstellung::restoredWorkIsUnsavedWorkOfItsFile()
{
    const QTemporaryDir disk;
    Programmlauf run(4, disk.filePath(u"w"_qs));
    run.start();
    run.document.setPrüffeldName(1, u"Nord"_qs);
    run.recovery->check();

    Programmlauf next(0, run.crash(disk));
    next.startEmpty();
    next.answersToOffers = {Programmlauf::Antwort::Wiederherstellen};
    next.recovery->offer();
    QCOMPARE(next.offers.front().time, run.now);
    QCOMPARE(next.offers.front().fileName, run.path(u"blatt.xml"_qs));
    QCOMPARE(next.window->FileName(), run.path(u"blatt.xml"_qs));
    QCOMPARE(next.window->windowTitle(), u"Kalibrierung nach Wendral - blatt.xml"_qs);
    QCOMPARE(next.activePage(), 4);
    QVERIFY(next.document.IsDirty());
    QCOMPARE(next.document.PrüffeldName(1), u"Nord"_qs);
    // It stays kept until it is saved, and no recent file was opened.
    QCOMPARE(next.files().size(), 1);
    QVERIFY(!next.settings.contains(u"RecentFiles/File1"_qs) ||
            next.settings.value(u"RecentFiles/File1"_qs).toString().isEmpty());
    next.window->close();
    QCOMPARE(next.dialogs.questions, QStringList{question});
    QCOMPARE(next.files().size(), 1);
    next.find<QAction>(u"mf_save"_qs)->trigger();
    QTRY_VERIFY(next.files().isEmpty());
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(run.path(u"blatt.xml"_qs));
    QCOMPARE(read.PrüffeldName(1), u"Nord"_qs);
    QVERIFY(!read.DataStore().exists(u"Wiederherstellung"));
}

void TestWiederherstellung::workWithoutANameComesBack()
{
    const QTemporaryDir disk;
    Programmlauf run(1, disk.filePath(u"w"_qs));
    run.startEmpty();
    run.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u"Dichte"_qs);
    run.recovery->check();

    Programmlauf next(0, run.crash(disk));
    next.startEmpty();
    next.answersToOffers = {Programmlauf::Antwort::Wiederherstellen};
    next.recovery->offer();
    QCOMPARE(next.offers.front().fileName, QString());
    QCOMPARE(next.window->FileName(), QString());
    QCOMPARE(next.window->windowTitle(), u"Kalibrierung nach Wendral"_qs);
    QCOMPARE(next.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), u"Dichte"_qs);
}

void TestWiederherstellung::textsThatNoFileHoldsComeBack()
{
    const QString odd = u"a"_qs + QChar(1) + QChar(0xd800) + u'z';
    const QTemporaryDir disk;
    Programmlauf run(1, disk.filePath(u"w"_qs));
    run.start();
    run.document.setPrüffeldName(1, odd);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, run.document.SaveFile(run.path(u"x.xml"_qs)));
    run.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(odd);
    run.recovery->check();

    Programmlauf next(0, run.crash(disk));
    next.startEmpty();
    next.answersToOffers = {Programmlauf::Antwort::Wiederherstellen};
    next.recovery->offer();
    QCOMPARE(next.document.PrüffeldName(1), odd);
    QCOMPARE(next.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(), odd);
    QCOMPARE(textsOf(next.document), textsOf(run.document));
}

void TestWiederherstellung::englishNumbersComeBack()
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs), 4, english);
    run.start();
    run.document.setMesswert(pmDirekt, 1, 1, 1234.5678);
    typeIntoOpenEditor(run, valuesGrid, 2, 2, u"1,234.5"_qs);
    run.recovery->check();

    Programmlauf next(0, run.crash(disk), 4, english);
    next.startEmpty();
    next.answersToOffers = {Programmlauf::Antwort::Wiederherstellen};
    next.recovery->offer();
    next.click(u"cmdNext"_qs);
    QCOMPARE(next.activePage(), 4);
    QCOMPARE(next.document.values().number(next.document.Messwert(pmDirekt, 1, 1)), 1234.5678);
    QCOMPARE(next.document.values().number(next.document.Messwert(pmDirekt, 1, 2)), 1234.5);
}

void TestWiederherstellung::changedFileIsNoticedAfterwards_data()
{
    QTest::addColumn<bool>("changed");
    QTest::newRow("as it was") << false;
    QTest::newRow("changed by somebody else") << true;
}

void TestWiederherstellung::changedFileIsNoticedAfterwards()
{
    QFETCH(bool, changed);
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    if (changed) {
        Kalibrierung other(QLocale(QLocale::German, QLocale::Germany));
        other.SaveFile(run.path(u"blatt.xml"_qs));
    }

    Programmlauf next(0, run.crash(disk));
    next.startEmpty();
    next.answersToOffers = {Programmlauf::Antwort::Wiederherstellen};
    next.recovery->offer();
    next.find<QAction>(u"mf_save"_qs)->trigger();
    QCOMPARE(next.dialogs.conflicts.size(), changed ? 1 : 0);
    QCOMPARE(next.document.IsDirty(), changed); // the question was cancelled
}

void TestWiederherstellung::savedWorkIsForgotten_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<int>("answer");
    QTest::newRow("saved") << u"mf_save"_qs << int(Dialogs::Answer::Cancel);
    QTest::newRow("saved under another name") << u"mf_saveas"_qs << int(Dialogs::Answer::Cancel);
    QTest::newRow("new, not wanted") << u"mf_new"_qs << int(Dialogs::Answer::No);
    QTest::newRow("new, saved") << u"mf_new"_qs << int(Dialogs::Answer::Yes);
    QTest::newRow("open, not wanted") << u"mf_open"_qs << int(Dialogs::Answer::No);
}

void TestWiederherstellung::savedWorkIsForgotten()
{
    QFETCH(QString, action);
    QFETCH(int, answer);
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.document.setPrüffeldName(1, u"Nord"_qs);
    typeIntoOpenEditor(run, valuesGrid, 1, 2, u"9"_qs);
    run.recovery->check();
    QCOMPARE(run.files().size(), 1);
    run.dialogs.answers = {static_cast<Dialogs::Answer>(answer)};
    run.dialogs.saveNames = {run.path(u"anders.xml"_qs)};
    run.dialogs.openNames = {run.path(u"blatt.xml"_qs)};
    run.find<QAction>(action)->trigger();
    QTRY_VERIFY(run.files().isEmpty());
    run.recovery->check();
    QVERIFY(run.files().isEmpty());
}

void TestWiederherstellung::failedSaveForgetsNothing()
{
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    run.window->setFileName(run.path(u"weg/a.xml"_qs));
    run.find<QAction>(u"mf_save"_qs)->trigger();
    QCOMPARE(run.dialogs.shown.size(), std::size_t{1});
    QCoreApplication::processEvents();
    run.recovery->check();
    QCOMPARE(run.files().size(), 1);
}

void TestWiederherstellung::cancelledQuestionForgetsNothing()
{
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    run.window->close();
    QCOMPARE(run.dialogs.questions.size(), 1);
    // Not wanted, but then the dialog was cancelled: the work is still there.
    run.dialogs.answers = {Dialogs::Answer::No};
    run.find<QAction>(u"mf_open"_qs)->trigger();
    QCoreApplication::processEvents();
    run.recovery->check();
    QCOMPARE(run.files().size(), 1);
}

void TestWiederherstellung::orderlyEndForgets_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("closed, not wanted") << int(Dialogs::Answer::No);
    QTest::newRow("closed, saved") << int(Dialogs::Answer::Yes);
}

void TestWiederherstellung::orderlyEndForgets()
{
    QFETCH(int, answer);
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    QCOMPARE(run.files().size(), 1);
    run.dialogs.answers = {static_cast<Dialogs::Answer>(answer)};
    run.window->close();
    QVERIFY(QDir(run.folderOfRecovery).isEmpty()); // the lock is gone as well
    QCoreApplication::processEvents();
    QVERIFY(QDir(run.folderOfRecovery).isEmpty());
}

void TestWiederherstellung::endWithoutAnAnswerForgetsNothing()
{
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    const QStringList kept = run.files();
    run.recovery.reset(); // as when the session ends the program
    QCOMPARE(QDir(run.folderOfRecovery).entryList(QDir::Files), kept); // and no lock
}

void TestWiederherstellung::failureIsToldOnceAndDisturbsNothing()
{
    const QTemporaryDir disk;
    QFile obstacle(disk.filePath(u"w"_qs)); // a file where the folder should be
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    Programmlauf run(3, obstacle.fileName() + u"/unter"_qs);
    run.start();
    typeIntoOpenEditor(run, valuesGrid, 1, 2, u"9"_qs);
    const QWidget *focus = QApplication::focusWidget();
    run.recovery->check();
    auto *bar = run.find<QStatusBar>({});
    QVERIFY(bar->isVisible());
    auto *notice = run.find<QLabel>(u"labHinweis"_qs);
    QCOMPARE(notice->text(),
             u"Ungespeicherte Arbeit kann zurzeit nicht gesichert werden (Fehler beim Zugriff auf "
             u"Pfad/Datei, 75). Bitte speichern Sie öfter."_qs);
    QCOMPARE(QApplication::focusWidget(), focus);
    QVERIFY(run.dialogs.shown.empty());
    for (const QString &tip : {u"Öffnet eine Datei"_qs, QString()}) { // a menu under the pointer
        QStatusTipEvent event(tip);
        QCoreApplication::sendEvent(run.window.get(), &event);
        QVERIFY(notice->isVisible());
        QVERIFY(!notice->text().isEmpty());
    }

    run.window->showNotice({});
    QTest::keyClicks(QApplication::focusWidget(), u"8"_qs);
    run.recovery->check();
    QCOMPARE(notice->text(), QString()); // once
    run.find<QAction>(u"mf_save"_qs)->trigger();
    QVERIFY(!run.document.IsDirty());
    QVERIFY(run.dialogs.shown.empty());
    run.recovery->offer();
    QVERIFY(run.offers.empty());
    QVERIFY(run.dialogs.shown.empty());
}

void TestWiederherstellung::workIsKeptAgainWhenItCanBe()
{
    const QTemporaryDir disk;
    QFile obstacle(disk.filePath(u"w"_qs));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    Programmlauf run(3, obstacle.fileName());
    run.start();
    run.type(valuesGrid, 1, 2, u"9"_qs);
    run.recovery->check();
    QVERIFY(run.find<QStatusBar>({})->isVisible());
    QVERIFY(obstacle.remove());
    run.recovery->check(); // without a further change
    QCOMPARE(run.files().size(), 1);
    QVERIFY(!run.find<QStatusBar>({})->isVisible());
}

void TestWiederherstellung::whatIsClearedAwayIsMadeAgain_data()
{
    QTest::addColumn<QString>("cleared");
    QTest::addColumn<bool>("typedOn");
    for (const bool typedOn : {false, true}) {
        const char *then = typedOn ? ", and typed on" : "";
        QTest::addRow("file%s", then) << u"*.xml"_qs << typedOn;
        QTest::addRow("lock%s", then) << u"*.lock"_qs << typedOn;
        QTest::addRow("both%s", then) << u"*"_qs << typedOn;
        QTest::addRow("folder%s", then) << u""_qs << typedOn;
    }
}

void TestWiederherstellung::whatIsClearedAwayIsMadeAgain()
{
    QFETCH(const QString, cleared);
    QFETCH(const bool, typedOn);
    QTest::failOnWarning(QRegularExpression(u"lock"_qs));
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    QDir folder(run.folderOfRecovery);
    const QStringList before = folder.entryList(QDir::Files);
    QCOMPARE(before.size(), 2);
    if (cleared.isEmpty())
        QVERIFY(folder.removeRecursively());
    for (const QString &name : folder.entryList({cleared}, QDir::Files))
        QVERIFY(folder.remove(name));
    if (typedOn)
        run.type(valuesGrid, 1, 2, u"8"_qs);
    run.recovery->check();
    folder.refresh();
    QCOMPARE(folder.entryList(QDir::Files), before);
    QVERIFY(!run.window->findChild<QStatusBar *>());
}

void TestWiederherstellung::anEndWithoutItsLockIsQuiet()
{
    QTest::failOnWarning(QRegularExpression(u"lock"_qs));
    const QTemporaryDir disk;
    {
        Programmlauf run(3, disk.filePath(u"w"_qs));
        run.start();
        run.typeAndKeep();
        run.removeLock();
        run.end();
    }
    QVERIFY(QDir(disk.filePath(u"w"_qs)).isEmpty());
}

void TestWiederherstellung::nobodyElseReadsIt()
{
    const QTemporaryDir disk;
    Programmlauf run(3, disk.filePath(u"oben/w"_qs));
    run.start();
    for (const QString &text : {u"9"_qs, u"8"_qs}) {
        run.type(valuesGrid, 1, 2, text);
        run.recovery->check();
        const auto owner =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QCOMPARE(QFile::permissions(run.folderOfRecovery + u'/' + run.files().value(0)), owner);
        QCOMPARE(QFile::permissions(run.folderOfRecovery),
                 owner | QFile::ExeOwner | QFile::ExeUser);
    }
}

REGISTER_TEST(TestWiederherstellung)
#include "tst_wiederherstellung.moc"
