#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

/// Inserting and removing rows with their vetoes, and clearing.
class TestRowCommands : public QObject
{
    Q_OBJECT

private slots:
    void rowsAddInsertsAllAtTheSameIndex();
    void aVetoedRoundInsertsOneRowFewer();
    void rowsAddStaysOutOfFixedRowsAndOfTheGridsEnd_data();
    void rowsAddStaysOutOfFixedRowsAndOfTheGridsEnd();
    void rowsDelRemovesFromTopToBottom();
    void rowsDelOverEveryRowLeavesExactlyOne();
    void aVetoKeepsOneRowAndTheNextIsStillOffered();
    void rowsDelNeverTouchesFixedRows();
    void rowsDelBeyondTheLastRowStops();
    void aHandlerThatRemovesRowsDoesNotTakeTheLastOne();
    void onlyTheOfferedRowGoesWhenAHandlerMovesRows_data();
    void onlyTheOfferedRowGoesWhenAHandlerMovesRows();
    void aRowThatTheHandlerRemovesItselfTakesNoOtherAlong();
    void aHandlerThatAddsRowsForEverEndsWithTheRounds();
    void aHandlerThatAttachesAnotherGridEndsTheCommand_data();
    void aHandlerThatAttachesAnotherGridEndsTheCommand();
    void clearingNothingClearsNothing();
    void selRowsDelMovesTheCurrentRowOntoTheLast();
    void selClearRaisesCellClearAfterEachCell();
    void ensureVisibleRowLeavesTheCurrentCell();
    void nothingHappensWithoutAGrid();
};

void TestRowCommands::rowsAddInsertsAllAtTheSameIndex()
{
    EditGridFixture f(3, 1);
    f.edit->RowsAdd(2, 2);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeRowAdd 2"_qs, u"RowAdd 2"_qs,
                                          u"BeforeRowAdd 2"_qs, u"RowAdd 2"_qs}));
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, QString(), QString(), u"r2c0"_qs}));
    f.edit->RowsAdd(f.grid->rows(), 1);
    QCOMPARE(f.colTexts(0).last(), QString());
}

void TestRowCommands::aVetoedRoundInsertsOneRowFewer()
{
    EditGridFixture f(3, 1);
    int round = 0;
    connect(f.edit.get(), &clsEditGrid::BeforeRowAdd, this,
            [&round](int, bool &cancel) { cancel = ++round == 2; });
    f.edit->RowsAdd(1, 3);
    QCOMPARE(f.takeEvents(),
             QStringList({u"BeforeRowAdd 1"_qs, u"RowAdd 1"_qs, u"BeforeRowAdd 1"_qs,
                          u"BeforeRowAdd 1"_qs, u"RowAdd 1"_qs}));
    QCOMPARE(f.grid->rows(), 5);
}

void TestRowCommands::rowsAddStaysOutOfFixedRowsAndOfTheGridsEnd_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("fixed") << 0;
    QTest::newRow("negative") << -1;
    QTest::newRow("beyond the end") << 4;
}

void TestRowCommands::rowsAddStaysOutOfFixedRowsAndOfTheGridsEnd()
{
    QFETCH(const int, row);
    EditGridFixture f(3, 1);
    f.edit->RowsAdd(row, 2);
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.grid->rows(), 3);
}

void TestRowCommands::rowsDelRemovesFromTopToBottom()
{
    EditGridFixture f(6, 1);
    f.edit->RowsDel(2, 4);
    QCOMPARE(f.takeEvents(),
             QStringList({u"BeforeRowRemove 2"_qs, u"RowRemove 2"_qs, u"BeforeRowRemove 2"_qs,
                          u"RowRemove 2"_qs, u"BeforeRowRemove 2"_qs, u"RowRemove 2"_qs}));
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r5c0"_qs}));
}

void TestRowCommands::rowsDelOverEveryRowLeavesExactlyOne()
{
    EditGridFixture f(5, 1);
    f.edit->RowsDel(1, 4);
    QCOMPARE(f.colTexts(0), QStringList(u"r4c0"_qs));
    QCOMPARE(f.events.filter(u"BeforeRowRemove"_qs).size(), 3);
    f.edit->RowsDel(1, 1);
    QCOMPARE(f.grid->rows(), 2);
}

void TestRowCommands::aVetoKeepsOneRowAndTheNextIsStillOffered()
{
    EditGridFixture f(5, 1);
    connect(f.edit.get(), &clsEditGrid::BeforeRowRemove, this,
            [&f](int row, bool &cancel) { cancel = f.grid->textMatrix(row, 0) == u"r2c0"_qs; });
    f.edit->RowsDel(1, 3);
    QCOMPARE(f.takeEvents(),
             QStringList({u"BeforeRowRemove 1"_qs, u"RowRemove 1"_qs, u"BeforeRowRemove 1"_qs,
                          u"BeforeRowRemove 2"_qs, u"RowRemove 2"_qs}));
    QCOMPARE(f.colTexts(0), QStringList({u"r2c0"_qs, u"r4c0"_qs}));
}

void TestRowCommands::rowsDelNeverTouchesFixedRows()
{
    EditGridFixture f(4, 1);
    f.edit->RowsDel(0, 1);
    QCOMPARE(f.grid->textMatrix(0, 0), u"r0c0"_qs);
    QCOMPARE(f.colTexts(0), QStringList({u"r2c0"_qs, u"r3c0"_qs}));
}

void TestRowCommands::rowsDelBeyondTheLastRowStops()
{
    EditGridFixture f(4, 1);
    f.edit->RowsDel(3, 99);
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r2c0"_qs}));
    QCOMPARE(f.events.filter(u"BeforeRowRemove"_qs).size(), 1);
    f.edit->RowsDel(2, 1);
    QCOMPARE(f.grid->rows(), 3);
}

void TestRowCommands::aHandlerThatRemovesRowsDoesNotTakeTheLastOne()
{
    EditGridFixture f(4, 1);
    connect(f.edit.get(), &clsEditGrid::BeforeRowRemove, this, [&f] { f.grid->setRows(2); });
    f.edit->RowsDel(1, 3);
    QCOMPARE(f.colTexts(0), QStringList(u"r1c0"_qs));
}

void TestRowCommands::selRowsDelMovesTheCurrentRowOntoTheLast()
{
    EditGridFixture f(6, 2);
    f.grid->setCursorCells({5, 1, 3, 1});
    f.edit->SelRowsDel();
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r2c0"_qs}));
    QCOMPARE(f.grid->row(), 2);
    QCOMPARE(f.grid->col(), 1);
}

void TestRowCommands::selClearRaisesCellClearAfterEachCell()
{
    EditGridFixture f(3, 2);
    QStringList seen;
    connect(f.edit.get(), &clsEditGrid::CellClear, this,
            [&](int row, int col) { seen.append(f.grid->textMatrix(row, col)); });
    f.grid->setCursorCells({1, 0, 2, 1});
    f.edit->SelClear();
    QCOMPARE(seen, QStringList({QString(), QString(), QString(), QString()}));
    QCOMPARE(f.takeEvents(), QStringList({u"CellClear 1,0"_qs, u"CellClear 1,1"_qs,
                                          u"CellClear 2,0"_qs, u"CellClear 2,1"_qs}));
}

void TestRowCommands::ensureVisibleRowLeavesTheCurrentCell()
{
    EditGridFixture f(200);
    f.show();
    f.edit->EnsureVisibleRow(150);
    QVERIFY(f.grid->isRowVisible(150));
    QVERIFY(!f.grid->isRowVisible(1));
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 0));
}

void TestRowCommands::nothingHappensWithoutAGrid()
{
    clsEditGrid eg;
    eg.EnsureVisibleRow(1);
    eg.Refresh();
    eg.ClipboardCopy();
    eg.ClipboardCut();
    eg.ClipboardPaste();
    eg.ClipboardPasteOver();
    eg.RowsAdd(1, 1);
    eg.RowsDel(1, 1);
    eg.SelClear();
    eg.SelRowsDel();
    eg.BeginEdit();
    eg.EndEdit(false);
    eg.setGridText(u"a"_qs, true);
    QCOMPARE(eg.GridText(), QString());
    QVERIFY(!eg.PrintToPrinter(nullptr, true, true));
}

void TestRowCommands::onlyTheOfferedRowGoesWhenAHandlerMovesRows_data()
{
    QTest::addColumn<bool>("inserts");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("a row inserted above")
        << true << QStringList({u"neu"_qs, u"r1c0"_qs, u"r3c0"_qs, u"r5c0"_qs});
    QTest::newRow("a row removed above") << false << QStringList({u"r3c0"_qs, u"r5c0"_qs});
}

void TestRowCommands::onlyTheOfferedRowGoesWhenAHandlerMovesRows()
{
    QFETCH(const bool, inserts);
    QFETCH(const QStringList, left);
    EditGridFixture f(6, 1);
    QStringList offered;
    connect(f.edit.get(), &clsEditGrid::BeforeRowRemove, this, [&](int row, bool &cancel) {
        offered.append(f.grid->textMatrix(row, 0));
        cancel = offered.last() == u"r3c0"_qs;
        if (offered.size() > 1)
            return;
        if (inserts)
            f.grid->addItem(u"neu"_qs, 1);
        else
            f.grid->removeItem(1);
    });
    f.edit->RowsDel(2, 4);
    QCOMPARE(offered, QStringList({u"r2c0"_qs, u"r3c0"_qs, u"r4c0"_qs}));
    QCOMPARE(f.colTexts(0), left);
}

void TestRowCommands::aRowThatTheHandlerRemovesItselfTakesNoOtherAlong()
{
    EditGridFixture f(6, 1);
    connect(f.edit.get(), &clsEditGrid::BeforeRowRemove, this,
            [&f](int row) { f.grid->removeItem(row); });
    f.edit->RowsDel(2, 3);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeRowRemove 2"_qs, u"BeforeRowRemove 2"_qs}));
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r4c0"_qs, u"r5c0"_qs}));
}

void TestRowCommands::aHandlerThatAddsRowsForEverEndsWithTheRounds()
{
    EditGridFixture f(6, 1);
    connect(f.edit.get(), &clsEditGrid::BeforeRowRemove, this,
            [&f](int row) { f.grid->addItem(u"neu"_qs, row + 1); });
    f.edit->RowsDel(2, 4);
    QCOMPARE(f.events.filter(u"BeforeRowRemove"_qs).size(), 3);
    QCOMPARE(f.grid->rows(), 6);
}

void TestRowCommands::aHandlerThatAttachesAnotherGridEndsTheCommand_data()
{
    QTest::addColumn<QString>("last");
    QTest::newRow("BeforeRowRemove") << u"BeforeRowRemove 1"_qs;
    QTest::newRow("BeforeRowAdd") << u"BeforeRowAdd 1"_qs;
    QTest::newRow("CellClear") << u"CellClear 1,0"_qs;
}

void TestRowCommands::aHandlerThatAttachesAnotherGridEndsTheCommand()
{
    QFETCH(const QString, last);
    EditGridFixture f(6, 1);
    GridControl other;
    other.setRows(6);
    const auto attach = [&] { f.edit->setMSFlexGrid(&other); };
    connect(f.edit.get(), &clsEditGrid::BeforeRowRemove, this, attach);
    connect(f.edit.get(), &clsEditGrid::BeforeRowAdd, this, attach);
    connect(f.edit.get(), &clsEditGrid::CellClear, this, attach);
    f.grid->setCursorCells({1, 0, 3, 0});
    if (last.startsWith(u"BeforeRowRemove"_qs))
        f.edit->SelRowsDel();
    else if (last.startsWith(u"BeforeRowAdd"_qs))
        f.edit->RowsAdd(1, 2);
    else
        f.edit->SelClear();
    QCOMPARE(f.takeEvents(), QStringList(last));
    QCOMPARE(f.grid->rows(), 6);
    QCOMPARE(other.rows(), 6);
    QCOMPARE(f.grid->textMatrix(2, 0), u"r2c0"_qs);
    QVERIFY(f.grid->redraw());
    f.edit->setMSFlexGrid(nullptr);
}

void TestRowCommands::clearingNothingClearsNothing()
{
    EditGridFixture f(1, 2);
    f.edit->SelClear();
    f.edit->SelRowsDel();
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.grid->textMatrix(0, 0), u"r0c0"_qs);
}

REGISTER_TEST(TestRowCommands)
#include "tst_rowcommands.moc"
