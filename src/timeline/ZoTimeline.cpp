#include "timeline/ZoTimeline.h"

#include "platform/tools/ZoFormat.h"

#include <algorithm>

namespace {

constexpr int kDay = 1440;

// The digits of text[at, at + count) as a number, or -1.
int Number(std::wstring_view text, std::size_t at, std::size_t count)
{
    if (at + count > text.size())
        return -1;
    int value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < L'0' || text[i] > L'9')
            return -1;
        value = value * 10 + (text[i] - L'0');
    }
    return value;
}

} // namespace

ZoMoment ZoMomentOf(QDate date, int minute)
{
    return date.toJulianDay() * kDay + minute;
}

QDate ZoDateOf(ZoMoment moment)
{
    ZoMoment day = moment / kDay;
    if (moment % kDay < 0)
        --day;
    return QDate::fromJulianDay(day);
}

int ZoMinuteOf(ZoMoment moment)
{
    int const minute = static_cast<int>(moment % kDay);
    return minute < 0 ? minute + kDay : minute;
}

std::wstring ZoMomentText(ZoMoment moment)
{
    QDate const date = ZoDateOf(moment);
    int const minute = ZoMinuteOf(moment);
    return ZoFormat(L"%04d-%02d-%02d %02d:%02d", date.year(), date.month(), date.day(), minute / 60, minute % 60);
}

bool ZoParseMoment(std::wstring_view text, ZoMoment& moment)
{
    if (text.size() != 16 || text[4] != L'-' || text[7] != L'-' || (text[10] != L' ' && text[10] != L'T')
        || text[13] != L':')
        return false;
    int const year = Number(text, 0, 4), month = Number(text, 5, 2), day = Number(text, 8, 2);
    int const hours = Number(text, 11, 2), minutes = Number(text, 14, 2);
    QDate const date(year, month, day);
    if (!date.isValid() || hours < 0 || minutes < 0 || minutes > 59 || hours > 24 || (hours == 24 && minutes))
        return false;
    moment = ZoMomentOf(date, hours * 60 + minutes);
    return true;
}

ZoTableReach ZoReachOf(ZoTimeTableResolution const& tables, std::wstring_view reference)
{
    if (reference.empty())
        return ZoTableReach::Unrestricted;
    return tables.KindOf(reference) == ZoTimeTableResolution::Kind::None ? ZoTableReach::Dangling
                                                                         : ZoTableReach::Resolved;
}

std::vector<ZoInterval> ZoAllowedIntervals(ZoTimeTableResolution const& tables, std::wstring_view reference,
                                           QDate from, QDate to)
{
    std::vector<ZoInterval> intervals;
    if (!from.isValid() || !to.isValid() || from > to)
        return intervals;
    switch (ZoReachOf(tables, reference)) {
    case ZoTableReach::Dangling:
        return intervals;
    case ZoTableReach::Unrestricted:
        intervals.push_back({ZoMomentOf(from), ZoMomentOf(to, kDay)});
        return intervals;
    case ZoTableReach::Resolved:
        break;
    }
    ZoMoment day = ZoMomentOf(from);
    for (QDate date = from; date <= to; date = date.addDays(1), day += kDay) {
        for (DaySlot const& slot : tables.SlotsOn(reference, date)) {
            ZoInterval const next{day + slot.from, day + slot.to};
            if (!intervals.empty() && intervals.back().to >= next.from)
                intervals.back().to = std::max(intervals.back().to, next.to);
            else
                intervals.push_back(next);
        }
    }
    return intervals;
}

bool ZoAllowedAt(ZoTimeTableResolution const& tables, std::wstring_view reference, ZoMoment moment)
{
    switch (ZoReachOf(tables, reference)) {
    case ZoTableReach::Unrestricted:
        return true;
    case ZoTableReach::Dangling:
        return false;
    case ZoTableReach::Resolved:
        break;
    }
    int const minute = ZoMinuteOf(moment);
    for (DaySlot const& slot : tables.SlotsOn(reference, ZoDateOf(moment)))
        if (slot.from <= minute && minute < slot.to)
            return true;
    return false;
}

ZoPeak ZoPeakAllowed(ZoTimeTableResolution const& tables, std::vector<ZoCountedTable> const& counted, int always,
                     QDate from, QDate to)
{
    ZoMoment const start = ZoMomentOf(from);
    ZoMoment const end = ZoMomentOf(to.addDays(1));
    ZoPeak peak{always, start};
    // Over a year or so, the change of the count at each minute, summed in place: linear in
    // the minutes, where sorting every interval's ends of a few hundred tables over a year
    // (hundreds of thousands) would cost ten times more. The changes of one minute are
    // applied together, as ends before starts: touching intervals of two tables do not add up.
    constexpr ZoMoment kMostMinutes = 400 * 1440;
    if (end > start && end - start <= kMostMinutes) {
        std::vector<int> change(static_cast<std::size_t>(end - start) + 1, 0);
        for (ZoCountedTable const& table : counted) {
            if (table.count == 0)
                continue;
            for (ZoInterval const& interval : ZoAllowedIntervals(tables, table.reference, from, to)) {
                change[static_cast<std::size_t>(std::clamp(interval.from, start, end) - start)] += table.count;
                change[static_cast<std::size_t>(std::clamp(interval.to, start, end) - start)] -= table.count;
            }
        }
        int current = always;
        for (std::size_t minute = 0; minute < change.size(); ++minute) {
            current += change[minute];
            if (current > peak.count)
                peak = {current, start + static_cast<ZoMoment>(minute)};
        }
        return peak;
    }
    // (moment, change in the count), swept in time order; at one moment the ends come
    // before the starts, so that touching intervals of two tables do not add up.
    std::vector<std::pair<ZoMoment, int>> changes;
    for (ZoCountedTable const& table : counted) {
        if (table.count == 0)
            continue;
        for (ZoInterval const& interval : ZoAllowedIntervals(tables, table.reference, from, to)) {
            changes.emplace_back(interval.from, table.count);
            changes.emplace_back(interval.to, -table.count);
        }
    }
    std::sort(changes.begin(), changes.end());
    int current = always;
    for (auto const& [moment, change] : changes) {
        current += change;
        if (current > peak.count)
            peak = {current, moment};
    }
    return peak;
}
