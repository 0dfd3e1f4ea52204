#include "timeline/ZoTimeTableCoverage.h"

#include "config/XmlKeys.h"
#include "platform/tools/ZoUtf.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

using XmlNode = XmlDocument::XmlNode;

ZoTimeTableCoverage::ZoTimeTableCoverage(XmlNode const* events, ZoTimeTableResolution const& tables, QDate weekStart)
    : m_weekStart(weekStart)
{
    if (!events || !weekStart.isValid())
        return;
    XmlDocument const* document = events->Document();
    void const* const eventTag = document->TagKey(L"event");
    void const* const notifyTag = document->TagKey(L"notify");
    void const* const disabledTag = document->TagKey(L"disabled");
    void const* const tableTag = document->TagKey(L"timeTable");
    std::unordered_map<std::string_view, std::uint32_t> maskOf; // reference as stored -> m_masks
    std::vector<int> users;                                      // events by mask
    m_events.reserve(static_cast<std::size_t>(events->Size()));
    std::uint32_t position = 0;
    for (XmlNode const* event = events->FirstChild(); event; event = event->NextSibling(), ++position) {
        if (!eventTag || event->TagKey() != eventTag)
            continue;
        std::string_view notify, disabled, table;
        for (XmlNode const* key = event->FirstChild(); key; key = key->NextSibling()) {
            void const* const tag = key->TagKey();
            if (tag == notifyTag)
                notify = key->TextUtf8();
            else if (tag == disabledTag)
                disabled = key->TextUtf8();
            else if (tag == tableTag)
                table = key->TextUtf8();
        }
        if (!ZoNotifiesWhenAllowed(notify, disabled))
            continue;
        auto [found, added] = maskOf.try_emplace(table, static_cast<std::uint32_t>(m_masks.size()));
        if (added) {
            m_masks.push_back(MaskOf(tables, ZoFromUtf8(table)));
            users.push_back(0);
        }
        ++users[found->second];
        m_events.push_back({{event, position}, found->second});
    }
    for (std::size_t mask = 0; mask < m_masks.size(); ++mask)
        for (int hour = 0; hour < kHours; ++hour)
            if (m_masks[mask][hour])
                m_counts[hour] += users[mask];
}

ZoTimeTableCoverage::HourMask ZoTimeTableCoverage::MaskOf(ZoTimeTableResolution const& tables,
                                                         std::wstring_view reference) const
{
    HourMask mask;
    switch (ZoReachOf(tables, reference)) {
    case ZoTableReach::Unrestricted:
        return mask.set();
    case ZoTableReach::Dangling:
        return mask;
    case ZoTableReach::Resolved:
        break;
    }
    for (int day = 0; day < 7; ++day)
        for (DaySlot const& slot : tables.SlotsOn(reference, m_weekStart.addDays(day)))
            for (int hour = slot.from / 60; hour * 60 < slot.to && hour < 24; ++hour)
                mask.set(static_cast<std::size_t>(day * 24 + hour));
    return mask;
}

int ZoTimeTableCoverage::CountAt(int hour) const
{
    return hour >= 0 && hour < kHours ? m_counts[static_cast<std::size_t>(hour)] : 0;
}

int ZoTimeTableCoverage::Peak() const
{
    return *std::max_element(m_counts.begin(), m_counts.end());
}

int ZoTimeTableCoverage::PeakHour() const
{
    return static_cast<int>(std::max_element(m_counts.begin(), m_counts.end()) - m_counts.begin());
}

std::vector<ZoTimeTableCoverage::Allowed> ZoTimeTableCoverage::EventsAt(int hour) const
{
    std::vector<Allowed> allowed;
    if (hour < 0 || hour >= kHours)
        return allowed;
    allowed.reserve(static_cast<std::size_t>(m_counts[static_cast<std::size_t>(hour)]));
    for (Counted const& counted : m_events)
        if (m_masks[counted.mask][static_cast<std::size_t>(hour)])
            allowed.push_back(counted.allowed);
    return allowed;
}
