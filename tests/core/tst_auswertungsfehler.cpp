// What happens where a result can not be computed.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

using namespace coretest;

namespace {

void removeValue(Kalibrierung &document)
{
    document.removeMesswert(pmDirekt, 2, 2);
}

} // namespace

class TestAuswertungsfehler : public QObject
{
    Q_OBJECT

private slots:
    void pairsWithoutCovariance_data();
    void pairsWithoutCovariance();
    void missingValueComesBeforeTheUnsupportedPair();
    void missingValueReachesEveryResultBuiltOnIt();
    void missingValueComesBeforeABadCountOfALaterField();
    void productOfVariancesBeyondADoubleOverflows();
    void measuredTextThatIsNoNumber();
    void zeroVarianceIsADivisionByZero();
    void constantCovariableHasNoLine();
    void displayTextsOfFailures();
    void displayTextsNeedTheirOption();
    void optionsAreReadAlsoWithoutRounding();
};

void TestAuswertungsfehler::pairsWithoutCovariance_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    for (const int x : {-1, 0, 1, 2, 3}) {
        for (const int y : {-1, 0, 1, 2, 3}) {
            if (x == y || x < 0 || x > 2 || y < 0 || y > 2)
                QTest::addRow("%d and %d", x, y) << x << y;
        }
    }
}

void TestAuswertungsfehler::pairsWithoutCovariance()
{
    QFETCH(const int, x);
    QFETCH(const int, y);
    Kalibrierung document(german);
    fillThreeFields(document);
    const MerkmalEnum X = selector(x);
    const MerkmalEnum Y = selector(y);
    for (const bool rounding : {false, true}) {
        document.setZwischenergebnisseRunden(rounding);
        QCOMPARE(errorOf([&] { document.StatistikKovarianz(X, Y); }), 5);
        QCOMPARE(errorOf([&] { document.StatistikKovarianzString(X, Y); }), 5);
        QCOMPARE(errorOf([&] { document.StatistikBestimmtheitsmaß(X, Y); }), 5);
        QCOMPARE(document.StatistikBestimmtheitsmaßString(X, Y), u"(Fehler)"_qs);
        QVERIFY_SAME_BITS(document.StatistikKalibriergeradeAnstieg(X, Y), 0.0);
        QCOMPARE(document.StatistikKalibriergeradeAnstiegString(X, Y), u"0,0000"_qs);
        QVERIFY_SAME_BITS(document.StatistikKalibriergeradeAchsenabschnitt(X, Y),
                          document.StatistikMittelwert(X));
    }
}

void TestAuswertungsfehler::missingValueComesBeforeTheUnsupportedPair()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    removeValue(document);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mDirekt, mDirekt); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mZ, mDirekt); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(selector(5), mDirekt); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mDirekt, selector(5)); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mIndirekt, mIndirekt); }), 5);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mZ, mZ); }), 5);
    // The first mean decides, then the second.
    document.DataStore().set(document.MesswertKey(pmIndirekt, 1, 1), u"x"_qs);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mDirekt, mIndirekt); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mIndirekt, mDirekt); }), 13);
}

void TestAuswertungsfehler::missingValueReachesEveryResultBuiltOnIt()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    removeValue(document);
    Kalibrierung &d = document;
    QCOMPARE(errorOf([&] { d.StatistikMittelwert(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { d.StatistikVarianz(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { d.StatistikStandardabweichung(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { d.StatistikMittelwertString(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { d.StatistikVarianzString(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { d.StatistikStandardabweichungString(mDirekt); }), 94);
    for (const auto &[x, y] : {std::pair(mDirekt, mIndirekt), std::pair(mIndirekt, mDirekt),
                               std::pair(mDirekt, mZ), std::pair(mZ, mDirekt)}) {
        QCOMPARE(errorOf([&] { d.StatistikKovarianz(x, y); }), 94);
        QCOMPARE(errorOf([&] { d.StatistikKovarianzString(x, y); }), 94);
        QCOMPARE(errorOf([&] { d.StatistikBestimmtheitsmaß(x, y); }), 94);
        QCOMPARE(errorOf([&] { d.StatistikKalibriergeradeAnstieg(x, y); }), 94);
        QCOMPARE(errorOf([&] { d.StatistikKalibriergeradeAchsenabschnitt(x, y); }), 94);
    }
    QVERIFY_SAME_BITS(d.StatistikKalibriergeradeAnstieg(mDirekt, mDirekt), 0.0);
    QCOMPARE(errorOf([&] { d.StatistikKalibriergeradeAchsenabschnitt(mDirekt, mDirekt); }), 94);
    // What does not need the direct values is there.
    QCOMPARE(d.StatistikMittelwert(mIndirekt), 10.0);
    QCOMPARE(d.StatistikMittelwert(mZ), 2.0);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mIndirekt, mZ), 35.0 / 6, 1e-15);
}

void TestAuswertungsfehler::missingValueComesBeforeABadCountOfALaterField()
{
    Kalibrierung document(german);
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 3"_qs, u"viele"_qs);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 94);
    for (const int field : {1, 2}) {
        for (int point = 1; point <= 4; ++point)
            document.setMesswert(pmDirekt, field, point, 1.0);
    }
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 13);
}

void TestAuswertungsfehler::productOfVariancesBeyondADoubleOverflows()
{
    Kalibrierung document(german);
    for (int field = 1; field <= 3; ++field) {
        for (int point = 1; point <= 4; ++point) {
            // Uncorrelated, so that the covariance is 0 and only the product is too large.
            document.setMesswert(pmDirekt, field, point, point % 2 ? 1e80 : -1e80);
            document.setMesswert(pmIndirekt, field, point, point <= 2 ? 1e80 : -1e80);
        }
    }
    QCOMPARE(document.StatistikKovarianz(mDirekt, mIndirekt), 0.0);
    QCOMPARE(errorOf([&] { document.StatistikBestimmtheitsmaß(mDirekt, mIndirekt); }), 6);
}

void TestAuswertungsfehler::measuredTextThatIsNoNumber()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    const QString key = document.MesswertKey(pmDirekt, 2, 2);
    for (const QString &text : {u"fünf"_qs, QString(), u"5.0"_qs}) {
        document.DataStore().set(key, text);
        QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 13);
        QCOMPARE(errorOf([&] { document.StatistikVarianz(mDirekt); }), 13);
        QCOMPARE(errorOf([&] { document.StatistikKovarianz(mDirekt, mZ); }), 13);
        QCOMPARE(document.StatistikKalibriergeradeAnstiegString(mDirekt, mZ), u"(Fehler)"_qs);
    }
    document.DataStore().set(u"Name Prüffeld 3"_qs, u"drei"_qs);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mZ); }), 13);
}

void TestAuswertungsfehler::zeroVarianceIsADivisionByZero()
{
    Kalibrierung document(german);
    fill(document, {{1, {5, 5, 5}, {1, 2, 3}}, {2, {5, 5, 5}, {2, 3, 4}}});
    QCOMPARE(errorOf([&] { document.StatistikBestimmtheitsmaß(mDirekt, mIndirekt); }), 11);
    QCOMPARE(document.StatistikBestimmtheitsmaßString(mDirekt, mIndirekt), u"(Fehler)"_qs);
    QVERIFY_SAME_BITS(document.StatistikKalibriergeradeAnstieg(mDirekt, mZ), 0.0);
    QVERIFY_SAME_BITS(document.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt), 0.0);
    QCOMPARE(errorOf([&] { document.StatistikKalibriergeradeAnstieg(mIndirekt, mDirekt); }), 11);
    QCOMPARE(errorOf([&] { document.StatistikKalibriergeradeAnstieg(mZ, mDirekt); }), 11);
    QCOMPARE(errorOf([&] { document.StatistikKalibriergeradeAchsenabschnitt(mZ, mDirekt); }), 11);
    QCOMPARE(document.StatistikKalibriergeradeAnstiegString(mZ, mDirekt), u"(Fehler)"_qs);
    QCOMPARE(document.StatistikKalibriergeradeAchsenabschnittString(mZ, mDirekt), u"(Fehler)"_qs);
    QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
}

void TestAuswertungsfehler::constantCovariableHasNoLine()
{
    Kalibrierung document(german);
    fill(document, {{4, {1, 2, 3}, {2, 5, 5}}, {4, {4, 5, 6}, {8, 10, 13}}});
    for (const auto &[x, y] : {std::pair(mDirekt, mIndirekt), std::pair(mDirekt, mZ)})
        QCOMPARE(errorOf([&] { document.StatistikKalibriergeradeAnstieg(x, y); }), 11);
    QCOMPARE(errorOf([&] { document.StatistikKalibriergeradeAnstieg(mZ, mDirekt); }), 11);
    QCOMPARE(errorOf([&] { document.StatistikBestimmtheitsmaß(mDirekt, mZ); }), 11);
    QVERIFY(document.StatistikBestimmtheitsmaßIndirektDirektOk()); // that pair needs no covariable
}

void TestAuswertungsfehler::displayTextsOfFailures()
{
    Kalibrierung document(german); // no measured values at all
    QCOMPARE(errorOf([&] { document.StatistikMittelwertString(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikVarianzString(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikStandardabweichungString(mDirekt); }), 94);
    QCOMPARE(errorOf([&] { document.StatistikKovarianzString(mDirekt, mZ); }), 94);
    QCOMPARE(document.StatistikBestimmtheitsmaßString(mDirekt, mZ), u"(Fehler)"_qs);
    QCOMPARE(document.StatistikKalibriergeradeAnstiegString(mDirekt, mZ), u"(Fehler)"_qs);
    QCOMPARE(document.StatistikKalibriergeradeAchsenabschnittString(mDirekt, mZ), u"(Fehler)"_qs);
    QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
    QCOMPARE(document.StatistikMittelwertString(mZ), u"2,0"_qs);
}

void TestAuswertungsfehler::displayTextsNeedTheirOption()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    document.DataStore().set(u"Nachkommastellen Standardabweichung"_qs, u"1e10"_qs);
    QCOMPARE(errorOf([&] { document.StatistikStandardabweichungString(mDirekt); }), 6);
    QCOMPARE(errorOf([&] { document.StatistikStandardabweichung(mDirekt); }), 0);
    for (const QString &key :
         {u"Nachkommastellen Bestimmtheitsmaße"_qs, u"Nachkommastellen Anstieg"_qs,
          u"Nachkommastellen Achsenabschnitt"_qs})
        document.DataStore().set(key, u"1e10"_qs);
    QCOMPARE(document.StatistikBestimmtheitsmaßString(mDirekt, mZ), u"(Fehler)"_qs);
    QCOMPARE(document.StatistikKalibriergeradeAnstiegString(mDirekt, mZ), u"(Fehler)"_qs);
    QCOMPARE(document.StatistikKalibriergeradeAchsenabschnittString(mDirekt, mZ), u"(Fehler)"_qs);
    // The result's own failure comes before its option's.
    removeValue(document);
    QCOMPARE(errorOf([&] { document.StatistikStandardabweichungString(mDirekt); }), 94);
}

void TestAuswertungsfehler::optionsAreReadAlsoWithoutRounding()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    document.DataStore().set(u"Nachkommastellen Varianzen"_qs, u"1e10"_qs);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 0);
    QCOMPARE(errorOf([&] { document.StatistikVarianz(mDirekt); }), 6);
    QCOMPARE(errorOf([&] { document.StatistikKovarianz(mDirekt, mZ); }), 0);
    document.DataStore().set(u"Zwischenergebnisse runden"_qs, u"vielleicht"_qs);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 13);
}

REGISTER_TEST(TestAuswertungsfehler)
#include "tst_auswertungsfehler.moc"
