#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include <QSignalSpy>

using namespace coretest;

class TestMesswerte : public QObject
{
    Q_OBJECT

private slots:
    void keysOfMeasuredValues();
    void numbersAreStoredAsDoubles_data();
    void numbersAreStoredAsDoubles();
    void whatIsNoNumberChangesNothing_data();
    void whatIsNoNumberChangesNothing();
    void valuesComeBackWhateverTheirKind();
    void directAndIndirectLieApart();
    void displayUsesTheCharacteristicsPlaces();
    void displayReadsTextAsANumber();
    void anyErrorOfTheDisplayShowsAsFehler();
    void removingAValue();
    void textsOfAnotherLocaleAreRefusedOrRead();
};

void TestMesswerte::keysOfMeasuredValues()
{
    const Kalibrierung document(german);
    QCOMPARE(document.MesswertKey(pmDirekt, 1, 1), u"Messwert direktes Prüfmerkmal 1.1"_qs);
    QCOMPARE(document.MesswertKey(pmIndirekt, 10, 3), u"Messwert indirektes Prüfmerkmal 10.3"_qs);
    QCOMPARE(document.MesswertKey(pmIndirekt, 2, 4), u"Messwert indirektes Prüfmerkmal 2.4"_qs);
    for (const std::int32_t other : {7, 2, -1})
        QCOMPARE(document.MesswertKey(static_cast<PrüfmerkmalEnum>(other), 1, 1),
                 u"Messwert indirektes Prüfmerkmal 1.1"_qs);
    QCOMPARE(document.MesswertKey(pmDirekt, 1234567, 2147483647),
             u"Messwert direktes Prüfmerkmal 1234567.2147483647"_qs);
}

void TestMesswerte::numbersAreStoredAsDoubles_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<double>("stored");
    QTest::newRow("double") << 0 << 97.5;
    QTest::newRow("whole number") << 1 << 97.0;
    QTest::newRow("text") << 2 << 97.5;
    QTest::newRow("grouped text") << 3 << 1234.5;
    QTest::newRow("text with blanks") << 4 << -0.5;
    QTest::newRow("empty is 0") << 5 << 0.0;
    QTest::newRow("too small for a double") << 6 << 0.0;
}

void TestMesswerte::numbersAreStoredAsDoubles()
{
    const Variant values[] = {97.5,           std::int32_t{97}, u"97,5"_qs,  u"1.234,5"_qs,
                              u" -,5\r\n"_qs, Empty{},          u"1e-999"_qs};
    QFETCH(const int, value);
    QFETCH(const double, stored);
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 2, 4, values[value]);
    QVERIFY(document.Messwert(pmDirekt, 2, 4) == Variant(stored));
    QVERIFY(*document.DataStore().find(u"Messwert direktes Prüfmerkmal 2.4") == Variant(stored));
    QVERIFY(document.IsDirty());
}

void TestMesswerte::whatIsNoNumberChangesNothing_data()
{
    QTest::addColumn<int>("value");
    QTest::newRow("empty text") << 0;
    QTest::newRow("blank text") << 1;
    QTest::newRow("word") << 2;
    QTest::newRow("decimal point in German") << 3;
    QTest::newRow("null") << 4;
    QTest::newRow("truth value") << 5;
    QTest::newRow("word for true") << 6;
    QTest::newRow("too large for a double") << 7;
    QTest::newRow("not a number") << 8;
    QTest::newRow("infinite") << 9;
    QTest::newRow("text nan") << 10;
}

void TestMesswerte::whatIsNoNumberChangesNothing()
{
    const Variant values[] = {QString(),
                              u"  "_qs,
                              u"gut"_qs,
                              u"97.5"_qs,
                              Null{},
                              true,
                              u"Wahr"_qs,
                              u"1e400"_qs,
                              std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity(),
                              u"nan"_qs};
    QFETCH(const int, value);
    Kalibrierung document(german);
    const std::size_t before = document.DataStore().size();
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    QCOMPARE(errorOf([&] { document.setMesswert(pmDirekt, 1, 1, values[value]); }), 13);
    QCOMPARE(document.DataStore().size(), before);
    QCOMPARE(changed.count(), 0);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    QCOMPARE(errorOf([&] { document.setMesswert(pmDirekt, 1, 1, values[value]); }), 13);
    QVERIFY(document.Messwert(pmDirekt, 1, 1) == Variant(97.5));
}

void TestMesswerte::valuesComeBackWhateverTheirKind()
{
    Kalibrierung document(german);
    for (const Variant &value : {Variant(Empty{}), Variant(Null{}), Variant(std::int32_t{7}),
                                 Variant(true), Variant(u"no number"_qs)}) {
        document.DataStore().set(document.MesswertKey(pmIndirekt, 1, 1), value);
        QVERIFY(document.Messwert(pmIndirekt, 1, 1) == value);
    }
}

void TestMesswerte::directAndIndirectLieApart()
{
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 1.0);
    document.setMesswert(pmIndirekt, 1, 1, 2.0);
    QVERIFY(document.Messwert(pmDirekt, 1, 1) == Variant(1.0));
    QVERIFY(document.Messwert(pmIndirekt, 1, 1) == Variant(2.0));
    QVERIFY(document.Messwert(static_cast<PrüfmerkmalEnum>(7), 1, 1) == Variant(2.0));
}

void TestMesswerte::displayUsesTheCharacteristicsPlaces()
{
    Kalibrierung document(german);
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), QString()); // no value is no error
    document.setMesswert(pmDirekt, 1, 1, 1234.5);
    document.setMesswert(pmIndirekt, 1, 1, 1234.5);
    document.IndirektesPrüfmerkmal().setNachkommastellen(3);
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), u"1.234,50"_qs);
    QCOMPARE(document.MesswertString(pmIndirekt, 1, 1), u"1.234,500"_qs);
    QCOMPARE(document.MesswertString(static_cast<PrüfmerkmalEnum>(2), 1, 1), u"1.235"_qs);
    document.DirektesPrüfmerkmal().setNachkommastellen(-1);
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), u"1.235"_qs);
    Kalibrierung other(english);
    other.setMesswert(pmDirekt, 1, 1, -1234.565);
    QCOMPARE(other.MesswertString(pmDirekt, 1, 1), u"-1,234.57"_qs);
}

void TestMesswerte::displayReadsTextAsANumber()
{
    Kalibrierung document(german);
    const QString key = document.MesswertKey(pmDirekt, 1, 1);
    document.DataStore().set(key, u"97,456"_qs);
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), u"97,46"_qs);
    document.DataStore().set(key, QString());
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), QString());
}

void TestMesswerte::anyErrorOfTheDisplayShowsAsFehler()
{
    Kalibrierung document(german);
    const QString key = document.MesswertKey(pmDirekt, 1, 1);
    for (const QString &text : {u"abc"_qs, u"97.5"_qs, u" "_qs, u"1e400"_qs}) {
        document.DataStore().set(key, text);
        QCOMPARE(document.MesswertString(pmDirekt, 1, 1), u"(Fehler)"_qs);
    }
    document.DataStore().set(key, 97.5);
    document.DataStore().set(u"Direktes Prüfmerkmal Nachkommastellen"_qs, u"abc"_qs);
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), u"(Fehler)"_qs);
    // The other selectors ask for nobody's places.
    document.setMesswert(pmIndirekt, 1, 1, 2.5);
    document.DataStore().set(u"Indirektes Prüfmerkmal Nachkommastellen"_qs, u"abc"_qs);
    QCOMPARE(document.MesswertString(static_cast<PrüfmerkmalEnum>(5), 1, 1), u"3"_qs);
}

void TestMesswerte::removingAValue()
{
    Kalibrierung document(german);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.removeMesswert(pmDirekt, 1, 1); // there is none
    QVERIFY(!document.IsDirty());
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    document.setMesswert(pmIndirekt, 1, 1, 41.25);
    document.setIsDirty(false);
    changed.clear();
    document.removeMesswert(pmDirekt, 1, 1);
    QVERIFY(document.IsDirty());
    QCOMPARE(changed.count(), 1);
    QVERIFY(document.Messwert(pmDirekt, 1, 1) == Variant(Null{}));
    QVERIFY(!document.DataStore().exists(document.MesswertKey(pmDirekt, 1, 1)));
    QVERIFY(document.Messwert(pmIndirekt, 1, 1) == Variant(41.25));
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), QString());
}

// A file carries no locale: what a comma country wrote is refused or another number elsewhere.
void TestMesswerte::textsOfAnotherLocaleAreRefusedOrRead()
{
    Kalibrierung document(english);
    fill(document, {{1, {1, 2, 3}, {1, 2, 3}}});
    document.DataStore().set(document.MesswertKey(pmDirekt, 1, 1), u"97,5"_qs);
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), u"(Fehler)"_qs);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 13);
    document.DataStore().set(document.MesswertKey(pmDirekt, 1, 1), u"97,500"_qs);
    QCOMPARE(document.MesswertString(pmDirekt, 1, 1), u"97,500.00"_qs);
}

REGISTER_TEST(TestMesswerte)
#include "tst_messwerte.moc"
