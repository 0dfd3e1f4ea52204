#include "events/EventSearch.h"

#include "platform/tools/ZoUtf.h"
#include "platform/tools/ZoWideChar.h"

namespace {

bool IsAscii(std::string_view text)
{
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

bool IsAscii(std::wstring_view text)
{
    for (wchar_t c : text)
        if (c < 0 || c >= 0x80)
            return false;
    return true;
}

// out = text with a-z upper-cased (its capacity reused); returns every byte or-ed together,
// so that a result below 0x80 tells the text is plain ASCII.
unsigned char UpperAsciiInto(std::string_view text, std::string& out)
{
    out.resize(text.size());
    unsigned char high = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        high |= static_cast<unsigned char>(c);
        out[i] = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    }
    return high;
}

std::string Narrow(std::wstring_view ascii)
{
    std::string out(ascii.size(), '\0');
    for (std::size_t i = 0; i < ascii.size(); ++i)
        out[i] = static_cast<char>(ascii[i]);
    return out;
}

constexpr wchar_t const* kTagNames[EventSearchKeys::TagCount] = {
    L"actions", L"clientActions", L"activate", L"while", L"deactivate", L"acknowledge",
    L"variable", L"value", L"command", L"parameter", L"address", L"phone", L"message", L"name",
    L"condition", L"conditionStop", L"delayToActivate", L"delayToDeactivate", L"annotation",
    L"event",
};

// The moment of a moment element: 0 activate, 1 while, 2 deactivate, 3 acknowledge.
int MomentOf(XmlNode const* moment, EventSearchKeys const& keys)
{
    for (int m = 0; m < 4; ++m)
        if (keys.Is(moment, static_cast<EventSearchKeys::Tag>(EventSearchKeys::Activate + m)))
            return m;
    return 0;
}

// Appends the first child of each key tag [first, first + count) of node, in key order.
void AppendKeys(XmlNode const& node, EventSearchKeys const& keys, int first, int count, int focusCode,
                std::vector<EventSearchField>& out)
{
    XmlNode* found[EventSearchKeys::kActionKeys] = {};
    int missing = count;
    for (XmlNode* child = node.FirstChild(); child && missing > 0; child = child->NextSibling()) {
        for (int k = 0; k < count; ++k) {
            if (!found[k] && keys.Is(child, static_cast<EventSearchKeys::Tag>(first + k))) {
                found[k] = child;
                --missing;
                break;
            }
        }
    }
    for (int k = 0; k < count; ++k)
        if (found[k])
            out.push_back({found[k], static_cast<int>(out.size()), focusCode});
}

} // namespace

// ---- the text to find -------------------------------------------------------------------

EventTextMatcher::EventTextMatcher(std::wstring_view find, bool matchCase)
    : m_find(find)
    , m_matchCase(matchCase)
{
    ZoWideChar::ToUpper(m_find, m_findUpper);
    // A field of plain ASCII stays plain ASCII when upper-cased, so it can hold the text
    // only when the text compared with it is plain ASCII too.
    std::wstring const& compared = matchCase ? m_find : m_findUpper;
    m_asciiImpossible = !IsAscii(compared);
    if (!m_asciiImpossible)
        m_asciiNeedle = Narrow(compared);
}

bool EventTextMatcher::Contains(std::string_view utf8) const
{
    if (m_find.empty())
        return false;
    if (!m_matchCase) {
        // Upper-cases and checks for plain ASCII in one pass (most fields are plain ASCII).
        if (UpperAsciiInto(utf8, m_asciiBuffer) < 0x80)
            return !m_asciiImpossible && std::string_view(m_asciiBuffer).find(m_asciiNeedle) != std::string_view::npos;
    } else if (IsAscii(utf8)) {
        return !m_asciiImpossible && utf8.find(m_asciiNeedle) != std::string_view::npos;
    }
    m_wideBuffer.clear();
    ZoAppendUtf8AsWide(m_wideBuffer, utf8);
    return Contains(std::wstring_view(m_wideBuffer));
}

bool EventTextMatcher::Contains(std::wstring_view text) const
{
    if (m_find.empty() || text.size() < m_find.size())
        return false;
    if (m_matchCase)
        return text.find(m_find) != std::wstring_view::npos;
    ZoWideChar::ToUpper(text, m_upperBuffer);
    return std::wstring_view(m_upperBuffer).find(m_findUpper) != std::wstring_view::npos;
}

std::wstring EventTextMatcher::ReplaceAll(std::wstring_view text, std::wstring_view replacement, int* count) const
{
    if (count)
        *count = 0;
    if (m_find.empty())
        return std::wstring(text);
    // Upper-casing keeps every character in its place, so a position found in the
    // upper-cased text is the same position in the original.
    std::wstring upper;
    if (!m_matchCase)
        ZoWideChar::ToUpper(text, upper);
    std::wstring_view const haystack = m_matchCase ? text : std::wstring_view(upper);
    std::wstring_view const needle = m_matchCase ? m_find : m_findUpper;
    std::wstring out;
    std::size_t from = 0;
    for (std::size_t hit = haystack.find(needle); hit != std::wstring_view::npos; hit = haystack.find(needle, from)) {
        out.append(text.substr(from, hit - from));
        out.append(replacement);
        from = hit + needle.size();
        if (count)
            ++*count;
    }
    out.append(text.substr(from));
    return out;
}

bool EventTextMatcher::ReplaceAllAscii(std::string_view utf8, std::string_view replacementUtf8, std::string& out,
                                       int& count) const
{
    if (!IsAscii(utf8))
        return false;
    count = 0;
    out.clear();
    if (m_find.empty() || m_asciiImpossible) {
        out.append(utf8);
        return true;
    }
    // Upper-casing keeps every character in its place (see ReplaceAll).
    std::string_view haystack = utf8;
    if (!m_matchCase) {
        UpperAsciiInto(utf8, m_asciiBuffer);
        haystack = m_asciiBuffer;
    }
    std::size_t from = 0;
    for (std::size_t hit = haystack.find(m_asciiNeedle); hit != std::string_view::npos;
         hit = haystack.find(m_asciiNeedle, from)) {
        out.append(utf8.substr(from, hit - from));
        out.append(replacementUtf8);
        from = hit + m_asciiNeedle.size();
        ++count;
    }
    out.append(utf8.substr(from));
    return true;
}

// ---- fields -----------------------------------------------------------------------------

EventSearchKeys EventSearchKeys::ForDocument(XmlDocument const& document)
{
    EventSearchKeys keys;
    for (int t = 0; t < TagCount; ++t)
        keys.m_keys[t] = document.TagKey(kTagNames[t]);
    return keys;
}

EventSearchKeys EventSearchKeys::ByName()
{
    EventSearchKeys keys;
    keys.m_byName = true;
    return keys;
}

wchar_t const* EventSearchKeys::TagName(Tag tag)
{
    return kTagNames[tag];
}

void CollectEventSearchFields(XmlNode& event, EventSearchKeys const& keys, std::vector<EventSearchField>& out)
{
    out.clear();
    // One pass over the event's children finds both sides and its own keys.
    XmlNode const* sides[2] = {};
    XmlNode* own[EventSearchKeys::kEventKeys] = {};
    for (XmlNode* child = event.FirstChild(); child; child = child->NextSibling()) {
        if (keys.Is(child, EventSearchKeys::Actions)) {
            if (!sides[0])
                sides[0] = child;
            continue;
        }
        if (keys.Is(child, EventSearchKeys::ClientActions)) {
            if (!sides[1])
                sides[1] = child;
            continue;
        }
        for (int k = 0; k < EventSearchKeys::kEventKeys; ++k) {
            if (keys.Is(child, static_cast<EventSearchKeys::Tag>(EventSearchKeys::kFirstEventKey + k))) {
                if (!own[k])
                    own[k] = child;
                break;
            }
        }
    }
    for (int s = 0; s < 2; ++s) {
        if (!sides[s])
            continue;
        int const tab = s == 0 ? 3 : 7;
        for (XmlNode const* moment = sides[s]->FirstChild(); moment; moment = moment->NextSibling()) {
            int const focusCode = tab + MomentOf(moment, keys);
            for (XmlNode const* action = moment->FirstChild(); action; action = action->NextSibling())
                AppendKeys(*action, keys, EventSearchKeys::kFirstActionKey, EventSearchKeys::kActionKeys, focusCode, out);
        }
    }
    for (XmlNode* key : own)
        if (key)
            out.push_back({key, static_cast<int>(out.size()), 1});
}

bool ReplaceEventField(XmlNode& event, int ordinal, std::wstring_view tag, EventTextMatcher const& matcher,
                       std::wstring_view replacement)
{
    std::vector<EventSearchField> fields;
    CollectEventSearchFields(event, EventSearchKeys::ByName(), fields);
    if (ordinal < 0 || ordinal >= static_cast<int>(fields.size()))
        return false;
    XmlNode* key = fields[static_cast<std::size_t>(ordinal)].key;
    if (!key->HasTag(tag) || !matcher.Contains(key->TextUtf8()))
        return false;
    std::wstring const text = ZoFromUtf8(key->TextUtf8());
    std::wstring const replaced = matcher.ReplaceAll(text, replacement);
    if (replaced == text)
        return false;
    key->SetValue(replaced);
    return true;
}

// ---- the walk ---------------------------------------------------------------------------

void EventSearch::Reset(XmlNode* events, XmlNode* first)
{
    m_events = events;
    m_event = nullptr;
    m_position = 0;
    m_nextField = 0;
    if (!events)
        return;
    EventSearchKeys const keys = EventSearchKeys::ForDocument(*events->Document());
    XmlNode* firstEvent = nullptr;
    int position = 0;
    for (XmlNode* child = events->FirstChild(); child; child = child->NextSibling()) {
        if (!keys.Is(child, EventSearchKeys::Event))
            continue;
        if (!firstEvent)
            firstEvent = child;
        if (child == first) {
            m_event = child;
            m_position = position;
            return;
        }
        ++position;
    }
    m_event = firstEvent;
}

void EventSearch::Resync(XmlNode* events)
{
    if (events != m_events) {
        // The `events` element itself was replaced: its events are new ones.
        Reset(events, nullptr);
        return;
    }
    if (!m_event || !events)
        return;
    EventSearchKeys const keys = EventSearchKeys::ForDocument(*events->Document());
    XmlNode* atPosition = nullptr;
    int position = 0;
    for (XmlNode* child = events->FirstChild(); child; child = child->NextSibling()) {
        if (!keys.Is(child, EventSearchKeys::Event))
            continue;
        if (child == m_event) {
            m_position = position;
            return;
        }
        if (position == m_position)
            atPosition = child;
        ++position;
    }
    // The current event is gone: go on with the one that took its place.
    m_event = atPosition;
    m_nextField = 0;
}

bool EventSearch::IncIterators()
{
    return m_event && Advance(EventSearchKeys::ForDocument(*m_event->Document()));
}

bool EventSearch::Advance(EventSearchKeys const& keys)
{
    XmlNode* next = m_event->NextSibling();
    while (next && !keys.Is(next, EventSearchKeys::Event))
        next = next->NextSibling();
    m_event = next;
    m_nextField = 0;
    if (next)
        ++m_position;
    return next != nullptr;
}

std::optional<EventSearchMatch> EventSearch::FindNext(EventTextMatcher const& matcher)
{
    if (!m_event)
        return std::nullopt;
    EventSearchKeys const keys = EventSearchKeys::ForDocument(*m_event->Document());
    do {
        CollectEventSearchFields(*m_event, keys, m_fields);
        for (std::size_t f = static_cast<std::size_t>(m_nextField); f < m_fields.size(); ++f) {
            EventSearchField const& field = m_fields[f];
            if (matcher.Contains(field.key->TextUtf8())) {
                m_nextField = field.ordinal + 1;
                return EventSearchMatch{m_event, field, field.key->Tag()};
            }
        }
    } while (Advance(keys));
    return std::nullopt;
}

EventReplaceAllResult EventSearch::ReplaceAll(EventTextMatcher const& matcher, std::wstring_view replacement)
{
    EventReplaceAllResult result;
    if (!m_event)
        return result;
    EventSearchKeys const keys = EventSearchKeys::ForDocument(*m_event->Document());
    std::string const replacementUtf8 = ZoToUtf8(replacement);
    std::string replacedUtf8;
    do {
        CollectEventSearchFields(*m_event, keys, m_fields);
        for (EventSearchField const& field : m_fields) {
            std::string_view const utf8 = field.key->TextUtf8();
            if (!matcher.Contains(utf8))
                continue;
            int count = 0;
            if (matcher.ReplaceAllAscii(utf8, replacementUtf8, replacedUtf8, count)) {
                if (replacedUtf8 == utf8)
                    continue;
                field.key->SetValueUtf8(replacedUtf8);
                ++result.fields;
                result.occurrences += count;
                continue;
            }
            std::wstring const text = ZoFromUtf8(utf8);
            std::wstring const replaced = matcher.ReplaceAll(text, replacement, &count);
            if (replaced == text)
                continue;
            // The key's own text: the same element that SetValue(key, text) on the action
            // or the event would write.
            field.key->SetValue(replaced);
            ++result.fields;
            result.occurrences += count;
        }
    } while (Advance(keys));
    return result;
}
