#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include <QComboBox>
#include <QScrollBar>
#include <QTableView>

/// Beginning and ending an edit: events in their order, vetoes, where the text and the focus go.
class TestEditing : public QObject
{
    Q_OBJECT

private slots:
    void hasTheDefaultOptions();
    void raisesTheEventsOfACommitInOrder();
    void theFocusLossThatFollowsEnterCommitsNothingMore();
    void escRaisesCancelAndReadyButNoAfterCellEdit();
    void cancelCellEditCarriesTheCurrentCell();
    void aVetoBeforeTheEditOpensNothingAndRaisesNothingElse();
    void theHandlerBeforeTheEditChangesTheTextToOpenWith();
    void aHandlerThatMovesTheCurrentCellStopsTheEdit();
    void aVetoAfterTheEditKeepsTheOldTextAndStillCloses();
    void theHandlerAfterTheEditChangesWhatIsWritten();
    void withMultipleEditEverySelectedCellIsOfferedRowByRow();
    void withMultipleEditOneVetoKeepsOneCell();
    void newTextStartsFromTheCommittedTextInEveryCell();
    void withoutMultipleEditOnlyTheEditCellIsWritten();
    void multipleEditLeavesFixedColumnsAlone();
    void theSelectionOfTheStartOfTheEditCounts();
    void afterACommitTheNextCellBecomesCurrent_data();
    void afterACommitTheNextCellBecomesCurrent();
    void withoutAutoFocusTheCurrentCellStays();
    void theLastCellStaysCurrentAfterItsCommit();
    void withAutoRowAddARowIsAppendedAndEntered();
    void aVetoedRowIsNotAppended();
    void withAutoRowAddAnyCellOfTheLastRowAppends();
    void switchingActiveOffCommits();
    void anInactiveGridBeginsNoEdit();
    void fixedCellsAreNeverEdited_data();
    void fixedCellsAreNeverEdited();
    void anEditThatBeginsAtMidnightCommits();
    void formatStringShapesTheCommittedText();
    void aSecondBeginEditKeepsTheTypedText();
    void theNextEditGivesTheFocusToNoOtherControl();
    void aColumnRemovedByAHandlerIsNotOffered();
    void theEditedColumnRemovedWhileEditingDiscardsTheEdit();
    void aTextLongerThanTheEditorTakesStays();
    void anEditableListShowsTheCellsText();
    void anEditableListThatIsEmptiedEmptiesTheCell_data();
    void anEditableListThatIsEmptiedEmptiesTheCell();
    void withAutoRowAddASourcedGridGetsAnEmptyRow();
    void beginEditInAHandlerOfTheSameEditIsIgnored();
    void processReadyMayBeginTheNextEdit();
    void aCommitByLossOfFocusLeavesFocusAndCellAlone();
    void aMenuOrAnotherWindowDoesNotEndTheEdit();
    void tabInTheEditorCommitsAndMakesOneStep();
    void shiftTabInTheEditorCommitsAndStepsBack();
    void tabInTheLastCellCommitsAndLeavesTheGrid();
    void tabInTheLastCellEntersTheAppendedRow();
    void theEditorCoversTheCellAndFollowsScrolling();
    void theEditorsTextStandsWhereTheCellShowsIt_data();
    void theEditorsTextStandsWhereTheCellShowsIt();
    void redrawIsOffDuringAfterCellEditAndRestored();
    void theEditorIsASiblingOfTheTableInTheFrame();
    void otherInputControlsAreNotTaken();
    void theComboEditorSelectsTheClosestEntry_data();
    void theComboEditorSelectsTheClosestEntry();
    void aComboEditorCommitsTheChosenEntry();
    void aComboEditorThatNobodyTouchedChangesNothing();
    void focusColorsAreTheEditorsWhileItIsShown();
    void itemDataStaysWithItsNumbers();
    void anUnchangedTextOfTwoLinesStays();
    void whatIsPastedIntoTheEditorIsCleaned();
    void aLetterThatBeginsNoEntryKeepsTheText();
    void anEditOfFormerContentsReachesNoOtherRow();
    void anotherGridTakesOver();
};

void TestEditing::hasTheDefaultOptions()
{
    const clsEditGrid eg;
    QVERIFY(eg.Active());
    QVERIFY(eg.GridAutoFocus());
    QCOMPARE(eg.GridAutoFocus_ColStart(), -1);
    QCOMPARE(eg.GridAutoFocus_ColEnd(), -1);
    QVERIFY(!eg.GridAutoRowAdd());
    QVERIFY(!eg.GridMultibleEdit());
    QVERIFY(!eg.GridIgnoreClipboardKeys());
    QVERIFY(!eg.GridIgnoreAddDelKeys());
    QVERIFY(eg.FormatString().isEmpty());
    QVERIFY(eg.ClipboardDoWholeLine());
    QVERIFY(eg.HandleFocusColors());
    QVERIFY(!eg.InputObject());
    QVERIFY(!eg.MSFlexGrid());
}

void TestEditing::raisesTheEventsOfACommitInOrder()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    QVERIFY(f.editor->isVisible());
    QVERIFY(f.editor->hasFocus());
    QCOMPARE(f.editor->text(), u"r1c0"_qs);
    QCOMPARE(f.editor->selectedText(), u"r1c0"_qs);
    f.type(u"neu"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeCellEdit 1,0 r1c0"_qs,
                                          u"AfterCellEdit 1,0 neu"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
    QVERIFY(!f.editor->isVisible());
    QVERIFY(f.grid->table()->hasFocus());
}

void TestEditing::theFocusLossThatFollowsEnterCommitsNothingMore()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.key(Qt::Key_Enter);
    f.behind->setFocus();
    QCOMPARE(f.events.filter(u"AfterCellEdit"_qs).size(), 1);
    f.edit->EndEdit(false);
    f.edit->EndEdit(true);
    QCOMPARE(f.events.filter(u"ProcessReady"_qs).size(), 1);
}

void TestEditing::escRaisesCancelAndReadyButNoAfterCellEdit()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"weg"_qs);
    f.takeEvents();
    f.key(Qt::Key_Escape);
    QCOMPARE(f.takeEvents(), QStringList({u"CancelCellEdit 1,0"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    QVERIFY(!f.editor->isVisible());
    QVERIFY(f.grid->table()->hasFocus());
}

void TestEditing::cancelCellEditCarriesTheCurrentCell()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.grid->setCell(3, 2);
    f.takeEvents();
    f.edit->EndEdit(true);
    QCOMPARE(f.takeEvents(), QStringList({u"CancelCellEdit 3,2"_qs, u"ProcessReady"_qs}));
}

void TestEditing::aVetoBeforeTheEditOpensNothingAndRaisesNothingElse()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::BeforeCellEdit, this,
            [](int, int, QString &, bool &cancel) { cancel = true; });
    f.key(Qt::Key_Return);
    QVERIFY(!f.editor->isVisible());
    f.edit->EndEdit(false);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeCellEdit 1,0 r1c0"_qs}));
    QVERIFY(f.grid->table()->hasFocus());
}

void TestEditing::theHandlerBeforeTheEditChangesTheTextToOpenWith()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::BeforeCellEdit, this,
            [](int, int, QString &text, bool &) { text = u"97.456"_qs; });
    f.edit->BeginEdit();
    QCOMPARE(f.editor->text(), u"97.456"_qs);
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

void TestEditing::aHandlerThatMovesTheCurrentCellStopsTheEdit()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::BeforeCellEdit, this, [&f] { f.grid->setCell(2, 2); });
    f.edit->BeginEdit();
    QVERIFY(!f.editor->isVisible());
    QVERIFY(!f.edit->isEditing());
}

void TestEditing::aVetoAfterTheEditKeepsTheOldTextAndStillCloses()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [](int, int, QString &, bool &cancel) { cancel = true; });
    f.edit->BeginEdit();
    f.type(u"abc"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    QVERIFY(!f.editor->isVisible());
    QCOMPARE(f.events.last(), u"ProcessReady"_qs);
}

void TestEditing::theHandlerAfterTheEditChangesWhatIsWritten()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [](int, int, QString &text, bool &) { text += u",00"_qs; });
    f.edit->BeginEdit();
    f.type(u"12"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"12,00"_qs);
}

void TestEditing::withMultipleEditEverySelectedCellIsOfferedRowByRow()
{
    EditGridFixture f;
    f.edit->setGridMultibleEdit(true);
    f.show();
    f.grid->setCursorCells({2, 1, 1, 2});
    f.edit->BeginEdit();
    f.takeEvents();
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 1,1 x"_qs, u"AfterCellEdit 1,2 x"_qs,
                                          u"AfterCellEdit 2,1 x"_qs, u"AfterCellEdit 2,2 x"_qs,
                                          u"ProcessReady"_qs}));
    QCOMPARE(f.rowTexts(1), QStringList({u"r1c0"_qs, u"x"_qs, u"x"_qs, u"r1c3"_qs}));
    QCOMPARE(f.rowTexts(2), QStringList({u"r2c0"_qs, u"x"_qs, u"x"_qs, u"r2c3"_qs}));
}

void TestEditing::withMultipleEditOneVetoKeepsOneCell()
{
    EditGridFixture f;
    f.edit->setGridMultibleEdit(true);
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [](int row, int, QString &, bool &cancel) { cancel = row == 2; });
    f.grid->setCursorCells({1, 0, 3, 0});
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0), QStringList({u"x"_qs, u"r2c0"_qs, u"x"_qs, u"r4c0"_qs}));
}

void TestEditing::newTextStartsFromTheCommittedTextInEveryCell()
{
    EditGridFixture f;
    f.edit->setGridMultibleEdit(true);
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [](int row, int, QString &text, bool &) { text += QString::number(row); });
    f.grid->setCursorCells({1, 0, 3, 0});
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0), QStringList({u"x1"_qs, u"x2"_qs, u"x3"_qs, u"r4c0"_qs}));
}

void TestEditing::withoutMultipleEditOnlyTheEditCellIsWritten()
{
    EditGridFixture f;
    f.show();
    f.grid->setCursorCells({1, 0, 3, 0});
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.events.filter(u"AfterCellEdit"_qs), QStringList(u"AfterCellEdit 1,0 x"_qs));
    QCOMPARE(f.colTexts(0), QStringList({u"x"_qs, u"r2c0"_qs, u"r3c0"_qs, u"r4c0"_qs}));
}

void TestEditing::multipleEditLeavesFixedColumnsAlone()
{
    EditGridFixture f(5, 4, 2);
    f.edit->setGridMultibleEdit(true);
    f.show();
    f.grid->setCursorCells({1, 2, 2, 0});
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.events.filter(u"AfterCellEdit"_qs),
             QStringList({u"AfterCellEdit 1,2 x"_qs, u"AfterCellEdit 2,2 x"_qs}));
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

void TestEditing::theSelectionOfTheStartOfTheEditCounts()
{
    EditGridFixture f;
    f.edit->setGridMultibleEdit(true);
    f.show();
    f.grid->setCursorCells({1, 0, 2, 0});
    f.edit->BeginEdit();
    f.grid->setCursorCells({1, 0, 4, 3});
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0), QStringList({u"x"_qs, u"x"_qs, u"r3c0"_qs, u"r4c0"_qs}));
}

void TestEditing::afterACommitTheNextCellBecomesCurrent_data()
{
    QTest::addColumn<int>("colStart");
    QTest::addColumn<int>("colEnd");
    QTest::addColumn<GridCursor>("from");
    QTest::addColumn<GridCursor>("to");
    QTest::newRow("next column") << -1 << -1 << GridCursor::at(1, 1) << GridCursor::at(1, 2);
    QTest::newRow("behind the last, first that is not fixed")
        << -1 << -1 << GridCursor::at(1, 3) << GridCursor::at(2, 1);
    QTest::newRow("behind the end column")
        << -1 << 2 << GridCursor::at(1, 2) << GridCursor::at(2, 1);
    QTest::newRow("to the start column") << 2 << -1 << GridCursor::at(1, 3) << GridCursor::at(2, 2);
    QTest::newRow("before the start column")
        << 3 << 3 << GridCursor::at(1, 1) << GridCursor::at(1, 3);
    QTest::newRow("one column only") << 3 << 3 << GridCursor::at(2, 3) << GridCursor::at(3, 3);
    QTest::newRow("end beyond the grid") << 2 << 99 << GridCursor::at(1, 3) << GridCursor::at(2, 2);
    QTest::newRow("a selection collapses")
        << -1 << -1 << GridCursor{1, 1, 3, 3} << GridCursor::at(1, 2);
}

void TestEditing::afterACommitTheNextCellBecomesCurrent()
{
    QFETCH(const int, colStart);
    QFETCH(const int, colEnd);
    QFETCH(const GridCursor, from);
    QFETCH(const GridCursor, to);
    EditGridFixture f(5, 4, 1);
    f.edit->setGridAutoFocus_ColStart(colStart);
    f.edit->setGridAutoFocus_ColEnd(colEnd);
    f.show();
    f.grid->setCursorCells(from);
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->cursorCells(), to);
}

void TestEditing::withoutAutoFocusTheCurrentCellStays()
{
    EditGridFixture f;
    f.edit->setGridAutoFocus(false);
    f.show();
    f.grid->setCell(2, 1);
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 1));
}

void TestEditing::theLastCellStaysCurrentAfterItsCommit()
{
    EditGridFixture f;
    f.show();
    f.grid->setCell(4, 3);
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(4, 3));
    QCOMPARE(f.grid->rows(), 5);
}

void TestEditing::withAutoRowAddARowIsAppendedAndEntered()
{
    EditGridFixture f;
    f.edit->setGridAutoRowAdd(true);
    f.show();
    f.grid->setCell(4, 3);
    f.edit->BeginEdit();
    f.takeEvents();
    f.key(Qt::Key_Return);
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 4,3 r4c3"_qs, u"BeforeRowAdd 5"_qs,
                                          u"RowAdd 5"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->rows(), 6);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(5, 0));
    QCOMPARE(f.rowTexts(5), QStringList({QString(), QString(), QString(), QString()}));
}

void TestEditing::aVetoedRowIsNotAppended()
{
    EditGridFixture f;
    f.edit->setGridAutoRowAdd(true);
    f.show();
    connect(f.edit.get(), &clsEditGrid::BeforeRowAdd, this,
            [](int, bool &cancel) { cancel = true; });
    f.grid->setCell(4, 3);
    f.edit->BeginEdit();
    f.takeEvents();
    f.key(Qt::Key_Return);
    QCOMPARE(f.takeEvents(),
             QStringList({u"AfterCellEdit 4,3 r4c3"_qs, u"BeforeRowAdd 5"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->rows(), 5);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(4, 3));
}

void TestEditing::withAutoRowAddAnyCellOfTheLastRowAppends()
{
    EditGridFixture f;
    f.edit->setGridAutoRowAdd(true);
    f.show();
    f.grid->setCell(4, 0);
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->rows(), 6);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(4, 1));
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->rows(), 6);
}

void TestEditing::switchingActiveOffCommits()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.edit->setActive(false);
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 1,0 neu"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
    QVERIFY(!f.editor->isVisible());
    QVERIFY(!f.edit->Active());
}

void TestEditing::anInactiveGridBeginsNoEdit()
{
    EditGridFixture f;
    f.show();
    f.edit->setActive(false);
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    QVERIFY(!f.editor->isVisible());
    QVERIFY(f.takeEvents().isEmpty());
    f.edit->setActive(true);
    f.edit->BeginEdit();
    QVERIFY(f.editor->isVisible());
}

void TestEditing::fixedCellsAreNeverEdited_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("col");
    QTest::newRow("header") << 0 << 2;
    QTest::newRow("fixed column") << 2 << 1;
    QTest::newRow("corner") << 0 << 0;
}

void TestEditing::fixedCellsAreNeverEdited()
{
    QFETCH(const int, row);
    QFETCH(const int, col);
    EditGridFixture f(5, 4, 2);
    f.show();
    f.grid->setCell(row, col);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(row, col));
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    QVERIFY(!f.editor->isVisible());
    QVERIFY(f.takeEvents().isEmpty());
}

void TestEditing::anEditThatBeginsAtMidnightCommits()
{
    EditGridFixture f;
    f.timeOfDay = 0;
    f.show();
    f.edit->BeginEdit();
    f.type(u"nachts"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"nachts"_qs);
}

void TestEditing::formatStringShapesTheCommittedText()
{
    EditGridFixture f;
    f.edit->setFormatString(u"#,##0.00"_qs);
    f.show();
    f.edit->BeginEdit();
    f.type(u"1234,5"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"1.234,50"_qs);
    QVERIFY(f.events.contains(u"AfterCellEdit 1,0 1.234,50"_qs));
}

void TestEditing::aSecondBeginEditKeepsTheTypedText()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.edit->BeginEdit();
    QCOMPARE(f.editor->text(), u"neu"_qs);
    f.grid->setCell(3, 3);
    f.edit->BeginEdit();
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
    QCOMPARE(f.editor->text(), u"r3c3"_qs);
    QVERIFY(f.edit->isEditing());
}

void TestEditing::beginEditInAHandlerOfTheSameEditIsIgnored()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::BeforeCellEdit, this, [&f] { f.edit->BeginEdit(); });
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&f] { f.edit->BeginEdit(); });
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeCellEdit 1,0 r1c0"_qs,
                                          u"AfterCellEdit 1,0 neu"_qs, u"ProcessReady"_qs}));
    QVERIFY(!f.edit->isEditing());
}

void TestEditing::processReadyMayBeginTheNextEdit()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::ProcessReady, this, [&f] { f.edit->BeginEdit(); });
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QVERIFY(f.edit->isEditing());
    QCOMPARE(f.editor->text(), u"r1c1"_qs);
    QVERIFY(f.editor->hasFocus());
}

void TestEditing::aCommitByLossOfFocusLeavesFocusAndCellAlone()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.behind->setFocus();
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 1,0 neu"_qs, u"ProcessReady"_qs}));
    QVERIFY(f.behind->hasFocus());
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 0));
    QVERIFY(!f.editor->isVisible());
}

void TestEditing::aMenuOrAnotherWindowDoesNotEndTheEdit()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    for (const Qt::FocusReason reason :
         {Qt::PopupFocusReason, Qt::MenuBarFocusReason, Qt::ActiveWindowFocusReason}) {
        QFocusEvent event(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(f.editor, &event);
        QVERIFY(f.edit->isEditing());
    }
    QCOMPARE(f.editor->text(), u"neu"_qs);
}

void TestEditing::tabInTheEditorCommitsAndMakesOneStep()
{
    EditGridFixture f;
    f.show();
    f.grid->setCell(1, 3);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.key(Qt::Key_Tab);
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 1,3 neu"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 0));
    QVERIFY(f.grid->table()->hasFocus());
}

void TestEditing::shiftTabInTheEditorCommitsAndStepsBack()
{
    EditGridFixture f;
    f.show();
    f.grid->setCell(2, 0);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.key(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(f.grid->textMatrix(2, 0), u"neu"_qs);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 3));
    QVERIFY(f.grid->table()->hasFocus());
}

void TestEditing::tabInTheLastCellCommitsAndLeavesTheGrid()
{
    EditGridFixture f;
    f.show();
    f.grid->setCell(4, 3);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.key(Qt::Key_Tab);
    QCOMPARE(f.grid->textMatrix(4, 3), u"neu"_qs);
    QVERIFY(f.behind->hasFocus());
    f.grid->setCell(1, 0);
    f.edit->BeginEdit();
    f.key(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(f.before->hasFocus());
}

void TestEditing::tabInTheLastCellEntersTheAppendedRow()
{
    EditGridFixture f;
    f.edit->setGridAutoRowAdd(true);
    f.show();
    f.grid->setCell(4, 3);
    f.edit->BeginEdit();
    f.key(Qt::Key_Tab);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(5, 0));
    QVERIFY(f.grid->table()->hasFocus());
}

void TestEditing::theEditorCoversTheCellAndFollowsScrolling()
{
    EditGridFixture f(101);
    f.show();
    f.grid->setCell(3, 1);
    f.edit->BeginEdit();
    const QRect cell = f.grid->cellRect(3, 1);
    QVERIFY(cell.contains(f.editor->geometry()));
    QVERIFY(f.editor->height() >= cell.height() - 6);
    const int before = f.editor->y();
    QScrollBar *bar = f.grid->table()->verticalScrollBar();
    bar->setValue(5);
    QVERIFY(f.editor->y() < before);
    QVERIFY(f.grid->cellRect(3, 1).contains(f.editor->geometry()));
    bar->setValue(bar->maximum() / 2);
    QVERIFY(f.editor->hasFocus());
    QVERIFY(!f.editor->geometry().intersects(f.grid->rect()));
    f.type(u"neu"_qs);
    QVERIFY(f.grid->cellRect(3, 1).contains(f.editor->geometry()));
    QCOMPARE(f.editor->text(), u"neu"_qs);
}

void TestEditing::redrawIsOffDuringAfterCellEditAndRestored()
{
    EditGridFixture f;
    f.show();
    QList<bool> during;
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [&] { during.append(f.grid->redraw()); });
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(during, QList<bool>({false}));
    QVERIFY(f.grid->redraw());
    f.grid->setRedraw(false);
    f.edit->BeginEdit();
    f.edit->EndEdit(false);
    QVERIFY(!f.grid->redraw());
}

void TestEditing::theEditorIsASiblingOfTheTableInTheFrame()
{
    const EditGridFixture f;
    QCOMPARE(f.editor->parentWidget(), f.grid);
    QCOMPARE(f.grid->table()->parentWidget(), f.grid);
    QVERIFY(f.editor->isHidden());
}

void TestEditing::otherInputControlsAreNotTaken()
{
    EditGridFixture f;
    f.show();
    QPushButton button(f.window.get());
    f.edit->setInputObject(&button);
    QVERIFY(!f.edit->InputObject());
    QCOMPARE(button.parentWidget(), f.window.get());
    f.edit->BeginEdit();
    QVERIFY(f.takeEvents().isEmpty());
    f.edit->setInputObject(f.editor);
    QCOMPARE(f.edit->InputObject(), f.editor);
    f.edit->setInputObject(nullptr);
    QVERIFY(!f.edit->InputObject());
}

void TestEditing::theComboEditorSelectsTheClosestEntry_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("entry");
    QTest::newRow("equal") << u"Sand"_qs << 2;
    QTest::newRow("longest common beginning") << u"Kiesig"_qs << 1;
    QTest::newRow("earliest in a tie") << u"Kalk"_qs << 0;
    QTest::newRow("nothing shared") << u"Ton"_qs << -1;
    QTest::newRow("empty") << QString() << -1;
}

void TestEditing::theComboEditorSelectsTheClosestEntry()
{
    QFETCH(const QString, text);
    QFETCH(const int, entry);
    EditGridFixture f;
    auto *combo = new QComboBox(f.window.get());
    combo->addItems({u"Kies grob"_qs, u"Kiesi"_qs, u"Sand"_qs, u"Sander"_qs});
    combo->setCurrentIndex(3);
    f.edit->setInputObject(combo);
    f.show();
    f.grid->setTextMatrix(1, 0, text);
    f.edit->BeginEdit();
    QVERIFY(combo->isVisible());
    QVERIFY(combo->hasFocus());
    QCOMPARE(combo->currentIndex(), entry);
}

void TestEditing::aComboEditorCommitsTheChosenEntry()
{
    EditGridFixture f;
    auto *combo = new QComboBox(f.window.get());
    combo->addItems({u"Kies"_qs, u"Sand"_qs});
    f.edit->setInputObject(combo);
    f.show();
    f.grid->setTextMatrix(1, 0, u"Kies"_qs);
    f.edit->BeginEdit();
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"Sand"_qs);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 1));
    f.edit->BeginEdit();
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Escape);
    QCOMPARE(f.grid->textMatrix(1, 1), u"r1c1"_qs);
    f.type(u"S"_qs);
    QCOMPARE(combo->currentText(), u"Sand"_qs);
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 1), u"Sand"_qs);
}

void TestEditing::aComboEditorThatNobodyTouchedChangesNothing()
{
    EditGridFixture f;
    auto *combo = new QComboBox(f.window.get());
    combo->addItems({u"Kies"_qs, u"Sand"_qs});
    f.edit->setInputObject(combo);
    f.show();
    f.grid->setTextMatrix(1, 0, u"Ton"_qs);
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"Ton"_qs);
    f.grid->setCell(1, 0);
    f.grid->setTextMatrix(1, 0, u"Kiesel"_qs);
    f.edit->BeginEdit();
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), u"Kiesel"_qs);
    // Enter confirms the entry that is seen.
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"Kies"_qs);
}

void TestEditing::focusColorsAreTheEditorsWhileItIsShown()
{
    EditGridFixture f;
    const QPalette own = f.editor->palette();
    f.edit->FocusColorsSet(0xFFFFC0, 0x000080);
    f.show();
    f.edit->BeginEdit();
    QCOMPARE(f.editor->palette().color(QPalette::Base), QColor(0xFF, 0xFF, 0xC0));
    QCOMPARE(f.editor->palette().color(QPalette::Text), QColor(0, 0, 0x80));
    f.key(Qt::Key_Escape);
    QCOMPARE(f.editor->palette().color(QPalette::Base), own.color(QPalette::Base));

    const auto cellColor = [&f] {
        const QPoint inside = f.cellCentre(1, 0) + QPoint(30, 0);
        return f.grid->table()->viewport()->grab().toImage().pixelColor(inside);
    };
    QCOMPARE(cellColor(), QColor(0xFF, 0xFF, 0xC0));
    f.edit->setHandleFocusColors(false);
    QCOMPARE(cellColor(), f.grid->palette().color(QPalette::Base));
    f.edit->setHandleFocusColors(true);
    QCOMPARE(cellColor(), QColor(0xFF, 0xFF, 0xC0));
    f.edit->FocusColorsSet(-1, -1);
    QCOMPARE(cellColor(), f.grid->palette().color(QPalette::Base));
}

void TestEditing::itemDataStaysWithItsNumbers()
{
    EditGridFixture f;
    f.edit->setItemDataMatrix(3, 5, 42);
    f.edit->setItemDataMatrix(35, 0, u"anders"_qs);
    f.edit->RowsDel(1, 1);
    QCOMPARE(f.edit->ItemDataMatrix(3, 5), QVariant(42));
    QCOMPARE(f.edit->ItemDataMatrix(35, 0), QVariant(u"anders"_qs));
    QVERIFY(!f.edit->ItemDataMatrix(5, 3).isValid());
    f.edit->ItemDataMatrixClear();
    QVERIFY(!f.edit->ItemDataMatrix(3, 5).isValid());
}

void TestEditing::anUnchangedTextOfTwoLinesStays()
{
    EditGridFixture f;
    f.show();
    f.grid->setTextMatrix(1, 0, u"oben\nunten"_qs);
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"oben\nunten"_qs);
}

void TestEditing::whatIsPastedIntoTheEditorIsCleaned()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.editor->selectAll();
    f.editor->insert(u"Feld\tA\u0007\r\n"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"Feld  A"_qs);
}

void TestEditing::aLetterThatBeginsNoEntryKeepsTheText()
{
    EditGridFixture f;
    auto *combo = new QComboBox(f.window.get());
    combo->addItems({u"Kies"_qs, u"Sand"_qs});
    f.edit->setInputObject(combo);
    f.show();
    f.grid->setTextMatrix(1, 0, u"Kies"_qs);
    f.type(u"x"_qs);
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), u"Kies"_qs);
}

void TestEditing::anEditOfFormerContentsReachesNoOtherRow()
{
    EditGridFixture f;
    f.show();
    f.type(u"neu"_qs);
    f.grid->setSourcedRows(3, [](int) { return QStringList{u"a"_qs, u"b"_qs, u"c"_qs}; });
    f.key(Qt::Key_Return);
    for (int row = 1; row < f.grid->rows(); ++row)
        QVERIFY(f.grid->textMatrix(row, 0) != u"neu"_qs);
}

void TestEditing::anotherGridTakesOver()
{
    EditGridFixture f;
    auto *second = new GridControl(f.window.get());
    f.window->layout()->addWidget(second);
    f.edit->setMSFlexGrid(second);
    f.show();
    f.type(u"x"_qs);
    QVERIFY(f.takeEvents().isEmpty());
    second->setFocus();
    f.type(u"neu"_qs);
    QCOMPARE(f.editor->parentWidget(), second);
    f.key(Qt::Key_Return);
    QCOMPARE(second->textMatrix(1, 0), u"neu"_qs);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeCellEdit 1,0 "_qs, u"AfterCellEdit 1,0 neu"_qs,
                                          u"ProcessReady"_qs}));
}

void TestEditing::theNextEditGivesTheFocusToNoOtherControl()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    QList<QWidget *> focused;
    const QObject here;
    connect(qApp, &QApplication::focusChanged, &here,
            [&](QWidget *, QWidget *now) { focused.append(now); });
    f.grid->setCell(3, 1);
    f.edit->BeginEdit();
    QCOMPARE(focused, QList<QWidget *>({f.grid->table(), f.editor}));
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
    QCOMPARE(f.editor->text(), u"r3c1"_qs);
}

void TestEditing::aColumnRemovedByAHandlerIsNotOffered()
{
    EditGridFixture f;
    f.edit->setGridMultibleEdit(true);
    f.show();
    f.grid->setCursorCells({1, 0, 2, 3});
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&f] { f.grid->setCols(2); });
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    f.takeEvents();
    f.key(Qt::Key_Return);
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 1,0 x"_qs, u"AfterCellEdit 1,1 x"_qs,
                                          u"AfterCellEdit 2,0 x"_qs, u"AfterCellEdit 2,1 x"_qs,
                                          u"ProcessReady"_qs}));
}

void TestEditing::theEditedColumnRemovedWhileEditingDiscardsTheEdit()
{
    EditGridFixture f;
    f.show();
    f.grid->setCell(1, 3);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.grid->setCols(2);
    QTRY_VERIFY(!f.edit->isEditing());
    QCOMPARE(f.takeEvents(), QStringList({u"CancelCellEdit 1,1"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.rowTexts(1), QStringList({u"r1c0"_qs, u"r1c1"_qs}));
}

void TestEditing::aTextLongerThanTheEditorTakesStays()
{
    EditGridFixture f;
    f.editor->setMaxLength(3);
    f.show();
    f.edit->BeginEdit();
    QCOMPARE(f.editor->text(), u"r1c"_qs);
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

namespace {

QComboBox *editableList(EditGridFixture &f)
{
    auto *combo = new QComboBox(f.window.get());
    combo->setEditable(true);
    combo->addItems({u"Kies"_qs, u"Sand"_qs});
    f.edit->setInputObject(combo);
    f.show();
    return combo;
}

} // namespace

void TestEditing::anEditableListShowsTheCellsText()
{
    EditGridFixture f;
    const QComboBox *combo = editableList(f);
    for (const QString &text : {u"Ton"_qs, u"Kiesel"_qs, u"kies"_qs, QString()}) {
        for (const Qt::Key leave : {Qt::Key_Return, Qt::Key_Tab}) {
            f.grid->setCell(1, 0);
            f.grid->setTextMatrix(1, 0, text);
            f.key(Qt::Key_F2);
            QCOMPARE(combo->currentText(), text);
            f.key(leave);
            QCOMPARE(f.grid->textMatrix(1, 0), text);
        }
        f.grid->setCell(1, 0);
        f.key(Qt::Key_F2);
        f.behind->setFocus();
        QCOMPARE(f.grid->textMatrix(1, 0), text);
        f.grid->setFocus();
    }
    f.grid->setTextMatrix(1, 0, u"Kies"_qs);
    f.key(Qt::Key_Return);
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"Sand"_qs);
}

void TestEditing::anEditableListThatIsEmptiedEmptiesTheCell_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("byBackspace");
    QTest::newRow("an entry, Backspace on the grid") << u"Kies"_qs << true;
    QTest::newRow("no entry, Backspace on the grid") << u"Ton"_qs << true;
    QTest::newRow("an entry, cleared") << u"Kies"_qs << false;
    QTest::newRow("no entry, cleared") << u"Ton"_qs << false;
}

void TestEditing::anEditableListThatIsEmptiedEmptiesTheCell()
{
    QFETCH(const QString, text);
    QFETCH(const bool, byBackspace);
    EditGridFixture f;
    const QComboBox *combo = editableList(f);
    f.grid->setTextMatrix(1, 0, text);
    f.key(byBackspace ? Qt::Key_Backspace : Qt::Key_Return);
    if (!byBackspace)
        f.key(Qt::Key_Delete);
    QCOMPARE(combo->currentText(), QString());
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), QString());
}

void TestEditing::withAutoRowAddASourcedGridGetsAnEmptyRow()
{
    EditGridFixture f(2, 2);
    f.edit->setGridAutoRowAdd(true);
    f.grid->setSourcedRows(4, [](int row) {
        return QStringList{u"a%1"_qs.arg(row), u"b%1"_qs.arg(row)};
    });
    f.show();
    f.grid->setCell(3, 1);
    f.edit->BeginEdit();
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0), QStringList({u"a1"_qs, u"a2"_qs, u"a3"_qs, QString()}));
    QCOMPARE(f.rowTexts(4), QStringList({QString(), QString()}));
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(4, 0));
}

void TestEditing::theEditorsTextStandsWhereTheCellShowsIt_data()
{
    QTest::addColumn<int>("fontPixels");
    QTest::addColumn<int>("alignment");
    for (int pixels = 11; pixels <= 18; ++pixels) {
        QTest::addRow("%d pixels, left", pixels) << pixels << int(Qt::AlignLeft);
        QTest::addRow("%d pixels, right", pixels) << pixels << int(Qt::AlignRight);
    }
}

void TestEditing::theEditorsTextStandsWhereTheCellShowsIt()
{
    QFETCH(const int, fontPixels);
    QFETCH(const int, alignment);
    EditGridFixture f;
    QFont font = f.window->font();
    font.setPixelSize(fontPixels);
    f.window->setFont(font);
    f.grid->setColAlignment(1, Qt::Alignment(alignment));
    f.grid->setTextMatrix(1, 1, u"M"_qs);
    f.grid->setCell(1, 1);
    f.show();
    // The inside of the frame, and of it the letter without the caret.
    const auto inked = [&f] {
        const QRect inside = f.grid->cellRect(1, 1).adjusted(3, 3, -3, -3);
        const QImage image = f.grid->grab(inside).toImage();
        const QRgb back = f.grid->palette().color(QPalette::Base).rgb();
        QRect ink;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qGray(image.pixel(x, y)) < qGray(back) / 2)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        return ink;
    };
    const QRect shown = inked();
    QVERIFY(shown.isValid());
    f.key(Qt::Key_F2);
    f.editor->setReadOnly(true); // takes the caret away
    const QRect edited = inked();
    QCOMPARE(edited.top(), shown.top());
    QCOMPARE(edited.bottom(), shown.bottom());
    // Letters may begin between two pixels.
    QVERIFY(qAbs(edited.left() - shown.left()) <= 1);
    QVERIFY(qAbs(edited.right() - shown.right()) <= 1);
}

REGISTER_TEST(TestEditing)
#include "tst_editing.moc"
