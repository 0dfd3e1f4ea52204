#pragma once
#include "platform/tools/ZoDateTime.h"
#include <map>
#include <string>

// The painted dates of a year calendar: each painted date carries a selection type, a colour
// word and an id text. Dates of any number of years are kept, in date order, so the first and
// the last painted date are found at once.
class ZoCalendarDates {
public:
    struct Paint {
        unsigned colour = 0xFFFFFF;
        std::wstring id;
        bool operator==(Paint const&) const = default;
    };

    // Paints the date with the type; a type with an empty id erases it.
    void Select(ZoDateTime const& date, unsigned colour, std::wstring const& id);
    void Erase(ZoDateTime const& date);
    void Clear() { m_dates.clear(); }
    // The paint of a date, or null when it has none.
    Paint const* At(ZoDateTime const& date) const;
    std::wstring IdOf(ZoDateTime const& date) const;
    // The earliest and the latest painted date; invalid when none is painted.
    ZoDateTime First() const;
    ZoDateTime Last() const;
    std::size_t Size() const { return m_dates.size(); }
    std::map<int, Paint> const& BySerial() const { return m_dates; }

private:
    std::map<int, Paint> m_dates; // by ZoDateTime::Serial()
};
