#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include <QScrollBar>
#include <QTableView>

/// Real mouse events on a shown grid.
class TestGridMouse : public QObject
{
    Q_OBJECT

private slots:
    void aClickMakesTheCellCurrent();
    void dragSelectsFromWhereItBegan();
    void aSelectionDraggedDownEndsAtTheLastRow();
    void aMoveWithoutTheButtonEndsTheDrag();
    void shiftClickExtendsTheSelection();
    void aClickOnAFixedColumnSelectsTheRow();
    void aDoubleClickEdits();
    void aDoubleClickOnAFixedCellDoesNothing();
    void aClickDuringAnEditCommitsAndIsCurrent();
    void aClickDuringAnEditHitsTheCellThatWasSeen();
    void aClickOnAnotherControlCommitsAndKeepsItsFocus();
};

namespace {

QWidget *viewport(const EditGridFixture &f)
{
    return f.grid->table()->viewport();
}

void move(const EditGridFixture &f, QPoint to, Qt::MouseButtons held = Qt::LeftButton)
{
    QMouseEvent event(QEvent::MouseMove, to, viewport(f)->mapToGlobal(to), Qt::NoButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(viewport(f), &event);
}

} // namespace

void TestGridMouse::aClickMakesTheCellCurrent()
{
    EditGridFixture f;
    f.show();
    QTest::mouseClick(viewport(f), Qt::LeftButton, {}, f.cellCentre(3, 2));
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(3, 2));
    QVERIFY(f.takeEvents().isEmpty());
}

void TestGridMouse::dragSelectsFromWhereItBegan()
{
    EditGridFixture f;
    f.show();
    QTest::mousePress(viewport(f), Qt::LeftButton, {}, f.cellCentre(3, 2));
    move(f, f.cellCentre(1, 1));
    QTest::mouseRelease(viewport(f), Qt::LeftButton, {}, f.cellCentre(1, 1));
    QCOMPARE(f.grid->cursorCells(), (GridCursor{3, 2, 1, 1}));
    move(f, f.cellCentre(4, 3));
    QCOMPARE(f.grid->cursorCells(), (GridCursor{3, 2, 1, 1}));
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(3, 2), u"x"_qs);
}

void TestGridMouse::aSelectionDraggedDownEndsAtTheLastRow()
{
    EditGridFixture f(40);
    f.show();
    QTest::mousePress(viewport(f), Qt::LeftButton, {}, f.cellCentre(2, 1));
    for (int i = 0; i < 60; ++i)
        move(f, QPoint(f.cellCentre(2, 1).x(), viewport(f)->height() + 20));
    QCOMPARE(f.grid->cursorCells(), (GridCursor{2, 1, 39, 1}));
    QVERIFY(f.grid->isRowVisible(39));
    QTest::mouseRelease(viewport(f), Qt::LeftButton);
}

void TestGridMouse::shiftClickExtendsTheSelection()
{
    EditGridFixture f;
    f.show();
    QTest::mouseClick(viewport(f), Qt::LeftButton, {}, f.cellCentre(2, 1));
    QTest::mouseClick(viewport(f), Qt::LeftButton, Qt::ShiftModifier, f.cellCentre(4, 3));
    QCOMPARE(f.grid->cursorCells(), (GridCursor{2, 1, 4, 3}));
}

void TestGridMouse::aClickOnAFixedColumnSelectsTheRow()
{
    EditGridFixture f(5, 4, 2);
    f.show();
    QTest::mouseClick(viewport(f), Qt::LeftButton, {}, f.cellCentre(3, 0));
    QCOMPARE(f.grid->cursorCells(), (GridCursor{3, 2, 3, 3}));
}

void TestGridMouse::aDoubleClickEdits()
{
    EditGridFixture f;
    f.show();
    QTest::mouseDClick(viewport(f), Qt::LeftButton, {}, f.cellCentre(2, 2));
    QVERIFY(f.editor->hasFocus());
    QCOMPARE(f.editor->selectedText(), u"r2c2"_qs);
    QCOMPARE(f.takeEvents(), QStringList(u"BeforeCellEdit 2,2 r2c2"_qs));
}

void TestGridMouse::aDoubleClickOnAFixedCellDoesNothing()
{
    EditGridFixture f(5, 4, 2);
    f.show();
    QTest::mouseDClick(viewport(f), Qt::LeftButton, {}, f.cellCentre(2, 1));
    QVERIFY(!f.editor->isVisible());
    QVERIFY(f.takeEvents().isEmpty());
}

void TestGridMouse::aClickDuringAnEditCommitsAndIsCurrent()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.takeEvents();
    // What the window system does for a press: first the focus, then the event.
    f.grid->table()->setFocus(Qt::MouseFocusReason);
    QTest::mouseClick(viewport(f), Qt::LeftButton, {}, f.cellCentre(3, 2));
    QCOMPARE(f.takeEvents(), QStringList({u"AfterCellEdit 1,0 neu"_qs, u"ProcessReady"_qs}));
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(3, 2));
    QVERIFY(f.grid->table()->hasFocus());
}

void TestGridMouse::aClickDuringAnEditHitsTheCellThatWasSeen()
{
    EditGridFixture f(60);
    f.edit->setGridAutoRowAdd(true);
    f.show();
    f.grid->setCell(59, 3);
    f.grid->ensureVisible(59);
    f.edit->BeginEdit();
    const QScrollBar *bar = f.grid->table()->verticalScrollBar();
    const int scrolled = bar->value();
    const QPoint seen = f.cellCentre(57, 1);
    f.grid->table()->setFocus(Qt::MouseFocusReason);
    QTest::mouseClick(viewport(f), Qt::LeftButton, {}, seen);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(57, 1));
    QCOMPARE(bar->value(), scrolled);
    QCOMPARE(f.grid->rows(), 61);
}

void TestGridMouse::aClickOnAnotherControlCommitsAndKeepsItsFocus()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    f.behind->setFocus(Qt::MouseFocusReason);
    QTest::mouseClick(f.behind, Qt::LeftButton);
    QVERIFY(f.behind->hasFocus());
    QCOMPARE(f.grid->textMatrix(1, 0), u"neu"_qs);
}

void TestGridMouse::aMoveWithoutTheButtonEndsTheDrag()
{
    EditGridFixture f;
    f.show();
    QTest::mousePress(viewport(f), Qt::LeftButton, {}, f.cellCentre(2, 1));
    // The release went elsewhere, as when the press has opened a dialog.
    move(f, f.cellCentre(4, 3), Qt::RightButton);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 1));
    move(f, f.cellCentre(3, 3));
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 1));
    QTest::mouseRelease(viewport(f), Qt::LeftButton);
}

REGISTER_TEST(TestGridMouse)
#include "tst_gridmouse.moc"
