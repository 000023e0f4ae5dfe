// The nine calculation options.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

using namespace coretest;

namespace {

struct Places
{
    const char *shown;
    const char16_t *key;
    std::int32_t (Kalibrierung::*get)();
    void (Kalibrierung::*set)(std::int32_t);
    std::int32_t initial;
};

using K = Kalibrierung;

const Places all[] = {
    {"means", u"Nachkommastellen Mittelwerte", &K::NachkommastellenMittelwerte,
     &K::setNachkommastellenMittelwerte, 1},
    {"variances", u"Nachkommastellen Varianzen", &K::NachkommastellenVarianzen,
     &K::setNachkommastellenVarianzen, 2},
    {"deviations", u"Nachkommastellen Standardabweichung", &K::NachkommastellenStandardabweichung,
     &K::setNachkommastellenStandardabweichung, 2},
    {"covariances", u"Nachkommastellen Kovarianzen", &K::NachkommastellenKovarianzen,
     &K::setNachkommastellenKovarianzen, 2},
    {"determinations", u"Nachkommastellen Bestimmtheitsmaße", &K::NachkommastellenBestimmtheitsmaße,
     &K::setNachkommastellenBestimmtheitsmaße, 2},
    {"slopes", u"Nachkommastellen Anstieg", &K::NachkommastellenAnstieg,
     &K::setNachkommastellenAnstieg, 4},
    {"intercepts", u"Nachkommastellen Achsenabschnitt", &K::NachkommastellenAchsenabschnitt,
     &K::setNachkommastellenAchsenabschnitt, 2},
};

const QString roundKey = u"Zwischenergebnisse runden"_qs;
const QString minimumKey =
    u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs;

} // namespace

class TestRechenoptionen : public QObject
{
    Q_OBJECT

private slots:
    void decimalPlaces_data();
    void decimalPlaces();
    void decimalPlacesAreTheLeadingNumber_data();
    void decimalPlacesAreTheLeadingNumber();
    void roundingOfIntermediateResults();
    void minimumOfTheDetermination();
};

void TestRechenoptionen::decimalPlaces_data()
{
    QTest::addColumn<int>("option");
    for (int option = 0; option < 7; ++option)
        QTest::newRow(all[option].shown) << option;
}

void TestRechenoptionen::decimalPlaces()
{
    QFETCH(const int, option);
    const auto &[shown, key, get, set, initial] = all[option];
    Kalibrierung document(german);
    QCOMPARE((document.*get)(), initial);
    (document.*set)(initial);
    QVERIFY(!document.IsDirty());
    // The document itself takes any number of places.
    for (const std::int32_t places : {0, 9, -3, 31, std::numeric_limits<std::int32_t>::max(),
                                      std::numeric_limits<std::int32_t>::min()}) {
        document.setIsDirty(false);
        (document.*set)(places);
        QVERIFY(document.IsDirty());
        QCOMPARE((document.*get)(), places);
        QVERIFY(*document.DataStore().find(QString::fromUtf16(key)) == Variant(places));
    }
    for (int other = 0; other < 7; ++other) {
        if (other != option)
            QCOMPARE((document.*all[other].get)(), all[other].initial);
    }
}

void TestRechenoptionen::decimalPlacesAreTheLeadingNumber_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<std::int32_t>("places");
    QTest::addColumn<std::int32_t>("error");
    QTest::newRow("text") << 0 << 3 << 0;
    QTest::newRow("comma ends it") << 1 << 1 << 0;
    QTest::newRow("point is the separator") << 2 << 3 << 0;
    QTest::newRow("halves to even") << 3 << 2 << 0;
    QTest::newRow("halves to even, upwards") << 4 << 4 << 0;
    QTest::newRow("word") << 5 << 0 << 0;
    QTest::newRow("empty text") << 6 << 0 << 0;
    QTest::newRow("empty") << 7 << 0 << 0;
    QTest::newRow("number with a tail") << 8 << 12 << 0;
    QTest::newRow("double is read as its text") << 9 << 2 << 0;
    QTest::newRow("too large") << 10 << 0 << 6;
    QTest::newRow("null") << 11 << 0 << 94;
    QTest::newRow("negative") << 12 << -2 << 0;
    QTest::newRow("truth value") << 13 << 0 << 0;
}

void TestRechenoptionen::decimalPlacesAreTheLeadingNumber()
{
    const Variant values[] = {u"3"_qs,    u"1,5"_qs, u"2.7"_qs, u"2.5"_qs,   u"3.5"_qs,
                              u"drei"_qs, QString(), Empty{},   u"12 mm"_qs, 2.9,
                              u"1e10"_qs, Null{},    u"-2"_qs,  true};
    QFETCH(const int, stored);
    QFETCH(const std::int32_t, places);
    QFETCH(const std::int32_t, error);
    for (const Places &option : all) {
        Kalibrierung document(german);
        document.DataStore().set(QString::fromUtf16(option.key), values[stored]);
        std::int32_t read = 0;
        QCOMPARE(errorOf([&] { read = (document.*option.get)(); }), error);
        QCOMPARE(read, places);
    }
}

void TestRechenoptionen::roundingOfIntermediateResults()
{
    Kalibrierung document(german);
    QVERIFY(!document.ZwischenergebnisseRunden());
    document.setZwischenergebnisseRunden(false);
    QVERIFY(!document.IsDirty());
    document.setZwischenergebnisseRunden(true);
    QVERIFY(document.IsDirty());
    QVERIFY(document.ZwischenergebnisseRunden());
    QVERIFY(*document.DataStore().find(roundKey) == Variant(true));
    document.DataStore().set(roundKey, u"Wahr"_qs);
    QVERIFY(document.ZwischenergebnisseRunden());
    document.DataStore().set(roundKey, u"falsch"_qs);
    QVERIFY(!document.ZwischenergebnisseRunden());
    document.DataStore().set(roundKey, u"-1"_qs);
    QVERIFY(document.ZwischenergebnisseRunden());
    document.DataStore().set(roundKey, Empty{});
    QVERIFY(!document.ZwischenergebnisseRunden());
    document.DataStore().set(roundKey, u"ja"_qs);
    QCOMPARE(errorOf([&] { document.ZwischenergebnisseRunden(); }), 13);
    document.DataStore().set(roundKey, Null{});
    QCOMPARE(errorOf([&] { document.ZwischenergebnisseRunden(); }), 94);
}

void TestRechenoptionen::minimumOfTheDetermination()
{
    Kalibrierung document(german);
    QVERIFY_SAME_BITS(document.MinBestimmtheitsmaßIndirektDirekt(), 0.65);
    document.setMinBestimmtheitsmaßIndirektDirekt(0.65);
    QVERIFY(!document.IsDirty());
    for (const double minimum : {0.0, -7.5, 1e300, 0.7}) {
        document.setIsDirty(false);
        document.setMinBestimmtheitsmaßIndirektDirekt(minimum);
        QVERIFY(document.IsDirty());
        QVERIFY_SAME_BITS(document.MinBestimmtheitsmaßIndirektDirekt(), minimum);
        QVERIFY(*document.DataStore().find(minimumKey) == Variant(minimum));
    }
    document.DataStore().set(minimumKey, u"0,75"_qs);
    QCOMPARE(document.MinBestimmtheitsmaßIndirektDirekt(), 0.75);
    document.DataStore().set(minimumKey, u"0.75"_qs);
    QCOMPARE(errorOf([&] { document.MinBestimmtheitsmaßIndirektDirekt(); }), 13);
    document.DataStore().set(minimumKey, Null{});
    QCOMPARE(errorOf([&] { document.MinBestimmtheitsmaßIndirektDirekt(); }), 13);
    document.DataStore().set(minimumKey, Empty{});
    QVERIFY_SAME_BITS(document.MinBestimmtheitsmaßIndirektDirekt(), 0.0);
}

REGISTER_TEST(TestRechenoptionen)
#include "tst_optionen.moc"
