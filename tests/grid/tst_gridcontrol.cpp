#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>

#include <memory>

/// The display-only control.
class TestGridControl : public QObject
{
    Q_OBJECT

private slots:
    void movingTheCurrentCellDropsTheSelection();
    void numbersOutsideAreIgnored();
    void aShorterGridKeepsTheCursorInside();
    void addItemSplitsAtTabs();
    void fixedRowsAreNeverInsertedNorRemoved();
    void textsGoWithTheirColumnsAndRows();
    void navigationKeysMove();
    void tabWalksTheCellsAndLeavesAtTheEnds();
    void ctrlTabLeaves();
    void fitColumnsFillsTheWidthWithoutAHorizontalBar_data();
    void fitColumnsFillsTheWidthWithoutAHorizontalBar();
    void aTwoLineHeaderIsTwoLinesHigh();
    void aLongHeaderWraps();
    void redrawOffPaintsNothingAndOnPaintsOnce();
    void theTableSelectsWhatTheCursorSays();
    void worksWithoutHeaderAndWithoutRows();
    void severalFixedRowsAreHeaderLines();
    void onlyVisibleRowsAreAskedFor();
    void copiesAndTextsReachRowsNeverAskedForBefore();
};

void TestGridControl::movingTheCurrentCellDropsTheSelection()
{
    EditGridFixture f;
    f.grid->setCursorCells({1, 1, 3, 3});
    QCOMPARE(f.grid->rowSel(), 3);
    QCOMPARE(f.grid->selection(), (CellRange{1, 3, 1, 3}));
    f.grid->setRow(2);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 1));
    f.grid->setRowSel(4);
    f.grid->setColSel(0);
    QCOMPARE(f.grid->cursorCells(), (GridCursor{2, 1, 4, 0}));
    QCOMPARE(f.grid->selection(), (CellRange{2, 4, 0, 1}));
    f.grid->setCol(3);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 3));
}

void TestGridControl::numbersOutsideAreIgnored()
{
    EditGridFixture f(3, 2);
    const QString before = f.edit->GridText(true);
    f.grid->setCell(3, 0);
    f.grid->setRowSel(-1);
    f.grid->setTextMatrix(3, 0, u"x"_qs);
    f.grid->setTextMatrix(0, -1, u"x"_qs);
    f.grid->removeItem(3);
    f.grid->ensureVisible(99);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 0));
    QCOMPARE(f.edit->GridText(true), before);
    QCOMPARE(f.grid->textMatrix(7, 7), QString());
    QVERIFY(f.grid->cellRect(99, 0).isEmpty());
}

void TestGridControl::aShorterGridKeepsTheCursorInside()
{
    EditGridFixture f;
    f.grid->setCursorCells({4, 3, 3, 2});
    f.grid->setRows(3);
    QCOMPARE(f.grid->cursorCells(), (GridCursor{2, 3, 2, 2}));
    f.grid->setCols(2);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 1));
    f.grid->setRows(0);
    QCOMPARE(f.grid->rows(), 1);
    QCOMPARE(f.grid->row(), 0);
    f.grid->setRows(4);
    QCOMPARE(f.grid->row(), 1);
}

void TestGridControl::addItemSplitsAtTabs()
{
    EditGridFixture f(3, 3);
    f.grid->addItem(u"a\tb"_qs);
    f.grid->addItem(u"\tx\ty\tz"_qs, 1);
    QCOMPARE(f.grid->rows(), 5);
    QCOMPARE(f.rowTexts(4), QStringList({u"a"_qs, u"b"_qs, QString()}));
    QCOMPARE(f.rowTexts(1), QStringList({QString(), u"x"_qs, u"y"_qs}));
}

void TestGridControl::fixedRowsAreNeverInsertedNorRemoved()
{
    EditGridFixture f(3, 1);
    f.grid->addItem(u"x"_qs, 0);
    f.grid->removeItem(0);
    QCOMPARE(f.grid->rows(), 3);
    QCOMPARE(f.grid->textMatrix(0, 0), u"r0c0"_qs);
}

void TestGridControl::textsGoWithTheirColumnsAndRows()
{
    EditGridFixture f(3, 3);
    f.grid->setCols(2);
    f.grid->setCols(4);
    QCOMPARE(f.rowTexts(1), QStringList({u"r1c0"_qs, u"r1c1"_qs, QString(), QString()}));
    f.grid->setRows(2);
    f.grid->setRows(3);
    QCOMPARE(f.grid->textMatrix(2, 0), QString());
}

void TestGridControl::navigationKeysMove()
{
    EditGridFixture f(60, 4, 1);
    f.show();
    f.key(Qt::Key_Right);
    f.key(Qt::Key_Down);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 2));
    f.key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(f.grid->cursorCells(), (GridCursor{2, 2, 3, 2}));
    f.key(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(59, 3));
    QVERIFY(f.grid->isRowVisible(59));
    f.key(Qt::Key_PageUp);
    QVERIFY(f.grid->row() < 58 && f.grid->row() > 30);
    f.key(Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 1));
    f.key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(f.grid->cursorCells(), (GridCursor{1, 1, 59, 3}));
    QVERIFY(f.grid->isRowVisible(1));
    QVERIFY(f.takeEvents().isEmpty());
}

void TestGridControl::tabWalksTheCellsAndLeavesAtTheEnds()
{
    EditGridFixture f(3, 2);
    f.show();
    for (const GridCursor &next :
         {GridCursor::at(1, 1), GridCursor::at(2, 0), GridCursor::at(2, 1)}) {
        f.key(Qt::Key_Tab);
        QCOMPARE(f.grid->cursorCells(), next);
        QVERIFY(f.grid->table()->hasFocus());
    }
    f.key(Qt::Key_Tab);
    QVERIFY(f.behind->hasFocus());
    f.key(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(f.grid->table()->hasFocus());
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(2, 1));
    for (int i = 0; i < 3; ++i)
        f.key(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 0));
    f.key(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(f.before->hasFocus());
    f.key(Qt::Key_Tab);
    QVERIFY(f.grid->table()->hasFocus());
    QVERIFY(f.takeEvents().isEmpty());
}

void TestGridControl::ctrlTabLeaves()
{
    EditGridFixture f;
    f.show();
    f.key(Qt::Key_Tab, Qt::ControlModifier);
    QVERIFY(f.behind->hasFocus());
    f.grid->setFocus();
    f.key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(f.before->hasFocus());
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 0));
}

void TestGridControl::fitColumnsFillsTheWidthWithoutAHorizontalBar_data()
{
    QTest::addColumn<int>("rows");
    QTest::newRow("few rows") << 4;
    QTest::newRow("with a vertical bar") << 500;
}

void TestGridControl::fitColumnsFillsTheWidthWithoutAHorizontalBar()
{
    QFETCH(const int, rows);
    EditGridFixture f(rows, 3);
    const std::array weights{2.0, 1.0, 1.0};
    f.grid->fitColumns(weights);
    f.show();
    const auto check = [&f] {
        const int inner = f.grid->table()->viewport()->width();
        QCOMPARE(f.grid->colWidth(0) + f.grid->colWidth(1) + f.grid->colWidth(2), inner);
        QVERIFY(qAbs(f.grid->colWidth(0) - inner / 2) <= 1);
        QVERIFY(!f.grid->table()->horizontalScrollBar()->isVisible());
    };
    check();
    QCOMPARE(f.grid->table()->verticalScrollBar()->isVisible(), rows > 100);
    for (const int width : {801, 300, 977}) {
        f.window->resize(width, 400);
        QCoreApplication::processEvents();
        check();
    }
    f.grid->setRows(rows > 100 ? 3 : 400);
    QCoreApplication::processEvents();
    check();
}

void TestGridControl::aTwoLineHeaderIsTwoLinesHigh()
{
    EditGridFixture f(3, 2);
    f.show();
    const QHeaderView *header = f.grid->table()->horizontalHeader();
    const int one = header->height();
    f.grid->setTextMatrix(0, 1, u"Direktes Prüfmerkmal\nEv2"_qs);
    f.grid->setColWidth(1, 300);
    QTRY_COMPARE(header->height(), one + f.grid->fontMetrics().lineSpacing());
    QCOMPARE(f.grid->textMatrix(0, 1), u"Direktes Prüfmerkmal\nEv2"_qs);
}

void TestGridControl::aLongHeaderWraps()
{
    EditGridFixture f(3, 2);
    f.show();
    const QHeaderView *header = f.grid->table()->horizontalHeader();
    f.grid->setTextMatrix(0, 1, u"Messwert Flächendeckende Dynamische Verdichtungskontrolle"_qs);
    f.grid->setColWidth(1, 600);
    QCoreApplication::processEvents();
    const int wide = header->height();
    f.grid->setColWidth(1, 150);
    QTRY_VERIFY(header->height() > wide);
    f.grid->setColWidth(1, 600);
    QTRY_COMPARE(header->height(), wide);
}

void TestGridControl::redrawOffPaintsNothingAndOnPaintsOnce()
{
    EditGridFixture f;
    f.show();
    QTest::qWait(50);
    struct PaintCounter : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    } paints;
    QSignalSpy changes(f.grid->table()->model(), &QAbstractItemModel::dataChanged);
    f.grid->table()->viewport()->installEventFilter(&paints);
    f.grid->setRedraw(false);
    f.grid->setTextMatrix(1, 0, u"a"_qs);
    f.grid->setTextMatrix(4, 3, u"b"_qs);
    f.grid->setTextMatrix(0, 0, u"Kopf"_qs);
    f.grid->setCell(3, 3);
    QCOMPARE(f.grid->textMatrix(1, 0), u"a"_qs);
    QTest::qWait(50);
    QCOMPARE(paints.count, 0);
    QCOMPARE(changes.size(), 0);
    f.grid->setRedraw(true);
    QTest::qWait(50);
    QCOMPARE(paints.count, 1);
    QCOMPARE(changes.size(), 1);
}

void TestGridControl::theTableSelectsWhatTheCursorSays()
{
    EditGridFixture f;
    f.grid->setCursorCells({3, 2, 1, 1});
    const QItemSelectionModel *selection = f.grid->table()->selectionModel();
    QCOMPARE(selection->currentIndex().row(), 2);
    QCOMPARE(selection->currentIndex().column(), 2);
    QCOMPARE(selection->selectedIndexes().size(), 6);
    f.grid->removeItem(3);
    QCOMPARE(selection->currentIndex().row(), 2);
    QCOMPARE(selection->selectedIndexes().size(), 6);
    f.grid->addItem(u"x"_qs, 1);
    QCOMPARE(selection->currentIndex().row(), 2);
    QCOMPARE(f.grid->cursorCells(), (GridCursor{3, 2, 1, 1}));
}

void TestGridControl::worksWithoutHeaderAndWithoutRows()
{
    EditGridFixture f(3, 2);
    f.grid->setFixedRows(0);
    f.show();
    QVERIFY(!f.grid->table()->horizontalHeader()->isVisible());
    QCOMPARE(f.grid->table()->model()->rowCount(), 3);
    f.grid->setRows(0);
    f.grid->setCols(0);
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Tab);
    f.grid->setFocus();
    f.key(Qt::Key_Delete);
    f.key(Qt::Key_C, Qt::ControlModifier);
    f.type(u"x"_qs);
    QVERIFY(f.takeEvents().isEmpty());
}

void TestGridControl::severalFixedRowsAreHeaderLines()
{
    EditGridFixture f(4, 2);
    f.grid->setFixedRows(2);
    QCOMPARE(f.grid->table()->model()->headerData(1, Qt::Horizontal).toString(), u"r0c1\nr1c1"_qs);
    QCOMPARE(f.grid->table()->model()->rowCount(), 2);
    QCOMPARE(f.grid->row(), 2);
    f.grid->setTextMatrix(1, 1, u"m"_qs);
    QCOMPARE(f.grid->table()->model()->headerData(1, Qt::Horizontal).toString(), u"r0c1\nm"_qs);
}

namespace {

/// Rows of texts made from their numbers, and which were asked for.
struct Source
{
    QStringList operator()(int row) const
    {
        asked->append(row);
        return {u"a%1"_qs.arg(row), u"b%1"_qs.arg(row)};
    }
    std::shared_ptr<QList<int>> asked = std::make_shared<QList<int>>();
};

} // namespace

void TestGridControl::onlyVisibleRowsAreAskedFor()
{
    EditGridFixture f(2, 2);
    f.modelTester.reset(); // it asks for rows as well
    const Source source;
    f.grid->setSourcedRows(100'001, source);
    f.show();
    const int page = f.grid->table()->viewport()->height() / f.grid->rowHeight(1) + 2;
    QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
    QCoreApplication::processEvents();
    QVERIFY(!source.asked->isEmpty());
    QVERIFY2(source.asked->size() <= page, qPrintable(QString::number(source.asked->size())));
    source.asked->clear();
    f.key(Qt::Key_End, Qt::ControlModifier);
    QCoreApplication::processEvents();
    QCOMPARE(f.grid->row(), 100'000);
    QVERIFY(source.asked->contains(100'000));
    QVERIFY2(source.asked->size() <= page, qPrintable(QString::number(source.asked->size())));
    source.asked->clear();
    f.grid->table()->verticalScrollBar()->setValue(50'000 * f.grid->rowHeight(1));
    f.grid->table()->viewport()->repaint();
    QVERIFY(source.asked->contains(50'001));
    QVERIFY2(source.asked->size() <= page, qPrintable(QString::number(source.asked->size())));
    source.asked->clear();
    f.edit->BeginEdit();
    f.type(u"x"_qs);
    f.key(Qt::Key_Return);
    QVERIFY(source.asked->size() <= page);
    QCOMPARE(f.grid->textMatrix(100'000, 1), u"x"_qs);
}

void TestGridControl::copiesAndTextsReachRowsNeverAskedForBefore()
{
    EditGridFixture f(2, 2);
    f.modelTester.reset();
    const Source source;
    f.grid->setSourcedRows(1001, source);
    f.show();
    f.grid->setCursorCells({900, 0, 901, 1});
    f.edit->ClipboardCopy();
    QCOMPARE(f.clipboard, u"a900\tb900\r\na901\tb901\r\n"_qs);
    QVERIFY(source.asked->size() < 200);
    const QString all = f.edit->GridText();
    QCOMPARE(all.count(u'\n'), 1000);
    QVERIFY(all.startsWith(u"a1\tb1\r\na2\tb2\r\n"_qs));
    QVERIFY(all.endsWith(u"a999\tb999\r\na1000\tb1000\r\n"_qs));
    QCOMPARE(source.asked->size(), 1000);
    QCOMPARE(QSet<int>(source.asked->begin(), source.asked->end()).size(), 1000);
    QCOMPARE(f.edit->GridText(500, 1), u"b500"_qs);
}

REGISTER_TEST(TestGridControl)
#include "tst_gridcontrol.moc"
