#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

/// Copy, cut, the row-inserting paste, and a grid's texts as a whole.
class TestClipboard : public QObject
{
    Q_OBJECT

private slots:
    void aCopiedLastRowEndsInALineBreakToo();
    void copyTakesWholeRowsUnlessToldOtherwise();
    void copyTakesAnyGivenBound_data();
    void copyTakesAnyGivenBound();
    void cutRemovesWholeRows();
    void cutClearsCellsWithoutWholeRows();
    void cutRemovesExactlyTheRowsItCopied_data();
    void cutRemovesExactlyTheRowsItCopied();
    void cutOfNothingChangesNothing_data();
    void cutOfNothingChangesNothing();
    void threeLinesPastedAboveRowTwoBecomeRowsTwoToFour();
    void pasteRaisesNoEvent();
    void lineBreaksAtTheEndInsertNoRows_data();
    void lineBreaksAtTheEndInsertNoRows();
    void pasteOfNothingInsertsNothing();
    void pasteWithWholeRowsBeginsAtTheFirstColumnThatIsNotFixed();
    void pasteWithoutWholeRowsBeginsAtTheLeftColumn();
    void pasteDropsWhatGoesBeyondTheLastColumn();
    void pasteAboveTheTopOfTheSelection();
    void aRoundTripBetweenTwoGridsKeepsEveryText();
    void gridTextGivesAllCells();
    void gridTextTakesAllCells();
};

void TestClipboard::aCopiedLastRowEndsInALineBreakToo()
{
    EditGridFixture f(3, 3);
    f.edit->setGridText(u"a\tb\tc\r\nd\te\tf\r\n"_qs, true);
    f.edit->setClipboardDoWholeLine(false);
    f.grid->setCursorCells({2, 2, 1, 0});
    f.edit->ClipboardCopy();
    QCOMPARE(f.clipboard, u"a\tb\tc\r\nd\te\tf\r\n"_qs);
}

void TestClipboard::copyTakesWholeRowsUnlessToldOtherwise()
{
    EditGridFixture f(4, 4, 1);
    f.grid->setCursorCells({2, 2, 2, 2});
    f.edit->ClipboardCopy();
    QCOMPARE(f.clipboard, u"r2c1\tr2c2\tr2c3\r\n"_qs);
    f.edit->setClipboardDoWholeLine(false);
    f.edit->ClipboardCopy();
    QCOMPARE(f.clipboard, u"r2c2\r\n"_qs);
}

void TestClipboard::copyTakesAnyGivenBound_data()
{
    QTest::addColumn<QList<int>>("bounds"); // start column and row, end column and row; -1 none
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QList{-1, -1, -1, -1} << u"r2c1\tr2c2\r\n"_qs;
    QTest::newRow("start column") << QList{2, -1, -1, -1} << u"r2c2\r\n"_qs;
    QTest::newRow("start row") << QList{-1, 1, -1, -1} << u"r1c1\tr1c2\r\nr2c1\tr2c2\r\n"_qs;
    QTest::newRow("end column") << QList{-1, -1, 1, -1} << u"r2c1\r\n"_qs;
    QTest::newRow("end row") << QList{-1, -1, -1, 3} << u"r2c1\tr2c2\r\nr3c1\tr3c2\r\n"_qs;
    QTest::newRow("all, header too") << QList{0, 0, 1, 1} << u"r0c0\tr0c1\r\nr1c0\tr1c1\r\n"_qs;
    QTest::newRow("beyond the grid") << QList{-1, 3, 99, 99} << u"r3c1\tr3c2\r\n"_qs;
}

void TestClipboard::copyTakesAnyGivenBound()
{
    QFETCH(const QList<int>, bounds);
    QFETCH(const QString, text);
    EditGridFixture f(4, 3);
    f.edit->setClipboardDoWholeLine(false);
    f.grid->setCursorCells({2, 1, 2, 2});
    const auto given = [&](int i) {
        return bounds.at(i) < 0 ? std::nullopt : std::optional(bounds.at(i));
    };
    f.edit->ClipboardCopy(given(0), given(1), given(2), given(3));
    QCOMPARE(f.clipboard, text);
}

void TestClipboard::cutRemovesWholeRows()
{
    EditGridFixture f(5, 2);
    f.grid->setCursorCells({3, 1, 2, 1});
    f.edit->ClipboardCut();
    QCOMPARE(f.clipboard, u"r2c0\tr2c1\r\nr3c0\tr3c1\r\n"_qs);
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r4c0"_qs}));
}

void TestClipboard::cutClearsCellsWithoutWholeRows()
{
    EditGridFixture f(3, 3);
    f.edit->setClipboardDoWholeLine(false);
    f.grid->setCursorCells({1, 1, 1, 2});
    f.edit->ClipboardCut();
    QCOMPARE(f.clipboard, u"r1c1\tr1c2\r\n"_qs);
    QCOMPARE(f.rowTexts(1), QStringList({u"r1c0"_qs, QString(), QString()}));
    QCOMPARE(f.takeEvents(), QStringList({u"CellClear 1,1"_qs, u"CellClear 1,2"_qs}));
}

void TestClipboard::cutRemovesExactlyTheRowsItCopied_data()
{
    QTest::addColumn<int>("startRow");
    QTest::addColumn<int>("endRow");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("both") << 1 << 2 << QStringList({u"r3c0"_qs, u"r4c0"_qs, u"r5c0"_qs});
    QTest::newRow("start only") << 2 << -1 << QStringList({u"r1c0"_qs, u"r5c0"_qs});
    QTest::newRow("end only") << -1 << 5 << QStringList({u"r1c0"_qs, u"r2c0"_qs});
}

void TestClipboard::cutRemovesExactlyTheRowsItCopied()
{
    QFETCH(const int, startRow);
    QFETCH(const int, endRow);
    QFETCH(const QStringList, left);
    EditGridFixture f(6, 1);
    f.grid->setCursorCells({3, 0, 4, 0});
    const auto given = [](int row) { return row < 0 ? std::nullopt : std::optional(row); };
    f.edit->ClipboardCut({}, given(startRow), {}, given(endRow));
    QCOMPARE(f.colTexts(0), left);
    QCOMPARE(f.clipboard.count(u'\n') + left.size(), 5);
}

void TestClipboard::threeLinesPastedAboveRowTwoBecomeRowsTwoToFour()
{
    EditGridFixture f(4, 2);
    f.clipboard = u"a\tb\r\nc\td\r\ne\tf\r\n"_qs;
    f.grid->setCell(2, 1);
    f.edit->ClipboardPaste();
    QCOMPARE(f.colTexts(0),
             QStringList({u"r1c0"_qs, u"a"_qs, u"c"_qs, u"e"_qs, u"r2c0"_qs, u"r3c0"_qs}));
    QCOMPARE(f.colTexts(1),
             QStringList({u"r1c1"_qs, u"b"_qs, u"d"_qs, u"f"_qs, u"r2c1"_qs, u"r3c1"_qs}));
}

void TestClipboard::pasteRaisesNoEvent()
{
    EditGridFixture f;
    f.clipboard = u"a\tb\r\n"_qs;
    f.edit->ClipboardPaste();
    QVERIFY(f.takeEvents().isEmpty());
}

void TestClipboard::lineBreaksAtTheEndInsertNoRows_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("inserted");
    QTest::newRow("several") << u"a\r\n\r\n\n\r"_qs << QStringList(u"a"_qs);
    QTest::newRow("none") << u"a"_qs << QStringList(u"a"_qs);
    QTest::newRow("inside they count")
        << u"a\r\n\r\nb\r\n"_qs << QStringList({u"a"_qs, QString(), u"b"_qs});
    QTest::newRow("LF alone") << u"a\nb\n"_qs << QStringList({u"a"_qs, u"b"_qs});
    QTest::newRow("CR alone") << u"a\rb"_qs << QStringList({u"a"_qs, u"b"_qs});
}

void TestClipboard::lineBreaksAtTheEndInsertNoRows()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, inserted);
    EditGridFixture f(2, 1);
    f.clipboard = text;
    f.edit->ClipboardPaste();
    QCOMPARE(f.colTexts(0), inserted + QStringList(u"r1c0"_qs));
}

void TestClipboard::pasteOfNothingInsertsNothing()
{
    EditGridFixture f;
    f.clipboard = QString();
    f.edit->ClipboardPaste();
    f.clipboard = u"\r\n\r\n"_qs;
    f.edit->ClipboardPaste();
    QCOMPARE(f.grid->rows(), 5);
}

void TestClipboard::pasteWithWholeRowsBeginsAtTheFirstColumnThatIsNotFixed()
{
    EditGridFixture f(3, 4, 2);
    f.clipboard = u"a\tb"_qs;
    f.grid->setCell(1, 3);
    f.edit->ClipboardPaste();
    QCOMPARE(f.grid->textMatrix(1, 1), QString());
    QCOMPARE(f.rowTexts(1), QStringList({u"a"_qs, u"b"_qs}));
    QCOMPARE(f.grid->col(), 2);
}

void TestClipboard::pasteWithoutWholeRowsBeginsAtTheLeftColumn()
{
    EditGridFixture f(3, 4);
    f.edit->setClipboardDoWholeLine(false);
    f.clipboard = u"a\tb"_qs;
    f.grid->setCursorCells({1, 3, 1, 2});
    f.edit->ClipboardPaste();
    QCOMPARE(f.rowTexts(1), QStringList({QString(), QString(), u"a"_qs, u"b"_qs}));
}

void TestClipboard::pasteDropsWhatGoesBeyondTheLastColumn()
{
    EditGridFixture f(2, 2);
    f.clipboard = u"a\tb\tc\td"_qs;
    f.edit->ClipboardPaste();
    QCOMPARE(f.rowTexts(1), QStringList({u"a"_qs, u"b"_qs}));
    f.grid->setCols(3);
    QCOMPARE(f.grid->textMatrix(1, 2), QString());
}

void TestClipboard::pasteAboveTheTopOfTheSelection()
{
    EditGridFixture f(5, 1);
    f.clipboard = u"neu"_qs;
    f.grid->setCursorCells({4, 0, 2, 0});
    f.edit->ClipboardPaste();
    QCOMPARE(f.grid->textMatrix(2, 0), u"neu"_qs);
}

void TestClipboard::aRoundTripBetweenTwoGridsKeepsEveryText()
{
    EditGridFixture from(4, 3);
    EditGridFixture to(4, 3);
    from.edit->setGridText(u"1,5\tÄ ö ß\t\r\n\t \t-0,5\r\n1.234,5\t\"\ta;b\r\n"_qs, true);
    from.grid->setCursorCells({1, 0, 3, 2});
    from.edit->ClipboardCopy();
    to.clipboard = from.clipboard;
    to.edit->ClipboardPaste();
    to.edit->RowsDel(4, 6);
    QCOMPARE(to.edit->GridText(), from.edit->GridText());

    EditGridFixture over(4, 3);
    over.clipboard = from.clipboard;
    over.edit->ClipboardPasteOver();
    QCOMPARE(over.edit->GridText(), from.edit->GridText());
}

void TestClipboard::gridTextGivesAllCells()
{
    EditGridFixture f(3, 2, 1);
    QCOMPARE(f.edit->GridText(), u"r1c1\r\nr2c1\r\n"_qs);
    QCOMPARE(f.edit->GridText(true), u"r0c0\tr0c1\r\nr1c0\tr1c1\r\nr2c0\tr2c1\r\n"_qs);
    QCOMPARE(f.edit->GridText(true, u";"_qs, u"|"_qs), u"r0c0;r0c1|r1c0;r1c1|r2c0;r2c1|"_qs);
    QCOMPARE(f.edit->GridText(2, 1), u"r2c1"_qs);
    QCOMPARE(f.edit->GridText(9, 9), QString());
}

void TestClipboard::gridTextTakesAllCells()
{
    EditGridFixture f(3, 2);
    f.edit->setGridText(u"a\tb\tzu viel\r\nc\r\nd\te"_qs, true);
    QCOMPARE(f.edit->GridText(), u"a\tb\r\nc\t\r\nd\te\r\n"_qs);
    f.edit->setGridText(u"a;b;c|"_qs, false, false, u";"_qs, u"|"_qs);
    QCOMPARE(f.edit->GridText(), u"a\tb\tc\r\n"_qs);
    f.edit->setGridText(QString(), true);
    QCOMPARE(f.edit->GridText(), u"\t\t\r\n"_qs);
    f.edit->setGridText(u"K1\tK2\r\n1\t2\r\n"_qs, true, true);
    QCOMPARE(f.edit->GridText(true), u"K1\tK2\t\r\n1\t2\t\r\n"_qs);
    f.edit->setGridText(1, 1, u"zwei"_qs);
    QCOMPARE(f.edit->GridText(1, 1), u"zwei"_qs);
    QVERIFY(f.takeEvents().isEmpty());
}

void TestClipboard::cutOfNothingChangesNothing_data()
{
    QTest::addColumn<bool>("wholeLine");
    QTest::addColumn<QList<int>>("bounds"); // start column and row, end column and row; -1 none
    QTest::newRow("rows that cross") << false << QList{-1, 3, -1, 2};
    QTest::newRow("columns that cross") << false << QList{1, -1, 0, -1};
    QTest::newRow("whole rows that cross") << true << QList{-1, 3, -1, 2};
    QTest::newRow("no column of whole rows") << true << QList{9, -1, -1, -1};
}

void TestClipboard::cutOfNothingChangesNothing()
{
    QFETCH(const bool, wholeLine);
    QFETCH(const QList<int>, bounds);
    EditGridFixture f(5, 2);
    f.edit->setClipboardDoWholeLine(wholeLine);
    f.clipboard = u"vorher"_qs;
    const QString before = f.edit->GridText(true);
    const auto given = [&](int i) {
        return bounds.at(i) < 0 ? std::nullopt : std::optional(bounds.at(i));
    };
    f.edit->ClipboardCut(given(0), given(1), given(2), given(3));
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.edit->GridText(true), before);
    QCOMPARE(f.clipboard, u"vorher"_qs);
}

REGISTER_TEST(TestClipboard)
#include "tst_clipboard.moc"
