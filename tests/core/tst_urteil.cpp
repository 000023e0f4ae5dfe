// The acceptance rule and the verdict that is shown.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/urteil.h"

using namespace coretest;

namespace {

constexpr double epsilon = std::numeric_limits<double>::epsilon();

// A calibration with plenty of scatter; \a spread moves its determination.
void fillScattered(Kalibrierung &document, double spread)
{
    std::vector<Field> fields;
    for (int z = 1; z <= 4; ++z) {
        const double base = 10.0 * z;
        fields.push_back({static_cast<double>(z),
                          {base, base + 1, base + 2},
                          {base + spread, base - spread, base}});
    }
    fill(document, fields);
}

} // namespace

class TestUrteil : public QObject
{
    Q_OBJECT

private slots:
    void exactlyTheMinimumPasses();
    void theLastBitsDoNotDecide();
    void roundedDeterminationsReachTheTypedMinimum();
    void theRoundedDeterminationIsCompared();
    void whatCanNotBeComputedFails();
    void sentenceOfAGoodCalibration();
    void sentenceOfACriticalCalibration();
    void minimumInTheSentenceIsNotRounded();
};

void TestUrteil::exactlyTheMinimumPasses()
{
    Kalibrierung document(german);
    document.setZwischenergebnisseRunden(true);
    double spread = 0.0;
    while (document.StatistikBestimmtheitsmaßString(mIndirekt, mDirekt) != u"0,65") {
        spread += 0.01;
        QVERIFY(spread < 100.0);
        fillScattered(document, spread);
    }
    QVERIFY_SAME_BITS(document.StatistikBestimmtheitsmaß(mIndirekt, mDirekt), 0.65);
    QVERIFY(document.StatistikBestimmtheitsmaßIndirektDirektOk()); // the default limit
    document.setMinBestimmtheitsmaßIndirektDirekt(0.6500001);
    QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
}

void TestUrteil::theLastBitsDoNotDecide()
{
    Kalibrierung document(german);
    fillScattered(document, 5.0);
    const double reached = document.StatistikBestimmtheitsmaß(mIndirekt, mDirekt);
    for (const double factor : {1.0, 1.0 - epsilon, 1.0 + epsilon, 1.0 + 4 * epsilon}) {
        document.setMinBestimmtheitsmaßIndirektDirekt(reached * factor);
        document.DataStore().set(
            u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs,
            reached * factor);
        QVERIFY(document.StatistikBestimmtheitsmaßIndirektDirektOk());
    }
    for (const double factor : {1.0 + 16 * epsilon, 1.0 + 1e-9}) {
        document.DataStore().set(
            u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs,
            reached * factor);
        QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
    }
}

// Rounding multiplies by a power of ten, and the multiples of 0.000001 lie below the typed numbers
// now and then, by the last bit.
void TestUrteil::roundedDeterminationsReachTheTypedMinimum()
{
    int tested = 0;
    int below = 0;
    for (const std::int32_t places : {2, 6}) {
        Kalibrierung document(german);
        document.setZwischenergebnisseRunden(true);
        document.setNachkommastellenBestimmtheitsmaße(places);
        for (double spread = 0.0; spread < 60.0; spread += 0.1) {
            fillScattered(document, spread);
            const QString shown = document.StatistikBestimmtheitsmaßString(mIndirekt, mDirekt);
            const double typed = document.values().number(shown);
            document.setMinBestimmtheitsmaßIndirektDirekt(typed);
            QVERIFY2(document.StatistikBestimmtheitsmaßIndirektDirektOk(), qPrintable(shown));
            ++tested;
            below += document.StatistikBestimmtheitsmaß(mIndirekt, mDirekt) < typed ? 1 : 0;
            document.setMinBestimmtheitsmaßIndirektDirekt(typed + std::pow(10.0, -places));
            QVERIFY2(!document.StatistikBestimmtheitsmaßIndirektDirektOk(), qPrintable(shown));
        }
    }
    QCOMPARE(tested, 2 * 600);
    QVERIFY(below > 0); // else the last bit was never at stake
}

void TestUrteil::theRoundedDeterminationIsCompared()
{
    Kalibrierung document(german);
    fillScattered(document, 5.0);
    const double exact = document.StatistikBestimmtheitsmaß(mIndirekt, mDirekt);
    document.setNachkommastellenBestimmtheitsmaße(0);
    document.setMinBestimmtheitsmaßIndirektDirekt(1.0);
    QVERIFY(exact > 0.5 && exact < 1.0);
    QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
    document.setZwischenergebnisseRunden(true); // rounded to 1
    QVERIFY(document.StatistikBestimmtheitsmaßIndirektDirektOk());
}

void TestUrteil::whatCanNotBeComputedFails()
{
    const QString key =
        u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs;
    Kalibrierung document(german);
    QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk()); // no values
    fillScattered(document, 1.0);
    QVERIFY(document.StatistikBestimmtheitsmaßIndirektDirektOk());
    for (const Variant &minimum : {Variant(u"0.65"_qs), Variant(Null{}), Variant(QString())}) {
        document.DataStore().set(key, minimum);
        QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
    }
    document.DataStore().set(key, Empty{}); // no minimum: everything that can be computed passes
    QVERIFY(document.StatistikBestimmtheitsmaßIndirektDirektOk());
    fill(document, {{1, {5, 5, 5}, {1, 2, 3}}});
    QVERIFY(!document.StatistikBestimmtheitsmaßIndirektDirektOk());
}

void TestUrteil::sentenceOfAGoodCalibration()
{
    Kalibrierung document(german);
    fillScattered(document, 1.0);
    const Urteil verdict = urteil(document);
    QVERIFY(verdict.gut);
    QCOMPARE(verdict.wertung, u"gut"_qs);
    QCOMPARE(
        verdict.satz,
        u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt über dem "
        u"minimal erforderlichen Wert von 0,65.\r\nSomit kann die ermittelte "
        u"Kalibriergerade für die Umrechnung zwischen den Prüfmerkmalen genutzt werden."_qs);
}

void TestUrteil::sentenceOfACriticalCalibration()
{
    Kalibrierung document(english);
    fillScattered(document, 30.0);
    const Urteil verdict = urteil(document, u"\n"_qs);
    QVERIFY(!verdict.gut);
    QCOMPARE(verdict.wertung, u"kritisch"_qs);
    QCOMPARE(verdict.satz,
             u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt nicht "
             u"über dem minimal erforderlichen Wert von 0.65.\nDie ermittelte Kalibriergerade darf "
             u"somit nicht für die Umrechnung zwischen den Prüfmerkmalen genutzt werden!"_qs);
}

void TestUrteil::minimumInTheSentenceIsNotRounded()
{
    Kalibrierung document(german);
    fillScattered(document, 1.0);
    document.setMinBestimmtheitsmaßIndirektDirekt(0.655);
    QVERIFY(urteil(document).satz.contains(u" Wert von 0,655."_qs));
    document.DataStore().set(
        u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs, u"hoch"_qs);
    QCOMPARE(errorOf([&] { urteil(document); }), 13);
}

REGISTER_TEST(TestUrteil)
#include "tst_urteil.moc"
