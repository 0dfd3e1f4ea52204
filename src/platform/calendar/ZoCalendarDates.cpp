#include "platform/calendar/ZoCalendarDates.h"

void ZoCalendarDates::Select(ZoDateTime const& date, unsigned colour, std::wstring const& id)
{
    if (!date.Valid())
        return;
    if (id.empty()) {
        Erase(date);
        return;
    }
    Paint& paint = m_dates[date.Serial()];
    paint.colour = colour & 0xFFFFFFu;
    paint.id = id;
}

void ZoCalendarDates::Erase(ZoDateTime const& date)
{
    if (date.Valid())
        m_dates.erase(date.Serial());
}

ZoCalendarDates::Paint const* ZoCalendarDates::At(ZoDateTime const& date) const
{
    if (!date.Valid())
        return nullptr;
    auto const found = m_dates.find(date.Serial());
    return found == m_dates.end() ? nullptr : &found->second;
}

std::wstring ZoCalendarDates::IdOf(ZoDateTime const& date) const
{
    Paint const* paint = At(date);
    return paint ? paint->id : std::wstring();
}

ZoDateTime ZoCalendarDates::First() const
{
    return m_dates.empty() ? ZoDateTime() : ZoDateTime::FromSerial(m_dates.begin()->first);
}

ZoDateTime ZoCalendarDates::Last() const
{
    return m_dates.empty() ? ZoDateTime() : ZoDateTime::FromSerial(m_dates.rbegin()->first);
}
