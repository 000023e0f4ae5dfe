// All results of random documents against a second computation. Where results are rounded, both
// must agree in every bit.

#include "tests/core/zweitrechnung.h"
#include "tests/support/testregistry.h"

using namespace coretest;

class TestRunden : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithASecondComputation_data();
    void agreesWithASecondComputation();
    void meansThatEndInAHalf();
    void varianceIsTakenAroundTheRoundedMean();
    void deviationIsTheRootOfTheRoundedVariance();
    void displayedResultsAreRoundedTwice();
    void tooLargeForRoundingOverflowsOnlyWhenRounding();
    void negativePlacesRoundToTens();
};

void TestRunden::agreesWithASecondComputation_data()
{
    QTest::addColumn<bool>("rounding");
    QTest::addColumn<unsigned>("seed");
    for (const bool rounding : {true, false}) {
        for (unsigned seed = 1; seed <= 10; ++seed)
            QTest::addRow("%s, seed %u", rounding ? "rounded" : "unrounded", seed)
                << rounding << seed;
    }
}

void TestRunden::agreesWithASecondComputation()
{
    QFETCH(const bool, rounding);
    QFETCH(const unsigned, seed);
    Random random(seed);
    int compared = 0;
    for (int i = 0; i < 150; ++i) {
        Kalibrierung document(german);
        Zweitrechnung second;
        second.rounding = rounding;
        fillRandomly(random, document, second);
        setPlacesRandomly(random, document, second);
        document.setZwischenergebnisseRunden(rounding);
        const std::vector<Ergebnis> actual = alleErgebnisse(document);
        const std::vector<Ergebnis> expected = alleErgebnisse(second);
        QCOMPARE(actual.size(), expected.size());
        for (std::size_t at = 0; at < actual.size(); ++at) {
            QCOMPARE(actual[at].error, expected[at].error);
            if (rounding)
                QVERIFY_SAME_BITS(actual[at].value, expected[at].value + 0.0);
            else
                QVERIFY_CLOSE(actual[at].value, expected[at].value, 1e-13);
            compared += actual[at].error == 0 ? 1 : 0;
        }
    }
    QVERIFY(compared > 5000);
}

void TestRunden::meansThatEndInAHalf()
{
    Kalibrierung document(german);
    document.setZwischenergebnisseRunden(true);
    fill(document, {{1, {2.4, 2.5}, {2.35, 2.35}}});
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 2.4000000000000004);   // of 2.45
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 2.4000000000000004); // of 2.35
    QCOMPARE(document.StatistikMittelwertString(mDirekt), u"2,4"_qs);
    document.setNachkommastellenMittelwerte(2);
    fill(document, {{1, {0.12, 0.13}, {0.37, 0.38}}});
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 0.12);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 0.38);
    document.setZwischenergebnisseRunden(false);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 0.125);
    QCOMPARE(document.StatistikMittelwertString(mDirekt), u"0,13"_qs); // shown away from zero
}

void TestRunden::varianceIsTakenAroundTheRoundedMean()
{
    Kalibrierung document(german);
    document.setNachkommastellenVarianzen(6);
    fill(document, {{1, {2.4, 2.5}, {1, 2}}});
    QVERIFY_CLOSE(document.StatistikVarianz(mDirekt), 0.005, 1e-13);
    document.setZwischenergebnisseRunden(true);
    QVERIFY_CLOSE(document.StatistikVarianz(mDirekt), 0.01, 1e-13); // around 2.4
}

void TestRunden::deviationIsTheRootOfTheRoundedVariance()
{
    Kalibrierung document(german);
    document.setZwischenergebnisseRunden(true);
    document.setNachkommastellenStandardabweichung(5);
    fill(document, {{1, {1, 2, 4}, {1, 2, 3}}, {2, {5, 7, 8}, {1, 2, 3}}});
    document.setNachkommastellenVarianzen(0);
    const double variance = document.StatistikVarianz(mDirekt);
    QVERIFY_SAME_BITS(variance, 8.0); // of 7.9
    QVERIFY_SAME_BITS(document.StatistikStandardabweichung(mDirekt), std::sqrt(8.0));
    QCOMPARE(document.StatistikStandardabweichungString(mDirekt), u"2,82843"_qs);
}

void TestRunden::displayedResultsAreRoundedTwice()
{
    Kalibrierung document(german);
    document.setZwischenergebnisseRunden(true);
    document.setNachkommastellenMittelwerte(1);
    fill(document, {{1, {97.44, 97.45, 97.46}, {1, 2, 3}}});
    QCOMPARE(document.StatistikMittelwertString(mDirekt), u"97,4"_qs); // 97.45 to the even digit
    document.setZwischenergebnisseRunden(false);
    QCOMPARE(document.StatistikMittelwertString(mDirekt), u"97,5"_qs);
}

void TestRunden::tooLargeForRoundingOverflowsOnlyWhenRounding()
{
    Kalibrierung document(german);
    fill(document,
         {{1, {300000, 300000, 300003}, {1, 2, 4}}, {2, {300000, 300005, 300000}, {2, 4, 5}}});
    document.setNachkommastellenMittelwerte(4);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 0);
    document.setZwischenergebnisseRunden(true);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 6);
    QCOMPARE(errorOf([&] { document.StatistikVarianz(mDirekt); }), 6);
    QCOMPARE(errorOf([&] { document.StatistikStandardabweichungString(mDirekt); }), 6);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mZ, mDirekt); }), 6);
    QCOMPARE(document.StatistikBestimmtheitsmaßString(mDirekt, mIndirekt), u"(Fehler)"_qs);
    QCOMPARE(document.StatistikKalibriergeradeAnstiegString(mDirekt, mZ), u"(Fehler)"_qs);
    QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mIndirekt); }), 0);
}

void TestRunden::negativePlacesRoundToTens()
{
    Kalibrierung document(german);
    fill(document, {{1, {120, 130}, {1140, 1160}}});
    document.setNachkommastellenMittelwerte(-1);
    QCOMPARE(document.StatistikMittelwertString(mDirekt), u"125"_qs);
    document.setZwischenergebnisseRunden(true);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 120.0);
    document.setNachkommastellenMittelwerte(-2);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 1200.0); // of 1150
}

REGISTER_TEST(TestRunden)
#include "tst_runden.moc"
