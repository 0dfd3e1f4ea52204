#pragma once
#include "config/XmlDocument.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Search and replace over the texts of events, without any widget.
//
// The fields of an event, in the order they are searched:
//  1. the actions: every moment element of `actions`, then of `clientActions`, every action
//     of the moment in order, and of each action its keys `variable`, `value`, `command`,
//     `parameter`, `address`, `phone`, `message`, `name` (in this order, whatever their
//     order in the document; a key the action lacks is skipped);
//  2. the event's own keys `condition`, `conditionStop`, `delayToActivate`,
//     `delayToDeactivate`, `annotation`.
// A key is the first child element with that tag; the field's text is the key's own text.
// Each field has a focus code, the place where the event editor shows it: 3 to 6 for the
// moments activate, while, deactivate, acknowledge of `actions`, 7 to 10 for those of
// `clientActions` (a moment of another tag counts as the side's first), 1 (the General tab)
// for the event's own keys.

using XmlNode = XmlDocument::XmlNode;

// The text to find, prepared once for the many fields that it is compared with.
//
// A plain substring search. Without match case both texts are upper-cased character by
// character (ZoWideChar::ToUpper) before they are compared. An empty text never matches.
// Fields are read as the tree stores them (UTF-8): a field of plain ASCII is compared in
// place, any other is widened into a buffer that the matcher reuses, so a search over many
// events allocates nothing per field. A matcher is therefore not shared between threads.
class EventTextMatcher {
public:
    EventTextMatcher(std::wstring_view find, bool matchCase);

    bool IsEmpty() const { return m_find.empty(); }
    std::wstring const& Find() const { return m_find; }
    bool MatchCase() const { return m_matchCase; }

    bool Contains(std::string_view utf8) const;
    bool Contains(std::wstring_view text) const;

    // The text with every occurrence replaced, left to right. Occurrences are looked for in
    // the original text only, never in what was put in, so a replacement that contains the
    // text to find is not replaced again. count (when given) receives how many were replaced.
    std::wstring ReplaceAll(std::wstring_view text, std::wstring_view replacement, int* count = nullptr) const;
    // The same over a field of plain ASCII as the tree stores it, into out (UTF-8, the
    // replacement given as UTF-8); false, leaving out alone, when the field is not plain
    // ASCII. Most fields are: they are replaced without being widened.
    bool ReplaceAllAscii(std::string_view utf8, std::string_view replacementUtf8, std::string& out, int& count) const;

private:
    std::wstring m_find;
    std::wstring m_findUpper;  // the text to find upper-cased (without match case)
    std::string m_asciiNeedle; // the text compared with an ASCII field (UTF-8; upper-cased
                               // without match case); unused when m_asciiImpossible
    bool m_asciiImpossible = false; // no field of plain ASCII can hold the text
    bool m_matchCase;
    mutable std::string m_asciiBuffer;
    mutable std::wstring m_wideBuffer;
    mutable std::wstring m_upperBuffer;
};

// One field of an event.
struct EventSearchField {
    XmlNode* key = nullptr; // the key element; the field's text is its own text
    int ordinal = 0;        // its place in the event's search order, from 0
    int focusCode = 1;      // where the event editor shows it (see above)
};

// The tags of the keys searched. Tags are interned per document: ForDocument compares
// them as pointers (for the many events of one document); ByName compares their texts
// (for an event of a working copy, whose tags appear only as its elements are read).
class EventSearchKeys {
public:
    static EventSearchKeys ForDocument(XmlDocument const& document);
    static EventSearchKeys ByName();

    enum Tag {
        Actions, ClientActions, Activate, While, Deactivate, Acknowledge,
        Variable, Value, Command, Parameter, Address, Phone, Message, Name,
        Condition, ConditionStop, DelayToActivate, DelayToDeactivate, Annotation,
        Event, TagCount
    };
    static constexpr int kFirstActionKey = Variable;
    static constexpr int kActionKeys = 8;
    static constexpr int kFirstEventKey = Condition;
    static constexpr int kEventKeys = 5;

    bool Is(XmlNode const* node, Tag tag) const
    {
        // A tag that no element of the document has ever had is null, and no element has it.
        return m_byName ? node->HasTag(TagName(tag)) : m_keys[tag] && node->TagKey() == m_keys[tag];
    }
    static wchar_t const* TagName(Tag tag);

private:
    void const* m_keys[TagCount] = {};
    bool m_byName = false;
};

// Every field of the event, in search order, into out (cleared first, its capacity reused).
void CollectEventSearchFields(XmlNode& event, EventSearchKeys const& keys, std::vector<EventSearchField>& out);

// Replaces every occurrence in the field at `ordinal` of the event (of a working copy) and
// writes it back; nothing when that field is not there any more, has another tag than
// `tag`, or no longer holds the text. True when the text changed.
bool ReplaceEventField(XmlNode& event, int ordinal, std::wstring_view tag, EventTextMatcher const& matcher,
                       std::wstring_view replacement);

// A field found by EventSearch::FindNext.
struct EventSearchMatch {
    XmlNode* event = nullptr;
    EventSearchField field;
    std::wstring tag; // the key's tag
};

// What EventSearch::ReplaceAll did.
struct EventReplaceAllResult {
    int fields = 0;      // fields written back
    int occurrences = 0; // occurrences replaced in them
};

// The walk over the events of an `events` element: the current event (an `event` child;
// children of other tags are never current) and the next field of it to look at.
//
// The walk keeps element pointers. The events list may delete or paste events between two
// requests, so each request starts with Resync, which finds the current event again (or,
// when it is gone, the event that now stands at its place).
class EventSearch {
public:
    EventSearch() = default;

    // Starts over at `first` (an `event` child of events), or at the first event when it is
    // null or not one of them.
    void Reset(XmlNode* events, XmlNode* first);
    // Finds the current event in events again (see above); no current event when none is left.
    void Resync(XmlNode* events);

    XmlNode* Events() const { return m_events; }
    XmlNode* CurrentEvent() const { return m_event; }
    // The position of the current event among the `event` children.
    int CurrentPosition() const { return m_position; }
    // The first field of the current event still to be looked at.
    int NextField() const { return m_nextField; }
    bool AtEnd() const { return m_event == nullptr; }

    // Advances to the next `event` child; false (and at the end) when there is none.
    bool IncIterators();

    // From the current place on, the first field that holds the text. The walk then stands
    // after that field, so the next call goes on with the following field. nullopt when the
    // walk reached the end of the events (it then stays there).
    std::optional<EventSearchMatch> FindNext(EventTextMatcher const& matcher);

    // Replaces every occurrence in every field from the current event to the last (the whole
    // current event, whatever field a search stopped at) and writes each changed field back
    // (a field that the replacement leaves as it was is not written).
    // The walk ends at the end of the events.
    EventReplaceAllResult ReplaceAll(EventTextMatcher const& matcher, std::wstring_view replacement);

private:
    // IncIterators with the document's tags at hand.
    bool Advance(EventSearchKeys const& keys);

    XmlNode* m_events = nullptr;
    XmlNode* m_event = nullptr;
    int m_position = 0;
    int m_nextField = 0;
    std::vector<EventSearchField> m_fields;
};
