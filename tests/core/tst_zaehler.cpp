// Counts as a file can hold them: whatever stands there, everything ends at once. Walking 10^9
// fields would take longer than a test may.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include <functional>

using namespace coretest;

namespace {

const QString fields = u"Anzahl Prüffelder"_qs;
const QString points = u"Prüffeld Prüfpunktanzahl 2"_qs;

} // namespace

class TestZaehler : public QObject
{
    Q_OBJECT

private slots:
    void storedCounts_data();
    void storedCounts();
    void negativeCountsAreAnEmptySample();
    void evaluatedPointsAreThoseOfTheSamples();
    void totalOfHugeCountsEndsAtOnce();
    void totalCountsWhatIsStoredAmongHugeCounts();
    void totalBeyond32BitsOverflows();
    void aMillionPointsAreEvaluatedAndNoMore();
};

void TestZaehler::storedCounts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::int32_t>("getterError");
    QTest::addColumn<std::int32_t>("count");
    QTest::addColumn<std::int32_t>("error");
    QTest::newRow("no number") << u"abc"_qs << 13 << 0 << 13;
    QTest::newRow("empty") << QString() << 13 << 0 << 13;
    QTest::newRow("point in German") << u"3.5"_qs << 13 << 0 << 13;
    QTest::newRow("too large to count") << u"99999999999"_qs << 6 << 0 << 6;
    QTest::newRow("too large for a double") << u"1e400"_qs << 6 << 0 << 6;
    QTest::newRow("a thousand millions") << u"1e9"_qs << 0 << 1'000'000'000 << 6;
    QTest::newRow("largest") << u"2147483647"_qs << 0 << 2147483647 << 6;
    QTest::newRow("broken number") << u"3,5"_qs << 0 << 4 << 94; // four, whose values are missing
}

void TestZaehler::storedCounts()
{
    QFETCH(const QString, text);
    QFETCH(const std::int32_t, getterError);
    QFETCH(const std::int32_t, count);
    QFETCH(const std::int32_t, error);
    for (const QString &key : {fields, points}) {
        Kalibrierung document(german);
        fill(document,
             {{1, {1, 2, 3}, {3, 5, 9}}, {2, {2, 3, 4}, {5, 9, 12}}, {3, {4, 4, 5}, {9, 9, 15}}});
        document.DataStore().set(key, text);
        const auto getter = [&] {
            return key == fields ? document.PrüffelderAnzahl() : document.PrüffeldPrüfpunkte(2);
        };
        QCOMPARE(errorOf(getter), getterError);
        if (getterError == 0)
            QCOMPARE(getter(), count);
        else
            QCOMPARE(errorOf([&] { document.PrüfpunkteTotal(); }), getterError);
        QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), error);
        QCOMPARE(errorOf([&] { document.StatistikVarianz(mIndirekt); }), error);
        QCOMPARE(errorOf([&] { document.StatistikKovarianz(mDirekt, mZ); }), error);
        QCOMPARE(errorOf([&] { document.StatistikKalibriergeradeAnstieg(mDirekt, mZ); }), error);
        QCOMPARE(document.StatistikBestimmtheitsmaßString(mDirekt, mIndirekt), u"(Fehler)"_qs);
        QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
        // The covariable needs no measured values.
        QCOMPARE(errorOf([&] { document.StatistikMittelwert(mZ); }), error == 94 ? 0 : error);
    }
}

void TestZaehler::negativeCountsAreAnEmptySample()
{
    Kalibrierung document(german);
    document.DataStore().set(fields, u"-1"_qs);
    QCOMPARE(document.PrüffelderAnzahl(), -1);
    QCOMPARE(document.PrüfpunkteTotal(), 0);
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        QVERIFY_SAME_BITS(document.StatistikMittelwert(merkmal), 0.0);
        QVERIFY_SAME_BITS(document.StatistikVarianz(merkmal), 0.0);
        QVERIFY_SAME_BITS(document.StatistikStandardabweichung(merkmal), 0.0);
    }
    QVERIFY_SAME_BITS(document.StatistikKovarianz(mDirekt, mIndirekt), 0.0);
    QCOMPARE(errorOf([&] { document.StatistikBestimmtheitsmaß(mDirekt, mIndirekt); }), 11);
    QCOMPARE(errorOf([&] { document.StatistikKalibriergeradeAnstieg(mDirekt, mZ); }), 11);

    // A field with a negative count has no points; the other fields are evaluated.
    fill(document, {{1, {1, 2, 3}, {3, 5, 9}}, {5, {2, 3, 4}, {5, 9, 12}}});
    document.DataStore().set(points, u"-1"_qs);
    QCOMPARE(document.PrüffeldPrüfpunkte(2), -1);
    QCOMPARE(document.StatistikMittelwert(mDirekt), 2.0);
    QCOMPARE(document.StatistikMittelwert(mZ), 1.0);
    QCOMPARE(document.StatistikVarianz(mDirekt), 1.0);

    // Nothing but negative counts, and one that must not make room for others.
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"-3"_qs);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 0.0);
    QVERIFY_SAME_BITS(document.StatistikVarianz(mZ), 0.0);
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"-2147483648"_qs);
    document.DataStore().set(points, u"1000001"_qs);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mZ); }), 6);
}

void TestZaehler::evaluatedPointsAreThoseOfTheSamples()
{
    Kalibrierung document(german);
    QCOMPARE(document.StatistikPrüfpunkte(), 12);
    document.DataStore().set(points, u"-1"_qs);
    QCOMPARE(document.PrüfpunkteTotal(), 7); // the stored counts, added up
    QCOMPARE(document.StatistikPrüfpunkte(), 8);
    document.DataStore().set(points, u"2000000000"_qs);
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 3"_qs, u"-2000000000"_qs);
    QCOMPARE(document.PrüfpunkteTotal(), 4);
    QCOMPARE(errorOf([&] { document.StatistikPrüfpunkte(); }), 6);
    document.DataStore().set(points, u"viele"_qs);
    QCOMPARE(errorOf([&] { document.StatistikPrüfpunkte(); }), 13);
}

void TestZaehler::totalOfHugeCountsEndsAtOnce()
{
    Kalibrierung document(german);
    document.DataStore().set(fields, u"500000000"_qs);
    QCOMPARE(document.PrüfpunkteTotal(), 2'000'000'000);
    document.DataStore().set(fields, u"1e9"_qs);
    QCOMPARE(errorOf([&] { document.PrüfpunkteTotal(); }), 6);
    document.DataStore().set(fields, std::numeric_limits<std::int32_t>::max());
    QCOMPARE(errorOf([&] { document.PrüfpunkteTotal(); }), 6);
}

void TestZaehler::totalCountsWhatIsStoredAmongHugeCounts()
{
    Kalibrierung document(german);
    const QString prefix = u"Prüffeld Prüfpunktanzahl "_qs;
    document.DataStore().set(fields, std::int32_t{1000});
    document.DataStore().set(prefix + u"1"_qs, std::int32_t{10});
    document.DataStore().set(prefix + u"1000"_qs, u"20"_qs);
    document.DataStore().set(prefix + u"7"_qs, Empty{});
    // None of these belongs to a field of the document.
    for (const QString &other : {u"1001"_qs, u"0"_qs, u"-1"_qs, u"01"_qs, u"+2"_qs, u" 3"_qs,
                                 u""_qs, u"4x"_qs, u"99999999999"_qs})
        document.DataStore().set(prefix + other, std::int32_t{5000});
    const std::int32_t expected = 10 + 20 + 0 + 997 * 4;
    QCOMPARE(document.PrüfpunkteTotal(), expected);
    // A store with more entries than fields is walked the other way round, with the same result.
    for (int i = 0; i < 2000; ++i)
        document.DataStore().set(QString::number(i), Empty{});
    QCOMPARE(document.PrüfpunkteTotal(), expected);
    document.DataStore().set(prefix + u"500"_qs, u"abc"_qs);
    QCOMPARE(errorOf([&] { document.PrüfpunkteTotal(); }), 13);
}

void TestZaehler::totalBeyond32BitsOverflows()
{
    Kalibrierung document(german);
    document.setPrüffeldPrüfpunkte(1, 2147483647 - 8);
    QCOMPARE(document.PrüfpunkteTotal(), 2147483647);
    document.setPrüffeldPrüfpunkte(2, 5);
    QCOMPARE(errorOf([&] { document.PrüfpunkteTotal(); }), 6);
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs,
                             std::numeric_limits<std::int32_t>::min());
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 2"_qs, std::int32_t{-100});
    QCOMPARE(errorOf([&] { document.PrüfpunkteTotal(); }), 6);
}

void TestZaehler::aMillionPointsAreEvaluatedAndNoMore()
{
    Kalibrierung document(german);
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, std::int32_t{999'992});
    QCOMPARE(document.StatistikMittelwert(mZ), (999'992 + 4 * 2 + 4 * 3) / 1e6);
    document.setPrüffeldPrüfpunkte(2, 5);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mZ); }), 6);
    document.setPrüffeldPrüfpunkte(3, 3);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mZ); }), 0);
}

REGISTER_TEST(TestZaehler)
#include "tst_zaehler.moc"
