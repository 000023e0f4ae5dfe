#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include <QTableView>

/// The paste that overwrites cells.
class TestPasteOver : public QObject
{
    Q_OBJECT

private slots:
    void writesEachCellAsIfTyped();
    void beginsAtTheTopLeftOfTheSelection();
    void selectsWhatItWrote();
    void vetoedCellsKeepTheirTextAndAreCounted();
    void theHandlerChangesWhatIsWritten();
    void formatStringShapesEachCell();
    void whatDoesNotFitIsLeftOutAndCounted();
    void insertsNoRowsEvenWithAutoRowAdd();
    void fixedCellsAreLeftOut();
    void anInactiveGridTakesNothing();
    void anEmptyClipboardReportsNothing();
    void textOfSpreadsheetsArrivesRight_data();
    void textOfSpreadsheetsArrivesRight();
    void anOpenEditIsCommittedFirst();
    void anotherGridAttachedInAHandlerTakesNothing();
    void theGridMayGoWhenThePastedCellsAreSelected();
    void rowsRemovedByAHandlerShiftNoText();
    void rowsInsertedByAHandlerShiftNoText();
    void deletingTheGridInAHandlerEndsIt();
    void tenThousandRowsCostOneRepaint();
};

void TestPasteOver::writesEachCellAsIfTyped()
{
    EditGridFixture f;
    f.clipboard = u"a\tb\r\nc\td\r\n"_qs;
    f.grid->setCell(2, 1);
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeCellEdit 2,1 r2c1"_qs, u"AfterCellEdit 2,1 a"_qs,
                                          u"BeforeCellEdit 2,2 r2c2"_qs, u"AfterCellEdit 2,2 b"_qs,
                                          u"BeforeCellEdit 3,1 r3c1"_qs, u"AfterCellEdit 3,1 c"_qs,
                                          u"BeforeCellEdit 3,2 r3c2"_qs, u"AfterCellEdit 3,2 d"_qs,
                                          u"ProcessReady"_qs, u"CellsPasted 4,0,0"_qs}));
    QCOMPARE(f.rowTexts(2), QStringList({u"r2c0"_qs, u"a"_qs, u"b"_qs, u"r2c3"_qs}));
    QCOMPARE(f.rowTexts(3), QStringList({u"r3c0"_qs, u"c"_qs, u"d"_qs, u"r3c3"_qs}));
    QCOMPARE(f.grid->rows(), 5);
}

void TestPasteOver::beginsAtTheTopLeftOfTheSelection()
{
    EditGridFixture f;
    f.clipboard = u"x"_qs;
    f.grid->setCursorCells({4, 3, 2, 2});
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.grid->textMatrix(2, 2), u"x"_qs);
    QCOMPARE(f.grid->textMatrix(4, 3), u"r4c3"_qs);
}

void TestPasteOver::selectsWhatItWrote()
{
    EditGridFixture f;
    f.clipboard = u"a\tb\nc\n"_qs;
    f.grid->setCell(2, 1);
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.grid->cursorCells(), (GridCursor{2, 1, 3, 2}));
}

void TestPasteOver::vetoedCellsKeepTheirTextAndAreCounted()
{
    EditGridFixture f(4, 2);
    f.clipboard = u"a\tb\nc\td\n"_qs;
    connect(f.edit.get(), &clsEditGrid::BeforeCellEdit, this,
            [](int row, int col, QString &, bool &cancel) { cancel = row == 1 && col == 0; });
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [](int row, int col, QString &, bool &cancel) { cancel = row == 2 && col == 1; });
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.rowTexts(1), QStringList({u"r1c0"_qs, u"b"_qs}));
    QCOMPARE(f.rowTexts(2), QStringList({u"c"_qs, u"r2c1"_qs}));
    QCOMPARE(f.events.last(), u"CellsPasted 2,2,0"_qs);
    QVERIFY(!f.events.contains(u"AfterCellEdit 1,0 a"_qs));
}

void TestPasteOver::theHandlerChangesWhatIsWritten()
{
    EditGridFixture f;
    f.clipboard = u"1\t2"_qs;
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [](int, int, QString &text, bool &) { text += u",00"_qs; });
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.rowTexts(1).first(2), QStringList({u"1,00"_qs, u"2,00"_qs}));
}

void TestPasteOver::formatStringShapesEachCell()
{
    EditGridFixture f;
    f.edit->setFormatString(u"0.0"_qs);
    f.clipboard = u"1\tkeine Zahl"_qs;
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.rowTexts(1).first(2), QStringList({u"1,0"_qs, u"keine Zahl"_qs}));
}

void TestPasteOver::whatDoesNotFitIsLeftOutAndCounted()
{
    EditGridFixture f(3, 2);
    f.clipboard = u"a\tb\tc\nd\te\tf\ng\th\ti\n"_qs;
    f.grid->setCell(2, 1);
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.rowTexts(2), QStringList({u"r2c0"_qs, u"a"_qs}));
    QCOMPARE(f.grid->rows(), 3);
    QCOMPARE(f.events.last(), u"CellsPasted 1,0,8"_qs);
}

void TestPasteOver::insertsNoRowsEvenWithAutoRowAdd()
{
    EditGridFixture f(2, 1);
    f.edit->setGridAutoRowAdd(true);
    f.clipboard = u"a\nb\n"_qs;
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.grid->rows(), 2);
    QCOMPARE(f.events.last(), u"CellsPasted 1,0,1"_qs);
}

void TestPasteOver::fixedCellsAreLeftOut()
{
    EditGridFixture f(3, 3, 1);
    f.clipboard = u"a\tb"_qs;
    f.grid->setCell(1, 0);
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    QCOMPARE(f.grid->textMatrix(1, 1), u"b"_qs);
    QCOMPARE(f.events.last(), u"CellsPasted 1,0,1"_qs);
}

void TestPasteOver::anInactiveGridTakesNothing()
{
    EditGridFixture f;
    f.edit->setActive(false);
    f.clipboard = u"a"_qs;
    f.edit->ClipboardPasteOver();
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

void TestPasteOver::anEmptyClipboardReportsNothing()
{
    EditGridFixture f;
    f.edit->ClipboardPasteOver();
    QVERIFY(f.takeEvents().isEmpty());
}

void TestPasteOver::textOfSpreadsheetsArrivesRight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("grid");
    QTest::newRow("CR LF and a last one") << u"1,5\t2\r\n3\t4\r\n"_qs << u"1,5|2/3|4/"_qs;
    QTest::newRow("LF and none at the end") << u"1\t2\n3\t4"_qs << u"1|2/3|4/"_qs;
    QTest::newRow("a quoted cell with a line break")
        << u"\"oben\nunten\"\t2\r\n3\t4\r\n"_qs << u"oben\nunten|2/3|4/"_qs;
    QTest::newRow("doubled marks")
        << u"\"sagt \"\"ja\"\"\"\t2\n3\t4"_qs << u"sagt \"ja\"|2/3|4/"_qs;
    QTest::newRow("an inch mark") << u"5\"\t\"2\n3\t4"_qs << u"5\"|\"2/3|4/"_qs;
    QTest::newRow("empty cells empty") << u"\t2\r\n3\t\r\n"_qs << u"|2/3|/"_qs;
    QTest::newRow("an empty line is an empty cell") << u"\r\n3\t4\r\n"_qs << u"|r1c1/3|4/"_qs;
    QTest::newRow("control characters")
        << u"1\u0007\t2\u0000\n3\u001b\t4\u0085"_qs << u"1|2/3|4/"_qs;
}

void TestPasteOver::textOfSpreadsheetsArrivesRight()
{
    QFETCH(const QString, text);
    QFETCH(const QString, grid);
    EditGridFixture f(3, 2);
    f.clipboard = text;
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.edit->GridText(false, u"|"_qs, u"/"_qs), grid);
}

void TestPasteOver::anOpenEditIsCommittedFirst()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"getippt"_qs);
    f.takeEvents();
    f.clipboard = u"a"_qs;
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.takeEvents(),
             QStringList({u"AfterCellEdit 1,0 getippt"_qs, u"ProcessReady"_qs,
                          u"BeforeCellEdit 1,0 getippt"_qs, u"AfterCellEdit 1,0 a"_qs,
                          u"ProcessReady"_qs, u"CellsPasted 1,0,0"_qs}));
    QCOMPARE(f.rowTexts(1), QStringList({u"a"_qs, u"r1c1"_qs, u"r1c2"_qs, u"r1c3"_qs}));
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 0));
    QVERIFY(!f.edit->isEditing());
    QVERIFY(f.grid->table()->hasFocus());
}

void TestPasteOver::anotherGridAttachedInAHandlerTakesNothing()
{
    EditGridFixture f;
    GridControl other;
    other.setRows(5);
    f.clipboard = u"a\tb\nc\n"_qs;
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [&] { f.edit->setMSFlexGrid(&other); });
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.takeEvents(),
             QStringList({u"BeforeCellEdit 1,0 r1c0"_qs, u"AfterCellEdit 1,0 a"_qs}));
    QCOMPARE(other.textMatrix(1, 0), QString());
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    f.edit->setMSFlexGrid(nullptr);
}

void TestPasteOver::theGridMayGoWhenThePastedCellsAreSelected()
{
    EditGridFixture f;
    f.show();
    f.modelTester.reset();
    f.clipboard = u"a\tb\nc\n"_qs;
    connect(f.grid, &GridControl::selectionChanged, f.grid, [&f] { delete f.grid; });
    f.edit->ClipboardPasteOver();
    QVERIFY(!f.edit->MSFlexGrid());
    QCOMPARE(f.events.filter(u"ProcessReady"_qs).size(), 0);
}

void TestPasteOver::rowsRemovedByAHandlerShiftNoText()
{
    EditGridFixture f(6, 1);
    f.clipboard = u"a\nb\nc\n"_qs;
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&f](int, int, QString &text, bool &) {
        if (text == u"b"_qs)
            f.grid->removeItem(1);
    });
    f.grid->setCell(2, 0);
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.colTexts(0), QStringList({u"a"_qs, u"b"_qs, u"c"_qs, u"r5c0"_qs}));
}

void TestPasteOver::rowsInsertedByAHandlerShiftNoText()
{
    EditGridFixture f(5, 1);
    f.clipboard = u"a\nb\nc\n"_qs;
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&f](int, int, QString &text, bool &) {
        if (text == u"b"_qs)
            f.grid->addItem(u"neu"_qs, 1);
    });
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.colTexts(0), QStringList({u"neu"_qs, u"a"_qs, u"b"_qs, u"c"_qs, u"r4c0"_qs}));
}

void TestPasteOver::deletingTheGridInAHandlerEndsIt()
{
    EditGridFixture f;
    f.clipboard = u"a\tb\nc\n"_qs;
    f.modelTester.reset();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&f] { delete f.grid; });
    f.edit->ClipboardPasteOver();
    QCOMPARE(f.takeEvents().size(), 2);
    QVERIFY(!f.edit->MSFlexGrid());
}

void TestPasteOver::tenThousandRowsCostOneRepaint()
{
    EditGridFixture f(10001, 2);
    f.show();
    struct PaintCounter : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    } paints;
    f.grid->table()->viewport()->installEventFilter(&paints);
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    QTest::qWait(50);
    paints.count = 0;
    QStringList lines;
    for (int i = 0; i < 10000; ++i)
        lines.append(u"a%1\tb%1"_qs.arg(i));
    f.clipboard = lines.join(u"\r\n"_qs);
    f.edit->ClipboardPasteOver();
    QTest::qWait(50);
    QCOMPARE(paints.count, 1);
    QCOMPARE(f.events.last(), u"CellsPasted 20000,0,0"_qs);
    QCOMPARE(f.grid->textMatrix(10000, 1), u"b9999"_qs);
}

REGISTER_TEST(TestPasteOver)
#include "tst_pasteover.moc"
