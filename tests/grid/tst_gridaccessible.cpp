#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include <QAccessible>
#include <QTableView>

/// What screen readers find.
class TestGridAccessible : public QObject
{
    Q_OBJECT

private slots:
    void theTableTellsItsNameSizeHeadersAndCells();
    void theTableTellsTheCurrentCellAndTheSelection();
    void theOpenEditorIsBesideTheTable();
    void afterACommitTheTableTellsTheNewTextAndTheNextCell();
};

namespace {

QAccessibleInterface *of(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

} // namespace

void TestGridAccessible::theTableTellsItsNameSizeHeadersAndCells()
{
    EditGridFixture f(4, 3, 1);
    f.grid->setAccessibleName(u"Messwerte"_qs);
    f.show();
    QAccessibleInterface *table = of(f.grid->table());
    QCOMPARE(table->text(QAccessible::Name), u"Messwerte"_qs);
    QCOMPARE(table->role(), QAccessible::Table);
    QAccessibleTableInterface *cells = table->tableInterface();
    QVERIFY(cells);
    QCOMPARE(cells->rowCount(), 3);
    QCOMPARE(cells->columnCount(), 3);
    QCOMPARE(cells->columnDescription(2), u"r0c2"_qs);
    QAccessibleInterface *cell = cells->cellAt(1, 2);
    QCOMPARE(cell->text(QAccessible::Name), u"r2c2"_qs);
    QVERIFY(cell->state().selectable);
    QVERIFY(!cells->cellAt(1, 0)->state().selectable);
}

void TestGridAccessible::theTableTellsTheCurrentCellAndTheSelection()
{
    EditGridFixture f;
    f.show();
    f.grid->setCursorCells({2, 1, 3, 2});
    QAccessibleInterface *table = of(f.grid->table());
    QCOMPARE(table->focusChild()->text(QAccessible::Name), u"r2c1"_qs);
    QCOMPARE(table->tableInterface()->selectedCellCount(), 4);
}

void TestGridAccessible::theOpenEditorIsBesideTheTable()
{
    EditGridFixture f;
    f.show();
    f.grid->setCell(2, 1);
    f.edit->BeginEdit();
    QAccessibleInterface *frame = of(f.grid);
    QList<QObject *> children;
    for (int i = 0; i < frame->childCount(); ++i)
        children.append(frame->child(i)->object());
    QVERIFY(children.contains(f.grid->table()));
    QVERIFY(children.contains(f.editor));
    QVERIFY(of(f.editor)->state().focused);
    QCOMPARE(of(f.editor)->text(QAccessible::Value), u"r2c1"_qs);
    QCOMPARE(of(f.editor)->text(QAccessible::Description), u"Zeile 2, r0c1"_qs);
}

void TestGridAccessible::afterACommitTheTableTellsTheNewTextAndTheNextCell()
{
    EditGridFixture f;
    f.show();
    f.edit->BeginEdit();
    f.type(u"neu"_qs);
    QAccessibleInterface *table = of(f.grid->table());
    QCOMPARE(of(f.editor)->text(QAccessible::Value), u"neu"_qs);
    QCOMPARE(table->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), u"r1c0"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(table->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), u"neu"_qs);
    QCOMPARE(table->focusChild()->text(QAccessible::Name), u"r1c1"_qs);
    QVERIFY(of(f.editor)->state().invisible);
}

REGISTER_TEST(TestGridAccessible)
#include "tst_gridaccessible.moc"
