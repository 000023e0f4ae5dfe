#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include <QSignalSpy>

using namespace coretest;

namespace {

template <typename T>
concept AnybodyMayAttach = requires(T merkmal, Kalibrierung &document)
{
    merkmal.attach(document);
};
template <typename T>
concept AnybodyMaySetKeys = requires(T merkmal, QString key)
{
    merkmal.setKeys(key, key, key, key);
};

static_assert(!AnybodyMayAttach<Prüfmerkmal> && !AnybodyMaySetKeys<Prüfmerkmal>,
              "only the document attaches a characteristic and gives it its keys");
static_assert(!std::is_default_constructible_v<Prüfmerkmal>, "only the document makes one");

} // namespace

class TestPruefmerkmal : public QObject
{
    Q_OBJECT

private slots:
    void everyMemberReadsAndWritesItsOwnKey_data();
    void everyMemberReadsAndWritesItsOwnKey();
    void knowsItsDocument();
    void defaultsComeFromTheDocument();
    void bezeichungIsNameBlankSymbol();
    void settingTheSameNameIsNoChange();
    void noSetterChecksItsValue();
    void readingAddsMissingKeysWithEmpty();
    void textsOfOtherKindsAreConverted();
    void decimalPlacesThatAreNoWholeNumberFail();
    void itemsOfTheDocumentThroughTheCharacteristic();
    void anItemMayBeCopiedUnderAnotherKey();
};

void TestPruefmerkmal::everyMemberReadsAndWritesItsOwnKey_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QString>("prefix");
    QTest::newRow("direct") << 0 << u"Direktes Prüfmerkmal "_qs;
    QTest::newRow("indirect") << 1 << u"Indirektes Prüfmerkmal "_qs;
    QTest::newRow("covariable") << 2 << u"Kovariable "_qs;
}

void TestPruefmerkmal::everyMemberReadsAndWritesItsOwnKey()
{
    QFETCH(const int, which);
    QFETCH(const QString, prefix);
    Kalibrierung document(german);
    Prüfmerkmal *const all[] = {&document.DirektesPrüfmerkmal(), &document.IndirektesPrüfmerkmal(),
                                &document.Kovariable()};
    Prüfmerkmal &merkmal = *all[which];
    const std::size_t before = document.DataStore().size();
    merkmal.setName(u"Verdichtungsgrad"_qs);
    merkmal.setFormelzeichen(u"D"_qs);
    merkmal.setEinheit(u"%"_qs);
    merkmal.setNachkommastellen(5);
    const auto stored = [&](const char16_t *name) {
        const Variant *value = document.DataStore().find(prefix + QString::fromUtf16(name));
        return value ? *value : Variant(u"missing"_qs);
    };
    QVERIFY(stored(u"Name") == Variant(u"Verdichtungsgrad"_qs));
    QVERIFY(stored(u"Formelzeichen") == Variant(u"D"_qs));
    QVERIFY(stored(u"Einheit") == Variant(u"%"_qs));
    QVERIFY(stored(u"Nachkommastellen") == Variant(std::int32_t{5}));
    QCOMPARE(merkmal.Name(), u"Verdichtungsgrad"_qs);
    QCOMPARE(merkmal.Formelzeichen(), u"D"_qs);
    QCOMPARE(merkmal.Einheit(), u"%"_qs);
    QCOMPARE(merkmal.Nachkommastellen(), 5);
    QCOMPARE(merkmal.Bezeichung(), u"Verdichtungsgrad D"_qs);
    // No key but these four: the covariable has them all, the others only their places so far.
    QCOMPARE(document.DataStore().size(), before + (which == 2 ? 0 : 3));
}

void TestPruefmerkmal::knowsItsDocument()
{
    Kalibrierung document(german);
    QCOMPARE(&document.DirektesPrüfmerkmal().Kalibrierung(), &document);
    QCOMPARE(&document.IndirektesPrüfmerkmal().Kalibrierung(), &document);
    QCOMPARE(&document.Kovariable().Kalibrierung(), &document);
}

void TestPruefmerkmal::defaultsComeFromTheDocument()
{
    Kalibrierung document(german);
    QCOMPARE(document.Kovariable().Bezeichung(), u"Anzahl der Übergänge Z"_qs);
    QCOMPARE(document.Kovariable().Einheit(), u"-"_qs);
    QCOMPARE(document.Kovariable().Nachkommastellen(), 0);
    for (Prüfmerkmal *merkmal :
         {&document.DirektesPrüfmerkmal(), &document.IndirektesPrüfmerkmal()}) {
        QCOMPARE(merkmal->Nachkommastellen(), 2);
        QCOMPARE(merkmal->Name(), QString());
        QCOMPARE(merkmal->Formelzeichen(), QString());
        QCOMPARE(merkmal->Einheit(), QString());
    }
}

void TestPruefmerkmal::bezeichungIsNameBlankSymbol()
{
    Kalibrierung document(german);
    QCOMPARE(document.DirektesPrüfmerkmal().Bezeichung(), u" "_qs);
    document.DirektesPrüfmerkmal().setName(u"A"_qs);
    QCOMPARE(document.DirektesPrüfmerkmal().Bezeichung(), u"A "_qs);
    document.DirektesPrüfmerkmal().setFormelzeichen(u"B"_qs);
    QCOMPARE(document.DirektesPrüfmerkmal().Bezeichung(), u"A B"_qs);
}

void TestPruefmerkmal::settingTheSameNameIsNoChange()
{
    Kalibrierung document(german);
    document.DirektesPrüfmerkmal().setName(u"A"_qs);
    document.setIsDirty(false);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.DirektesPrüfmerkmal().setName(u"A"_qs);
    QVERIFY(!document.IsDirty());
    document.DirektesPrüfmerkmal().setName(u"a"_qs);
    QVERIFY(document.IsDirty());
    QCOMPARE(changed.count(), 1);
}

void TestPruefmerkmal::noSetterChecksItsValue()
{
    Kalibrierung document(german);
    Prüfmerkmal &merkmal = document.Kovariable();
    merkmal.setName(QString());
    QCOMPARE(merkmal.Name(), QString());
    for (const std::int32_t places : {-1, 31, std::numeric_limits<std::int32_t>::max(),
                                      std::numeric_limits<std::int32_t>::min()}) {
        merkmal.setNachkommastellen(places);
        QCOMPARE(merkmal.Nachkommastellen(), places);
    }
}

void TestPruefmerkmal::readingAddsMissingKeysWithEmpty()
{
    Kalibrierung document(german);
    document.DataStore().clear();
    Prüfmerkmal &merkmal = document.IndirektesPrüfmerkmal();
    QCOMPARE(merkmal.Einheit(), QString());
    QCOMPARE(merkmal.Bezeichung(), u" "_qs);
    QCOMPARE(merkmal.Nachkommastellen(), 0);
    QVERIFY(document.DataStore().keys() ==
            (std::vector<QString>{u"Indirektes Prüfmerkmal Einheit"_qs,
                                  u"Indirektes Prüfmerkmal Name"_qs,
                                  u"Indirektes Prüfmerkmal Formelzeichen"_qs,
                                  u"Indirektes Prüfmerkmal Nachkommastellen"_qs}));
    document.DataStore().forEach(
        [](const QString &, const Variant &value) { QVERIFY(value == Variant(Empty{})); });
    QVERIFY(!document.IsDirty());
}

void TestPruefmerkmal::textsOfOtherKindsAreConverted()
{
    Kalibrierung document(german);
    document.DataStore().set(u"Kovariable Name"_qs, 1.5);
    document.DataStore().set(u"Kovariable Formelzeichen"_qs, true);
    document.DataStore().set(u"Kovariable Einheit"_qs, Null{});
    QCOMPARE(document.Kovariable().Bezeichung(), u"1,5 Wahr"_qs);
    QCOMPARE(errorOf([&] { document.Kovariable().Einheit(); }), 94);
}

void TestPruefmerkmal::decimalPlacesThatAreNoWholeNumberFail()
{
    Kalibrierung document(german);
    const auto errorOfText = [&](const QString &text) {
        document.DataStore().set(u"Kovariable Nachkommastellen"_qs, text);
        return errorOf([&] { document.Kovariable().Nachkommastellen(); });
    };
    QCOMPARE(errorOfText(u"abc"_qs), 13);
    QCOMPARE(errorOfText(QString()), 13);
    QCOMPARE(errorOfText(u"2.5"_qs), 13);
    QCOMPARE(errorOfText(u"3000000000"_qs), 6);
    QCOMPARE(errorOfText(u" 3 "_qs), 0);
    QCOMPARE(document.Kovariable().Nachkommastellen(), 3);
    document.DataStore().set(u"Kovariable Nachkommastellen"_qs, u"2,5"_qs);
    QCOMPARE(document.Kovariable().Nachkommastellen(), 2); // halves to even
}

void TestPruefmerkmal::itemsOfTheDocumentThroughTheCharacteristic()
{
    Kalibrierung document(german);
    Prüfmerkmal &merkmal = document.DirektesPrüfmerkmal();
    QVERIFY(merkmal.DataStore(u"anything"_qs) == Variant(Empty{}));
    QVERIFY(document.DataStore().exists(u"anything"));
    QVERIFY(!document.IsDirty());
    merkmal.setDataStore(u"anything"_qs, 1.5);
    QVERIFY(merkmal.DataStore(u"anything"_qs) == Variant(1.5));
    QVERIFY(document.IsDirty());
    document.setIsDirty(false);
    merkmal.setDataStore(u"anything"_qs, u"1,5"_qs); // same text
    QVERIFY(merkmal.DataStore(u"anything"_qs) == Variant(1.5));
    QVERIFY(!document.IsDirty());
}

void TestPruefmerkmal::anItemMayBeCopiedUnderAnotherKey()
{
    Kalibrierung document(german);
    Prüfmerkmal &merkmal = document.DirektesPrüfmerkmal();
    merkmal.setName(u"a text long enough to lie on the heap"_qs);
    for (int i = 0; i < 2000; ++i) // adding keys moves the entries now and then
        merkmal.setDataStore(QString::number(i),
                             merkmal.DataStore(u"Direktes Prüfmerkmal Name"_qs));
    QVERIFY(merkmal.DataStore(u"1999"_qs) == Variant(merkmal.Name()));
}

REGISTER_TEST(TestPruefmerkmal)
#include "tst_pruefmerkmal.moc"
