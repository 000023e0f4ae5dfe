// The document: what a fresh one holds, and its fields, points and names.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include <QSignalSpy>

using namespace coretest;

namespace {

const QString protocol = u"Protokoll Verdichtung "_qs;

struct Default
{
    QString key;
    Variant value;
};

std::vector<Default> defaults()
{
    const auto whole = [](std::int32_t value) { return Variant(value); };
    std::vector<Default> result{
        {u"Direktes Prüfmerkmal Nachkommastellen"_qs, whole(2)},
        {u"IsDirty"_qs, false},
        {u"Indirektes Prüfmerkmal Nachkommastellen"_qs, whole(2)},
        {u"Kovariable Nachkommastellen"_qs, whole(0)},
        {u"Anzahl Prüffelder"_qs, whole(3)},
        {u"Kovariable Name"_qs, u"Anzahl der Übergänge"_qs},
        {u"Kovariable Einheit"_qs, u"-"_qs},
        {u"Kovariable Formelzeichen"_qs, u"Z"_qs},
        {u"Nachkommastellen Mittelwerte"_qs, whole(1)},
        {u"Nachkommastellen Varianzen"_qs, whole(2)},
        {u"Nachkommastellen Standardabweichung"_qs, whole(2)},
        {u"Nachkommastellen Kovarianzen"_qs, whole(2)},
        {u"Nachkommastellen Bestimmtheitsmaße"_qs, whole(2)},
        {u"Nachkommastellen Anstieg"_qs, whole(4)},
        {u"Nachkommastellen Achsenabschnitt"_qs, whole(2)},
        {u"Zwischenergebnisse runden"_qs, false},
        {u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs, 0.65},
    };
    const std::pair<const char16_t *, const char16_t *> texts[] = {
        {u"Unterlage Bodenart DIN 4022", nullptr},
        {u"Unterlage Bodengruppe DIN 18196", nullptr},
        {u"Unterlage Anzahl Verdichtungsübergänge", nullptr},
        {u"Unterlage Wassergehalt", u"??%"},
        {u"Unterlage Trockendichte", u"?? g/cm³"},
        {u"Unterlage Proctordichte", u"?? g/cm³"},
        {u"Unterlage Verdichtungsgrad", u"??%"},
        {u"Kalibrierfeld Bodenart DIN 4022", nullptr},
        {u"Kalibrierfeld Bodengruppe DIN 18196", nullptr},
        {u"Kalibrierfeld Geometrie", u"?? m x ?? m"},
        {u"Kalibrierfeld Schütthöhe", u"?? m"},
        {u"Kalibrierfeld Proctordichte", u"?? g/cm³ bis ?? g/cm³"},
        {u"Kalibrierfeld Grenzwassergehalt", u"XXX=??%: ??% bzw ??%"},
        {u"Kalibrierfeld optimaler Wassergehalt", u"??% bis ??%"},
        {u"Kalibrierfeld Walzentyp", nullptr},
        {u"Kalibrierfeld Fahrgeschwindigkeit Walze", u"?? km/h"},
        {u"Kalibrierfeld Verdichtungsamplitude Walze", u"?? mm"},
        {u"Kalibrierfeld Verdichtungsfrequenz Walze", u"?? Hz"},
        {u"Kalibrierfeld Datum bei Verdichtung", u"??.??.????"},
        {u"Kalibrierfeld Witterung bei Verdichtung", nullptr},
        {u"Kalibrierfeld Temperatur bei Verdichtung", u"??°C"},
        {u"Kalibrierfeld Datum bei Prüfung", u"??.??.????"},
        {u"Kalibrierfeld Witterung bei Prüfung", nullptr},
        {u"Kalibrierfeld Temperatur bei Prüfung", u"??°C"},
    };
    for (const auto &[key, text] : texts) {
        // A template that is empty leaves nothing but the key.
        result.push_back({protocol + QString::fromUtf16(key),
                          text ? Variant(QString::fromUtf16(text)) : Variant(Empty{})});
    }
    return result;
}

void verifyDefaults(const Kalibrierung &document)
{
    const std::vector<Default> expected = defaults();
    std::size_t at = 0;
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        QVERIFY(at < expected.size());
        QCOMPARE(key, expected[at].key);
        QVERIFY2(value == expected[at].value, qPrintable(key));
        ++at;
    });
    QCOMPARE(at, expected.size());
}

} // namespace

class TestKalibrierung : public QObject
{
    Q_OBJECT

private slots:
    void freshDocumentHoldsTheDefaultsInTheirOrder();
    void resetRestoresTheDefaultsWhateverWasThere();
    void freshDocumentReportsItsDefaults();
    void characteristicsAreTheSameObjectsForLife();
    void numberOfFields();
    void numberOfPoints();
    void tooSmallCountsChangeNothing();
    void countsAreReadFromText();
    void covariableOfAField();
    void plainReadingAddsKeysAndGuardedReadingDoesNot();
    void numberFormatOfEachCharacteristic();
    void loweredCountsKeepTheValues();
    void totalIsTheSumOfTheFieldsPoints();
    void nameOfAField();
    void nameOfAPoint();
    void pointKeyNeverChanges();
};

void TestKalibrierung::freshDocumentHoldsTheDefaultsInTheirOrder()
{
    verifyDefaults(Kalibrierung(german));
    verifyDefaults(Kalibrierung(english));
}

void TestKalibrierung::resetRestoresTheDefaultsWhateverWasThere()
{
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    document.setPrüffelderAnzahl(7);
    document.DataStore().set(u"Zwischenergebnisse runden"_qs, u"no truth value"_qs);
    document.DataStore().set(u"IsDirty"_qs, Null{});
    document.Reset();
    verifyDefaults(document);
    document.DataStore().clear();
    document.Reset();
    verifyDefaults(document);
}

void TestKalibrierung::freshDocumentReportsItsDefaults()
{
    Kalibrierung document(german);
    QCOMPARE(document.PrüffelderAnzahl(), 3);
    for (const std::int32_t field : {-1, 0, 1, 2, 3, 99, 2147483647}) {
        QCOMPARE(document.PrüffeldPrüfpunkte(field), 4);
        QCOMPARE(document.PrüffeldWert(field), static_cast<double>(field));
    }
    QCOMPARE(document.PrüfpunkteTotal(), 12);
    QVERIFY(document.Messwert(pmDirekt, 1, 1) == Variant(Null{}));
    QVERIFY(document.Messwert(pmIndirekt, 3, 4) == Variant(Null{}));
    QVERIFY(!document.IsDirty());
    QVERIFY(!document.ZwischenergebnisseRunden());
    QCOMPARE(document.MinBestimmtheitsmaßIndirektDirekt(), 0.65);
    verifyDefaults(document); // none of these reads added a key
}

void TestKalibrierung::characteristicsAreTheSameObjectsForLife()
{
    Kalibrierung document(german);
    Prüfmerkmal *const direct = &document.DirektesPrüfmerkmal();
    Prüfmerkmal *const indirect = &document.IndirektesPrüfmerkmal();
    Prüfmerkmal *const covariable = &document.Kovariable();
    QVERIFY(direct != indirect && indirect != covariable && direct != covariable);
    document.Reset();
    document.setContentString(document.ContentString());
    QCOMPARE(&document.DirektesPrüfmerkmal(), direct);
    QCOMPARE(&document.IndirektesPrüfmerkmal(), indirect);
    QCOMPARE(&document.Kovariable(), covariable);
}

void TestKalibrierung::numberOfFields()
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

void TestKalibrierung::numberOfPoints()
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

void TestKalibrierung::tooSmallCountsChangeNothing()
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

void TestKalibrierung::countsAreReadFromText()
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

void TestKalibrierung::covariableOfAField()
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

void TestKalibrierung::plainReadingAddsKeysAndGuardedReadingDoesNot()
{
    Kalibrierung document(german);
    KeyedStore &store = document.DataStore();
    store.clear();
    QVERIFY(!document.IsDirty());
    QCOMPARE(document.PrüffeldPrüfpunkte(1), 4);
    QCOMPARE(document.PrüffeldWert(1), 1.0);
    QVERIFY(document.Messwert(pmDirekt, 1, 1) == Variant(Null{}));
    QCOMPARE(document.PrüffeldName(1), u"Prüffeld 1"_qs);
    QCOMPARE(document.PrüfpunktName(1), u"Prüfpunkt 1"_qs);
    document.removeMesswert(pmDirekt, 1, 1);
    document.setIsDirty(false);
    QCOMPARE(store.size(), std::size_t{0});

    const auto adds = [&](auto read, const QString &key) {
        const std::size_t before = store.size();
        read();
        return store.size() == before + 1 && store.keys().back() == key &&
               *store.find(key) == Variant(Empty{});
    };
    Kalibrierung &d = document;
    QVERIFY(adds([&] { d.PrüffelderAnzahl(); }, u"Anzahl Prüffelder"_qs));
    QVERIFY(adds([&] { d.Kovariable().Einheit(); }, u"Kovariable Einheit"_qs));
    QVERIFY(adds([&] { d.MerkmalNumberFormat(mZ); }, u"Kovariable Nachkommastellen"_qs));
    QVERIFY(adds([&] { d.MesswertString(pmDirekt, 1, 1); },
                 u"Direktes Prüfmerkmal Nachkommastellen"_qs));
    QVERIFY(adds([&] { d.NachkommastellenMittelwerte(); }, u"Nachkommastellen Mittelwerte"_qs));
    QVERIFY(adds([&] { d.NachkommastellenVarianzen(); }, u"Nachkommastellen Varianzen"_qs));
    QVERIFY(adds([&] { d.NachkommastellenStandardabweichung(); },
                 u"Nachkommastellen Standardabweichung"_qs));
    QVERIFY(adds([&] { d.NachkommastellenKovarianzen(); }, u"Nachkommastellen Kovarianzen"_qs));
    QVERIFY(adds([&] { d.NachkommastellenBestimmtheitsmaße(); },
                 u"Nachkommastellen Bestimmtheitsmaße"_qs));
    QVERIFY(adds([&] { d.NachkommastellenAnstieg(); }, u"Nachkommastellen Anstieg"_qs));
    QVERIFY(
        adds([&] { d.NachkommastellenAchsenabschnitt(); }, u"Nachkommastellen Achsenabschnitt"_qs));
    QVERIFY(adds([&] { d.ZwischenergebnisseRunden(); }, u"Zwischenergebnisse runden"_qs));
    QVERIFY(adds([&] { d.MinBestimmtheitsmaßIndirektDirekt(); },
                 u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs));
    // Writing reads first: even a value whose text is the missing key's adds that key, and no more.
    QVERIFY(adds([&] { d.DataStoreLet(u"remark"_qs, QString()); }, u"remark"_qs));
    QVERIFY(!document.IsDirty());
}

void TestKalibrierung::numberFormatOfEachCharacteristic()
{
    Kalibrierung document(german);
    QCOMPARE(document.MerkmalNumberFormat(mDirekt), u"#,##0.00"_qs);
    document.IndirektesPrüfmerkmal().setNachkommastellen(1);
    QCOMPARE(document.MerkmalNumberFormat(mIndirekt), u"#,##0.0"_qs);
    QCOMPARE(document.MerkmalNumberFormat(mZ), u"#,##0"_qs);
    document.Kovariable().setNachkommastellen(-2);
    QCOMPARE(document.MerkmalNumberFormat(mZ), u"#,##0"_qs);
    document.Kovariable().setNachkommastellen(3);
    QCOMPARE(document.MerkmalNumberFormat(mZ), u"#,##0.000"_qs);
    for (const std::int32_t other : {-1, 3, 99})
        QCOMPARE(document.MerkmalNumberFormat(static_cast<MerkmalEnum>(other)), u"#,##0"_qs);
    document.DataStore().set(u"Kovariable Nachkommastellen"_qs, u"abc"_qs);
    QCOMPARE(errorOf([&] { document.MerkmalNumberFormat(mZ); }), 13);
}

void TestKalibrierung::loweredCountsKeepTheValues()
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

void TestKalibrierung::totalIsTheSumOfTheFieldsPoints()
{
    Kalibrierung document(german);
    document.setPrüffelderAnzahl(4);
    document.setPrüffeldPrüfpunkte(1, 3);
    document.setPrüffeldPrüfpunkte(3, 10);
    document.setPrüffeldPrüfpunkte(5, 100); // beyond the last field
    QCOMPARE(document.PrüfpunkteTotal(), 3 + 4 + 10 + 4);
}

void TestKalibrierung::nameOfAField()
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

void TestKalibrierung::nameOfAPoint()
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

void TestKalibrierung::pointKeyNeverChanges()
{
    Kalibrierung document(german);
    document.setPrüfpunktName(3, u"Achse"_qs);
    QCOMPARE(document.PrüfpunktKey(3), u"Prüfpunkt 3"_qs);
    QCOMPARE(document.PrüfpunktKey(1234567), u"Prüfpunkt 1234567"_qs);
}

REGISTER_TEST(TestKalibrierung)
#include "tst_kalibrierung.moc"
