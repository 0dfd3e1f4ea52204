#pragma once
#include "timetables/ZoTimeTableResolution.h"

#include <QDate>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// When an event may fire: the allowed intervals of its time-table reference over a span of
// dates, built on ZoTimeTableResolution (which says which day program applies on a date).
//
// Moments are counted in minutes since midnight of Julian day 0 (ZoMomentOf), so that an
// interval runs across midnight, months and years without a calendar in sight. An interval
// covers the minutes from `from` to `to` - 1: a slot up to 24:00 followed by the next day's
// slot from 00:00 is one interval.
//
// What a reference means:
// - no time table (an empty reference): the event may fire at every moment;
// - a reference that resolves to no day, week or calendar program (a deleted table): never;
// - a day program: its slots every day;
// - a week program: the slots of the day program of the date's weekday;
// - a calendar: the slots of the day program painted on the date.
// A date on which a week or calendar gives no day program (a weekday without entry, a date
// the calendar leaves unpainted, an entry naming a deleted day program) allows nothing:
// the calendar lists the days the event may fire, not exceptions to some default.

using ZoMoment = std::int64_t;

struct ZoInterval {
    ZoMoment from = 0;
    ZoMoment to = 0; // excluded
    bool operator==(ZoInterval const&) const = default;
};

ZoMoment ZoMomentOf(QDate date, int minute = 0);
QDate ZoDateOf(ZoMoment moment);
int ZoMinuteOf(ZoMoment moment); // 0 to 1439
// "2026-12-25 14:00".
std::wstring ZoMomentText(ZoMoment moment);
// A moment written "YYYY-MM-DD HH:MM" (or "YYYY-MM-DDTHH:MM", hours 0 to 24, 24 only with
// minutes 00); false when the text is not of that form.
bool ZoParseMoment(std::wstring_view text, ZoMoment& moment);

// How an event's time-table reference restricts it.
enum class ZoTableReach { Unrestricted, Resolved, Dangling };
ZoTableReach ZoReachOf(ZoTimeTableResolution const& tables, std::wstring_view reference);

// The allowed intervals from the start of `from` to the end of `to`, in order, touching
// intervals joined. An unrestricted reference gives the whole span; a dangling one nothing.
std::vector<ZoInterval> ZoAllowedIntervals(ZoTimeTableResolution const& tables, std::wstring_view reference,
                                           QDate from, QDate to);

// Whether the reference allows the minute that starts at that moment.
bool ZoAllowedAt(ZoTimeTableResolution const& tables, std::wstring_view reference, ZoMoment moment);

// Whether an event counts among the notifying events whose number the flood rules and the
// coverage count: "notify" is "T" and "disabled" is "F" (as stored; an event without a
// "disabled" key is not counted, as the event editor shows it disabled).
inline bool ZoNotifiesWhenAllowed(std::string_view notify, std::string_view disabled)
{
    return notify == "T" && disabled == "F";
}

// The largest number of events allowed at one moment from `from` to `to`, and the first
// moment it is reached: `always` events count at every moment, and each (reference, count)
// adds count while its reference allows.
struct ZoPeak {
    int count = 0;
    ZoMoment moment = 0;
};
struct ZoCountedTable {
    std::wstring_view reference;
    int count = 0;
};
ZoPeak ZoPeakAllowed(ZoTimeTableResolution const& tables, std::vector<ZoCountedTable> const& counted, int always,
                     QDate from, QDate to);
