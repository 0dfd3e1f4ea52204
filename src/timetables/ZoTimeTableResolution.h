#pragma once
#include "config/XmlDocument.h"
#include "platform/calendar/ZoDaySlots.h"

#include <QDate>

#include <array>
#include <cstdint>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// Which periods a time table allows: the day program that applies on a date, and the
// slots it opens, over any span of dates. Read once from the time-tables document's root
// (days, weeks, calendars); nothing here keeps a pointer into the document.
//
// An id is looked up in the days, then the weeks, then the calendars, the first match
// counting (ids share one space). A week program applies its day entry of the date's
// weekday (day 1 = Monday); a calendar its entry for the date. A date without an entry, or
// whose entry names no day program, allows nothing; so does an id that resolves to nothing.
// The allowed intervals over a span, across midnight, are timeline/ZoTimeline.h's.
class ZoTimeTableResolution {
public:
    enum class Kind { None, Day, Week, Calendar };

    explicit ZoTimeTableResolution(XmlDocument::XmlNode const* timeTablesRoot);

    Kind KindOf(std::wstring_view id) const;
    // The id of the day program that applies on the date, or null.
    std::wstring const* DayProgramOn(std::wstring_view id, QDate date) const;
    // The slots open on the date (none when no day program applies).
    std::vector<DaySlot> const& SlotsOn(std::wstring_view id, QDate date) const;
    // Whether any minute from `from` to `to` is allowed.
    bool AllowsAny(std::wstring_view id, QDate from, QDate to) const;
    // Whether the day program exists (for the references of weeks and calendars).
    bool HasDayProgram(std::wstring_view dayId) const;
    // A day program's name and display colour (the stored 24-bit colour word, red in the
    // low byte); empty and white when there is no such day program.
    std::wstring const& DayProgramName(std::wstring_view dayId) const;
    unsigned DayProgramColor(std::wstring_view dayId) const;
    // The slots of a day program (none when there is no such day program).
    std::vector<DaySlot> const& SlotsOfDay(std::wstring_view dayId) const;

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view text) const { return std::hash<std::wstring_view>()(text); }
    };
    template <class Value>
    using Map = std::unordered_map<std::wstring, Value, Hash, std::equal_to<>>;
    using Week = std::array<std::wstring, 7>;
    // (date key, index in m_entryIds) sorted by date key, one entry a date: (year * 16 +
    // month) * 32 + day -> the day program id of the calendar's entry for that date.
    using Calendar = std::vector<std::pair<int, std::uint32_t>>;

    void ReadDays(XmlDocument::XmlNode const* days);
    void ReadWeeks(XmlDocument::XmlNode const* weeks);
    void ReadCalendars(XmlDocument::XmlNode const* calendars);
    // The index in m_entryIds of a calendar entry's text (stored UTF-8), added when new: a
    // calendar repeats a few day program ids over hundreds of dates.
    std::uint32_t EntryIndex(std::string_view utf8);

    struct DayProgram {
        std::vector<DaySlot> daySlots;
        std::wstring name;
        unsigned color = 0xFFFFFF;
    };
    Map<DayProgram> m_days;
    Map<Week> m_weeks;
    Map<Calendar> m_calendars;
    std::vector<std::wstring> m_entryIds;
    struct Utf8Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    std::unordered_map<std::string, std::uint32_t, Utf8Hash, std::equal_to<>> m_entryIndex;
    std::vector<DaySlot> const m_none;
    std::wstring const m_noName;
};
