#include "tests/support/testregistry.h"

#include "grid/gridnavigation.h"

#include <QKeyEvent>
#include <QTest>

/// Where keys lead, without a window.
class TestGridNavigation : public QObject
{
    Q_OBJECT

private slots:
    void keysLeadWhereTheySay_data();
    void keysLeadWhereTheySay();
    void otherKeysLeadNowhere_data();
    void otherKeysLeadNowhere();
    void stepsGoInReadingOrder_data();
    void stepsGoInReadingOrder();
};

namespace {
// Rows 1 to 9, columns 2 to 4, pages of 3 rows.
constexpr GridExtent extent{{1, 9, 2, 4}, 3};
} // namespace

void TestGridNavigation::keysLeadWhereTheySay_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<GridCursor>("from");
    QTest::addColumn<GridCursor>("to");
    const int plain = Qt::NoModifier;
    const int shift = Qt::ShiftModifier;
    const int ctrl = Qt::ControlModifier;
    const GridCursor mid = GridCursor::at(5, 3);
    const auto row = [&](const char *name, int key, int modifiers, GridCursor from, GridCursor to) {
        QTest::newRow(name) << key << modifiers << from << to;
    };
    row("left", Qt::Key_Left, plain, mid, GridCursor::at(5, 2));
    row("left at the edge", Qt::Key_Left, plain, GridCursor::at(5, 2), GridCursor::at(5, 2));
    row("right", Qt::Key_Right, plain, mid, GridCursor::at(5, 4));
    row("right at the edge", Qt::Key_Right, plain, GridCursor::at(5, 4), GridCursor::at(5, 4));
    row("up", Qt::Key_Up, plain, mid, GridCursor::at(4, 3));
    row("up at the top", Qt::Key_Up, plain, GridCursor::at(1, 3), GridCursor::at(1, 3));
    row("down", Qt::Key_Down, int(Qt::KeypadModifier), mid, GridCursor::at(6, 3));
    row("down at the end", Qt::Key_Down, plain, GridCursor::at(9, 3), GridCursor::at(9, 3));
    row("Home", Qt::Key_Home, plain, mid, GridCursor::at(5, 2));
    row("End", Qt::Key_End, plain, mid, GridCursor::at(5, 4));
    row("Page Up", Qt::Key_PageUp, plain, mid, GridCursor::at(2, 3));
    row("Page Down", Qt::Key_PageDown, plain, mid, GridCursor::at(8, 3));
    row("Page Down at the end", Qt::Key_PageDown, plain, GridCursor::at(8, 3),
        GridCursor::at(9, 3));
    row("Ctrl+Left", Qt::Key_Left, ctrl, mid, GridCursor::at(5, 2));
    row("Ctrl+Right", Qt::Key_Right, ctrl, mid, GridCursor::at(5, 4));
    row("Ctrl+Up", Qt::Key_Up, ctrl, mid, GridCursor::at(1, 3));
    row("Ctrl+Down", Qt::Key_Down, ctrl, mid, GridCursor::at(9, 3));
    row("Ctrl+Home", Qt::Key_Home, ctrl, mid, GridCursor::at(1, 2));
    row("Ctrl+End", Qt::Key_End, ctrl, mid, GridCursor::at(9, 4));
    row("Ctrl+A", Qt::Key_A, ctrl, mid, {1, 2, 9, 4});
    row("Shift+Down", Qt::Key_Down, shift, mid, {5, 3, 6, 3});
    row("Shift+Left, selected", Qt::Key_Left, shift, {5, 3, 6, 4}, {5, 3, 6, 3});
    row("Ctrl+Shift+End", Qt::Key_End, ctrl | shift, mid, {5, 3, 9, 4});
    row("down from a selection", Qt::Key_Down, plain, {5, 3, 8, 4}, GridCursor::at(6, 3));
    row("from a fixed cell", Qt::Key_Down, plain, GridCursor::at(0, 0), GridCursor::at(1, 2));
}

void TestGridNavigation::keysLeadWhereTheySay()
{
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    QFETCH(const GridCursor, from);
    QFETCH(const GridCursor, to);
    const QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
    const auto reached = navigated(event, from, extent);
    QVERIFY(reached.has_value());
    QCOMPARE(*reached, to);
}

void TestGridNavigation::otherKeysLeadNowhere_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("letter") << int(Qt::Key_A) << int(Qt::NoModifier);
    QTest::newRow("Alt+Left") << int(Qt::Key_Left) << int(Qt::AltModifier);
    QTest::newRow("Meta+Down") << int(Qt::Key_Down) << int(Qt::MetaModifier);
    QTest::newRow("Ctrl+PageUp") << int(Qt::Key_PageUp) << int(Qt::ControlModifier);
    QTest::newRow("Esc") << int(Qt::Key_Escape) << int(Qt::NoModifier);
}

void TestGridNavigation::otherKeysLeadNowhere()
{
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    const QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
    QVERIFY(!navigated(event, GridCursor::at(5, 3), extent));
    const QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QVERIFY(!navigated(down, GridCursor::at(0, 0), {{1, 0, 0, 2}, 3}));
}

void TestGridNavigation::stepsGoInReadingOrder_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<GridCursor>("from");
    QTest::addColumn<GridCursor>("to");
    const GridCursor none = GridCursor::at(-1, -1);
    QTest::newRow("on") << true << GridCursor::at(5, 2) << GridCursor::at(5, 3);
    QTest::newRow("on to the next row") << true << GridCursor::at(5, 4) << GridCursor::at(6, 2);
    QTest::newRow("on at the end") << true << GridCursor::at(9, 4) << none;
    QTest::newRow("back") << false << GridCursor::at(5, 3) << GridCursor::at(5, 2);
    QTest::newRow("back to the row before")
        << false << GridCursor::at(5, 2) << GridCursor::at(4, 4);
    QTest::newRow("back at the start") << false << GridCursor::at(1, 2) << none;
    QTest::newRow("on from a fixed column") << true << GridCursor::at(5, 0) << GridCursor::at(5, 2);
    QTest::newRow("on from the header") << true << GridCursor::at(0, 3) << GridCursor::at(1, 2);
    QTest::newRow("a selection collapses")
        << true << GridCursor{5, 2, 7, 4} << GridCursor::at(5, 3);
}

void TestGridNavigation::stepsGoInReadingOrder()
{
    QFETCH(const bool, forward);
    QFETCH(const GridCursor, from);
    QFETCH(const GridCursor, to);
    QCOMPARE(stepped(forward, from, extent.cells).value_or(GridCursor::at(-1, -1)), to);
}

REGISTER_TEST(TestGridNavigation)
#include "tst_gridnavigation.moc"
