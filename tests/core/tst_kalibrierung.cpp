// The document: what a fresh one holds, and which reads leave a trace.

#include "tests/core/vorgaben.h"
#include "tests/support/testregistry.h"

#include <QTemporaryDir>

using namespace coretest;

class TestKalibrierung : public QObject
{
    Q_OBJECT

private slots:
    void freshDocumentHoldsTheDefaultsInTheirOrder();
    void resetRestoresTheDefaultsWhateverWasThere();
    void freshDocumentReportsItsDefaults();
    void characteristicsAreTheSameObjectsForLife();
    void plainReadingAddsKeysAndGuardedReadingDoesNot();
    void keysThatReadingAddedAreInBlobAndFile();
    void everythingOfACharacteristicIsSavedAndLoaded();
    void numberFormatOfEachCharacteristic();
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

void TestKalibrierung::keysThatReadingAddedAreInBlobAndFile()
{
    const QString key = u"Direktes Prüfmerkmal Name"_qs;
    Kalibrierung document(german);
    QVERIFY(!document.DataStore().exists(key));
    document.DirektesPrüfmerkmal().Name();
    Kalibrierung fromBlob(german);
    fromBlob.setContentString(document.ContentString());
    QVERIFY(*fromBlob.DataStore().find(key) == Variant(Empty{}));
    QTemporaryDir folder;
    document.SaveFile(folder.filePath(u"a.xml"_qs));
    Kalibrierung fromFile(german);
    fromFile.LoadFile(folder.filePath(u"a.xml"_qs));
    QVERIFY(*fromFile.DataStore().find(key) == Variant(QString()));
}

void TestKalibrierung::everythingOfACharacteristicIsSavedAndLoaded()
{
    QTemporaryDir folder;
    Kalibrierung document(german);
    document.DirektesPrüfmerkmal().setName(u"Verdichtungsgrad"_qs);
    document.DirektesPrüfmerkmal().setFormelzeichen(u"D"_qs);
    document.DirektesPrüfmerkmal().setEinheit(u"%"_qs);
    document.DirektesPrüfmerkmal().setNachkommastellen(1);
    document.SaveFile(folder.filePath(u"a.xml"_qs));
    Kalibrierung loaded(german);
    loaded.LoadFile(folder.filePath(u"a.xml"_qs));
    QCOMPARE(loaded.DirektesPrüfmerkmal().Bezeichung(), u"Verdichtungsgrad D"_qs);
    QCOMPARE(loaded.DirektesPrüfmerkmal().Einheit(), u"%"_qs);
    QCOMPARE(loaded.DirektesPrüfmerkmal().Nachkommastellen(), 1);
    loaded.DataStore().forEach([](const QString &key, const Variant &value) {
        QVERIFY2(std::holds_alternative<QString>(value), qPrintable(key));
    });
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

REGISTER_TEST(TestKalibrierung)
#include "tst_kalibrierung.moc"
