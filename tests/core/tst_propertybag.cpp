#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/propertybag.h"

using namespace coretest;

class TestPropertyBag : public QObject
{
    Q_OBJECT

private slots:
    void everyKindComesBack();
    void missingPropertiesGiveTheFallback();
    void equalBagsGiveEqualBlobs();
    void truncatedBlobsAreRefused();
    void changedBlobsAreRefused();
    void foreignBytesAreRefused();

private:
    static PropertyBag sample();
};

PropertyBag TestPropertyBag::sample()
{
    PropertyBag bag;
    bag.writeProperty(u"empty"_qs, Empty{});
    bag.writeProperty(u"null"_qs, Null{});
    bag.writeProperty(u"whole"_qs, std::numeric_limits<std::int32_t>::min());
    bag.writeProperty(u"double"_qs, 0.1);
    bag.writeProperty(u"denormal"_qs, std::numeric_limits<double>::denorm_min());
    bag.writeProperty(u"true"_qs, true);
    bag.writeProperty(u"false"_qs, false);
    bag.writeProperty(u"text"_qs, u"Größe \u2212 \U0001f69c\r\n\t"_qs);
    bag.writeProperty(u"empty text"_qs, QString());
    bag.writeProperty(QString(), u"without a name"_qs);
    return bag;
}

void TestPropertyBag::everyKindComesBack()
{
    const PropertyBag bag = sample();
    const PropertyBag back = PropertyBag::fromContents(bag.contents());
    QCOMPARE(back.size(), bag.size());
    for (const QString &name : {u"empty"_qs, u"null"_qs, u"whole"_qs, u"double"_qs, u"denormal"_qs,
                                u"true"_qs, u"false"_qs, u"text"_qs, u"empty text"_qs, QString()})
        QVERIFY2(back.readProperty(name, 4711) == bag.readProperty(name, 815), qPrintable(name));
}

void TestPropertyBag::missingPropertiesGiveTheFallback()
{
    const PropertyBag bag;
    QVERIFY(bag.readProperty(u"a"_qs) == Variant(Empty{}));
    QVERIFY(bag.readProperty(u"a"_qs, std::int32_t{7}) == Variant(std::int32_t{7}));
    QCOMPARE(PropertyBag::fromContents(bag.contents()).size(), 0);
}

void TestPropertyBag::equalBagsGiveEqualBlobs()
{
    PropertyBag other;
    other.writeProperty(u"b"_qs, 2.0);
    other.writeProperty(u"a"_qs, 0.0);
    other.writeProperty(u"a"_qs, 1.0);
    PropertyBag bag;
    bag.writeProperty(u"a"_qs, 1.0);
    bag.writeProperty(u"b"_qs, 2.0);
    QCOMPARE(bag.contents(), other.contents());
}

void TestPropertyBag::truncatedBlobsAreRefused()
{
    const QByteArray blob = sample().contents();
    for (qsizetype size = 0; size < blob.size(); ++size)
        QCOMPARE(errorOf([&] { PropertyBag::fromContents(blob.first(size)); }), 321);
    QCOMPARE(errorOf([&] { PropertyBag::fromContents(blob + 'x'); }), 321);
    QCOMPARE(errorOf([&] { PropertyBag::fromContents(blob); }), 0);
}

void TestPropertyBag::changedBlobsAreRefused()
{
    const QByteArray blob = sample().contents();
    for (qsizetype at = 0; at < blob.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray damaged = blob;
            damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit));
            QCOMPARE(errorOf([&] { PropertyBag::fromContents(damaged); }), 321);
        }
    }
}

void TestPropertyBag::foreignBytesAreRefused()
{
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("<xml/>"), QByteArray(64, '\0'), QByteArray(1000, '\xff')})
        QCOMPARE(errorOf([&] { PropertyBag::fromContents(bytes); }), 321);
}

REGISTER_TEST(TestPropertyBag)
#include "tst_propertybag.moc"
