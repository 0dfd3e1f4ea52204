#include "platform/calendar/ZoDaySlots.h"
#include "platform/tools/ZoFormat.h"
#include <algorithm>

using XmlNode = XmlDocument::XmlNode;

void DayMinuteMap::Clear()
{
    m_map.fill(1);
}

void DayMinuteMap::Mark(DaySlot slot)
{
    int const from = std::clamp(slot.from, 0, kMinutes);
    int const to = std::clamp(slot.to, 0, kMinutes);
    if (from < to)
        std::fill(m_map.begin() + from, m_map.begin() + to, std::uint8_t(0));
}

void DayMinuteMap::Unmark(DaySlot slot)
{
    int const from = std::clamp(slot.from, 0, kMinutes);
    int const to = std::clamp(slot.to, 0, kMinutes);
    if (from < to)
        std::fill(m_map.begin() + from, m_map.begin() + to, std::uint8_t(1));
}

std::vector<DaySlot> DayMinuteMap::Slots() const
{
    std::vector<DaySlot> daySlots;
    int start = -1;
    for (int minute = 0; minute < kMinutes; ++minute) {
        if (m_map[minute] == 0) {
            if (start < 0)
                start = minute;
        } else if (start >= 0) {
            daySlots.push_back({start, minute}); // run start..minute-1 ends at minute
            start = -1;
        }
    }
    if (start >= 0)
        daySlots.push_back({start, kMinutes - 1});
    return daySlots;
}

void DayMinuteMap::MarkSlotsOf(XmlNode const* day)
{
    if (!day)
        return;
    for (XmlNode const* child = day->FirstChild(); child; child = child->NextSibling()) {
        if (!child->HasTag(L"slot"))
            continue;
        if (std::optional<DaySlot> const slot = ReadDaySlot(child))
            Mark(*slot);
    }
}

std::vector<DaySlot> DaySlotsOf(XmlNode const* day)
{
    std::vector<DaySlot> slots;
    for (XmlNode const* child = day ? day->FirstChild() : nullptr; child; child = child->NextSibling())
        if (child->HasTag(L"slot"))
            if (std::optional<DaySlot> const slot = ReadDaySlot(child); slot && slot->from < slot->to)
                slots.push_back(*slot);
    std::sort(slots.begin(), slots.end(), [](DaySlot a, DaySlot b) { return a.from < b.from; });
    std::vector<DaySlot> merged;
    for (DaySlot const& slot : slots) {
        if (!merged.empty() && slot.from <= merged.back().to)
            merged.back().to = std::max(merged.back().to, slot.to);
        else
            merged.push_back(slot);
    }
    return merged;
}

std::wstring SlotTimeText(int minute)
{
    return ZoFormat(L"%02d:%02d", minute / 60, minute % 60);
}

namespace {

// The decimal number made of all the text's characters; nothing when one is not a digit.
std::optional<int> Digits(std::wstring_view text)
{
    if (text.empty())
        return std::nullopt;
    int value = 0;
    for (wchar_t c : text) {
        if (c < L'0' || c > L'9')
            return std::nullopt;
        value = value * 10 + (c - L'0');
    }
    return value;
}

} // namespace

std::optional<int> SlotTextMinutes(std::wstring_view text, int* hours, int* minutes)
{
    if (text.size() < 4 || text.size() > 7)
        return std::nullopt;
    std::optional<int> const h = Digits(text.substr(0, text.size() - 3));
    std::optional<int> const m = Digits(text.substr(text.size() - 2));
    if (!h || !m)
        return std::nullopt;
    if (hours)
        *hours = *h;
    if (minutes)
        *minutes = *m;
    return *h * 60 + *m;
}

std::optional<DaySlot> ReadDaySlot(XmlNode const* slot)
{
    if (!slot)
        return std::nullopt;
    int fromHours = 0, fromMinutes = 0, toHours = 0, toMinutes = 0;
    std::optional<int> const from = SlotTextMinutes(slot->Value(L"from", L""), &fromHours, &fromMinutes);
    std::optional<int> const to = SlotTextMinutes(slot->Value(L"to", L""), &toHours, &toMinutes);
    if (!from || !to)
        return std::nullopt;
    auto const validTime = [](int h, int m) { return h <= 24 && m < 60 && (h < 24 || m == 0); };
    if (!validTime(fromHours, fromMinutes) || !validTime(toHours, toMinutes) || *from > *to)
        return std::nullopt;
    return DaySlot{*from, *to};
}

void WriteDaySlot(XmlNode* slot, DaySlot slot_)
{
    slot->SetValue(L"from", SlotTimeText(slot_.from));
    slot->SetValue(L"to", SlotTimeText(slot_.to));
}

void WriteDaySlots(XmlNode* day, DayMinuteMap const& map)
{
    // Removed in one pass: each removal unlinks the child we stand on, so step first.
    for (XmlNode* child = day->FirstChild(); child;) {
        XmlNode* const next = child->NextSibling();
        if (child->HasTag(L"slot"))
            day->RemoveChild(child);
        child = next;
    }
    for (DaySlot const& slot : map.Slots())
        WriteDaySlot(day->NewChild(L"slot"), slot);
}
