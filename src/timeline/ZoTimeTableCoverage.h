#pragma once
#include "timeline/ZoTimeline.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

// How many notifying events (ZoNotifiesWhenAllowed) may fire in each hour of one week: the
// project's exposure to floods, and which events a holiday switches off. An event counts in
// an hour when its time table allows any minute of that hour; events without a time table
// count in every hour, events whose table resolves to nothing in none.
//
// Each distinct time-table reference is resolved once, whatever number of events use it.
// The coverage keeps pointers to the `event` elements: it is built again after the events
// change.
class ZoTimeTableCoverage {
public:
    static constexpr int kHours = 7 * 24;

    // events: the `events` element (may be null); the week runs from weekStart 00:00 for
    // seven days.
    ZoTimeTableCoverage(XmlDocument::XmlNode const* events, ZoTimeTableResolution const& tables, QDate weekStart);

    QDate WeekStart() const { return m_weekStart; }
    // The number of notifying events allowed in the hour (0 to 167 from the week's start).
    int CountAt(int hour) const;
    // The largest hourly count and its first hour.
    int Peak() const;
    int PeakHour() const;
    // The notifying events of the project.
    int NotifyingCount() const { return static_cast<int>(m_events.size()); }
    // The notifying events allowed in the hour, in document order, with their positions
    // among the children of `events`.
    struct Allowed {
        XmlDocument::XmlNode const* event;
        std::uint32_t position;
    };
    std::vector<Allowed> EventsAt(int hour) const;

private:
    using HourMask = std::bitset<kHours>;
    HourMask MaskOf(ZoTimeTableResolution const& tables, std::wstring_view reference) const;

    QDate m_weekStart;
    std::vector<HourMask> m_masks;                                      // by distinct reference
    struct Counted {
        Allowed allowed;
        std::uint32_t mask;
    };
    std::vector<Counted> m_events;
    std::array<int, kHours> m_counts{};
};
