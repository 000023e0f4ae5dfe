#include "tests/support/testregistry.h"

#include "grid/celleditor.h"

#include <QTest>

/// The choice of a list's entry.
class TestCellEditor : public QObject
{
    Q_OBJECT

private slots:
    void closestEntryIsTheLongestCommonBeginning_data();
    void closestEntryIsTheLongestCommonBeginning();
};

void TestCellEditor::closestEntryIsTheLongestCommonBeginning_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("entry");
    const QStringList soils({u"Kies"_qs, u"Kiessand"_qs, u"Sand"_qs, u"Sand"_qs});
    QTest::newRow("equal beats an earlier beginning") << soils << u"Kiessand"_qs << 1;
    QTest::newRow("the first of two equal ones") << soils << u"Sand"_qs << 2;
    QTest::newRow("longer text than the entry") << soils << u"Kiese"_qs << 0;
    QTest::newRow("longer beginning") << soils << u"Kiessa"_qs << 1;
    QTest::newRow("tie") << soils << u"Ki"_qs << 0;
    QTest::newRow("case counts") << soils << u"kies"_qs << -1;
    QTest::newRow("nothing shared") << soils << u"Ton"_qs << -1;
    QTest::newRow("empty text") << soils << QString() << -1;
    QTest::newRow("empty text, empty entry") << QStringList({QString()}) << QString() << -1;
    QTest::newRow("no entries") << QStringList() << u"Kies"_qs << -1;
    QTest::newRow("shared only behind the beginning") << soils << u"xKies"_qs << -1;
}

void TestCellEditor::closestEntryIsTheLongestCommonBeginning()
{
    QFETCH(const QStringList, entries);
    QFETCH(const QString, text);
    QFETCH(const int, entry);
    QCOMPARE(closestEntry(entries, text), entry);
}

REGISTER_TEST(TestCellEditor)
#include "tst_celleditor.moc"
