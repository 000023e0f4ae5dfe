// Fields and points: their numbers, covariables and names.

#include "tests/core/vorgaben.h"
#include "tests/support/testregistry.h"

#include <QSignalSpy>

using namespace coretest;

class TestPrueffelder : public QObject
{
    Q_OBJECT

private slots:
    void numberOfFields();
    void numberOfPoints();
    void tooSmallCountsChangeNothing();
    void countsAreReadFromText();
    void covariableOfAField();
    void loweredCountsKeepTheValues();
    void totalIsTheSumOfTheFieldsPoints();
    void nameOfAField();
    void anEmptiedNameIsAChange();
    void nameOfAPoint();
    void pointKeyNeverChanges();
};

void TestPrueffelder::numberOfFields()
{
    Kalibrierung document(german);
    document.setPrüffelderAnzahl(3);
    QVERIFY(!document.IsDirty()); // no change
    document.setPrüffelderAnzahl(2147483647);
    QCOMPARE(document.PrüffelderAnzahl(), 2147483647);
    QVERIFY(document.IsDirty());
    document.DataStore().remove(u"Anzahl Prüffelder");
    QCOMPARE(document.PrüffelderAnzahl(), 0);
}

void TestPrueffelder::numberOfPoints()
{
    Kalibrierung document(german);
    document.setPrüffeldPrüfpunkte(2, 3);
    QVERIFY(*document.DataStore().find(u"Prüffeld Prüfpunktanzahl 2") == Variant(std::int32_t{3}));
    QCOMPARE(document.PrüffeldPrüfpunkte(2), 3);
    QCOMPARE(document.PrüffeldPrüfpunkte(1), 4);
    QVERIFY(document.IsDirty());
    document.setPrüffeldPrüfpunkte(-7, 5); // the number of the field itself is not checked
    QCOMPARE(document.PrüffeldPrüfpunkte(-7), 5);
    // The default, once written, is stored: the getter's 4 is no item.
    document.setPrüffeldPrüfpunkte(1, 4);
    QVERIFY(document.DataStore().exists(u"Prüffeld Prüfpunktanzahl 1"));
}

void TestPrueffelder::tooSmallCountsChangeNothing()
{
    Kalibrierung document(german);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    for (const std::int32_t count : {2, 1, 0, -1, std::numeric_limits<std::int32_t>::min()}) {
        QCOMPARE(errorOf([&] { document.setPrüffelderAnzahl(count); }), 380);
        QCOMPARE(errorOf([&] { document.setPrüffeldPrüfpunkte(1, count); }), 380);
    }
    verifyDefaults(document);
    QCOMPARE(changed.count(), 0);
}

void TestPrueffelder::countsAreReadFromText()
{
    Kalibrierung document(german);
    document.DataStore().set(u"Anzahl Prüffelder"_qs, u" 12 "_qs);
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"2"_qs);
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 2"_qs, Empty{});
    document.DataStore().set(u"Prüffeld Prüfpunktanzahl 3"_qs, 4.5);
    QCOMPARE(document.PrüffelderAnzahl(), 12);
    QCOMPARE(document.PrüffeldPrüfpunkte(1), 2);
    QCOMPARE(document.PrüffeldPrüfpunkte(2), 0);
    QCOMPARE(document.PrüffeldPrüfpunkte(3), 4);
    QCOMPARE(document.PrüfpunkteTotal(), 2 + 0 + 4 + 9 * 4);
}

void TestPrueffelder::covariableOfAField()
{
    Kalibrierung document(german);
    document.setPrüffeldWert(2, 2.5);
    QVERIFY(*document.DataStore().find(u"Name Prüffeld 2") == Variant(2.5));
    QCOMPARE(document.PrüffeldWert(2), 2.5);
    QCOMPARE(document.PrüffeldWert(1), 1.0);
    QVERIFY(document.IsDirty());
    document.DataStore().set(u"Name Prüffeld 1"_qs, u"1.234,5"_qs);
    QCOMPARE(document.PrüffeldWert(1), 1234.5);
    document.DataStore().set(u"Name Prüffeld 1"_qs, u"acht"_qs);
    QCOMPARE(errorOf([&] { document.PrüffeldWert(1); }), 13);
    document.DataStore().set(u"Name Prüffeld 1"_qs, QString());
    QCOMPARE(errorOf([&] { document.PrüffeldWert(1); }), 13);
    document.DataStore().set(u"Name Prüffeld 1"_qs, u"1e999"_qs);
    QCOMPARE(errorOf([&] { document.PrüffeldWert(1); }), 6);
    document.DataStore().set(u"Name Prüffeld 1"_qs, Null{});
    QCOMPARE(errorOf([&] { document.PrüffeldWert(1); }), 94);
    document.DataStore().set(u"Name Prüffeld 1"_qs, Empty{});
    QCOMPARE(document.PrüffeldWert(1), 0.0);
}

void TestPrueffelder::loweredCountsKeepTheValues()
{
    Kalibrierung document(german);
    document.setPrüffelderAnzahl(5);
    document.setPrüffeldPrüfpunkte(5, 6);
    document.setMesswert(pmDirekt, 5, 6, 97.5);
    document.setPrüffelderAnzahl(3);
    document.setPrüffeldPrüfpunkte(5, 3);
    QVERIFY(document.DataStore().exists(u"Messwert direktes Prüfmerkmal 5.6"));
    document.setPrüffelderAnzahl(5);
    document.setPrüffeldPrüfpunkte(5, 6);
    QVERIFY(document.Messwert(pmDirekt, 5, 6) == Variant(97.5));
}

void TestPrueffelder::totalIsTheSumOfTheFieldsPoints()
{
    Kalibrierung document(german);
    document.setPrüffelderAnzahl(4);
    document.setPrüffeldPrüfpunkte(1, 3);
    document.setPrüffeldPrüfpunkte(3, 10);
    document.setPrüffeldPrüfpunkte(5, 100); // beyond the last field
    QCOMPARE(document.PrüfpunkteTotal(), 3 + 4 + 10 + 4);
}

void TestPrueffelder::nameOfAField()
{
    Kalibrierung document(german);
    document.setPrüffeldName(2, u"Prüffeld 2"_qs); // the default is not stored
    verifyDefaults(document);
    document.setPrüffeldName(2, u"Nordrand"_qs);
    QCOMPARE(document.PrüffeldName(2), u"Nordrand"_qs);
    QVERIFY(*document.DataStore().find(u"Bezeichnung Prüffeld 2") == Variant(u"Nordrand"_qs));
    QVERIFY(document.IsDirty());
    QCOMPARE(document.PrüffeldName(1), u"Prüffeld 1"_qs);
    document.setPrüffeldName(2, u"Prüffeld 2"_qs); // an entry that exists takes every name
    QVERIFY(*document.DataStore().find(u"Bezeichnung Prüffeld 2") == Variant(u"Prüffeld 2"_qs));
    document.setPrüffeldName(2, QString());
    QCOMPARE(document.PrüffeldName(2), QString());
    document.DataStore().set(u"Bezeichnung Prüffeld 2"_qs, Null{});
    QCOMPARE(document.PrüffeldName(2), QString());
    QCOMPARE(document.PrüffeldWert(2), 2.0); // "Name Prüffeld" is the covariable, not the name
}

void TestPrueffelder::anEmptiedNameIsAChange()
{
    Kalibrierung document(german);
    document.setPrüffeldName(2, QString());
    QVERIFY(document.IsDirty());
    QCOMPARE(document.PrüffeldName(2), QString());
    document.setIsDirty(false);
    document.setPrüffeldName(2, QString());
    QVERIFY(!document.IsDirty());
}

void TestPrueffelder::nameOfAPoint()
{
    Kalibrierung document(german);
    document.setPrüfpunktName(3, u"Prüfpunkt 3"_qs);
    verifyDefaults(document);
    document.setPrüfpunktName(3, u"Achse"_qs);
    QCOMPARE(document.PrüfpunktName(3), u"Achse"_qs);
    QVERIFY(*document.DataStore().find(u"Bezeichnung Prüfpunkt 3") == Variant(u"Achse"_qs));
    document.setIsDirty(false);
    document.setPrüfpunktName(3, u"Achse"_qs);
    QVERIFY(!document.IsDirty());
    document.setPrüfpunktName(3, u"Prüfpunkt 3"_qs);
    QVERIFY(document.IsDirty());
    QCOMPARE(document.PrüfpunktName(3), u"Prüfpunkt 3"_qs);
}

void TestPrueffelder::pointKeyNeverChanges()
{
    Kalibrierung document(german);
    document.setPrüfpunktName(3, u"Achse"_qs);
    QCOMPARE(document.PrüfpunktKey(3), u"Prüfpunkt 3"_qs);
    QCOMPARE(document.PrüfpunktKey(1234567), u"Prüfpunkt 1234567"_qs);
}

REGISTER_TEST(TestPrueffelder)
#include "tst_prueffelder.moc"
