#include "ZoDateTime.h"

namespace {

constexpr int kFirstYear = 1;
constexpr int kLastYear = 9999;

// Days before 1 January of `year` counted from 1 January of year 1.
int DaysBeforeYear(int year)
{
    int const y = year - 1;
    return y * 365 + y / 4 - y / 100 + y / 400;
}

int DaysBeforeMonth(int year, int month)
{
    static constexpr int kBefore[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    return kBefore[month - 1] + (month > 2 && IsLeapYear(year) ? 1 : 0);
}

} // namespace

bool IsLeapYear(int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysOfMonth(int year, int month)
{
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12)
        return 0;
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

int DaysOfMonth(ZoDateTime const& date)
{
    return date.Valid() ? DaysOfMonth(date.Year(), date.Month()) : 0;
}

bool ZoDateTime::SetDate(int year, int month, int day)
{
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1) {
        *this = ZoDateTime();
        return false;
    }
    int const last = DaysOfMonth(year, month);
    m_year = year;
    m_month = month;
    m_day = day > last ? last : day;
    return true;
}

int ZoDateTime::Serial() const
{
    if (!Valid())
        return -1;
    return DaysBeforeYear(m_year) + DaysBeforeMonth(m_year, m_month) + m_day - 1;
}

ZoDateTime ZoDateTime::FromSerial(int serial)
{
    if (serial < 0 || serial > ZoDateTime(kLastYear, 12, 31).Serial())
        return {};
    // The year from an estimate that is never too high, then corrected upwards.
    int year = serial / 366 + 1;
    while (DaysBeforeYear(year + 1) <= serial)
        ++year;
    int dayOfYear = serial - DaysBeforeYear(year);
    int month = 1;
    while (month < 12 && DaysBeforeMonth(year, month + 1) <= dayOfYear)
        ++month;
    return ZoDateTime(year, month, dayOfYear - DaysBeforeMonth(year, month) + 1);
}

int ZoDateTime::DayOfWeek() const
{
    if (!Valid())
        return 0;
    // 1 January of year 1 was a Monday (2).
    return (Serial() + 1) % 7 + 1;
}

ZoDateTime ZoDateTime::AddMonths(int months) const
{
    if (!Valid())
        return {};
    int const index = m_year * 12 + (m_month - 1) + months;
    if (index < kFirstYear * 12)
        return {};
    return ZoDateTime(index / 12, index % 12 + 1, m_day);
}

ZoDateTime ZoDateTime::AddDays(int days) const
{
    return Valid() ? FromSerial(Serial() + days) : ZoDateTime();
}
