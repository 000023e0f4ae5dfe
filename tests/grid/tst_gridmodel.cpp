#include "tests/support/testregistry.h"

#include "grid/gridmodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <functional>

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
    void sourcedRowsKeepTheirTextsThroughEveryChange_data();
    void sourcedRowsKeepTheirTextsThroughEveryChange();
    void rowsAddedBySetRowsComeFromTheSource();
    void aSourceIsAskedOnceARow();
    void sourcedTextsBeyondTheLastColumnAreDropped();
    void rowsInsertedAtOnceKeepTheirTextsThroughEveryChange_data();
    void rowsInsertedAtOnceKeepTheirTextsThroughEveryChange();
    void rowsTakenAwayFromThoseInsertedAtOnceComeBackEmpty();
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

namespace {

QStringList sourced(int row)
{
    return {u"a%1"_qs.arg(row), u"b%1"_qs.arg(row), u"c%1"_qs.arg(row)};
}

QStringList allTexts(const GridModel &model)
{
    QStringList all;
    for (int row = 0; row < model.rows(); ++row) {
        QStringList texts;
        for (int col = 0; col < model.cols(); ++col)
            texts.append(model.text(row, col));
        all.append(texts.join(u'|'));
    }
    return all;
}

} // namespace

void TestGridModel::sourcedRowsKeepTheirTextsThroughEveryChange_data()
{
    using Change = std::function<void(GridModel &)>;
    QTest::addColumn<Change>("change");
    const auto add = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    add("setText", [](GridModel &m) { m.setText(4, 1, u"x"_qs); });
    add("setText of an empty text", [](GridModel &m) { m.setText(4, 1, QString()); });
    add("a whole row cleared", [](GridModel &m) {
        for (int col = 0; col < 3; ++col)
            m.setText(4, col, QString());
    });
    add("insertRows", [](GridModel &m) { m.insertRows(3, {{u"x"_qs}, {}}); });
    add("insertRows at the end", [](GridModel &m) { m.insertRows(m.rows(), {{}}); });
    add("removeRow", [](GridModel &m) { m.removeRow(2); });
    add("fewer rows", [](GridModel &m) { m.setRows(4); });
    add("more columns", [](GridModel &m) { m.setCols(5); });
    add("fewer columns and more again", [](GridModel &m) {
        m.setCols(1);
        m.setCols(3);
    });
    add("more fixed rows", [](GridModel &m) { m.setFixedRows(3); });
    add("no fixed rows", [](GridModel &m) { m.setFixedRows(0); });
    add("fixed columns", [](GridModel &m) { m.setFixedCols(2); });
    add("one after the other", [](GridModel &m) {
        m.setText(5, 2, u"x"_qs);
        m.removeRow(1);
        m.insertRows(2, {{u"y"_qs}});
        m.setFixedRows(2);
        m.setRows(9);
        m.setText(8, 0, u"z"_qs);
    });
}

void TestGridModel::sourcedRowsKeepTheirTextsThroughEveryChange()
{
    using Change = std::function<void(GridModel &)>;
    QFETCH(const Change, change);
    GridModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    GridModel filled;
    for (GridModel *m : {&model, &filled}) {
        m->setCols(3);
        m->setText(0, 1, u"Kopf"_qs);
    }
    model.setSourcedRows(7, sourced);
    filled.setRows(1);
    for (int row = 1; row < 7; ++row)
        filled.insertRows(row, {sourced(row)});
    QCOMPARE(allTexts(filled).size(), 7);
    change(model);
    change(filled);
    QCOMPARE(allTexts(model), allTexts(filled));
    QCOMPARE(model.fixedRows(), filled.fixedRows());
}

void TestGridModel::rowsAddedBySetRowsComeFromTheSource()
{
    GridModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSourcedRows(2, sourced);
    model.setText(1, 0, u"x"_qs);
    model.setRows(4);
    QCOMPARE(allTexts(model), QStringList({u"|"_qs, u"x|b1"_qs, u"a2|b2"_qs, u"a3|b3"_qs}));
    model.setRows(2);
    model.setRows(3);
    QCOMPARE(model.text(2, 1), u"b2"_qs);
    model.removeRow(1);
    model.setRows(4);
    QCOMPARE(allTexts(model), QStringList({u"|"_qs, u"a2|b2"_qs, u"|"_qs, u"|"_qs}));
    model.setSourcedRows(3, [](int) { return QStringList{u"neu"_qs}; });
    QCOMPARE(allTexts(model), QStringList({u"|"_qs, u"neu|"_qs, u"neu|"_qs}));
}

void TestGridModel::aSourceIsAskedOnceARow()
{
    GridModel model;
    QList<int> asked;
    model.setSourcedRows(100'001, [&asked](int row) {
        asked.append(row);
        return sourced(row);
    });
    QVERIFY(asked.isEmpty());
    QCOMPARE(model.text(77, 1), u"b77"_qs);
    QCOMPARE(model.data(model.cell(77, 0)).toString(), u"a77"_qs);
    model.setText(78, 0, u"x"_qs);
    QCOMPARE(asked, QList<int>({77, 78}));
    QCOMPARE(model.text(78, 1), u"b78"_qs);
    model.setRows(50'000);
    QCOMPARE(asked, QList<int>({77, 78}));
    model.removeRow(49'999);
    QCOMPARE(asked.size(), 49'999);
    model.insertRows(1, {{}});
    QCOMPARE(model.text(49'999, 0), u"a49998"_qs);
    QCOMPARE(asked.size(), 49'999);
}

void TestGridModel::sourcedTextsBeyondTheLastColumnAreDropped()
{
    GridModel model;
    model.setSourcedRows(3, sourced);
    QCOMPARE(model.text(1, 1), u"b1"_qs);
    model.setCols(3);
    QCOMPARE(allTexts(model), QStringList({u"||"_qs, u"a1|b1|"_qs, u"a2|b2|"_qs}));
}

void TestGridModel::rowsInsertedAtOnceKeepTheirTextsThroughEveryChange_data()
{
    sourcedRowsKeepTheirTextsThroughEveryChange_data();
}

void TestGridModel::rowsInsertedAtOnceKeepTheirTextsThroughEveryChange()
{
    using Change = std::function<void(GridModel &)>;
    QFETCH(const Change, change);
    GridModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    GridModel filled;
    QList<QStringList> lines;
    for (GridModel *m : {&model, &filled}) {
        m->setCols(3);
        m->setText(0, 1, u"Kopf"_qs);
        m->setRows(1);
    }
    for (int row = 1; row < 7; ++row) {
        lines.append(sourced(row) + QStringList(u"zu viel"_qs));
        filled.setRows(row + 1);
        for (int col = 0; col < 3; ++col)
            filled.setText(row, col, sourced(row).at(col));
    }
    model.insertRows(1, lines);
    lines.clear();
    change(model);
    change(filled);
    QCOMPARE(allTexts(model), allTexts(filled));
}

void TestGridModel::rowsTakenAwayFromThoseInsertedAtOnceComeBackEmpty()
{
    GridModel model;
    model.setRows(1);
    model.insertRows(1, {sourced(1), {}, sourced(3), sourced(4)});
    model.setRows(4);
    model.setRows(6);
    QCOMPARE(allTexts(model),
             QStringList({u"|"_qs, u"a1|b1"_qs, u"|"_qs, u"a3|b3"_qs, u"|"_qs, u"|"_qs}));
    model.setRows(1);
    model.insertRows(1, {sourced(7)});
    model.insertRows(2, {sourced(8)});
    QCOMPARE(allTexts(model), QStringList({u"|"_qs, u"a7|b7"_qs, u"a8|b8"_qs}));
}

REGISTER_TEST(TestGridModel)
#include "tst_gridmodel.moc"
