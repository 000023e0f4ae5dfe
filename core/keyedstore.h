#pragma once

#include "core/variant.h"

#include <QStringView>

#include <cstdint>
#include <vector>

/// The document's dictionary: text keys, compared exactly, in the order in which they were first
/// added.
///
/// Own code because none of Qt's containers keeps that order and a file of 100,000 points fills it
/// with 200,000 entries: entries lie in one vector, an open-addressing table of 32-bit numbers
/// finds them.
class KeyedStore
{
public:
    struct Entry
    {
        QString key;
        Variant value;
        std::uint32_t hash = 0;
        bool removed = false;
    };

    bool exists(QStringView key) const { return find(key) != nullptr; }

    /// The value under \a key. A missing key is added with Empty: that is how plain item access
    /// behaves.
    const Variant &item(const QString &key);

    /// The value under \a key, or null where there is none; adds nothing. Valid until the next
    /// change.
    const Variant *find(QStringView key) const;

    /// Stores \a value; an existing key keeps its place, a new one comes last.
    void set(const QString &key, Variant value);
    /// As above for a key and a value that nobody else needs any more.
    void set(QString &&key, Variant &&value);

    /// Removes \a key; added again later it comes last. \returns whether it was there.
    bool remove(QStringView key);
    void clear();

    std::size_t size() const { return m_size; }
    /// Starts to fetch what set() of \a key will look at; changes nothing. In a large store that
    /// lies far off in memory, and who stores many entries fetches for several at once.
    void prefetch(QStringView key) const;
    /// Room for \a count entries, so that loading a large file does not rehash on the way.
    void reserve(std::size_t count);

    /// Takes over the entries of \a earlier, a former state of this store, as one more change.
    void restore(KeyedStore &&earlier);

    /// The keys in their order.
    std::vector<QString> keys() const;

    /// Calls \a visit(key, value) for every entry in order.
    template <typename Visit>
    void forEach(Visit visit) const
    {
        for (const Entry &entry : m_entries) {
            if (!entry.removed)
                visit(entry.key, entry.value);
        }
    }

    /// Grows with every change, so that what is computed from the store knows when it is out of
    /// date.
    std::uint64_t revision() const { return m_revision; }

private:
    // The hash stands here as well, so that a probe that passes over a slot does not have to fetch
    // its entry.
    struct Slot
    {
        static constexpr std::uint32_t free = 0xffffffffU;

        std::uint32_t hash = 0;
        std::uint32_t number = free; ///< into m_entries
    };

    static std::uint32_t hashOf(QStringView key);
    std::size_t slotOf(QStringView key, std::uint32_t hash) const;
    void rebuild(std::size_t slotCount);

    std::vector<Entry> m_entries;
    std::vector<Slot> m_slots; ///< a removed entry keeps its slot
    std::size_t m_size = 0;
    std::uint64_t m_revision = 0;
};
