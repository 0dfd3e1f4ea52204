#pragma once
// A table from UTF-8 texts (views of a document's texts, or of a block that outlives the
// table) to values, for the indexes of the project check: the names of 100,000 events, the
// ids of their registrations. Open addressing over (hash, entry) slots: a lookup touches one
// slot and one entry, and filling it from a list fetches the slots of the texts a few ahead,
// since they are met at random in a table larger than the processor's caches. Entries never
// move: a reference to a value stays valid as the table grows. Internal to src/check.
#include <cstdint>
#include <deque>
#include <functional>
#include <string_view>
#include <vector>

namespace zo::check {

template <class Value>
class Utf8Table {
public:
    void Clear()
    {
        m_slots.clear();
        m_entries.clear();
        m_mask = 0;
    }

    // Room for count texts without growing.
    void Reserve(std::size_t count)
    {
        if (count * 2 > m_slots.size())
            Rehash(count * 2);
    }

    // The value of each text of the list, made (value-initialised) for a text met first;
    // at(i, value) is called with the value of keys[i].
    template <class At>
    void Enter(std::vector<std::string_view> const& keys, At const& at)
    {
        Reserve(m_entries.size() + keys.size());
        std::vector<std::uint32_t> hashes(keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i)
            hashes[i] = Hash(keys[i]);
        constexpr std::size_t kAhead = 8;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (i + kAhead < keys.size())
                __builtin_prefetch(&m_slots[hashes[i + kAhead] & m_mask]);
            at(i, ValueOf(keys[i], hashes[i]));
        }
    }

    // The value of key, made (value-initialised) when the table lacks it.
    Value& operator[](std::string_view key) { return ValueOf(key, Hash(key)); }

    Value* Find(std::string_view key)
    {
        std::uint32_t const hash = Hash(key);
        for (std::uint32_t slot = hash & m_mask; !m_slots.empty(); slot = (slot + 1) & m_mask) {
            Slot const& s = m_slots[slot];
            if (s.entry == kNone)
                return nullptr;
            if (s.hash == hash && m_entries[s.entry].key == key)
                return &m_entries[s.entry].value;
        }
        return nullptr;
    }
    Value const* Find(std::string_view key) const { return const_cast<Utf8Table*>(this)->Find(key); }

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;
    struct Slot {
        std::uint32_t hash;
        std::uint32_t entry;
    };
    struct Entry {
        std::string_view key;
        Value value{};
    };

    static std::uint32_t Hash(std::string_view key)
    {
        std::size_t const h = std::hash<std::string_view>()(key);
        return static_cast<std::uint32_t>(h ^ (h >> 32));
    }

    Value& ValueOf(std::string_view key, std::uint32_t hash)
    {
        if ((m_entries.size() + 1) * 2 > m_slots.size())
            Rehash((m_entries.size() + 1) * 2);
        std::uint32_t slot = hash & m_mask;
        for (; m_slots[slot].entry != kNone; slot = (slot + 1) & m_mask) {
            Slot const& s = m_slots[slot];
            if (s.hash == hash && m_entries[s.entry].key == key)
                return m_entries[s.entry].value;
        }
        m_slots[slot] = Slot{hash, static_cast<std::uint32_t>(m_entries.size())};
        return m_entries.emplace_back(Entry{key}).value;
    }

    void Rehash(std::size_t wanted)
    {
        std::size_t capacity = 16;
        while (capacity < wanted)
            capacity *= 2;
        m_slots.assign(capacity, Slot{0, kNone});
        m_mask = static_cast<std::uint32_t>(capacity - 1);
        for (std::uint32_t i = 0; i < m_entries.size(); ++i) {
            std::uint32_t const hash = Hash(m_entries[i].key);
            std::uint32_t slot = hash & m_mask;
            while (m_slots[slot].entry != kNone)
                slot = (slot + 1) & m_mask;
            m_slots[slot] = Slot{hash, i};
        }
    }

    std::vector<Slot> m_slots;
    std::deque<Entry> m_entries;
    std::uint32_t m_mask = 0;
};

} // namespace zo::check
