#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/propertybag.h"

#include <QSignalSpy>

using namespace coretest;

namespace {

std::vector<std::pair<QString, Variant>> entriesOf(const Kalibrierung &document)
{
    std::vector<std::pair<QString, Variant>> result;
    document.DataStore().forEach(
        [&](const QString &key, const Variant &value) { result.emplace_back(key, value); });
    return result;
}

// A document with every kind of value.
void fillWithAllKinds(Kalibrierung &document)
{
    document.setMesswert(pmDirekt, 1, 1, 0.1);
    document.setMesswert(pmIndirekt, 2, 3, u"1e-300"_qs);
    document.DataStore().set(u"text"_qs, u"Größe\r\n\t\u2212"_qs);
    document.DataStore().set(u"null"_qs, Null{});
    document.DataStore().set(u"empty"_qs, Empty{});
    document.DataStore().set(u"empty text"_qs, QString());
    document.DataStore().set(u"true"_qs, true);
    document.setIsDirty(true);
}

} // namespace

class TestContentString : public QObject
{
    Q_OBJECT

private slots:
    void keepsKeysKindsOrderAndFlag();
    void entriesAreNumberedInTheirOrder();
    void replacesOtherContents();
    void raisesNoEventBeyondThoseOfTheReset();
    void missingCountIsZero();
    void entriesWithoutAKeyAreSkipped();
    void damagedBlobsChangeNothing();
    void blobsThatDoNotConvertChangeNothing_data();
    void blobsThatDoNotConvertChangeNothing();
};

void TestContentString::keepsKeysKindsOrderAndFlag()
{
    Kalibrierung document(german);
    fillWithAllKinds(document);
    const QByteArray blob = document.ContentString();
    QVERIFY(document.IsDirty()); // taking the blob changes nothing
    for (const QLocale &locale : {german, english}) {
        Kalibrierung other(locale);
        other.setContentString(blob);
        // The defaults come first and keep their places; every key of the blob is one of them or
        // follows.
        QVERIFY(entriesOf(other) == entriesOf(document));
        QVERIFY(other.IsDirty());
        QCOMPARE(other.ContentString(), blob);
    }
    document.setIsDirty(false);
    Kalibrierung other(german);
    other.setIsDirty(true);
    other.setContentString(document.ContentString());
    QVERIFY(!other.IsDirty());
    QVERIFY(*other.DataStore().find(u"IsDirty") == Variant(false));
}

void TestContentString::entriesAreNumberedInTheirOrder()
{
    Kalibrierung document(german);
    fillWithAllKinds(document);
    const PropertyBag bag = PropertyBag::fromContents(document.ContentString());
    std::int32_t number = 0;
    for (const auto &[key, value] : entriesOf(document)) {
        ++number;
        QVERIFY(bag.readProperty(QStringLiteral("Key%1").arg(number)) == Variant(key));
        QVERIFY(bag.readProperty(QStringLiteral("Val%1").arg(number)) == value);
    }
    QVERIFY(bag.readProperty(u"Count"_qs) == Variant(number));
    QCOMPARE(bag.size(), 2 * number + 1);
}

void TestContentString::replacesOtherContents()
{
    Kalibrierung document(german);
    const QByteArray blob = document.ContentString();
    const auto entries = entriesOf(document);
    fillWithAllKinds(document);
    document.setPrüffelderAnzahl(9);
    document.setContentString(blob);
    QVERIFY(entriesOf(document) == entries);

    // It resets first: a key that the blob lacks has its default.
    document.DataStore().remove(u"Anzahl Prüffelder");
    const QByteArray without = document.ContentString();
    document.setPrüffelderAnzahl(9);
    document.setContentString(without);
    QCOMPARE(document.PrüffelderAnzahl(), 3);
}

void TestContentString::raisesNoEventBeyondThoseOfTheReset()
{
    Kalibrierung document(german);
    fillWithAllKinds(document);
    const QByteArray blob = document.ContentString();
    document.setIsDirty(false);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.setContentString(blob);
    QCOMPARE(changed.count(), 2);
    QVERIFY(document.IsDirty()); // the blob's own flag
}

void TestContentString::missingCountIsZero()
{
    PropertyBag bag;
    bag.writeProperty(u"Key1"_qs, u"key"_qs);
    bag.writeProperty(u"Val1"_qs, u"value"_qs);
    Kalibrierung document(german);
    const auto entries = entriesOf(document);
    document.setContentString(bag.contents());
    QVERIFY(entriesOf(document) == entries);
}

void TestContentString::entriesWithoutAKeyAreSkipped()
{
    PropertyBag bag;
    bag.writeProperty(u"Count"_qs, std::int32_t{4});
    bag.writeProperty(u"Key1"_qs, QString());
    bag.writeProperty(u"Val1"_qs, u"lost"_qs);
    bag.writeProperty(u"Val2"_qs, u"lost as well"_qs);
    bag.writeProperty(u"Key3"_qs, u"key"_qs);
    bag.writeProperty(u"Val3"_qs, u"value"_qs);
    bag.writeProperty(u"Key4"_qs, u"no value"_qs);
    Kalibrierung document(german);
    const std::size_t before = document.DataStore().size();
    document.setContentString(bag.contents());
    QCOMPARE(document.DataStore().size(), before + 2);
    QVERIFY(*document.DataStore().find(u"key") == Variant(u"value"_qs));
    QVERIFY(*document.DataStore().find(u"no value") == Variant(Empty{}));
}

void TestContentString::damagedBlobsChangeNothing()
{
    Kalibrierung document(german);
    fillWithAllKinds(document);
    const QByteArray blob = document.ContentString();
    const auto entries = entriesOf(document);
    QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    for (qsizetype size = 0; size < blob.size(); ++size)
        QCOMPARE(errorOf([&] { document.setContentString(blob.first(size)); }), 321);
    std::mt19937 random(5);
    std::uniform_int_distribution<qsizetype> anywhere(0, blob.size() - 1);
    std::uniform_int_distribution<int> bit(0, 7);
    for (int i = 0; i < 3000; ++i) {
        QByteArray damaged = blob;
        for (int flips = 0; flips <= i % 4; ++flips) {
            const qsizetype at = anywhere(random);
            damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit(random)));
        }
        if (damaged != blob)
            QCOMPARE(errorOf([&] { document.setContentString(damaged); }), 321);
    }
    QCOMPARE(errorOf([&] { document.setContentString({}); }), 321);
    QVERIFY(entriesOf(document) == entries);
    QCOMPARE(changed.count(), 0);
}

void TestContentString::blobsThatDoNotConvertChangeNothing_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<std::int32_t>("error");
    QTest::newRow("far more entries than the blob holds") << 0 << 321;
    QTest::newRow("count that is no number") << 1 << 13;
    QTest::newRow("count too large") << 2 << 6;
    QTest::newRow("key that has no text") << 3 << 94;
}

void TestContentString::blobsThatDoNotConvertChangeNothing()
{
    QFETCH(const int, kind);
    QFETCH(const std::int32_t, error);
    const Variant counts[] = {std::numeric_limits<std::int32_t>::max(), u"many"_qs, 1e10,
                              std::int32_t{2}};
    PropertyBag bag;
    bag.writeProperty(u"Count"_qs, counts[kind]);
    bag.writeProperty(u"Key1"_qs, u"key"_qs);
    bag.writeProperty(u"Val1"_qs, u"value"_qs);
    bag.writeProperty(u"Key2"_qs, Null{});
    Kalibrierung document(german);
    fillWithAllKinds(document);
    const auto entries = entriesOf(document);
    QCOMPARE(errorOf([&] { document.setContentString(bag.contents()); }), error);
    QVERIFY(entriesOf(document) == entries);
}

REGISTER_TEST(TestContentString)
#include "tst_contentstring.moc"
