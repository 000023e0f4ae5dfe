#include "core/keyedstore.h"

#include <QHashSeed>

#include <algorithm>
#include <bit>
#include <utility>

const Variant &KeyedStore::item(const QString &key)
{
    const std::uint32_t hash = hashOf(key);
    if (!m_slots.empty()) {
        const std::uint32_t number = m_slots[slotOf(key, hash)].number;
        if (number != Slot::free && !m_entries[number].removed)
            return m_entries[number].value;
    }
    set(key, Empty{});
    return m_entries.back().value;
}

const Variant *KeyedStore::find(QStringView key) const
{
    if (m_slots.empty())
        return nullptr;
    const std::uint32_t number = m_slots[slotOf(key, hashOf(key))].number;
    if (number == Slot::free || m_entries[number].removed)
        return nullptr;
    return &m_entries[number].value;
}

void KeyedStore::set(const QString &key, Variant value)
{
    set(QString(key), std::move(value));
}

void KeyedStore::set(QString &&key, Variant &&value)
{
    // At most half of the table is used, so that a probe ends soon.
    if (m_slots.size() < 2 * (m_entries.size() + 1))
        rebuild(std::max<std::size_t>(64, 4 * (m_size + 1)));
    const std::uint32_t hash = hashOf(key);
    Slot &slot = m_slots[slotOf(key, hash)];
    ++m_revision;
    if (slot.number != Slot::free && !m_entries[slot.number].removed) {
        m_entries[slot.number].value = std::move(value);
        return;
    }
    slot = {hash, static_cast<std::uint32_t>(m_entries.size())};
    m_entries.push_back({std::move(key), std::move(value), hash, false});
    ++m_size;
}

bool KeyedStore::remove(QStringView key)
{
    if (m_slots.empty())
        return false;
    const std::uint32_t number = m_slots[slotOf(key, hashOf(key))].number;
    if (number == Slot::free || m_entries[number].removed)
        return false;
    // The key stays so that probes for other keys still pass over this slot.
    m_entries[number].removed = true;
    m_entries[number].value = Empty{};
    --m_size;
    ++m_revision;
    return true;
}

void KeyedStore::clear()
{
    m_entries.clear();
    m_slots.clear();
    m_size = 0;
    ++m_revision;
}

void KeyedStore::reserve(std::size_t count)
{
    if (m_slots.size() < 2 * (count + 1))
        rebuild(2 * (count + 1));
    m_entries.reserve(count);
}

void KeyedStore::restore(KeyedStore &&earlier)
{
    const std::uint64_t revision = m_revision;
    *this = std::move(earlier);
    m_revision = revision + 1;
}

void KeyedStore::prefetch([[maybe_unused]] QStringView key) const
{
#ifdef __GNUC__
    if (!m_slots.empty())
        __builtin_prefetch(&m_slots[hashOf(key) & (m_slots.size() - 1)], 1);
#endif
}

std::vector<QString> KeyedStore::keys() const
{
    std::vector<QString> result;
    result.reserve(m_size);
    forEach([&](const QString &key, const Variant &) { result.push_back(key); });
    return result;
}

// Seeded per process, so that no file can be made whose keys all collide.
std::uint32_t KeyedStore::hashOf(QStringView key)
{
    return static_cast<std::uint32_t>(qHash(key, QHashSeed::globalSeed()));
}

// The slot that holds the key, or the free one where it would go.
std::size_t KeyedStore::slotOf(QStringView key, std::uint32_t hash) const
{
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        const Slot &candidate = m_slots[slot];
        if (candidate.number == Slot::free)
            return slot;
        if (candidate.hash == hash && m_entries[candidate.number].key == key)
            return slot;
    }
}

// Drops removed entries and enters the others anew; the order stays.
void KeyedStore::rebuild(std::size_t slotCount)
{
    std::erase_if(m_entries, [](const Entry &entry) { return entry.removed; });
    m_slots.assign(std::bit_ceil(slotCount), Slot());
    for (std::size_t number = 0; number < m_entries.size(); ++number)
        m_slots[slotOf(m_entries[number].key, m_entries[number].hash)] = {
            m_entries[number].hash, static_cast<std::uint32_t>(number)};
}
