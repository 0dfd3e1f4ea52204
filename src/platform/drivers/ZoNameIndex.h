#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

// A hash index over names kept elsewhere: from a name to its position 0..count-1 in the
// owner's list. Open addressing with linear probing in one array, at most half full; each
// slot keeps the name's hash, so that a lookup compares texts only on a full hash match.
// nameOf(i) gives the name at position i.
class ZoNameIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    // Indexes positions 0..count-1; a name met again keeps its first position.
    template <class NameOf>
    void Build(std::uint32_t count, NameOf const& nameOf)
    {
        std::uint32_t capacity = 8;
        while (capacity < count * 2u && capacity < 0x80000000u)
            capacity *= 2;
        m_slots.assign(capacity, Slot{0, kNone});
        m_mask = capacity - 1;
        // The hashes first, in order; then each insertion fetches the slot of one a few
        // ahead, since slots are met at random in a table larger than the caches.
        m_hashes.resize(count);
        for (std::uint32_t i = 0; i < count; ++i)
            m_hashes[i] = Hash(nameOf(i));
        constexpr std::uint32_t kAhead = 8;
        for (std::uint32_t i = 0; i < count; ++i) {
            if (i + kAhead < count)
                __builtin_prefetch(&m_slots[m_hashes[i + kAhead] & m_mask]);
            std::wstring_view const name = nameOf(i);
            std::uint32_t const hash = m_hashes[i];
            std::uint32_t slot = hash & m_mask;
            while (m_slots[slot].index != kNone &&
                   !(m_slots[slot].hash == hash && nameOf(m_slots[slot].index) == name))
                slot = (slot + 1) & m_mask;
            if (m_slots[slot].index == kNone)
                m_slots[slot] = Slot{hash, i};
        }
    }

    // The position of name, or kNone.
    template <class NameOf>
    std::uint32_t Find(std::wstring_view name, NameOf const& nameOf) const
    {
        if (m_slots.empty())
            return kNone;
        std::uint32_t const hash = Hash(name);
        for (std::uint32_t slot = hash & m_mask;; slot = (slot + 1) & m_mask) {
            Slot const& s = m_slots[slot];
            if (s.index == kNone)
                return kNone;
            if (s.hash == hash && nameOf(s.index) == name)
                return s.index;
        }
    }

    void Clear()
    {
        m_slots.clear();
        m_hashes.clear();
        m_mask = 0;
    }
    std::size_t MemoryUsed() const { return m_slots.capacity() * sizeof(Slot); }

    static std::uint32_t Hash(std::wstring_view name)
    {
        std::uint64_t h = 0xCBF29CE484222325ull;
        for (wchar_t c : name)
            h = (h ^ static_cast<std::uint32_t>(c)) * 0x100000001B3ull;
        return static_cast<std::uint32_t>(h ^ (h >> 29));
    }

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t index;
    };
    std::vector<Slot> m_slots;
    std::vector<std::uint32_t> m_hashes; // Build's scratch list
    std::uint32_t m_mask = 0;
};
