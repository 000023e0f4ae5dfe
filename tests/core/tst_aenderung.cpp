// Change detection, the flag of unsaved changes and its event.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include <QSignalSpy>
#include <QTemporaryDir>

using namespace coretest;

class TestAenderung : public QObject
{
    Q_OBJECT

private slots:
    void onlyAnotherTextIsAChange_data();
    void onlyAnotherTextIsAChange();
    void sameNumberTypedAndAssignedIsOneChange();
    void aStoredValueKeepsItsKind();
    void nullCanNotBeWritten();
    void keysAndValuesMayComeFromTheStore();
    void eventIsRaisedOnlyWhenTheFlagChanges();
    void anEmptyFlagIsACleanOne();
    void resetRaisesTheEventExactlyTwice();
    void flagIsSetBeforeTheFirstEventOfReset();
    void clearingTheStoreRaisesNothing();
    void storedFlagIsComparedAsATruthValue_data();
    void storedFlagIsComparedAsATruthValue();
    void loadedFlagIsText();
    void flagLiesInTheStoreDirectly();
};

void TestAenderung::onlyAnotherTextIsAChange_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("written");
    QTest::addColumn<bool>("change");
    QTest::newRow("same text") << 0 << 0 << false;
    QTest::newRow("number and its text") << 1 << 2 << false;
    QTest::newRow("text and its number") << 2 << 1 << false;
    QTest::newRow("number in another writing") << 2 << 3 << true;
    QTest::newRow("double beyond the 15th digit") << 1 << 4 << false;
    QTest::newRow("whole number and double") << 5 << 6 << false;
    QTest::newRow("whole number and another") << 5 << 7 << true;
    QTest::newRow("truth value and its word") << 8 << 9 << false;
    QTest::newRow("truth value and the other") << 8 << 10 << true;
    QTest::newRow("truth value and number") << 8 << 11 << true;
    QTest::newRow("empty and empty text") << 12 << 13 << false;
    QTest::newRow("empty text and empty") << 13 << 12 << false;
    QTest::newRow("text and empty") << 0 << 12 << true;
    QTest::newRow("other case") << 0 << 14 << true;
    QTest::newRow("blank behind") << 0 << 15 << true;
}

void TestAenderung::onlyAnotherTextIsAChange()
{
    const Variant values[] = {u"Ton"_qs,    12.5,
                              u"12,5"_qs,   u"12,50"_qs,
                              12.5 + 1e-14, std::int32_t{3},
                              3.0,          std::int32_t{4},
                              true,         u"Wahr"_qs,
                              false,        std::int32_t{-1},
                              Empty{},      QString(),
                              u"ton"_qs,    u"Ton "_qs};
    QFETCH(const int, stored);
    QFETCH(const int, written);
    QFETCH(const bool, change);
    Kalibrierung document(german);
    document.DataStore().set(u"key"_qs, values[stored]);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.DataStoreLet(u"key"_qs, values[written]);
    QVERIFY(*document.DataStore().find(u"key") == values[change ? written : stored]);
    QCOMPARE(document.IsDirty(), change);
    QCOMPARE(changed.count(), change ? 1 : 0);
}

void TestAenderung::sameNumberTypedAndAssignedIsOneChange()
{
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, u"12,5"_qs);
    QVERIFY(document.IsDirty());
    document.setIsDirty(false);
    document.setMesswert(pmDirekt, 1, 1, 12.5);
    QVERIFY(!document.IsDirty());
    document.setMesswert(pmDirekt, 1, 1, u"12,50"_qs); // converted before it is compared
    QVERIFY(!document.IsDirty());
}

void TestAenderung::aStoredValueKeepsItsKind()
{
    Kalibrierung document(german);
    for (const Variant &value :
         {Variant(std::int32_t{7}), Variant(1.5), Variant(true), Variant(u"x"_qs)}) {
        document.DataStoreLet(u"key"_qs, value);
        QVERIFY(*document.DataStore().find(u"key") == value);
    }
}

void TestAenderung::nullCanNotBeWritten()
{
    Kalibrierung document(german);
    document.DataStore().set(u"key"_qs, 1.5);
    QCOMPARE(errorOf([&] { document.DataStoreLet(u"key"_qs, Null{}); }), 94);
    QVERIFY(*document.DataStore().find(u"key") == Variant(1.5));
    document.DataStore().set(u"key"_qs, Null{});
    QCOMPARE(errorOf([&] { document.DataStoreLet(u"key"_qs, 1.5); }), 94);
    QVERIFY(!document.IsDirty());
}

void TestAenderung::keysAndValuesMayComeFromTheStore()
{
    Kalibrierung document(german);
    const QString text = u"a text long enough to lie on the heap"_qs;
    document.DataStore().set(u"source"_qs, text);
    for (int i = 0; i < 1000; ++i) // adding keys moves the entries now and then
        document.DataStoreLet(QString::number(i), *document.DataStore().find(u"source"));
    document.DataStoreLet(std::get<QString>(*document.DataStore().find(u"source")), 1.5);
    QVERIFY(*document.DataStore().find(u"999") == Variant(text));
    QVERIFY(*document.DataStore().find(text) == Variant(1.5));
}

void TestAenderung::eventIsRaisedOnlyWhenTheFlagChanges()
{
    Kalibrierung document(german);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.setIsDirty(false);
    QCOMPARE(changed.count(), 0);
    document.setIsDirty(true);
    document.setIsDirty(true);
    QCOMPARE(changed.count(), 1);
    document.DataStoreLet(u"key"_qs, u"new"_qs); // dirty already
    QCOMPARE(changed.count(), 1);
    document.setIsDirty(false);
    QCOMPARE(changed.count(), 2);
    document.DataStoreLet(u"key"_qs, u"newer"_qs);
    QCOMPARE(changed.count(), 3);
    QVERIFY(document.IsDirty());
}

void TestAenderung::anEmptyFlagIsACleanOne()
{
    Kalibrierung document(german);
    document.DataStore().set(u"IsDirty"_qs, QString());
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.setIsDirty(false);
    QCOMPARE(changed.count(), 0);
    document.setIsDirty(true);
    QCOMPARE(changed.count(), 1);
}

void TestAenderung::resetRaisesTheEventExactlyTwice()
{
    Kalibrierung document(german);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.Reset();
    QCOMPARE(changed.count(), 2);
    document.setIsDirty(true);
    QCOMPARE(changed.count(), 3);
    document.Reset(); // the flag goes with the store, without an event
    QCOMPARE(changed.count(), 5);
    QVERIFY(!document.IsDirty());
    document.DataStore().clear();
    document.Reset();
    QCOMPARE(changed.count(), 7);
}

void TestAenderung::flagIsSetBeforeTheFirstEventOfReset()
{
    Kalibrierung document(german);
    std::vector<std::pair<bool, std::size_t>> seen;
    connect(&document, &Kalibrierung::IsDirtyChanged, this,
            [&] { seen.emplace_back(document.IsDirty(), document.DataStore().size()); });
    document.Reset();
    QCOMPARE(seen.size(), std::size_t{2});
    QVERIFY(seen[0] == std::pair(true, std::size_t{2})); // behind the first default
    QVERIFY(seen[1] == std::pair(false, document.DataStore().size()));
}

void TestAenderung::clearingTheStoreRaisesNothing()
{
    Kalibrierung document(german);
    document.setIsDirty(true);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.DataStore().clear();
    QVERIFY(!document.IsDirty());
    QCOMPARE(changed.count(), 0);
    document.setIsDirty(false); // an absent flag counts as clean
    QCOMPARE(changed.count(), 0);
    QVERIFY(!document.DataStore().exists(u"IsDirty"));
}

void TestAenderung::storedFlagIsComparedAsATruthValue_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<bool>("reads");
    QTest::addColumn<bool>("falseIsAChange");
    QTest::newRow("empty") << 0 << false << false;
    QTest::newRow("false as text") << 1 << false << false;
    QTest::newRow("false in English") << 2 << false << false;
    QTest::newRow("0 as text") << 3 << false << false;
    QTest::newRow("true as text") << 4 << true << true;
    QTest::newRow("-1 as text") << 5 << true << true;
    QTest::newRow("1.0") << 6 << true << true;
    QTest::newRow("text that is no truth value") << 7 << false << true;
    QTest::newRow("null") << 8 << false << true;
}

void TestAenderung::storedFlagIsComparedAsATruthValue()
{
    const Variant values[] = {Empty{},  u"Falsch"_qs, u"False"_qs,      u"0"_qs, u"Wahr"_qs,
                              u"-1"_qs, 1.0,          u"vielleicht"_qs, Null{}};
    QFETCH(const int, stored);
    QFETCH(const bool, reads);
    QFETCH(const bool, falseIsAChange);
    Kalibrierung document(german);
    document.DataStore().set(u"IsDirty"_qs, values[stored]);
    QCOMPARE(document.IsDirty(), reads);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.setIsDirty(false);
    QCOMPARE(changed.count(), falseIsAChange ? 1 : 0);
    QVERIFY(!document.IsDirty());
    if (falseIsAChange)
        QVERIFY(*document.DataStore().find(u"IsDirty") == Variant(false));

    document.DataStore().set(u"IsDirty"_qs, values[stored]);
    changed.clear();
    document.setIsDirty(true);
    QCOMPARE(changed.count(), reads ? 0 : 1);
    QVERIFY(document.IsDirty());
}

void TestAenderung::loadedFlagIsText()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"a.xml"_qs);
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    document.SaveFile(path); // leaves the flag alone: the file says "dirty"
    QVERIFY(document.IsDirty());
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.LoadFile(path);
    QCOMPARE(changed.count(), 2); // those of the reset
    QVERIFY(*document.DataStore().find(u"IsDirty") == Variant(u"Wahr"_qs));
    QVERIFY(document.IsDirty());
    document.setIsDirty(true);
    QCOMPARE(changed.count(), 2);
    document.setIsDirty(false);
    QCOMPARE(changed.count(), 3);
    // Every other value is text now, and reads as before.
    QVERIFY(document.Messwert(pmDirekt, 1, 1) == Variant(u"97,5"_qs));
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    QVERIFY(!document.IsDirty());
}

void TestAenderung::flagLiesInTheStoreDirectly()
{
    Kalibrierung document(german);
    document.DataStore().remove(u"IsDirty");
    document.setIsDirty(true);
    QVERIFY(*document.DataStore().find(u"IsDirty") == Variant(true));
    QCOMPARE(document.DataStore().keys().back(), u"IsDirty"_qs);
}

REGISTER_TEST(TestAenderung)
#include "tst_aenderung.moc"
