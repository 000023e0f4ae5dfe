#include "tests/support/testregistry.h"
#include "tests/wizard/beispielblatt.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

/// The page of the measured values.
class TestSeiteMesswerte : public QObject
{
    Q_OBJECT

private slots:
    void tableShowsTheDocument();
    void labelsCarryPlainNumbers();
    void columnsFillTheWidthWithoutABar();
    void longPointNamesGetAWiderColumn();
    void typedNumbersGetTheirPlaces_data();
    void typedNumbersGetTheirPlaces();
    void badTextRefusesTheStep_data();
    void badTextRefusesTheStep();
    void oneMessageForTheFirstBadCell();
    void goodCellsAreStoredBesideBadOnes();
    void backPassesEmptyCellsAndRefusesWords();
    void emptyCellsRefuseTheStepForward();
    void shownTextIsNeverWrittenBack();
    void sameTextTypedAgainIsNoChange();
    void anotherValueOfTheSameTextIsStored();
    void aCellEmptiedAfterAnotherValueIsEmpty();
    void theStoredValueTypedAgainTakesAnotherBack();
    void theShownNumberWithoutItsGroupingIsNoChange();
    void placesChangedAfterTyping();
    void focusGoesDirectIndirectNextRow();
    void labelsCannotBeTouched();
    void blockFromASpreadsheetGoesInAtOnce();
    void whatDoesNotFitIsReported();
    void copiedBlockIsPlainText();
    void cutAndDeleteEmptyCells();
    void savingRemovesEmptiedValues();
    void saveStopsAtWords();
    void changedPointCountsKeepTypedValues();
    void fileValueThatIsNoNumber();
    void tooManyPointsShowANotice();
    void manyPointsAreShown();
    void anOpenEditorDoesNotReachTheNextFile();
    void englishNumbers_data();
    void englishNumbers();
};

namespace {

constexpr int direct = 2;
constexpr int indirect = 3;

QString badCell(int field, int point)
{
    return u"Bei dem Auswerten des Messwertes für die Messreihe %1 und Prüfpunkt %2 frat ein "
           u"Fehler auf:\r\nTypen unverträglich (13)"_qs.arg(QString::number(field),
                                                             QString::number(point));
}

} // namespace

void TestSeiteMesswerte::tableShowsTheDocument()
{
    PageFixture f(3);
    f.open();
    const GridControl &grid = f.grid(valuesGrid);
    QCOMPARE(grid.rows(), 13);
    QCOMPARE(grid.fixedRows(), 1);
    QCOMPARE(grid.fixedCols(), 2);
    QCOMPARE(grid.textMatrix(0, 0), u"Prüffeld"_qs);
    QCOMPARE(grid.textMatrix(0, 1), u"Prüfpunkt"_qs);
    QCOMPARE(grid.textMatrix(0, 2), u"Direktes Prüfmerkmal\nVerdichtungsgrad DPr"_qs);
    QCOMPARE(grid.textMatrix(0, 3), u"Indirektes Prüfmerkmal\nWalzenwert F"_qs);
    QCOMPARE(grid.textMatrix(1, 0), u"1 (Anzahl der Übergänge Z = 1)"_qs);
    QCOMPARE(grid.textMatrix(1, 1), u"Prüfpunkt 1"_qs);
    QCOMPARE(grid.textMatrix(1, direct), u"96,13"_qs);
    QCOMPARE(grid.textMatrix(12, 0), u"3 (Anzahl der Übergänge Z = 3)"_qs);
    QCOMPARE(grid.textMatrix(12, 1), u"Prüfpunkt 4"_qs);
    QCOMPARE(grid.textMatrix(12, indirect), u"36,00"_qs);
    QCOMPARE(grid.table()->accessibleName(), u"Messwerte"_qs);
    QVERIFY(grid.table()->hasFocus());
    QCOMPARE(f.find<QLabel>(u"labPageCaption3"_qs)->text(), u"Schritt 3: Messwerteingabe"_qs);
}

void TestSeiteMesswerte::labelsCarryPlainNumbers()
{
    PageFixture f(3);
    f.document.setPrüffeldWert(2, 1234.456);
    f.document.setPrüfpunktName(1, u"Ecke"_qs);
    f.open();
    QCOMPARE(f.grid(valuesGrid).textMatrix(5, 0), u"2 (Anzahl der Übergänge Z = 1234,456)"_qs);
    QCOMPARE(f.grid(valuesGrid).textMatrix(5, 1), u"Ecke"_qs);
}

void TestSeiteMesswerte::columnsFillTheWidthWithoutABar()
{
    PageFixture f(3, 20, 10);
    f.document.IndirektesPrüfmerkmal().setName(QString(200, u'W'));
    f.open();
    for (const QSize size : {QSize(900, 650), QSize(1600, 900)}) {
        f.window->resize(size);
        QCoreApplication::processEvents();
        const GridControl &grid = f.grid(valuesGrid);
        int width = 0;
        for (int col = 0; col < 4; ++col)
            width += grid.colWidth(col);
        QCOMPARE(width, grid.table()->viewport()->width());
        QVERIFY(!grid.table()->horizontalScrollBar()->isVisible());
    }
}

void TestSeiteMesswerte::longPointNamesGetAWiderColumn()
{
    PageFixture f(3);
    f.document.setPrüfpunktName(3, u"Ecke am Widerlager, Nord"_qs);
    f.open();
    const GridControl &grid = f.grid(valuesGrid);
    const int needed = grid.fontMetrics().horizontalAdvance(grid.textMatrix(3, 1));
    QVERIFY2(grid.colWidth(1) > needed, qPrintable(QString::number(grid.colWidth(1))));
}

void TestSeiteMesswerte::typedNumbersGetTheirPlaces_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("direct") << direct << u"97,456"_qs << u"97,46"_qs;
    QTest::newRow("indirect") << indirect << u"1234,5"_qs << u"1.234,5"_qs;
    QTest::newRow("grouped") << direct << u"1.234,5"_qs << u"1.234,50"_qs;
    QTest::newRow("blanks around") << direct << u" 97 "_qs << u"97,00"_qs;
    QTest::newRow("word") << direct << u"abc"_qs << u"abc"_qs;
    QTest::newRow("point") << direct << u"1.5"_qs << u"1.5"_qs;
    QTest::newRow("out of range") << direct << u"1e400"_qs << u"1e400"_qs;
    QTest::newRow("empty") << direct << u""_qs << u""_qs;
}

void TestSeiteMesswerte::typedNumbersGetTheirPlaces()
{
    QFETCH(int, col);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    PageFixture f(3);
    f.document.IndirektesPrüfmerkmal().setNachkommastellen(1);
    frmAssistent &window = f.open();
    f.type(valuesGrid, 1, col, typed);
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, col), shown);
    QString text = typed;
    bool cancel = false;
    window.egMesswerte_AfterCellEdit(1, col, text, cancel);
    QCOMPARE(text, shown);
    QVERIFY(!cancel);
}

void TestSeiteMesswerte::badTextRefusesTheStep_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {u"abc"_qs, u"1.5"_qs, u"nan"_qs, u"inf"_qs, u"0.123"_qs,
                                u"1e400"_qs, u"12,5 %"_qs, u"0x10"_qs, u"1,2,3"_qs})
        QTest::newRow(qPrintable(text)) << text;
}

void TestSeiteMesswerte::badTextRefusesTheStep()
{
    QFETCH(QString, text);
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 7, indirect, text);
    f.grid(valuesGrid).setCell(1, direct);
    const QString before = f.document.MesswertString(pmIndirekt, 2, 3);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 3);
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(badCell(2, 3))});
    QCOMPARE(f.grid(valuesGrid).row(), 7);
    QCOMPARE(f.grid(valuesGrid).col(), indirect);
    QCOMPARE(f.grid(valuesGrid).textMatrix(7, indirect), text);
    QVERIFY(f.grid(valuesGrid).table()->hasFocus());
    QCOMPARE(f.document.MesswertString(pmIndirekt, 2, 3), before);
}

void TestSeiteMesswerte::oneMessageForTheFirstBadCell()
{
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 9, direct, u"b"_qs);
    f.type(valuesGrid, 2, indirect, u"a"_qs);
    f.type(valuesGrid, 12, indirect, u"c"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(badCell(1, 2))});
}

void TestSeiteMesswerte::goodCellsAreStoredBesideBadOnes()
{
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 1, direct, u"abc"_qs);
    f.type(valuesGrid, 12, indirect, u"77,25"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 3);
    QCOMPARE(f.document.MesswertString(pmIndirekt, 3, 4), u"77,25"_qs);
}

void TestSeiteMesswerte::backPassesEmptyCellsAndRefusesWords()
{
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 1, direct, u""_qs);
    f.click(u"cmdPrevious"_qs);
    QCOMPARE(f.activePage(), 2);
    QVERIFY(f.dialogs.shown.empty());
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, direct), u""_qs); // stays emptied
    f.type(valuesGrid, 1, direct, u"abc"_qs);
    f.click(u"cmdPrevious"_qs);
    QCOMPARE(f.activePage(), 3);
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(badCell(1, 1))});
}

void TestSeiteMesswerte::emptyCellsRefuseTheStepForward()
{
    PageFixture f(3);
    f.open();
    f.document.removeMesswert(pmDirekt, 3, 4); // a row that was never shown can be empty as well
    f.document.removeMesswert(pmIndirekt, 2, 1);
    f.window->FileSave(f.path(u"l.xml"_qs));
    f.window->FileOpen(f.path(u"l.xml"_qs));
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(badCell(2, 1))});
    f.type(valuesGrid, 5, indirect, u"   "_qs); // blanks are no value either
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown.back(), exclamationBox(badCell(2, 1)));
    f.type(valuesGrid, 5, indirect, u"1"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown.back(), exclamationBox(badCell(3, 4)));
}

void TestSeiteMesswerte::shownTextIsNeverWrittenBack()
{
    PageFixture f(3);
    f.document.setMesswert(pmDirekt, 1, 1, 97.456);
    f.document.setMesswert(pmIndirekt, 1, 1, 1.0 / 3.0);
    f.open();
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, direct), u"97,46"_qs);
    const QByteArray before = f.document.ContentString();
    for (int round = 0; round < 3; ++round) {
        f.click(u"cmdNext"_qs);
        QCOMPARE(f.activePage(), 4);
        f.click(u"cmdPrevious"_qs);
        f.click(u"cmdPrevious"_qs);
        f.click(u"cmdNext"_qs);
    }
    QCOMPARE(f.document.ContentString(), before);
    QVERIFY(!f.document.IsDirty());
    f.find<QAction>(u"mf_save"_qs)->trigger();
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"97,456"_qs);
}

void TestSeiteMesswerte::sameTextTypedAgainIsNoChange()
{
    PageFixture f(3);
    f.document.setMesswert(pmDirekt, 1, 1, 97.456);
    f.open();
    f.type(valuesGrid, 1, direct, u"97,46"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"97,456"_qs);
    f.click(u"cmdPrevious"_qs);
    f.type(valuesGrid, 1, direct, u"97,47"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"97,47"_qs);
}

void TestSeiteMesswerte::anotherValueOfTheSameTextIsStored()
{
    PageFixture f(3);
    f.document.setMesswert(pmDirekt, 1, 1, 97.456);
    f.open();
    f.document.setIsDirty(false);
    f.type(valuesGrid, 1, direct, u"97,456"_qs); // the value itself
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"97,456"_qs);
    QVERIFY(!f.document.IsDirty());
    f.click(u"cmdPrevious"_qs);
    f.type(valuesGrid, 1, direct, u"97,457"_qs);
    const Arbeitsstand unsaved = f.window->work();
    QCOMPARE(unsaved.entries.size(), 1);
    f.grid(valuesGrid).setCell(1, direct); // opened and closed again, it stays so
    QTest::keyClick(f.grid(valuesGrid).table(), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"97,46"_qs);
    QVERIFY(f.document.IsDirty());

    // Kept and restored, it is still typed.
    PageFixture later(3);
    later.document.setMesswert(pmDirekt, 1, 1, 97.456);
    later.open();
    later.window->restoreWork(unsaved);
    later.click(u"cmdNext"_qs);
    QCOMPARE(later.document.values().text(later.document.Messwert(pmDirekt, 1, 1)), u"97,46"_qs);
}

void TestSeiteMesswerte::aCellEmptiedAfterAnotherValueIsEmpty()
{
    PageFixture f(3);
    f.document.setMesswert(pmDirekt, 1, 1, 97.456);
    f.open();
    f.document.setIsDirty(false);
    f.type(valuesGrid, 1, direct, u"97,457"_qs);
    f.grid(valuesGrid).setCell(1, direct);
    QTest::keyClick(f.grid(valuesGrid).table(), Qt::Key_Delete);
    const Arbeitsstand unsaved = f.window->work();
    QCOMPARE(unsaved.entries.values(), QStringList{u""_qs});
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 3);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    f.find<QAction>(u"mf_save"_qs)->trigger();
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.window->FileName());
    QVERIFY(std::holds_alternative<Null>(read.Messwert(pmDirekt, 1, 1)));
}

void TestSeiteMesswerte::theStoredValueTypedAgainTakesAnotherBack()
{
    PageFixture f(3);
    f.document.setMesswert(pmDirekt, 1, 1, 97.456);
    f.open();
    f.document.setIsDirty(false);
    for (const QString &between : {u"97,457"_qs, u"98"_qs, u"x"_qs}) {
        f.type(valuesGrid, 1, direct, between);
        f.type(valuesGrid, 1, direct, u"97,456"_qs);
    }
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"97,456"_qs);
    QVERIFY(!f.document.IsDirty());
}

void TestSeiteMesswerte::theShownNumberWithoutItsGroupingIsNoChange()
{
    PageFixture f(3);
    f.document.setMesswert(pmDirekt, 1, 1, 1234.567);
    f.open();
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, direct), u"1.234,57"_qs);
    f.type(valuesGrid, 1, direct, u"1234,57"_qs); // as a spreadsheet hands it back
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"1234,567"_qs);
}

void TestSeiteMesswerte::placesChangedAfterTyping()
{
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 1, direct, u"97,46"_qs);
    f.click(u"cmdPrevious"_qs);
    f.click(u"cmdPrevious"_qs);
    f.find<QLineEdit>(u"txtDirektesPrüfmerkmalStellen"_qs)->setText(u"0"_qs);
    f.click(u"cmdNext"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, direct), u"97"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 4);
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 1)), u"97,46"_qs);
}

void TestSeiteMesswerte::focusGoesDirectIndirectNextRow()
{
    PageFixture f(3);
    f.open();
    GridControl &grid = f.grid(valuesGrid);
    QCOMPARE(grid.row(), 1);
    QCOMPARE(grid.col(), direct);
    QTest::keyClicks(grid.table(), u"9"_qs);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(grid.col(), indirect);
    QVERIFY(grid.table()->hasFocus());
    QTest::keyClicks(grid.table(), u"8"_qs);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(grid.row(), 2);
    QCOMPARE(grid.col(), direct);
    QCOMPARE(grid.textMatrix(1, direct), u"9,00"_qs);
    QCOMPARE(grid.textMatrix(1, indirect), u"8,00"_qs);
}

void TestSeiteMesswerte::labelsCannotBeTouched()
{
    PageFixture f(3);
    f.open();
    GridControl &grid = f.grid(valuesGrid);
    QGuiApplication::clipboard()->setText(u"x\ty\t1\t2\t3"_qs);
    QTest::keyClick(grid.table(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(grid.textMatrix(1, 0), u"1 (Anzahl der Übergänge Z = 1)"_qs);
    QCOMPARE(grid.textMatrix(1, 1), u"Prüfpunkt 1"_qs);
    QCOMPARE(grid.textMatrix(1, direct), u"x"_qs);
    QCOMPARE(f.dialogs.shown,
             std::vector{informationBox(u"3 eingefügte Werte hatten keinen Platz in der Tabelle "
                                        u"und wurden weggelassen."_qs)});
}

void TestSeiteMesswerte::blockFromASpreadsheetGoesInAtOnce()
{
    PageFixture f(3, 12, 20);
    f.open();
    QString block;
    for (int row = 0; row < 240; ++row)
        block += u"%1,125\t%2\r\n"_qs.arg(QString::number(90 + row), QString::number(2000 + row));
    QGuiApplication::clipboard()->setText(block);
    GridControl &grid = f.grid(valuesGrid);
    QTest::keyClick(grid.table(), Qt::Key_V, Qt::ControlModifier);
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(grid.rows(), 241);
    QCOMPARE(grid.textMatrix(1, direct), u"90,13"_qs); // each cell as if typed
    QCOMPARE(grid.textMatrix(240, indirect), u"2.239,00"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 4);
    QCOMPARE(f.document.values().number(f.document.Messwert(pmDirekt, 12, 20)), 329.13);
    QCOMPARE(f.document.values().number(f.document.Messwert(pmIndirekt, 1, 1)), 2000.0);
}

void TestSeiteMesswerte::whatDoesNotFitIsReported()
{
    PageFixture f(3);
    f.open();
    QGuiApplication::clipboard()->setText(u"1\t2\n3\t4\n5\t6\n"_qs);
    f.grid(valuesGrid).setCell(12, direct);
    QTest::keyClick(f.grid(valuesGrid).table(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(f.grid(valuesGrid).rows(), 13);
    QCOMPARE(f.dialogs.shown,
             std::vector{informationBox(u"4 eingefügte Werte hatten keinen Platz in der Tabelle "
                                        u"und wurden weggelassen."_qs)});
}

void TestSeiteMesswerte::copiedBlockIsPlainText()
{
    PageFixture f(3);
    f.open();
    GridControl &grid = f.grid(valuesGrid);
    grid.setCursorCells({2, direct, 3, indirect});
    QTest::keyClick(grid.table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().remove(u'\r'),
             u"96,25\t25,50\n96,38\t25,75\n"_qs);
}

void TestSeiteMesswerte::cutAndDeleteEmptyCells()
{
    PageFixture f(3);
    f.open();
    GridControl &grid = f.grid(valuesGrid);
    grid.setCursorCells({1, direct, 2, direct});
    QTest::keyClick(grid.table(), Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(grid.textMatrix(1, direct), u""_qs);
    QCOMPARE(grid.textMatrix(2, direct), u""_qs);
    QCOMPARE(grid.textMatrix(1, indirect), u"25,25"_qs);
    QCOMPARE(grid.rows(), 13);
    grid.setCell(3, indirect);
    QTest::keyClick(grid.table(), Qt::Key_Delete);
    QCOMPARE(grid.textMatrix(3, indirect), u""_qs);
    QTest::keyClick(grid.table(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(grid.textMatrix(3, indirect), u"96,13"_qs);
}

void TestSeiteMesswerte::savingRemovesEmptiedValues()
{
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 1, direct, u""_qs);
    f.find<QAction>(u"mf_save"_qs)->trigger();
    QVERIFY(f.dialogs.shown.empty());
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.window->FileName());
    QVERIFY(std::holds_alternative<Null>(read.Messwert(pmDirekt, 1, 1)));
    QVERIFY(!std::holds_alternative<Null>(read.Messwert(pmIndirekt, 1, 1)));
}

void TestSeiteMesswerte::saveStopsAtWords()
{
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 1, direct, u"abc"_qs);
    f.window->setFileName(f.path(u"neu.xml"_qs));
    f.find<QAction>(u"mf_save"_qs)->trigger();
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(badCell(1, 1))});
    QVERIFY(!QFile::exists(f.path(u"neu.xml"_qs)));
    f.dialogs.answers = {Dialogs::Answer::No};
    f.window->close(); // a typed value is never lost without a question
    QCOMPARE(f.dialogs.questions.size(), 1);
    QVERIFY(!f.window->isVisible());
}

void TestSeiteMesswerte::changedPointCountsKeepTypedValues()
{
    PageFixture f(3);
    f.open();
    f.type(valuesGrid, 8, direct, u"55"_qs); // field 2, point 4
    f.click(u"cmdPrevious"_qs);
    f.type(fieldsGrid, 2, 1, u"3"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.grid(valuesGrid).rows(), 12);
    QCOMPARE(f.grid(valuesGrid).textMatrix(8, 0), u"3 (Anzahl der Übergänge Z = 3)"_qs);
    f.click(u"cmdPrevious"_qs);
    f.type(fieldsGrid, 2, 1, u"5"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.grid(valuesGrid).rows(), 14);
    QCOMPARE(f.grid(valuesGrid).textMatrix(8, direct), u"55,00"_qs);
    QCOMPARE(f.grid(valuesGrid).textMatrix(9, direct), u""_qs);
}

void TestSeiteMesswerte::fileValueThatIsNoNumber()
{
    PageFixture f(3);
    f.document.DataStore().set(f.document.MesswertKey(pmDirekt, 1, 2), u"kaputt"_qs);
    f.open();
    QCOMPARE(f.grid(valuesGrid).textMatrix(2, direct), u"(Fehler)"_qs);
    f.click(u"cmdPrevious"_qs); // nothing was typed, nothing is lost
    QCOMPARE(f.activePage(), 2);
    f.click(u"cmdNext"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(badCell(1, 2))});
    f.find<QAction>(u"mf_save"_qs)->trigger();
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QCOMPARE(f.document.values().text(f.document.Messwert(pmDirekt, 1, 2)), u"kaputt"_qs);
}

void TestSeiteMesswerte::tooManyPointsShowANotice()
{
    PageFixture f(3);
    f.document.setPrüffeldPrüfpunkte(2, 2'000'000);
    f.open();
    QVERIFY(f.find<QLabel>(u"labHinweis3"_qs)->isVisible());
    QCOMPARE(f.grid(valuesGrid).rows(), 1);
    f.click(u"cmdPrevious"_qs);
    f.type(fieldsGrid, 2, 1, u"4"_qs);
    f.click(u"cmdNext"_qs);
    QVERIFY(!f.find<QLabel>(u"labHinweis3"_qs)->isVisible());
    QCOMPARE(f.grid(valuesGrid).rows(), 13);
}

void TestSeiteMesswerte::manyPointsAreShown()
{
    PageFixture f(2, 100, 100);
    f.open();
    f.click(u"cmdNext"_qs);
    GridControl &grid = f.grid(valuesGrid);
    QCOMPARE(grid.rows(), 10001);
    grid.setCell(10000, direct);
    grid.ensureVisible(10000);
    QCOMPARE(grid.textMatrix(10000, 1), u"Prüfpunkt 100"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 4);
}

void TestSeiteMesswerte::anOpenEditorDoesNotReachTheNextFile()
{
    PageFixture f(3);
    f.open();
    const QString shown = f.grid(valuesGrid).textMatrix(1, direct);
    f.document.setIsDirty(true);
    GridControl &table = f.grid(valuesGrid);
    table.setFocus();
    table.setCell(1, direct);
    QTest::keyClick(table.table(), Qt::Key_7);
    QVERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    f.dialogs.answers = {Dialogs::Answer::No};
    f.dialogs.openNames = {f.path(u"blatt.xml"_qs)};
    f.window->findChild<QAction *>(u"mf_open"_qs)->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, direct), shown);
    QVERIFY(!f.document.IsDirty());
    QTest::keyClick(f.window.get(), Qt::Key_Return);
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, direct), shown);
}

void TestSeiteMesswerte::englishNumbers_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("good");
    QTest::newRow("point") << u"1.5"_qs << u"1.50"_qs << true;
    QTest::newRow("grouped") << u"1,234.5"_qs << u"1,234.50"_qs << true;
    QTest::newRow("comma") << u"1,5"_qs << u"1,5"_qs << false;
}

void TestSeiteMesswerte::englishNumbers()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(bool, good);
    PageFixture f(3, 3, 4, QLocale(QLocale::English, QLocale::UnitedStates));
    f.open();
    f.type(valuesGrid, 1, direct, typed);
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, direct), shown);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), good ? 4 : 3);
}

REGISTER_TEST(TestSeiteMesswerte)
#include "tst_seitemesswerte.moc"
