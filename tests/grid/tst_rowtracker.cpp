#include "tests/support/testregistry.h"

#include "grid/gridmodel.h"
#include "grid/rowtracker.h"

#include <QTest>

/// A place among rows that come and go.
class TestRowTracker : public QObject
{
    Q_OBJECT

private slots:
    void visitsExactlyTheRowsOfItsRun_data();
    void visitsExactlyTheRowsOfItsRun();
    void aRowInsertedAboveARemovedOneIsNotVisited();
    void nothingOfTheRunIsLeftAfterAReset();
};

void TestRowTracker::visitsExactlyTheRowsOfItsRun_data()
{
    QTest::addColumn<QString>("change"); // at the second row of the run: + inserts, - removes
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("visited");
    QTest::newRow("nothing") << QString() << 0 << u"345"_qs;
    QTest::newRow("inserted above the run") << u"+"_qs << 1 << u"345"_qs;
    QTest::newRow("inserted before the own row") << u"+"_qs << 4 << u"345"_qs;
    QTest::newRow("inserted behind the own row") << u"+"_qs << 5 << u"34n5"_qs;
    QTest::newRow("inserted behind the run") << u"+"_qs << 6 << u"345"_qs;
    QTest::newRow("removed above the run") << u"-"_qs << 1 << u"345"_qs;
    QTest::newRow("removed before the own row") << u"-"_qs << 3 << u"345"_qs;
    QTest::newRow("the own row removed") << u"-"_qs << 4 << u"3x5"_qs;
    QTest::newRow("removed behind the own row") << u"-"_qs << 5 << u"34"_qs;
    QTest::newRow("removed behind the run") << u"-"_qs << 6 << u"345"_qs;
    QTest::newRow("own row removed, one inserted there") << u"-+"_qs << 4 << u"3xn5"_qs;
    QTest::newRow("all removed from the own row on") << u"---"_qs << 4 << u"3x"_qs;
}

void TestRowTracker::visitsExactlyTheRowsOfItsRun()
{
    QFETCH(const QString, change);
    QFETCH(const int, row);
    QFETCH(const QString, visited);
    GridModel model;
    model.setRows(8);
    for (int i = 1; i < 8; ++i)
        model.setText(i, 0, QString::number(i));
    RowTracker tracker(model, 3, 5);
    QString seen;
    bool changed = false;
    do {
        if (!std::exchange(changed, seen.size() == 1) && seen.size() == 1) {
            for (const QChar c : change) {
                if (c == u'+')
                    model.insertRows(row, {{u"n"_qs}});
                else
                    model.removeRow(row);
            }
        }
        seen += tracker.isThere() ? model.text(tracker.row(), 0) : u"x"_qs;
    } while (tracker.next());
    QCOMPARE(seen, visited);
}

void TestRowTracker::aRowInsertedAboveARemovedOneIsNotVisited()
{
    GridModel model;
    model.setRows(8);
    for (int i = 1; i < 8; ++i)
        model.setText(i, 0, QString::number(i));
    RowTracker tracker(model, 3, 5);
    model.removeRow(3);
    model.insertRows(2, {{u"n"_qs}});
    QVERIFY(!tracker.isThere());
    QVERIFY(tracker.next());
    QCOMPARE(model.text(tracker.row(), 0), u"4"_qs);
}

void TestRowTracker::nothingOfTheRunIsLeftAfterAReset()
{
    GridModel model;
    model.setRows(8);
    RowTracker tracker(model, 3, 5);
    model.setSourcedRows(8, [](int) { return QStringList{u"neu"_qs}; });
    QVERIFY(!tracker.isThere());
    QVERIFY(!tracker.next());
}

REGISTER_TEST(TestRowTracker)
#include "tst_rowtracker.moc"
