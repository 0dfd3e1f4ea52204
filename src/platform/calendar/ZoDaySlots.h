#pragma once
#include "config/XmlDocument.h"
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A day program's time slots as a set of minutes: the slot rules that the day editor
// applies and that ZoDayCtrl draws with, in one place.
//
// The map has one entry per minute of the day, 0 to 1440: 0 = inside a slot, 1 = free.
// A slot from `from` to `to` covers the minutes from..to-1, so 00:00-24:00 covers the whole
// day and a slot whose ends are equal covers nothing. The slot list is always derived from
// the map: it is sorted by start, and overlapping or touching slots merge into one. The day
// program is a set of minutes, not a list of intervals: adding 08:00-10:00 to a day holding
// 09:00-12:00 gives the one slot 08:00-12:00, and removing a slot merged from two removes
// the whole merged range.
struct DaySlot {
    int from = 0; // minutes since midnight, 0 to 1440
    int to = 0;
    bool operator==(DaySlot const&) const = default;
};

class DayMinuteMap {
public:
    static constexpr int kMinutes = 1441;

    DayMinuteMap() { Clear(); }
    // Every minute free.
    void Clear();
    // Sets the slot's minutes to 0 (Mark) or back to 1 (Unmark); bounds are clamped to the day.
    void Mark(DaySlot slot);
    void Unmark(DaySlot slot);
    bool IsInside(int minute) const { return minute >= 0 && minute < kMinutes && m_map[minute] == 0; }
    // The slot list: each run of marked minutes a..b (followed by a free minute) gives the
    // slot a to b + 1; a run still open at minute 1440 ends there.
    std::vector<DaySlot> Slots() const;

    // Marks every valid "slot" child of a "day" element (invalid slots are ignored).
    void MarkSlotsOf(XmlDocument::XmlNode const* day);

private:
    std::array<std::uint8_t, kMinutes> m_map;
};

// The slot list of a "day" element's valid slots, as DayMinuteMap::MarkSlotsOf followed by
// Slots() gives it, computed by sorting and merging the slots instead of over the 1,441
// minutes (for readers of many day programs at once).
std::vector<DaySlot> DaySlotsOf(XmlDocument::XmlNode const* day);

// "HH:MM" of a minute value ("%02d:%02d" of minute / 60 and minute % 60; 1440 is "24:00").
std::wstring SlotTimeText(int minute);

// The minute value of a slot text as the day editor reads it: the hours are the number
// before the last three characters, the minutes the number in the last two. A text that is
// not of that form (fewer than four characters, anything but digits in the hours or the
// minutes, more than four hour digits) gives nothing.
std::optional<int> SlotTextMinutes(std::wstring_view text, int* hours = nullptr, int* minutes = nullptr);

// The slot of a "slot" element when it is valid: both hours at most 24, an hour of 24 with
// minutes 0, both minutes below 60 and from <= to; nothing otherwise.
std::optional<DaySlot> ReadDaySlot(XmlDocument::XmlNode const* slot);

// Writes "from" and "to" of a slot element ("%02d:%02d").
void WriteDaySlot(XmlDocument::XmlNode* slot, DaySlot slot_);

// Replaces every "slot" child of a day element by the map's slot list, in list order.
void WriteDaySlots(XmlDocument::XmlNode* day, DayMinuteMap const& map);
