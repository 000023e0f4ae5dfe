#include "tests/support/testregistry.h"
#include "tests/wizard/beispielblatt.h"

#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>

/// A text that is typed into a cell's editor and not committed yet: no command loses it.
class TestOffenerEditor : public QObject
{
    Q_OBJECT

private slots:
    void lettersOfTheButtonsTakeItAlong_data();
    void lettersOfTheButtonsTakeItAlong();
    void saveKeyStoresIt();
    void onlyChangeIsAskedAbout_data();
    void onlyChangeIsAskedAbout();
    void droppedFileAsksFirst();
    void fileOnAnotherPageLeavesNoEditorBehind();
};

namespace {

constexpr int covariable = 2; // its column on page 2, and the direct value's on page 3

QString gridOf(const PageFixture &f)
{
    return f.firstPage == 2 ? fieldsGrid : valuesGrid;
}

// Types "8" over the first cell of the column, without Enter.
void typeWithoutEnter(const PageFixture &f)
{
    GridControl &grid = f.grid(gridOf(f));
    grid.setFocus();
    grid.setCell(1, covariable);
    QTest::keyClicks(grid.table(), u"8"_qs);
    QVERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
}

double stored(PageFixture &f)
{
    return f.firstPage == 2 ? f.document.PrüffeldWert(1)
                            : f.document.values().number(f.document.Messwert(pmDirekt, 1, 1));
}

} // namespace

void TestOffenerEditor::lettersOfTheButtonsTakeItAlong_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("letter");
    QTest::addColumn<int>("target");
    QTest::newRow("fields forward") << 2 << int(Qt::Key_W) << 3;
    QTest::newRow("fields back") << 2 << int(Qt::Key_Z) << 1;
    QTest::newRow("values forward") << 3 << int(Qt::Key_W) << 4;
    QTest::newRow("values back") << 3 << int(Qt::Key_Z) << 2;
}

void TestOffenerEditor::lettersOfTheButtonsTakeItAlong()
{
    QFETCH(int, page);
    QFETCH(int, letter);
    QFETCH(int, target);
    PageFixture f(page);
    f.open();
    typeWithoutEnter(f);
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(letter), Qt::AltModifier);
    QTRY_COMPARE(f.activePage(), target);
    QCOMPARE(stored(f), 8.0);
    QVERIFY(f.dialogs.shown.empty());
}

void TestOffenerEditor::saveKeyStoresIt()
{
    PageFixture f(3);
    f.open();
    typeWithoutEnter(f);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(!f.document.IsDirty() && stored(f) == 8.0);
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.path(u"blatt.xml"_qs));
    QCOMPARE(read.MesswertString(pmDirekt, 1, 1), u"8,00"_qs);
}

void TestOffenerEditor::onlyChangeIsAskedAbout_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("action");
    for (const int page : {2, 3}) {
        for (const QString &action : {u"mf_exit"_qs, u"mf_new"_qs})
            QTest::newRow(qPrintable(action + QString::number(page))) << page << action;
    }
}

void TestOffenerEditor::onlyChangeIsAskedAbout()
{
    QFETCH(int, page);
    QFETCH(QString, action);
    PageFixture f(page);
    f.open();
    typeWithoutEnter(f);
    f.find<QAction>(action)->trigger(); // cancelled
    QCOMPARE(f.dialogs.questions.size(), 1);
    QVERIFY(f.window->isVisible());
    QCOMPARE(f.grid(gridOf(f)).textMatrix(1, covariable), page == 2 ? u"8"_qs : u"8,00"_qs);
    f.dialogs.answers = {Dialogs::Answer::Yes};
    f.find<QAction>(action)->trigger();
    QCOMPARE(f.dialogs.questions.size(), 2);
    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.path(u"blatt.xml"_qs));
    QCOMPARE(page == 2 ? read.PrüffeldWert(1) : read.values().number(read.Messwert(pmDirekt, 1, 1)),
             8.0);
}

void TestOffenerEditor::droppedFileAsksFirst()
{
    PageFixture f(3);
    f.open();
    typeWithoutEnter(f);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(f.path(u"blatt.xml"_qs))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(f.window.get(), &enter);
    QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(f.window.get(), &event);
    QTRY_COMPARE(f.dialogs.questions.size(), 1); // cancelled
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, covariable), u"8,00"_qs);
}

void TestOffenerEditor::fileOnAnotherPageLeavesNoEditorBehind()
{
    PageFixture f(3);
    f.open();
    f.document.DataStore().set(u"AssistentActivePage"_qs, std::int32_t{1});
    f.document.SaveFile(f.path(u"eins.xml"_qs));
    const QString shown = f.grid(valuesGrid).textMatrix(1, covariable);
    typeWithoutEnter(f);
    f.window->FileOpen(f.path(u"eins.xml"_qs));
    QCOMPARE(f.activePage(), 1);
    f.click(u"cmdNext"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 3);
    QVERIFY(!f.find<QLineEdit>(u"txtFGData"_qs)->isVisible());
    QCOMPARE(f.grid(valuesGrid).textMatrix(1, covariable), shown);
    QVERIFY(!f.document.IsDirty());
}

REGISTER_TEST(TestOffenerEditor)
#include "tst_offenereditor.moc"
