#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include <QComboBox>
#include <QTableView>

/// Edits whose grid, editor, rows or controller go away in the middle.
class TestEditLifetime : public QObject
{
    Q_OBJECT

private slots:
    void destroyingTheControllerRaisesNothing();
    void destroyingTheGridRaisesNothing();
    void destroyingTheWindowRaisesNothing();
    void detachingTheGridRaisesNothing();
    void detachingTheEditorRaisesNothing();
    void anEditorDestroyedInMidEditLeavesAWorkingGrid();
    void anEditorHiddenInMidEditCommits();
    void aPageHiddenInMidEditLosesNothing();
    void aMinimisedWindowKeepsTheEditOpen();
    void rowsRemovedByAHandlerDuringACommitShiftNoText();
    void theRowRemovedByAHandlerTakesNoText();
    void rowsRemovedDuringMultipleEditShiftNoText();
    void rowsInsertedWhileEditingMoveTheEditorAlong();
    void theEditedRowRemovedWhileEditingDiscardsTheEdit();
    void theGridDeletedInAHandler_data();
    void theGridDeletedInAHandler();
    void theControllerDeletedInAHandler_data();
    void theControllerDeletedInAHandler();
    void theEditorDeletedInAHandler();
    void theGridDetachedInAHandlerEndsTheCommit();
    void anotherGridAttachedInAHandlerTakesNoText_data();
    void anotherGridAttachedInAHandlerTakesNoText();
    void theGridMayGoWhenTheCurrentCellMoves_data();
    void theGridMayGoWhenTheCurrentCellMoves();
    void theControllerMayGoWhenTheFocusMoves_data();
    void theControllerMayGoWhenTheFocusMoves();
    void anEditorChangedBetweenKindsWorks();
    void twoGridsShareNothing();
};

void TestEditLifetime::destroyingTheControllerRaisesNothing()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.edit.reset();
    QVERIFY(f.takeEvents().isEmpty());
    QVERIFY(!f.editor->isVisible());
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    QVERIFY(f.grid->table()->hasFocus());
}

void TestEditLifetime::destroyingTheGridRaisesNothing()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.modelTester.reset();
    delete f.grid;
    QVERIFY(f.takeEvents().isEmpty());
    QVERIFY(!f.edit->MSFlexGrid());
    QVERIFY(!f.edit->InputObject());
    f.edit->EndEdit(false);
    f.edit->BeginEdit();
    QVERIFY(f.takeEvents().isEmpty());
}

void TestEditLifetime::destroyingTheWindowRaisesNothing()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.modelTester.reset();
    f.window.reset();
    QVERIFY(f.takeEvents().isEmpty());
}

void TestEditLifetime::detachingTheGridRaisesNothing()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.edit->setMSFlexGrid(nullptr);
    QVERIFY(f.takeEvents().isEmpty());
    QVERIFY(!f.editor->isVisible());
    f.type(u"x"_qs);
    f.key(Qt::Key_Delete);
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    f.edit->setMSFlexGrid(f.grid);
    f.edit->BeginEdit();
    QVERIFY(f.editor->hasFocus());
}

void TestEditLifetime::detachingTheEditorRaisesNothing()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.takeEvents();
    f.edit->setInputObject(nullptr);
    QVERIFY(f.takeEvents().isEmpty());
    QVERIFY(!f.editor->isVisible());
    f.editor->show();
    f.editor->setFocus();
    f.key(Qt::Key_Return);
    f.behind->setFocus();
    QVERIFY(f.takeEvents().isEmpty());
}

void TestEditLifetime::anEditorDestroyedInMidEditLeavesAWorkingGrid()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    delete f.editor;
    QVERIFY(!f.edit->InputObject());
    QVERIFY(!f.edit->isEditing());
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    QVERIFY(f.grid->table()->hasFocus());
    auto *next = new QLineEdit(f.window.get());
    f.edit->setInputObject(next);
    f.edit->BeginEdit();
    QVERIFY(next->hasFocus());
}

void TestEditLifetime::anEditorHiddenInMidEditCommits()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.editor->hide();
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 1,0 neu"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
}

void TestEditLifetime::aPageHiddenInMidEditLosesNothing()
{
    EditGridFixture f;
    auto *page = new QWidget;
    delete f.window->layout()->replaceWidget(f.grid, page);
    f.grid->setParent(page);
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    page->hide();
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
    QVERIFY(!f.edit->isEditing());
    page->show();
    QVERIFY(!f.editor->isVisible());
}

void TestEditLifetime::aMinimisedWindowKeepsTheEditOpen()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.window->hide();
    f.window->show();
    QVERIFY(f.edit->isEditing());
    QCOMPARE(f.editor->text(), u"neu"_qs);
    QVERIFY(f.editor->isVisible());
}

void TestEditLifetime::rowsRemovedByAHandlerDuringACommitShiftNoText()
{
    EditGridFixture f(5, 1);
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&f] { f.grid->removeItem(1); });
    f.grid->setCell(3, 0);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0), QStringList({u"r2c0"_qs, u"neu"_qs, u"r4c0"_qs}));
}

void TestEditLifetime::theRowRemovedByAHandlerTakesNoText()
{
    EditGridFixture f(5, 1);
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [&f](int row) { f.grid->removeItem(row); });
    f.grid->setCell(4, 0);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r2c0"_qs, u"r3c0"_qs}));
    QCOMPARE(f.events.last(), u"ProcessReady"_qs);
    QCOMPARE(f.grid->row(), 3);
}

void TestEditLifetime::rowsRemovedDuringMultipleEditShiftNoText()
{
    EditGridFixture f(7, 1);
    f.edit->setGridMultibleEdit(true);
    f.show();
    bool done = false;
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&](int row) {
        if (row == 3 && !std::exchange(done, true))
            f.grid->removeItem(3);
    });
    f.grid->setCursorCells({2, 0, 4, 0});
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"x"_qs, u"x"_qs, u"r5c0"_qs, u"r6c0"_qs}));
}

void TestEditLifetime::rowsInsertedWhileEditingMoveTheEditorAlong()
{
    EditGridFixture f(5, 1);
    f.show();
    f.grid->setCell(2, 0);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.grid->addItem(u"oben"_qs, 1);
    QTRY_VERIFY(f.grid->cellRect(3, 0).contains(f.editor->geometry()));
    f.key(Qt::Key_Return);
    QCOMPARE(f.colTexts(0),
             QStringList({u"oben"_qs, u"r1c0"_qs, u"neu"_qs, u"r3c0"_qs, u"r4c0"_qs}));
}

void TestEditLifetime::theEditedRowRemovedWhileEditingDiscardsTheEdit()
{
    EditGridFixture f(5, 1);
    f.show();
    f.grid->setCell(2, 0);
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    f.grid->removeItem(2);
    QTRY_VERIFY(!f.edit->isEditing());
    QCOMPARE(f.takeEvents(), QStringList({u"CancelCellEdit 2,0"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r3c0"_qs, u"r4c0"_qs}));
}

void TestEditLifetime::theGridDeletedInAHandler_data()
{
    QTest::addColumn<QString>("event");
    for (const char *name : {"BeforeCellEdit", "AfterCellEdit", "CancelCellEdit", "ProcessReady",
                             "BeforeRowAdd", "RowAdd", "BeforeRowRemove", "RowRemove", "CellClear"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

namespace {

/// Lets \a act run at the first event of that name.
void onEvent(EditGridFixture &f, const QString &name, const std::function<void()> &act)
{
    clsEditGrid *eg = f.edit.get();
    const auto when = [&f, name, act](const char *event) {
        return [&f, name, act, is = QString::fromLatin1(event)] {
            if (is == name && f.edit)
                act();
        };
    };
    QObject::connect(eg, &clsEditGrid::BeforeCellEdit, f.behind, when("BeforeCellEdit"));
    QObject::connect(eg, &clsEditGrid::AfterCellEdit, f.behind, when("AfterCellEdit"));
    QObject::connect(eg, &clsEditGrid::CancelCellEdit, f.behind, when("CancelCellEdit"));
    QObject::connect(eg, &clsEditGrid::ProcessReady, f.behind, when("ProcessReady"));
    QObject::connect(eg, &clsEditGrid::BeforeRowAdd, f.behind, when("BeforeRowAdd"));
    QObject::connect(eg, &clsEditGrid::RowAdd, f.behind, when("RowAdd"));
    QObject::connect(eg, &clsEditGrid::BeforeRowRemove, f.behind, when("BeforeRowRemove"));
    QObject::connect(eg, &clsEditGrid::RowRemove, f.behind, when("RowRemove"));
    QObject::connect(eg, &clsEditGrid::CellClear, f.behind, when("CellClear"));
}

/// Everything that raises events, as long as there is something to do it with.
void doEverything(EditGridFixture &f)
{
    const auto alive = [&f] { return f.edit && f.edit->MSFlexGrid(); };
    f.edit->setGridAutoRowAdd(true);
    f.edit->setGridMultibleEdit(true);
    f.grid->setCursorCells({4, 0, 3, 1});
    f.edit->BeginEdit();
    if (alive())
        f.edit->EndEdit(true);
    if (alive())
        f.edit->BeginEdit();
    if (alive())
        f.edit->EndEdit(false);
    if (alive())
        f.edit->RowsAdd(1, 2);
    if (alive())
        f.edit->RowsDel(1, 2);
    if (alive())
        f.edit->SelClear();
}

} // namespace

void TestEditLifetime::theGridDeletedInAHandler()
{
    QFETCH(const QString, event);
    EditGridFixture f;
    f.show();
    f.modelTester.reset();
    const QPointer<GridControl> grid = f.grid;
    onEvent(f, event, [&] { delete grid; });
    doEverything(f);
    QVERIFY(!grid);
    QVERIFY(!f.edit->MSFlexGrid());
    QVERIFY(!f.edit->isEditing());
    QVERIFY(f.events.last().startsWith(event));
}

void TestEditLifetime::theControllerDeletedInAHandler_data()
{
    theGridDeletedInAHandler_data();
}

void TestEditLifetime::theControllerDeletedInAHandler()
{
    QFETCH(const QString, event);
    EditGridFixture f;
    f.show();
    onEvent(f, event, [&f] { f.edit.reset(); });
    doEverything(f);
    QVERIFY(!f.edit);
    QVERIFY(f.grid->redraw());
    QVERIFY(!f.editor->isVisible());
    QVERIFY(f.events.last().startsWith(event));
}

void TestEditLifetime::theEditorDeletedInAHandler()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this, [&f] { delete f.editor; });
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.edit->EndEdit(false);
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
    QCOMPARE(f.events.last(), u"ProcessReady"_qs);
}

void TestEditLifetime::theGridDetachedInAHandlerEndsTheCommit()
{
    EditGridFixture f;
    f.show();
    connect(f.edit.get(), &clsEditGrid::AfterCellEdit, this,
            [&f] { f.edit->setMSFlexGrid(nullptr); });
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
    QCOMPARE(f.events.last(), u"AfterCellEdit 1,0 neu"_qs);
    QVERIFY(f.grid->redraw());
}

void TestEditLifetime::anEditorChangedBetweenKindsWorks()
{
    EditGridFixture f;
    auto *combo = new QComboBox(f.window.get());
    combo->setEditable(true);
    combo->addItem(u"Kies"_qs);
    f.show();
    f.edit->setInputObject(combo);
    f.type(u"S"_qs);
    f.type(u"and"_qs);
    QCOMPARE(combo->currentText(), u"Sand"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"Sand"_qs);
    f.edit->setInputObject(f.editor);
    f.type(u"Ton"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 1), u"Ton"_qs);
    QCOMPARE(f.events.filter(u"AfterCellEdit"_qs).size(), 2);
}

void TestEditLifetime::twoGridsShareNothing()
{
    EditGridFixture a;
    EditGridFixture b;
    a.show();
    a.edit->BeginEdit();
    a.type(u"neu"_qs);
    b.edit->EndEdit(false);
    b.edit->setActive(false);
    QVERIFY(a.edit->isEditing());
    QVERIFY(b.takeEvents().isEmpty());
}

void TestEditLifetime::anotherGridAttachedInAHandlerTakesNoText_data()
{
    QTest::addColumn<QString>("event");
    QTest::newRow("BeforeCellEdit") << u"BeforeCellEdit"_qs;
    QTest::newRow("AfterCellEdit") << u"AfterCellEdit"_qs;
    QTest::newRow("CancelCellEdit") << u"CancelCellEdit"_qs;
    QTest::newRow("BeforeRowAdd") << u"BeforeRowAdd"_qs;
}

void TestEditLifetime::anotherGridAttachedInAHandlerTakesNoText()
{
    QFETCH(const QString, event);
    EditGridFixture f;
    auto *other = new GridControl(f.window.get());
    other->setRows(5);
    other->setCols(4);
    f.window->layout()->addWidget(other);
    f.edit->setGridAutoRowAdd(true);
    f.show();
    f.grid->setCell(4, 1);
    other->setCell(4, 1);
    onEvent(f, event, [&] { f.edit->setMSFlexGrid(other); });
    f.edit->BeginEdit();
    if (f.edit->isEditing()) {
        f.type(u"neu"_qs);
        f.edit->EndEdit(event == u"CancelCellEdit"_qs);
    }
    QVERIFY(f.events.last().startsWith(event));
    QVERIFY(!f.edit->isEditing());
    QVERIFY(!f.editor->isVisible());
    QCOMPARE(f.grid->rows(), 5);
    QCOMPARE(other->rows(), 5);
    QCOMPARE(other->cursorCells(), GridCursor::at(4, 1));
    QCOMPARE(other->textMatrix(4, 1), QString());
    QVERIFY(f.grid->redraw());
}

void TestEditLifetime::theGridMayGoWhenTheCurrentCellMoves_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("editing");
    QTest::newRow("Enter") << int(Qt::Key_Return) << true;
    QTest::newRow("Tab in the editor") << int(Qt::Key_Tab) << true;
    QTest::newRow("Tab") << int(Qt::Key_Tab) << false;
    QTest::newRow("Down") << int(Qt::Key_Down) << false;
}

void TestEditLifetime::theGridMayGoWhenTheCurrentCellMoves()
{
    QFETCH(const int, key);
    QFETCH(const bool, editing);
    EditGridFixture f;
    f.show();
    f.modelTester.reset();
    if (editing)
        f.edit->BeginEdit();
    connect(f.grid, &GridControl::currentCellChanged, f.grid, [&f] { delete f.grid; });
    f.key(Qt::Key(key));
    QVERIFY(!f.edit->MSFlexGrid());
    QVERIFY(!f.events.contains(u"ProcessReady"_qs));
}

void TestEditLifetime::theControllerMayGoWhenTheFocusMoves_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("commit") << int(Qt::Key_Return);
    QTest::newRow("discard") << int(Qt::Key_Escape);
}

void TestEditLifetime::theControllerMayGoWhenTheFocusMoves()
{
    QFETCH(const int, key);
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    const QObject here;
    connect(qApp, &QApplication::focusChanged, &here, [&f] { f.edit.reset(); });
    f.key(Qt::Key(key));
    QVERIFY(!f.edit);
    QVERIFY(!f.editor->isVisible());
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

REGISTER_TEST(TestEditLifetime)
#include "tst_editlifetime.moc"
