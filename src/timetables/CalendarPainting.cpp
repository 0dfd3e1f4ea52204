#include "timetables/CalendarPainting.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/tools/ZoFormat.h"
#include <cwchar>
#include <unordered_map>

using XmlNode = XmlDocument::XmlNode;

namespace {

// The first day program of `days` for each value of a key ("id" or "name").
std::unordered_map<std::wstring, XmlNode const*> DaysBy(XmlNode const* days, wchar_t const* key)
{
    std::unordered_map<std::wstring, XmlNode const*> map;
    if (!days)
        return map;
    for (XmlNode const* day = days->FirstChild(); day; day = day->NextSibling())
        if (day->HasTag(L"day"))
            map.emplace(day->Value(key, L""), day);
    return map;
}

bool MonthNotAfter(ZoDateTime const& cursor, ZoDateTime const& last)
{
    return cursor.Year() < last.Year() || (cursor.Year() == last.Year() && cursor.Month() <= last.Month());
}

} // namespace

std::vector<CalendarDayProgram> ReadDayPrograms(XmlNode const* days)
{
    std::vector<CalendarDayProgram> programs;
    if (!days)
        return programs;
    for (XmlNode const* day = days->FirstChild(); day; day = day->NextSibling())
        if (day->HasTag(L"day"))
            programs.push_back({day->Value(L"name", L""), ZoDayColourWord(day)});
    return programs;
}

void ReadCalendarDates(XmlNode const* calendar, XmlNode const* days, std::vector<CalendarDayProgram> const& programs,
                       ZoCalendarDates& dates)
{
    if (!calendar)
        return;
    std::unordered_map<std::wstring, XmlNode const*> const byId = DaysBy(days, L"id");
    std::unordered_map<std::wstring, unsigned> colourOfName;
    for (CalendarDayProgram const& program : programs)
        colourOfName.emplace(program.name, program.colour);

    for (XmlNode const* year = calendar->FirstChild(); year; year = year->NextSibling()) {
        if (!year->HasTag(L"year"))
            continue;
        long const number = std::wcstol(year->Value(L"year", L"").c_str(), nullptr, 10);
        if (number < 1 || number > 9999)
            continue;
        for (int month = 1; month <= 12; ++month) {
            XmlNode const* element = year->NodeV(L"month%d", month);
            if (!element)
                continue;
            for (int day = 1; day <= 31; ++day) {
                std::wstring const id = element->Value(ZoFormat(L"/day%d", day).c_str(), L"");
                auto const program = byId.find(id);
                if (id.empty() || program == byId.end())
                    continue;
                std::wstring const name = program->second->Value(L"name", L"");
                auto const row = colourOfName.find(name);
                ZoDateTime const date(int(number), month, day);
                if (row == colourOfName.end() || !date.Valid() || date.Day() != day)
                    continue;
                dates.Select(date, row->second, name);
            }
        }
    }
}

std::vector<ZoDateTime> MaskedDates(int year, unsigned monthMask, unsigned weekdayMask)
{
    std::vector<ZoDateTime> dates;
    for (int month = 1; month <= 12; ++month) {
        if (!(monthMask & (1u << (month - 1))))
            continue;
        int const length = DaysOfMonth(year, month);
        for (int day = 1; day <= length; ++day) {
            ZoDateTime const date(year, month, day);
            int bit = date.DayOfWeek() - 2;
            if (bit < 0)
                bit = 6; // Sunday
            if (weekdayMask & (1u << bit))
                dates.push_back(date);
        }
    }
    return dates;
}

void WriteCalendarDates(XmlNode* calendar, ZoCalendarDates const& dates, XmlNode const* days)
{
    for (XmlNode* child = calendar->FirstChild(); child;) {
        XmlNode* const next = child->NextSibling();
        if (child->HasTag(L"year"))
            calendar->RemoveChild(child);
        child = next;
    }
    ZoDateTime const first = dates.First();
    ZoDateTime const last = dates.Last();
    if (!first.Valid() || !last.Valid())
        return;
    std::unordered_map<std::wstring, XmlNode const*> const byName = DaysBy(days, L"name");

    for (ZoDateTime cursor = first; cursor.Valid() && MonthNotAfter(cursor, last); cursor = cursor.AddMonths(1)) {
        XmlNode* year = calendar->NodeV(L"year?year=%d?", cursor.Year());
        if (!year) {
            year = calendar->NewChild(L"year");
            year->SetValue(L"year", ZoFormat(L"%d", cursor.Year()));
        }
        XmlNode* month = year->NodeV(L"month%d", cursor.Month());
        if (month)
            month->Reset();
        int const length = DaysOfMonth(cursor);
        for (int day = 1; day <= length; ++day) {
            ZoCalendarDates::Paint const* paint = dates.At(ZoDateTime(cursor.Year(), cursor.Month(), day));
            if (!paint)
                continue;
            auto const program = byName.find(paint->id);
            if (program == byName.end())
                continue;
            if (!month)
                month = year->NewChild(ZoFormat(L"month%d", cursor.Month()).c_str());
            month->SetValue(ZoFormat(L"day%d", day).c_str(), program->second->Value(L"id", L""));
        }
    }
}
