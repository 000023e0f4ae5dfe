// The results of small documents, computed by hand, their display texts and side effects.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

using namespace coretest;

class TestAuswertung : public QObject
{
    Q_OBJECT

private slots:
    void resultsOfThreeFields();
    void fieldsWeighByTheirPoints();
    void valuesAndCovariablesAreReadFromText();
    void emptyMeasuredValueCountsAsZero();
    void allZeroesNeedNoDivision();
    void singlePointHasNoVariance();
    void otherSelectorsReadTheIndirectCharacteristic();
    void displayTextsTakeTheirOwnPlaces();
    void evaluationWritesNothingButMissingOptions();
};

void TestAuswertung::resultsOfThreeFields()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    Kalibrierung &d = document;
    QCOMPARE(d.StatistikMittelwert(mDirekt), 5.0);
    QCOMPARE(d.StatistikMittelwert(mIndirekt), 10.0);
    QCOMPARE(d.StatistikMittelwert(mZ), 2.0);
    QCOMPARE(d.StatistikVarianz(mDirekt), 60.0 / 8);
    QCOMPARE(d.StatistikVarianz(mIndirekt), 232.0 / 8);
    QVERIFY_SAME_BITS(d.StatistikVarianz(mZ), 0.75); // n - 1, not n
    QVERIFY_SAME_BITS(d.StatistikStandardabweichung(mZ), std::sqrt(0.75));
    QCOMPARE(d.StatistikKovarianz(mDirekt, mIndirekt), 117.0 / 8);
    QCOMPARE(d.StatistikKovarianz(mDirekt, mZ), 18.0 / 8);
    QCOMPARE(d.StatistikKovarianz(mIndirekt, mZ), 35.0 / 8);
    for (const auto &[x, y] :
         {std::pair(mDirekt, mIndirekt), std::pair(mDirekt, mZ), std::pair(mIndirekt, mZ)}) {
        QVERIFY_SAME_BITS(d.StatistikKovarianz(x, y), d.StatistikKovarianz(y, x));
        QVERIFY_SAME_BITS(d.StatistikBestimmtheitsmaß(x, y), d.StatistikBestimmtheitsmaß(y, x));
    }
    QVERIFY_CLOSE(d.StatistikBestimmtheitsmaß(mDirekt, mIndirekt), 117.0 * 117 / (60 * 232), 1e-15);
    QVERIFY_CLOSE(d.StatistikBestimmtheitsmaß(mDirekt, mZ), 18.0 * 18 / (60 * 6), 1e-15);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt), 18.0 / 35, 1e-15);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mIndirekt, mDirekt), 35.0 / 18, 1e-15);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mDirekt, mZ), 3.0, 1e-15);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mIndirekt, mZ), 35.0 / 6, 1e-15);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mZ, mDirekt), 6.0 / 18, 1e-15);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mZ, mIndirekt), 6.0 / 35, 1e-15);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAchsenabschnitt(mDirekt, mIndirekt), 5 - 18.0 / 35 * 10,
                  1e-14);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAchsenabschnitt(mDirekt, mZ), -1.0, 1e-14);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAchsenabschnitt(mZ, mIndirekt), 2 - 6.0 / 35 * 10,
                  1e-14);
    QVERIFY_CLOSE(d.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt),
                  d.StatistikKalibriergeradeAnstieg(mDirekt, mZ) /
                      d.StatistikKalibriergeradeAnstieg(mIndirekt, mZ),
                  1e-15);
}

void TestAuswertung::fieldsWeighByTheirPoints()
{
    Kalibrierung document(german);
    fill(document, {{2, {1}, {1}}, {8, {2, 3, 4, 5, 6}, {1, 1, 1, 1, 1}}, {5, {}, {}}});
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mZ), 7.0);
    QVERIFY_SAME_BITS(document.StatistikVarianz(mZ), 6.0);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 3.5);
    // Without a stored covariable the field's number is its value.
    document.DataStore().remove(u"Name Prüffeld 2");
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mZ), 2.0);
}

void TestAuswertung::valuesAndCovariablesAreReadFromText()
{
    Kalibrierung numbers(german);
    fillThreeFields(numbers);
    Kalibrierung texts(german);
    texts.DataStore().clear();
    numbers.DataStore().forEach([&](const QString &key, const Variant &value) {
        texts.DataStore().set(key, numbers.values().text(value));
    });
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        QVERIFY_SAME_BITS(texts.StatistikMittelwert(merkmal), numbers.StatistikMittelwert(merkmal));
        QVERIFY_SAME_BITS(texts.StatistikVarianz(merkmal), numbers.StatistikVarianz(merkmal));
    }
    QCOMPARE(texts.StatistikBestimmtheitsmaßString(mDirekt, mIndirekt), u"0,98"_qs);
}

void TestAuswertung::emptyMeasuredValueCountsAsZero()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    document.DataStore().set(document.MesswertKey(pmDirekt, 3, 3), Empty{});
    QCOMPARE(document.StatistikMittelwert(mDirekt), 4.0);
}

void TestAuswertung::allZeroesNeedNoDivision()
{
    Kalibrierung document(german);
    fill(document, {{0, {0, 0, 0}, {0, 0, 0}}, {0, {0, 0, 0}, {0, 0, 0}}});
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        QVERIFY_SAME_BITS(document.StatistikMittelwert(merkmal), 0.0);
        QVERIFY_SAME_BITS(document.StatistikVarianz(merkmal), 0.0);
    }
    QVERIFY_SAME_BITS(document.StatistikKovarianz(mDirekt, mZ), 0.0);
    // Not even for a single point or none, where the division would fail.
    fill(document, {{1, {0}, {0}}});
    QVERIFY_SAME_BITS(document.StatistikVarianz(mDirekt), 0.0);
    QVERIFY_SAME_BITS(document.StatistikKovarianz(mDirekt, mZ), 0.0);
    document.DataStore().set(u"Anzahl Prüffelder"_qs, std::int32_t{0});
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 0.0);
    // Values that cancel have the mean 0 as well.
    fill(document, {{1, {-1, 1, 0}, {-2, 4, -2}}});
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 0.0);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 0.0);
}

void TestAuswertung::singlePointHasNoVariance()
{
    Kalibrierung document(german);
    fill(document, {{3, {2.44}, {7}}});
    QVERIFY_SAME_BITS(document.StatistikVarianz(mDirekt), 0.0);
    document.setZwischenergebnisseRunden(true); // its rounded mean leaves a sum that is not 0
    QCOMPARE(errorOf([&] { document.StatistikVarianz(mDirekt); }), 11);
    QCOMPARE(errorOf([&] { document.StatistikVarianz(mIndirekt); }), 0);
}

void TestAuswertung::otherSelectorsReadTheIndirectCharacteristic()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    for (const int other : {-1, 3, 7, 2147483647}) {
        QCOMPARE(document.StatistikMittelwert(selector(other)), 10.0);
        QCOMPARE(document.StatistikVarianz(selector(other)), 29.0);
        QCOMPARE(document.StatistikStandardabweichung(selector(other)), std::sqrt(29.0));
        QCOMPARE(document.StatistikMittelwertString(selector(other)), u"10,0"_qs);
        QVERIFY_SAME_BITS(document.StatistikKalibriergeradeAnstieg(selector(other), mZ), 0.0);
        QCOMPARE(document.StatistikKalibriergeradeAchsenabschnitt(selector(other), mZ), 10.0);
    }
}

void TestAuswertung::displayTextsTakeTheirOwnPlaces()
{
    Kalibrierung document(german);
    fill(document, {{1, {1111, 2222, 3333}, {2, 5, 5}}, {2, {4444, 5555, 6667}, {8, 10, 13}}});
    document.setNachkommastellenMittelwerte(0);
    document.setNachkommastellenVarianzen(1);
    document.setNachkommastellenStandardabweichung(3);
    document.setNachkommastellenKovarianzen(4);
    document.setNachkommastellenBestimmtheitsmaße(5);
    document.setNachkommastellenAnstieg(6);
    document.setNachkommastellenAchsenabschnitt(-1);
    const Values &v = document.values();
    Kalibrierung &d = document;
    QCOMPARE(d.StatistikMittelwertString(mDirekt), u"3.889"_qs);
    QCOMPARE(d.StatistikVarianzString(mDirekt), v.display(d.StatistikVarianz(mDirekt), 1));
    QCOMPARE(d.StatistikStandardabweichungString(mDirekt),
             v.display(std::sqrt(d.StatistikVarianz(mDirekt)), 3));
    QCOMPARE(d.StatistikKovarianzString(mDirekt, mZ),
             v.display(d.StatistikKovarianz(mDirekt, mZ), 4));
    QCOMPARE(d.StatistikBestimmtheitsmaßString(mDirekt, mZ),
             v.display(d.StatistikBestimmtheitsmaß(mDirekt, mZ), 5));
    QCOMPARE(d.StatistikKalibriergeradeAnstiegString(mDirekt, mZ),
             v.display(d.StatistikKalibriergeradeAnstieg(mDirekt, mZ), 6));
    QCOMPARE(d.StatistikKalibriergeradeAchsenabschnittString(mDirekt, mZ),
             v.display(d.StatistikKalibriergeradeAchsenabschnitt(mDirekt, mZ), 0));
    QVERIFY(d.StatistikVarianzString(mDirekt).contains(u'.'));
    QCOMPARE(d.StatistikKalibriergeradeAnstiegString(mDirekt, mZ).section(u',', 1).size(), 6);
}

void TestAuswertung::evaluationWritesNothingButMissingOptions()
{
    Kalibrierung document(german);
    fillThreeFields(document);
    document.setIsDirty(false);
    const QByteArray before = document.ContentString();
    const auto evaluate = [&] {
        for (const MerkmalEnum x : {mDirekt, mIndirekt, mZ}) {
            document.StatistikStandardabweichungString(x);
            for (const MerkmalEnum y : {mDirekt, mIndirekt, mZ}) {
                document.StatistikBestimmtheitsmaßString(x, y);
                document.StatistikKalibriergeradeAnstiegString(x, y);
                document.StatistikKalibriergeradeAchsenabschnittString(x, y);
            }
        }
        document.StatistikBestimmtheitsmaßIndirektDirektOk();
    };
    evaluate();
    QCOMPARE(document.ContentString(), before);

    std::vector<QString> options;
    for (const QString &key : document.DataStore().keys()) {
        if (key == u"Zwischenergebnisse runden" || key.startsWith(u"minimales") ||
            (key.startsWith(u"Nachkommastellen")))
            options.push_back(key);
    }
    QCOMPARE(options.size(), std::size_t{9});
    for (const QString &key : options)
        document.DataStore().remove(key);
    const std::size_t without = document.DataStore().size();
    evaluate();
    QVERIFY(!document.IsDirty());
    QCOMPARE(document.DataStore().size(), without + 9);
    for (const QString &key : options)
        QVERIFY(*document.DataStore().find(key) == Variant(Empty{}));
    // They are added in the order in which the results ask for them.
    const std::vector<QString> keys = document.DataStore().keys();
    QVERIFY(std::vector<QString>(keys.begin() + static_cast<std::ptrdiff_t>(without), keys.end()) ==
            (std::vector<QString>{
                u"Nachkommastellen Mittelwerte"_qs, u"Zwischenergebnisse runden"_qs,
                u"Nachkommastellen Varianzen"_qs, u"Nachkommastellen Standardabweichung"_qs,
                u"Nachkommastellen Anstieg"_qs, u"Nachkommastellen Achsenabschnitt"_qs,
                u"Nachkommastellen Kovarianzen"_qs, u"Nachkommastellen Bestimmtheitsmaße"_qs,
                u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs}));
}

REGISTER_TEST(TestAuswertung)
#include "tst_auswertung.moc"
