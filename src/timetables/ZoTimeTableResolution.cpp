#include "timetables/ZoTimeTableResolution.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/tools/ZoUtf.h"

#include <algorithm>

using XmlNode = XmlDocument::XmlNode;

namespace {

int DateKey(int year, int month, int day)
{
    return (year * 16 + month) * 32 + day;
}

// "month7" -> 7, "day31" -> 31 (the tag after its prefix), 0 when it is not of that form.
int NumberAfter(std::wstring const& tag, std::wstring_view prefix, int max)
{
    if (tag.size() <= prefix.size() || tag.compare(0, prefix.size(), prefix) != 0)
        return 0;
    int number = 0;
    for (std::size_t i = prefix.size(); i < tag.size(); ++i) {
        if (tag[i] < L'0' || tag[i] > L'9' || number > max)
            return 0;
        number = number * 10 + (tag[i] - L'0');
    }
    return number <= max ? number : 0;
}

} // namespace

ZoTimeTableResolution::ZoTimeTableResolution(XmlNode const* root)
{
    if (!root)
        return;
    ReadDays(root->Child(L"days"));
    ReadWeeks(root->Child(L"weeks"));
    ReadCalendars(root->Child(L"calendars"));
}

void ZoTimeTableResolution::ReadDays(XmlNode const* days)
{
    if (!days)
        return;
    for (XmlNode const* day = days->FirstChild(); day; day = day->NextSibling()) {
        if (!day->HasTag(L"day"))
            continue;
        m_days.try_emplace(day->Value(L"id", L""),
                           DayProgram{DaySlotsOf(day), day->Value(L"name", L""), ZoDayColourWord(day)});
    }
}

void ZoTimeTableResolution::ReadWeeks(XmlNode const* weeks)
{
    if (!weeks)
        return;
    for (XmlNode const* week = weeks->FirstChild(); week; week = week->NextSibling()) {
        if (!week->HasTag(L"week"))
            continue;
        Week entries;
        for (int day = 1; day <= 7; ++day)
            entries[day - 1] = week->Value((L"day" + std::to_wstring(day)).c_str(), L"");
        m_weeks.try_emplace(week->Value(L"id", L""), std::move(entries));
    }
}

std::uint32_t ZoTimeTableResolution::EntryIndex(std::string_view utf8)
{
    auto found = m_entryIndex.find(utf8);
    if (found == m_entryIndex.end()) {
        found = m_entryIndex.emplace(std::string(utf8), static_cast<std::uint32_t>(m_entryIds.size())).first;
        m_entryIds.push_back(ZoFromUtf8(utf8));
    }
    return found->second;
}

void ZoTimeTableResolution::ReadCalendars(XmlNode const* calendars)
{
    if (!calendars)
        return;
    for (XmlNode const* calendar = calendars->FirstChild(); calendar; calendar = calendar->NextSibling()) {
        if (!calendar->HasTag(L"calendar"))
            continue;
        Calendar dates;
        for (XmlNode const* year = calendar->FirstChild(); year; year = year->NextSibling()) {
            if (!year->HasTag(L"year"))
                continue;
            long const number = std::wcstol(year->Value(L"year", L"0").c_str(), nullptr, 10);
            if (number < 1 || number > 9999)
                continue; // no date of such a year is ever asked for
            for (XmlNode const* month = year->FirstChild(); month; month = month->NextSibling()) {
                int const monthNumber = NumberAfter(month->Tag(), L"month", 12);
                if (!monthNumber)
                    continue;
                for (XmlNode const* day = month->FirstChild(); day; day = day->NextSibling()) {
                    if (int const dayNumber = NumberAfter(day->Tag(), L"day", 31))
                        dates.emplace_back(DateKey(static_cast<int>(number), monthNumber, dayNumber), EntryIndex(day->TextUtf8()));
                }
            }
        }
        // The last entry of a date counts, as when the calendar editor paints it again.
        std::stable_sort(dates.begin(), dates.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
        Calendar unique;
        unique.reserve(dates.size());
        for (auto const& date : dates) {
            if (!unique.empty() && unique.back().first == date.first)
                unique.back() = date;
            else
                unique.push_back(date);
        }
        m_calendars.try_emplace(calendar->Value(L"id", L""), std::move(unique));
    }
}

ZoTimeTableResolution::Kind ZoTimeTableResolution::KindOf(std::wstring_view id) const
{
    if (m_days.find(id) != m_days.end())
        return Kind::Day;
    if (m_weeks.find(id) != m_weeks.end())
        return Kind::Week;
    if (m_calendars.find(id) != m_calendars.end())
        return Kind::Calendar;
    return Kind::None;
}

bool ZoTimeTableResolution::HasDayProgram(std::wstring_view dayId) const
{
    return m_days.find(dayId) != m_days.end();
}

std::wstring const* ZoTimeTableResolution::DayProgramOn(std::wstring_view id, QDate date) const
{
    if (auto const day = m_days.find(id); day != m_days.end())
        return &day->first;
    if (auto const week = m_weeks.find(id); week != m_weeks.end()) {
        std::wstring const& entry = week->second[date.dayOfWeek() - 1];
        return entry.empty() ? nullptr : &entry;
    }
    if (auto const calendar = m_calendars.find(id); calendar != m_calendars.end()) {
        Calendar const& dates = calendar->second;
        int const key = DateKey(date.year(), date.month(), date.day());
        auto const entry = std::lower_bound(dates.begin(), dates.end(), key,
                                            [](auto const& item, int wanted) { return item.first < wanted; });
        return entry == dates.end() || entry->first != key ? nullptr : &m_entryIds[entry->second];
    }
    return nullptr;
}

std::vector<DaySlot> const& ZoTimeTableResolution::SlotsOfDay(std::wstring_view dayId) const
{
    auto const day = m_days.find(dayId);
    return day == m_days.end() ? m_none : day->second.daySlots;
}

std::wstring const& ZoTimeTableResolution::DayProgramName(std::wstring_view dayId) const
{
    auto const day = m_days.find(dayId);
    return day == m_days.end() ? m_noName : day->second.name;
}

unsigned ZoTimeTableResolution::DayProgramColor(std::wstring_view dayId) const
{
    auto const day = m_days.find(dayId);
    return day == m_days.end() ? 0xFFFFFFu : day->second.color;
}

std::vector<DaySlot> const& ZoTimeTableResolution::SlotsOn(std::wstring_view id, QDate date) const
{
    std::wstring const* day = DayProgramOn(id, date);
    return day ? SlotsOfDay(*day) : m_none;
}

bool ZoTimeTableResolution::AllowsAny(std::wstring_view id, QDate from, QDate to) const
{
    if (KindOf(id) == Kind::Day)
        return !SlotsOfDay(id).empty() && from <= to;
    for (QDate date = from; date.isValid() && date <= to; date = date.addDays(1))
        if (!SlotsOn(id, date).empty())
            return true;
    return false;
}
