#include "tests/support/testregistry.h"

#include "grid/gridmodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

/// The model under Qt's own tester, which checks every signal against the contents.
class TestGridModel : public QObject
{
    Q_OBJECT

private slots:
    void keepsItsPromisesThroughEveryChange();
    void keepsItsPromisesWhileChangesAreHeld();
    void cellsAreEditableOnlyWhereTheyAreNotFixed();
    void announcesTheSameTextOnlyOnce();
    void emptyRowsCostNoTexts();
};

namespace {

void changeEverything(GridModel &model)
{
    model.setRows(10);
    model.setCols(3);
    model.setText(0, 0, u"Kopf"_qs);
    model.setText(9, 2, u"Ende"_qs);
    model.insertRows(5, {{u"a"_qs}, {}, {u"b"_qs, u"c"_qs, u"d"_qs, u"zu viel"_qs}});
    model.removeRow(1);
    model.insertRows(model.rows(), {{u"letzte"_qs}});
    model.setColAlignment(1, Qt::AlignRight);
    model.setFixedCols(2);
    model.setFixedRows(2);
    model.setCols(5);
    model.setCols(2);
    model.setRows(3);
    model.setFixedRows(0);
    model.setRows(0);
    model.setRows(4);
}

} // namespace

void TestGridModel::keepsItsPromisesThroughEveryChange()
{
    GridModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    changeEverything(model);
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.columnCount(), 2);
}

void TestGridModel::keepsItsPromisesWhileChangesAreHeld()
{
    GridModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setChangesHeld(true);
    changeEverything(model);
    model.setText(3, 1, u"x"_qs);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setChangesHeld(false);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(model.data(model.index(3, 1)).toString(), u"x"_qs);
}

void TestGridModel::cellsAreEditableOnlyWhereTheyAreNotFixed()
{
    GridModel model;
    model.setRows(3);
    model.setFixedCols(1);
    QVERIFY(!model.flags(model.cell(1, 0)).testFlag(Qt::ItemIsEditable));
    QVERIFY(model.flags(model.cell(1, 1)).testFlag(Qt::ItemIsEditable));
    QVERIFY(!model.cell(0, 1).isValid());
    QVERIFY(model.isFixed(0, 1));
    QVERIFY(model.isFixed(1, 0));
    QVERIFY(!model.isFixed(1, 1));
}

void TestGridModel::announcesTheSameTextOnlyOnce()
{
    GridModel model;
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setText(1, 1, u"x"_qs);
    model.setText(1, 1, u"x"_qs);
    QCOMPARE(changes.size(), 1);
    QSignalSpy headers(&model, &QAbstractItemModel::headerDataChanged);
    model.setText(0, 1, u"x"_qs);
    QCOMPARE(headers.size(), 1);
}

void TestGridModel::emptyRowsCostNoTexts()
{
    GridModel model;
    model.setRows(1'000'001);
    QCOMPARE(model.rowCount(), 1'000'000);
    QCOMPARE(model.text(1'000'000, 1), QString());
    model.setText(1'000'000, 1, u"x"_qs);
    QCOMPARE(model.text(1'000'000, 1), u"x"_qs);
}

REGISTER_TEST(TestGridModel)
#include "tst_gridmodel.moc"
