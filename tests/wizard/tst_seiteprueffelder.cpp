#include "tests/support/testregistry.h"
#include "tests/wizard/beispielblatt.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

/// The page of the test fields: what it shows, refuses and stores.
class TestSeitePrueffelder : public QObject
{
    Q_OBJECT

private slots:
    void tablesShowTheDocument();
    void columnsFillTheWidthWithoutABar();
    void captionsStandAsGiven();
    void everythingTypedIsStored();
    void faultRefusesTheStep_data();
    void faultRefusesTheStep();
    void firstFaultStops();
    void backStoresWhatItCanWithoutAWord();
    void saveStopsAtWhatCannotBeStored_data();
    void saveStopsAtWhatCannotBeStored();
    void covariableGetsItsPlaces_data();
    void covariableGetsItsPlaces();
    void namesAndCountsStayAsTyped();
    void unchangedTextIsNeverWrittenBack();
    void anotherValueOfTheSameTextIsStored();
    void aValueEmptiedAfterAnotherOneRefusesTheStep();
    void renamedFieldsAndPointsAreKept();
    void pointListFollowsTheTypedCounts();
    void pointListedAgainHasItsNewestName();
    void nameOfAPointThatIsNotListedIsKept_data();
    void nameOfAPointThatIsNotListedIsKept();
    void pointNamesArePastedCutAndLeftOut();
    void longNamesSurvive();
    void emptiedPointNameIsTheDefaultAgain();
    void fewerFieldsLoseNothing();
    void blockIsPastedOver();
    void whatDoesNotFitIsReported();
    void rowCommandsDoNothing();
    void pendingTextCountsAsAChange();
    void openEditorIsTakenOver();
    void unreadableFileValues();
    void tooManyFieldsShowANotice();
    void protocolEntriesOfAFieldStay();
    void englishNumbers();
};

namespace {

QStringList rowTexts(const GridControl &grid, int row)
{
    QStringList texts;
    for (int col = 0; col < grid.cols(); ++col)
        texts.append(grid.textMatrix(row, col));
    return texts;
}

} // namespace

void TestSeitePrueffelder::tablesShowTheDocument()
{
    PageFixture f(2);
    f.open();
    const GridControl &fields = f.grid(fieldsGrid);
    QCOMPARE(f.activePage(), 2);
    QCOMPARE(fields.rows(), 4);
    QCOMPARE(fields.fixedRows(), 1);
    QCOMPARE(fields.fixedCols(), 0);
    QCOMPARE(rowTexts(fields, 0),
             QStringList({u"Prüffeld"_qs, u"Anzahl Prüfpunkte"_qs, u"Anzahl der Übergänge Z"_qs}));
    QCOMPARE(rowTexts(fields, 1), QStringList({u"Prüffeld 1"_qs, u"4"_qs, u"1"_qs}));
    QCOMPARE(rowTexts(fields, 3), QStringList({u"Prüffeld 3"_qs, u"4"_qs, u"3"_qs}));
    const GridControl &points = f.grid(pointsGrid);
    QCOMPARE(points.rows(), 5);
    QCOMPARE(rowTexts(points, 4), QStringList({u"4"_qs, u"Prüfpunkt 4"_qs}));
    QVERIFY(!f.document.IsDirty());
    QVERIFY(QApplication::focusWidget() == fields.table());
}

void TestSeitePrueffelder::columnsFillTheWidthWithoutABar()
{
    for (const int fields : {3, 200}) { // without and with a vertical bar
        PageFixture f(2, fields);
        f.open();
        for (const QSize size : {QSize(900, 650), QSize(1600, 900)}) {
            f.window->resize(size);
            QCoreApplication::processEvents();
            for (const QString &name : {fieldsGrid, pointsGrid}) {
                const GridControl &grid = f.grid(name);
                int width = 0;
                for (int col = 0; col < grid.cols(); ++col)
                    width += grid.colWidth(col);
                QCOMPARE(width, grid.table()->viewport()->width());
                QVERIFY(!grid.table()->horizontalScrollBar()->isVisible());
            }
        }
    }
}

void TestSeitePrueffelder::captionsStandAsGiven()
{
    PageFixture f(2);
    f.open();
    QCOMPARE(f.find<QLabel>(u"labPageCaption2"_qs)->text(), u"Schritt 2: Werte der Prüffelder"_qs);
    QStringList captions;
    for (const auto *label : f.find<QWidget>(u"picContainer2"_qs)->findChildren<QLabel *>()) {
        if (label->buddy())
            captions.append(label->text().remove(u'&'));
    }
    QCOMPARE(captions, QStringList({u"Werte der Prüffelder:"_qs, u"Namen der Prüfpunkte:"_qs}));
    QCOMPARE(f.grid(fieldsGrid).table()->accessibleName(), u"Werte der Prüffelder"_qs);
    QCOMPARE(f.grid(pointsGrid).table()->accessibleName(), u"Namen der Prüfpunkte"_qs);
    QVERIFY(f.find<QLineEdit>(u"txtFGKeysMessreihen"_qs));
    QVERIFY(f.find<QLineEdit>(u"txtFGKeysPrüfpunkte"_qs));
}

void TestSeitePrueffelder::everythingTypedIsStored()
{
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 2, 0, u"Feld Nord"_qs);
    f.type(fieldsGrid, 2, 1, u"6"_qs);
    f.type(fieldsGrid, 2, 2, u"12"_qs);
    f.type(pointsGrid, 1, 1, u"Ecke links"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 3);
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.PrüffeldName(2), u"Feld Nord"_qs);
    QCOMPARE(f.document.PrüffeldPrüfpunkte(2), 6);
    QCOMPARE(f.document.PrüffeldWert(2), 12.0);
    QCOMPARE(f.document.PrüfpunktName(1), u"Ecke links"_qs);
    QVERIFY(f.document.IsDirty());
    QVERIFY(!f.document.DataStore().exists(u"Bezeichnung Prüffeld 1"_qs)); // never renamed
}

void TestSeitePrueffelder::faultRefusesTheStep_data()
{
    const QString points =
        u"Die Anzahl der Prüfpunkte einer Messreihe darf nicht leer oder kleiner als 3 sein."_qs;
    const QString value = u"Der Wert der Kovariable einer Messreihe muss eine Zahl sein."_qs;
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    const QString name = u"Der Name einer Messreihe darf nicht leer sein."_qs;
    QTest::newRow("empty name") << 0 << u""_qs << name;
    QTest::newRow("blank name") << 0 << u"   "_qs << name;
    QTest::newRow("no points") << 1 << u""_qs << points;
    QTest::newRow("2 points") << 1 << u"2"_qs << points;
    QTest::newRow("2,9 points") << 1 << u"2,9"_qs << points;
    QTest::newRow("word") << 1 << u"abc"_qs << points;
    QTest::newRow("10000 points")
        << 1 << u"10000"_qs
        << u"Die Anzahl der Prüfpunkte einer Messreihe darf nicht größer als 9999 sein."_qs;
    QTest::newRow("covariable word") << 2 << u"acht"_qs << value;
    QTest::newRow("covariable empty") << 2 << u""_qs << value;
    QTest::newRow("covariable point") << 2 << u"1.5"_qs << value;
    QTest::newRow("covariable nan") << 2 << u"nan"_qs << value;
}

void TestSeitePrueffelder::faultRefusesTheStep()
{
    QFETCH(int, col);
    QFETCH(QString, text);
    QFETCH(QString, message);
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 2, col, text);
    f.grid(fieldsGrid).setCell(1, 0);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 2);
    QCOMPARE(f.dialogs.shown, std::vector{exclamationBox(message)});
    const GridControl &grid = f.grid(fieldsGrid);
    QCOMPARE(grid.row(), 2);
    QCOMPARE(grid.col(), col);
    QCOMPARE(grid.textMatrix(2, col), text); // as typed
    QVERIFY(grid.table()->hasFocus());
}

void TestSeitePrueffelder::firstFaultStops()
{
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 1, 0, u"gut"_qs);
    f.type(fieldsGrid, 2, 1, u"2"_qs);
    f.type(fieldsGrid, 2, 0, u""_qs);
    f.type(fieldsGrid, 3, 2, u"9"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown,
             std::vector{exclamationBox(u"Der Name einer Messreihe darf nicht leer sein."_qs)});
    QCOMPARE(f.document.PrüffeldName(1), u"gut"_qs);
    QCOMPARE(f.document.PrüffeldName(2), u"Prüffeld 2"_qs); // the faulty one is not stored
    QCOMPARE(f.document.PrüffeldWert(3), 3.0);              // not reached
}

void TestSeitePrueffelder::backStoresWhatItCanWithoutAWord()
{
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 1, 1, u"2"_qs);
    f.type(fieldsGrid, 1, 2, u"acht"_qs);
    f.type(fieldsGrid, 2, 0, u""_qs);
    f.type(fieldsGrid, 3, 1, u"7"_qs);
    f.type(fieldsGrid, 3, 2, u"5"_qs);
    f.click(u"cmdPrevious"_qs);
    QCOMPARE(f.activePage(), 1);
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.PrüffeldPrüfpunkte(1), 4);
    QCOMPARE(f.document.PrüffeldWert(1), 1.0);
    QCOMPARE(f.document.PrüffeldName(2), u""_qs);
    QCOMPARE(f.document.PrüffeldPrüfpunkte(3), 7);
    QCOMPARE(f.document.PrüffeldWert(3), 5.0);
}

void TestSeitePrueffelder::saveStopsAtWhatCannotBeStored_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("saved");
    QTest::newRow("2 points") << 1 << u"2"_qs << false;
    QTest::newRow("value") << 2 << u"acht"_qs << false;
    QTest::newRow("empty name") << 0 << u""_qs << true;
    QTest::newRow("5 points") << 1 << u"5"_qs << true;
}

void TestSeitePrueffelder::saveStopsAtWhatCannotBeStored()
{
    QFETCH(int, col);
    QFETCH(QString, text);
    QFETCH(bool, saved);
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 1, col, text);
    f.window->setFileName(f.path(u"neu.xml"_qs));
    f.find<QAction>(u"mf_save"_qs)->trigger();
    QCOMPARE(QFile::exists(f.path(u"neu.xml"_qs)), saved);
    QCOMPARE(f.dialogs.shown.empty(), saved);
}

void TestSeitePrueffelder::covariableGetsItsPlaces_data()
{
    QTest::addColumn<int>("places");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("0 places") << 0 << u"2,4"_qs << u"2"_qs;
    QTest::newRow("2 places") << 2 << u"1234,5"_qs << u"1.234,50"_qs;
    QTest::newRow("word") << 2 << u"acht"_qs << u"acht"_qs;
    QTest::newRow("empty") << 2 << u""_qs << u""_qs;
    QTest::newRow("out of range") << 2 << u"1e400"_qs << u"1e400"_qs;
}

void TestSeitePrueffelder::covariableGetsItsPlaces()
{
    QFETCH(int, places);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    PageFixture f(2);
    f.document.Kovariable().setNachkommastellen(places);
    frmAssistent &window = f.open();
    f.type(fieldsGrid, 1, 2, typed);
    QCOMPARE(f.grid(fieldsGrid).textMatrix(1, 2), shown);
    QString text = typed; // the public handler does the same
    bool cancel = false;
    window.egKeysMessreihen_AfterCellEdit(1, 2, text, cancel);
    QCOMPARE(text, shown);
    QVERIFY(!cancel);
}

void TestSeitePrueffelder::namesAndCountsStayAsTyped()
{
    PageFixture f(2);
    f.document.Kovariable().setNachkommastellen(2);
    f.open();
    f.type(fieldsGrid, 1, 0, u"12"_qs);
    f.type(fieldsGrid, 1, 1, u"5"_qs);
    QCOMPARE(f.grid(fieldsGrid).textMatrix(1, 0), u"12"_qs);
    QCOMPARE(f.grid(fieldsGrid).textMatrix(1, 1), u"5"_qs);
}

void TestSeitePrueffelder::unchangedTextIsNeverWrittenBack()
{
    PageFixture f(2);
    f.document.setPrüffeldWert(1, 2.456); // shows "2"
    f.document.setPrüffeldName(2, u"zwei\tTeile"_qs);
    f.open();
    const QByteArray before = f.document.ContentString();
    for (int round = 0; round < 3; ++round) {
        f.click(u"cmdNext"_qs);
        QCOMPARE(f.activePage(), 3);
        f.click(u"cmdPrevious"_qs);
        f.click(u"cmdPrevious"_qs);
        f.click(u"cmdNext"_qs);
    }
    QCOMPARE(f.document.ContentString(), before);
    QVERIFY(!f.document.IsDirty());
    f.grid(fieldsGrid).setCell(1, 2); // opened and committed without a change
    QTest::keyClick(f.grid(fieldsGrid).table(), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.PrüffeldWert(1), 2.456);
    QVERIFY(!f.document.IsDirty());
}

void TestSeitePrueffelder::anotherValueOfTheSameTextIsStored()
{
    PageFixture f(2);
    f.document.setPrüffeldWert(1, 2.456); // shows "2"
    f.open();
    f.type(fieldsGrid, 1, 2, u"2,3"_qs);
    QCOMPARE(f.grid(fieldsGrid).textMatrix(1, 2), u"2"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.PrüffeldWert(1), 2.0);
}

void TestSeitePrueffelder::aValueEmptiedAfterAnotherOneRefusesTheStep()
{
    PageFixture f(2);
    f.document.setPrüffeldWert(1, 2.456); // shows "2"
    f.open();
    f.type(fieldsGrid, 1, 2, u"2,3"_qs);
    f.grid(fieldsGrid).setCell(1, 2);
    QTest::keyClick(f.grid(fieldsGrid).table(), Qt::Key_Delete);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 2);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
}

void TestSeitePrueffelder::renamedFieldsAndPointsAreKept()
{
    PageFixture f(2);
    f.open();
    const QString odd = u"\"A\" <b>&amp;</b> 'ü'"_qs;
    f.type(fieldsGrid, 1, 0, odd);
    f.type(pointsGrid, 2, 1, odd);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.grid(valuesGrid).textMatrix(2, 1), odd);
    QCOMPARE(f.document.PrüfpunktKey(2), u"Prüfpunkt 2"_qs);
    f.window->FileSave(f.path(u"n.xml"_qs));
    f.window->FileOpen(f.path(u"n.xml"_qs));
    f.click(u"cmdPrevious"_qs);
    QCOMPARE(f.grid(fieldsGrid).textMatrix(1, 0), odd);
    QCOMPARE(f.grid(pointsGrid).textMatrix(2, 1), odd);
}

void TestSeitePrueffelder::pointListFollowsTheTypedCounts()
{
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 2, 1, u"7"_qs);
    QTRY_COMPARE(f.grid(pointsGrid).rows(), 8);
    f.type(pointsGrid, 7, 1, u"sieben"_qs);
    f.type(fieldsGrid, 2, 1, u"5"_qs);
    QTRY_COMPARE(f.grid(pointsGrid).rows(), 6);
    f.type(fieldsGrid, 3, 1, u"8"_qs);
    QTRY_COMPARE(f.grid(pointsGrid).rows(), 9);
    QCOMPARE(f.grid(pointsGrid).textMatrix(7, 1), u"sieben"_qs); // typed once, not lost
    QCOMPARE(f.grid(pointsGrid).textMatrix(8, 1), u"Prüfpunkt 8"_qs);
    f.type(fieldsGrid, 1, 1, u"1000000000"_qs);
    QTRY_COMPARE(f.grid(pointsGrid).rows(), 10000); // no more than can be stored
}

namespace {

// Gives field 2 so many points and waits for their list.
void setPoints(const PageFixture &f, int points)
{
    f.type(fieldsGrid, 2, 1, QString::number(points));
    QTRY_COMPARE(f.grid(pointsGrid).rows(), std::max(points, 4) + 1);
}

} // namespace

void TestSeitePrueffelder::pointListedAgainHasItsNewestName()
{
    PageFixture f(2);
    f.open();
    const auto shown = [&f] { return f.grid(pointsGrid).textMatrix(7, 1); };
    for (const QString &name : {u"sieben"_qs, u"Ecke"_qs, u"Prüfpunkt 7"_qs}) {
        setPoints(f, 7);
        f.type(pointsGrid, 7, 1, name);
        setPoints(f, 5);
        setPoints(f, 7);
        QCOMPARE(shown(), name);
        f.find<QAction>(u"mf_save"_qs)->trigger();
        QCOMPARE(f.document.PrüfpunktName(7), name);
        setPoints(f, 5);
        setPoints(f, 7);
        QCOMPARE(shown(), name);
        f.find<QAction>(u"mf_save"_qs)->trigger();
        QCOMPARE(f.document.PrüfpunktName(7), name);
    }
    f.type(pointsGrid, 7, 1, u"kurz"_qs);
    setPoints(f, 5);
    setPoints(f, 7);
    f.type(pointsGrid, 7, 1, u"Prüfpunkt 7"_qs); // as it was
    setPoints(f, 5);
    setPoints(f, 7);
    QCOMPARE(shown(), u"Prüfpunkt 7"_qs);
    QVERIFY(f.dialogs.shown.empty());
}

void TestSeitePrueffelder::nameOfAPointThatIsNotListedIsKept_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("forward") << u"cmdNext"_qs;
    QTest::newRow("back") << u"cmdPrevious"_qs;
    QTest::newRow("close") << u"cmdCancel"_qs;
}

void TestSeitePrueffelder::nameOfAPointThatIsNotListedIsKept()
{
    QFETCH(QString, button);
    PageFixture f(2);
    f.open();
    setPoints(f, 7);
    f.type(pointsGrid, 7, 1, u"sieben"_qs);
    setPoints(f, 4);
    f.dialogs.answers = {Dialogs::Answer::Yes};
    f.click(button);
    QCOMPARE(f.dialogs.questions.size(), button == u"cmdCancel" ? 1 : 0);
    QCOMPARE(f.document.PrüfpunktName(7), u"sieben"_qs);
}

void TestSeitePrueffelder::pointNamesArePastedCutAndLeftOut()
{
    PageFixture f(2);
    f.open();
    GridControl &grid = f.grid(pointsGrid);
    grid.setFocus();
    grid.setCell(3, 1);
    QGuiApplication::clipboard()->setText(u"Nord\r\nSüd\r\nOst\r\nWest\r\n"_qs);
    QTest::keyClick(grid.table(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(grid.rows(), 5);
    QCOMPARE(grid.textMatrix(3, 1), u"Nord"_qs);
    QCOMPARE(grid.textMatrix(4, 1), u"Süd"_qs);
    QCOMPARE(f.dialogs.shown,
             std::vector{informationBox(u"2 eingefügte Werte hatten keinen Platz in der Tabelle "
                                        u"und wurden weggelassen."_qs)});
    grid.setCell(3, 1);
    QTest::keyClick(grid.table(), Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(grid.textMatrix(3, 1), u""_qs);
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(u"Nord"_qs));
    QCOMPARE(grid.textMatrix(3, 0), u"3"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.PrüfpunktName(3), u"Prüfpunkt 3"_qs);
    QCOMPARE(f.document.PrüfpunktName(4), u"Süd"_qs);
}

void TestSeitePrueffelder::longNamesSurvive()
{
    const QString name = QString(200, u'ü');
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 2, 0, name);
    f.type(pointsGrid, 2, 1, name);
    f.find<QAction>(u"mf_save"_qs)->trigger();
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.path(u"blatt.xml"_qs));
    QCOMPARE(read.PrüffeldName(2), name);
    QCOMPARE(read.PrüfpunktName(2), name);
    QVERIFY(!f.grid(fieldsGrid).table()->horizontalScrollBar()->isVisible());
}

void TestSeitePrueffelder::emptiedPointNameIsTheDefaultAgain()
{
    PageFixture f(2);
    f.document.setPrüfpunktName(1, u"Ecke"_qs);
    f.open();
    f.type(pointsGrid, 1, 1, u""_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.PrüfpunktName(1), u"Prüfpunkt 1"_qs);
}

void TestSeitePrueffelder::fewerFieldsLoseNothing()
{
    PageFixture f(2, 5);
    f.open();
    f.type(fieldsGrid, 5, 0, u"fünftes"_qs);
    f.click(u"cmdPrevious"_qs);
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"3"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.grid(fieldsGrid).rows(), 4);
    f.click(u"cmdPrevious"_qs);
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"5"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.grid(fieldsGrid).textMatrix(5, 0), u"fünftes"_qs);
    QCOMPARE(f.document.MesswertString(pmDirekt, 5, 4), u"100,50"_qs);
}

void TestSeitePrueffelder::blockIsPastedOver()
{
    PageFixture f(2);
    f.open();
    QGuiApplication::clipboard()->setText(u"A\t5\t2,6\r\nB\t6\t4\r\n"_qs);
    GridControl &grid = f.grid(fieldsGrid);
    grid.setCell(1, 0);
    QTest::keyClick(grid.table(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(grid.rows(), 4);
    QCOMPARE(rowTexts(grid, 1), QStringList({u"A"_qs, u"5"_qs, u"3"_qs}));
    QCOMPARE(rowTexts(grid, 2), QStringList({u"B"_qs, u"6"_qs, u"4"_qs}));
    QTRY_COMPARE(f.grid(pointsGrid).rows(), 7);
    QVERIFY(f.dialogs.shown.empty());
}

void TestSeitePrueffelder::whatDoesNotFitIsReported()
{
    PageFixture f(2);
    f.open();
    QGuiApplication::clipboard()->setText(u"1\n2\n3"_qs);
    GridControl &grid = f.grid(fieldsGrid);
    grid.setCell(2, 2);
    QTest::keyClick(grid.table(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(grid.textMatrix(2, 2), u"1"_qs);
    QCOMPARE(grid.textMatrix(3, 2), u"2"_qs);
    QCOMPARE(grid.rows(), 4);
    QCOMPARE(f.dialogs.shown,
             std::vector{informationBox(u"Ein eingefügter Wert hatte keinen Platz in der Tabelle "
                                        u"und wurde weggelassen."_qs)});
}

void TestSeitePrueffelder::rowCommandsDoNothing()
{
    PageFixture f(2);
    f.open();
    GridControl &grid = f.grid(fieldsGrid);
    grid.setCell(3, 2);
    QTest::keyClick(grid.table(), Qt::Key_Insert, Qt::ControlModifier);
    QTest::keyClick(grid.table(), Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(grid.rows(), 4);
    f.type(fieldsGrid, 3, 2, u"9"_qs); // a commit in the last row adds none
    QCOMPARE(grid.rows(), 4);
    QCOMPARE(grid.textMatrix(3, 0), u"Prüffeld 3"_qs);
}

void TestSeitePrueffelder::pendingTextCountsAsAChange()
{
    PageFixture f(2);
    f.open();
    f.type(fieldsGrid, 1, 1, u"2"_qs);
    f.window->close();
    QCOMPARE(f.dialogs.questions.size(), 1);
    QVERIFY(f.window->isVisible());
    QVERIFY(!f.document.IsDirty());
    f.type(fieldsGrid, 1, 1, u"4"_qs);
    f.type(pointsGrid, 1, 1, u"x"_qs);
    f.window->close();
    QCOMPARE(f.dialogs.questions.size(), 2);
}

void TestSeitePrueffelder::openEditorIsTakenOver()
{
    PageFixture f(2);
    f.open();
    GridControl &grid = f.grid(fieldsGrid);
    grid.setCell(1, 2);
    QTest::keyClicks(grid.table(), u"8"_qs);
    QVERIFY(QApplication::focusWidget()->objectName() == u"txtFGKeysMessreihen"_qs);
    f.window->setFileName(f.path(u"neu.xml"_qs));
    f.find<QAction>(u"mf_save"_qs)->trigger();
    QCOMPARE(f.document.PrüffeldWert(1), 8.0);
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.path(u"neu.xml"_qs));
    QCOMPARE(read.PrüffeldWert(1), 8.0);
}

void TestSeitePrueffelder::unreadableFileValues()
{
    PageFixture f(2);
    f.document.DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"viele"_qs);
    f.document.DataStore().set(u"Name Prüffeld 2"_qs, u"acht"_qs);
    f.open();
    QCOMPARE(rowTexts(f.grid(fieldsGrid), 1), QStringList({u"Prüffeld 1"_qs, u""_qs, u"1"_qs}));
    QCOMPARE(f.grid(fieldsGrid).textMatrix(2, 2), u"(Fehler)"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QVERIFY(f.dialogs.shown.back().text.contains(u"Anzahl der Prüfpunkte"_qs));
    f.type(fieldsGrid, 1, 1, u"4"_qs);
    f.click(u"cmdNext"_qs);
    QVERIFY(f.dialogs.shown.back().text.contains(u"Kovariable"_qs));
    f.click(u"cmdPrevious"_qs);
    QCOMPARE(f.activePage(), 1);
    QCOMPARE(f.document.values().text(f.document.DataStore().item(u"Name Prüffeld 2"_qs)),
             u"acht"_qs);
}

void TestSeitePrueffelder::tooManyFieldsShowANotice()
{
    PageFixture f(2);
    f.document.DataStore().set(u"Anzahl Prüffelder"_qs, u"2000000000"_qs);
    f.open();
    QCOMPARE(f.activePage(), 2);
    auto *notice = f.find<QLabel>(u"labHinweis2"_qs);
    QVERIFY(notice->isVisible());
    QVERIFY(notice->text().endsWith(u"Überlauf (6)"_qs));
    QCOMPARE(f.grid(fieldsGrid).rows(), 1);
    f.click(u"cmdPrevious"_qs);
    QCOMPARE(f.activePage(), 1);
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"3"_qs);
    f.click(u"cmdNext"_qs);
    QVERIFY(!notice->isVisible());
    QCOMPARE(f.grid(fieldsGrid).rows(), 4);
}

void TestSeitePrueffelder::protocolEntriesOfAFieldStay()
{
    PageFixture f(2);
    const QString key = u"Protokoll Verdichtung Kalibrierfeld Kovariable (Anzahl der "
                        u"Verdichtungsübergänge) - Prüffeld 2"_qs;
    f.document.DataStoreLet(key, u"vier Übergänge"_qs);
    f.open();
    f.type(fieldsGrid, 2, 0, u"umbenannt"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.document.values().text(f.document.DataStore().item(key)), u"vier Übergänge"_qs);
}

void TestSeitePrueffelder::englishNumbers()
{
    PageFixture f(2, 3, 4, QLocale(QLocale::English, QLocale::UnitedStates));
    f.document.Kovariable().setNachkommastellen(1);
    f.open();
    f.type(fieldsGrid, 1, 2, u"1,234.56"_qs);
    QCOMPARE(f.grid(fieldsGrid).textMatrix(1, 2), u"1,234.6"_qs);
    f.type(fieldsGrid, 2, 2, u"2,5"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QCOMPARE(f.document.PrüffeldWert(1), 1234.6);
}

REGISTER_TEST(TestSeitePrueffelder)
#include "tst_seiteprueffelder.moc"
