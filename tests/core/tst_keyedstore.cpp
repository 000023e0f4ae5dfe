#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/keyedstore.h"

#include <algorithm>

using namespace coretest;

namespace {

// The obvious store: a list that is searched from the front.
class Model
{
public:
    Variant *find(const QString &key)
    {
        const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                        [&](const auto &pair) { return pair.first == key; });
        return entry == m_entries.end() ? nullptr : &entry->second;
    }
    void set(const QString &key, const Variant &value)
    {
        if (Variant *held = find(key))
            *held = value;
        else
            m_entries.emplace_back(key, value);
    }
    bool remove(const QString &key)
    {
        return std::erase_if(m_entries, [&](const auto &pair) { return pair.first == key; }) > 0;
    }
    void clear() { m_entries.clear(); }
    const std::vector<std::pair<QString, Variant>> &entries() const { return m_entries; }

private:
    std::vector<std::pair<QString, Variant>> m_entries;
};

std::vector<std::pair<QString, Variant>> entriesOf(const KeyedStore &store)
{
    std::vector<std::pair<QString, Variant>> result;
    store.forEach(
        [&](const QString &key, const Variant &value) { result.emplace_back(key, value); });
    return result;
}

QString numbered(int number)
{
    return u"Messwert direktes Prüfmerkmal %1.%2"_qs.arg(number / 7).arg(number % 7);
}

} // namespace

class TestKeyedStore : public QObject
{
    Q_OBJECT

private slots:
    void behavesLikeAPlainList_data();
    void behavesLikeAPlainList();
    void plainReadingAddsTheKeyWithEmpty();
    void askingAddsNothing();
    void replacingKeepsThePlace();
    void removingAndAddingAgainPutsLast();
    void keysAreComparedExactly();
    void everyKindOfValueComesBack();
    void everyChangeGrowsTheRevision();
    void keysAndValuesFromTheStoreItselfMayBeHandedIn();
    void endlessRemovingAndAddingTakesNoMoreRoom();
    void manyThousandKeys();
};

void TestKeyedStore::behavesLikeAPlainList_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<int>("keyCount");
    for (unsigned seed = 1; seed <= 12; ++seed)
        QTest::addRow("seed %u", seed) << seed << (seed % 3 == 0 ? 400 : seed % 3 == 1 ? 40 : 5);
}

void TestKeyedStore::behavesLikeAPlainList()
{
    QFETCH(const unsigned, seed);
    QFETCH(const int, keyCount);
    KeyedStore store;
    Model model;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> anyKey(0, keyCount - 1);
    std::uniform_int_distribution<int> anyAction(0, 999);
    for (std::int32_t step = 0; step < 6000; ++step) {
        const QString key = numbered(anyKey(random));
        const int action = anyAction(random);
        if (action < 400) {
            store.set(key, step);
            model.set(key, step);
        } else if (action < 600) {
            QCOMPARE(store.remove(key), model.remove(key));
        } else if (action < 750) {
            if (!model.find(key))
                model.set(key, Empty{});
            QVERIFY(store.item(key) == *model.find(key));
        } else if (action < 950) {
            const Variant *found = store.find(key);
            const Variant *expected = model.find(key);
            QCOMPARE(found != nullptr, expected != nullptr);
            QCOMPARE(store.exists(key), expected != nullptr);
            if (found)
                QVERIFY(*found == *expected);
        } else if (action < 998) {
            store.reserve(static_cast<std::size_t>(anyKey(random)));
        } else {
            store.clear();
            model.clear();
        }
        QCOMPARE(store.size(), model.entries().size());
        if (step % 50 == 0)
            QVERIFY(entriesOf(store) == model.entries());
    }
    QVERIFY(entriesOf(store) == model.entries());
    std::vector<QString> keys;
    for (const auto &[key, value] : model.entries())
        keys.push_back(key);
    QVERIFY(store.keys() == keys);
}

void TestKeyedStore::plainReadingAddsTheKeyWithEmpty()
{
    KeyedStore store;
    QVERIFY(store.item(u"a"_qs) == Variant(Empty{}));
    QVERIFY(store.exists(u"a"));
    QCOMPARE(store.size(), std::size_t{1});
    store.set(u"a"_qs, 1.5);
    QVERIFY(store.item(u"a"_qs) == Variant(1.5));
    QVERIFY(store.remove(u"a"));
    QVERIFY(store.item(u"a"_qs) == Variant(Empty{})); // gone with its value
    QCOMPARE(store.size(), std::size_t{1});
}

void TestKeyedStore::askingAddsNothing()
{
    KeyedStore store;
    QVERIFY(!store.exists(u"a"));
    QVERIFY(store.find(u"a") == nullptr);
    QVERIFY(!store.remove(u"a"));
    store.set(u"b"_qs, true);
    QVERIFY(!store.exists(u"a"));
    QVERIFY(store.find(u"a") == nullptr);
    QVERIFY(!store.remove(u"a"));
    QCOMPARE(store.size(), std::size_t{1});
}

void TestKeyedStore::replacingKeepsThePlace()
{
    KeyedStore store;
    for (const QString &key : {u"c"_qs, u"a"_qs, u"b"_qs})
        store.set(key, Empty{});
    store.set(u"c"_qs, u"new"_qs);
    store.set(u"a"_qs, Null{});
    QVERIFY(store.keys() == (std::vector<QString>{u"c"_qs, u"a"_qs, u"b"_qs}));
}

void TestKeyedStore::removingAndAddingAgainPutsLast()
{
    KeyedStore store;
    for (const QString &key : {u"c"_qs, u"a"_qs, u"b"_qs})
        store.set(key, Empty{});
    QVERIFY(store.remove(u"c"));
    QVERIFY(!store.remove(u"c"));
    store.set(u"c"_qs, Empty{});
    QVERIFY(store.keys() == (std::vector<QString>{u"a"_qs, u"b"_qs, u"c"_qs}));
    QVERIFY(store.remove(u"a"));
    store.item(u"a"_qs); // plain reading adds it at the end as well
    QVERIFY(store.keys() == (std::vector<QString>{u"b"_qs, u"c"_qs, u"a"_qs}));
}

void TestKeyedStore::keysAreComparedExactly()
{
    KeyedStore store;
    const std::vector<QString> keys{u"Name"_qs,    u"name"_qs,    u"NAME"_qs,       u"Name "_qs,
                                    u" Name"_qs,   u"Strasse"_qs, u"Straße"_qs,     u"\u00fc"_qs,
                                    u"u\u0308"_qs, QString(),     QString(1, u'\0')};
    std::int32_t number = 0;
    for (const QString &key : keys)
        store.set(key, ++number);
    QCOMPARE(store.size(), keys.size());
    number = 0;
    for (const QString &key : keys)
        QVERIFY(*store.find(key) == Variant(++number));
}

void TestKeyedStore::everyKindOfValueComesBack()
{
    KeyedStore store;
    const std::vector<Variant> values{Empty{}, Null{},    std::int32_t{-7}, 0.1,
                                      true,    QString(), u"Text"_qs};
    for (std::size_t i = 0; i < values.size(); ++i)
        store.set(numbered(static_cast<int>(i)), values[i]);
    for (std::size_t i = 0; i < values.size(); ++i)
        QVERIFY(*store.find(numbered(static_cast<int>(i))) == values[i]);
}

void TestKeyedStore::everyChangeGrowsTheRevision()
{
    KeyedStore store;
    std::uint64_t last = store.revision();
    const auto grew = [&] {
        const bool result = store.revision() > last;
        last = store.revision();
        return result;
    };
    store.set(u"a"_qs, 1.0);
    QVERIFY(grew());
    store.set(u"a"_qs, 2.0);
    QVERIFY(grew());
    store.item(u"a"_qs);
    QVERIFY(!grew());
    store.item(u"b"_qs);
    QVERIFY(grew());
    store.find(u"c");
    store.exists(u"c");
    store.remove(u"c");
    store.reserve(1000);
    QVERIFY(!grew());
    store.remove(u"b");
    QVERIFY(grew());
    store.clear();
    QVERIFY(grew());
}

void TestKeyedStore::keysAndValuesFromTheStoreItselfMayBeHandedIn()
{
    KeyedStore store;
    store.set(u"text"_qs, u"stays"_qs);
    for (int i = 0; i < 5000; ++i) {
        // Each of these adds an entry, and now and then that moves all others.
        store.set(u"next key"_qs, numbered(i));
        QVERIFY(store.item(std::get<QString>(*store.find(u"next key"))) == Variant(Empty{}));
        store.set(u"copy "_qs + numbered(i), *store.find(u"text"));
    }
    for (int i = 0; i < 5000; ++i) {
        QVERIFY(store.exists(numbered(i)));
        QVERIFY(*store.find(u"copy "_qs + numbered(i)) == Variant(u"stays"_qs));
    }
    QCOMPARE(store.size(), std::size_t{2 + 2 * 5000});
}

void TestKeyedStore::endlessRemovingAndAddingTakesNoMoreRoom()
{
    KeyedStore store;
    store.set(u"stays"_qs, true);
    for (int i = 0; i < 300'000; ++i) {
        store.set(u"comes and goes"_qs, i);
        QVERIFY(store.remove(u"comes and goes"));
    }
    QCOMPARE(store.size(), std::size_t{1});
    QVERIFY(store.keys() == std::vector<QString>{u"stays"_qs});
}

void TestKeyedStore::manyThousandKeys()
{
    constexpr int count = 100'000;
    KeyedStore store;
    store.reserve(10); // far too little must not matter
    for (std::int32_t i = 0; i < count; ++i)
        store.set(numbered(i), i);
    QCOMPARE(store.size(), std::size_t{count});
    for (int i = 0; i < count; i += 2)
        QVERIFY(store.remove(numbered(i)));
    for (std::int32_t i = 0; i < count; ++i) {
        const Variant *found = store.find(numbered(i));
        QCOMPARE(found != nullptr, i % 2 == 1);
        if (found)
            QVERIFY(*found == Variant(i));
    }
    for (std::int32_t i = 0; i < count; i += 2)
        store.set(numbered(i), -i);
    const std::vector<QString> keys = store.keys();
    QCOMPARE(keys.size(), std::size_t{count});
    QCOMPARE(keys.front(), numbered(1));
    QCOMPARE(keys[count / 2], numbered(0));
    QCOMPARE(keys.back(), numbered(count - 2));
}

REGISTER_TEST(TestKeyedStore)
#include "tst_keyedstore.moc"
