#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// Event names are compared without regard to case wherever the events list matches them
// (sorting, finding a row by name, making a pasted name unique). A name is folded by
// lowering every character with the Unicode simple case mapping (the same on every machine
// and in every locale) and kept as UTF-8, whose byte order is the order of the characters:
// two folded names compare with memcmp.

// Appends the folded form of UTF-8 text (malformed bytes count as U+FFFD).
void AppendFoldedName(std::string& out, std::string_view utf8);
// Appends the folded form of a wide text.
void AppendFoldedName(std::string& out, std::wstring_view text);
std::string FoldedName(std::wstring_view text);

// A set of event names compared without regard to case: the names of the list's rows as
// they were before a paste. Lookups are hashed, and the names share one buffer, so a set
// of n names costs two allocations and a paste of k events into n rows is linear in k + n.
class EventNameSet {
public:
    EventNameSet();
    explicit EventNameSet(std::vector<std::wstring> const& names);
    EventNameSet(EventNameSet&&) noexcept;
    EventNameSet& operator=(EventNameSet&&) noexcept;
    ~EventNameSet();

    // A set over names already folded and sorted ascending (byte order), kept where they are:
    // nothing is copied or hashed, a lookup is a binary search. The views must outlive
    // the set (the events list hands out its rows' names until its next fill).
    static EventNameSet FromSortedFolded(std::vector<std::string_view> sorted);

    // Room for `count` names of `bytes` folded bytes in all.
    void Reserve(std::size_t count, std::size_t bytes);
    void Insert(std::wstring_view name);
    // A name already folded (AppendFoldedName).
    void InsertFolded(std::string_view folded);

    bool Contains(std::wstring_view name) const;
    bool ContainsFolded(std::string_view folded) const;
    std::size_t Size() const;

private:
    struct Span {
        std::uint32_t offset;
        std::uint32_t length;
    };
    struct Hash;
    struct Equal;
    struct Names;
    std::unique_ptr<Names> m_names;
};

// Finds the first free name for a pasted element (an event, a time table): "name", else
// "name_1", "name_2"... The set of taken names does not change during one paste, so the
// counter found for a name holds for every name equal to it without regard to case; it is
// remembered.
class UniqueNamer {
public:
    explicit UniqueNamer(EventNameSet const& taken) : m_taken(taken) {}
    std::wstring operator()(std::wstring const& name);

private:
    int FirstFreeCounter(std::wstring const& name) const;

    EventNameSet const& m_taken;
    std::unordered_map<std::string, int> m_counters;
};
