#pragma once
#include "config/XmlDocument.h"
#include "platform/calendar/ZoCalendarDates.h"
#include <string>
#include <vector>

// The calendar editor's rules, apart from its widgets. In the editor the id painted on a
// date is the day program's name; names become ids only when the calendar is written.

// A row of the editor's day program list: a day program's name and colour word.
struct CalendarDayProgram {
    std::wstring name;
    unsigned colour = 0xFFFFFF;
};

// The day programs of a "days" container, in document order (null: none).
std::vector<CalendarDayProgram> ReadDayPrograms(XmlDocument::XmlNode const* days);

// Paints the dates a "calendar" element holds: for each "year" child and months 1 to 12
// whose "month%d" element exists, each "day%d" entry (1 to 31) that holds the id of a day
// program of `days` whose name is a row of `programs` (exact comparison, first row wins) is
// painted with (that row's colour, its name). Entries whose id or name resolves to nothing,
// and days the month lacks, are skipped.
void ReadCalendarDates(XmlDocument::XmlNode const* calendar, XmlDocument::XmlNode const* days,
                       std::vector<CalendarDayProgram> const& programs, ZoCalendarDates& dates);

// Fast selection: every date of `year`, in order, whose month bit is set in monthMask (bit 0 =
// January) and whose weekday bit is set in weekdayMask (bit DayOfWeek - 2, Sunday as bit 6,
// so bit 0 = Monday).
std::vector<ZoDateTime> MaskedDates(int year, unsigned monthMask, unsigned weekdayMask);

// Writes the painted dates into a "calendar" element: every "year" child is removed; then a
// month cursor walks from the first painted date to the month of the last one, one month at
// a time keeping its day of the month (through ZoDateTime::SetDate). For each month it finds
// or creates "year?year=%d?", clears "month%d" if it exists, and for every day of the month
// whose painted name is the name of a day program of `days` ("/day?name=%s?", first match),
// writes "day%d" = that program's id (creating the month element when needed). Nothing
// painted writes no year at all; a name that matches no day program is not written.
// The cursor is compared by month, so 25 December and 1 January of the next year walk both
// months.
void WriteCalendarDates(XmlDocument::XmlNode* calendar, ZoCalendarDates const& dates,
                        XmlDocument::XmlNode const* days);
