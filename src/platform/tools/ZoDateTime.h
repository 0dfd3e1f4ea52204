#pragma once

// A calendar date (proleptic Gregorian calendar, years 1 to 9999), as the year calendar and
// its editor use it. A default-constructed date is invalid.
//
// SetDate(year, month, day) with a day that the month lacks (31 April, 29 February of a
// common year) takes the month's last day instead (30 April, 28 February). The calendar
// editor steps a month cursor from the first painted date while keeping its day of the
// month, so a cursor on the 31st lands on the next month's last day and never skips a month.
// A month outside 1..12, a day below 1 or a year outside 1..9999 makes the date invalid.
class ZoDateTime {
public:
    ZoDateTime() = default;
    ZoDateTime(int year, int month, int day) { SetDate(year, month, day); }

    // Returns Valid() afterwards.
    bool SetDate(int year, int month, int day);
    bool Valid() const { return m_year != 0; }
    int Year() const { return m_year; }
    int Month() const { return m_month; }
    int Day() const { return m_day; }
    // 1 = Sunday, 2 = Monday, ... 7 = Saturday; 0 for an invalid date.
    int DayOfWeek() const;
    // The same day of the month, `months` months later (or earlier when negative), through
    // SetDate: 31 January plus one month is 28 or 29 February.
    ZoDateTime AddMonths(int months) const;
    // The next or the previous date.
    ZoDateTime AddDays(int days) const;
    // Days since 1 January of year 1 (that day is 0); -1 for an invalid date. Dates order
    // as their serials do.
    int Serial() const;
    static ZoDateTime FromSerial(int serial);

    // Invalid dates order before every valid one and equal one another.
    // (Plain operators rather than <=>: Qt's moc cannot read <compare>, and widgets' headers
    // include this one.)
    bool operator==(ZoDateTime const& other) const { return Serial() == other.Serial(); }
    bool operator!=(ZoDateTime const& other) const { return Serial() != other.Serial(); }
    bool operator<(ZoDateTime const& other) const { return Serial() < other.Serial(); }
    bool operator<=(ZoDateTime const& other) const { return Serial() <= other.Serial(); }
    bool operator>(ZoDateTime const& other) const { return Serial() > other.Serial(); }
    bool operator>=(ZoDateTime const& other) const { return Serial() >= other.Serial(); }

private:
    int m_year = 0;
    int m_month = 0;
    int m_day = 0;
};

bool IsLeapYear(int year);
// Days of that month of that year (28 to 31); 0 for a month outside 1..12.
int DaysOfMonth(int year, int month);
// Days of the date's month; 0 for an invalid date.
int DaysOfMonth(ZoDateTime const& date);
