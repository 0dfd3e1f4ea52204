// Dates of the year calendar: leap years, month lengths, weekdays, and what SetDate does with
// a day that the month lacks (the calendar editor's month walk relies on it).
#include "platform/tools/ZoDateTime.h"
#include <gtest/gtest.h>

TEST(ZoDateTime, LeapYearsAndMonthLengths)
{
    EXPECT_TRUE(IsLeapYear(2024));
    EXPECT_FALSE(IsLeapYear(2025));
    EXPECT_FALSE(IsLeapYear(1900)); // a century is not, unless it divides by 400
    EXPECT_TRUE(IsLeapYear(2000));
    EXPECT_EQ(DaysOfMonth(2024, 2), 29);
    EXPECT_EQ(DaysOfMonth(2025, 2), 28);
    EXPECT_EQ(DaysOfMonth(2100, 2), 28);
    EXPECT_EQ(DaysOfMonth(2025, 4), 30);
    EXPECT_EQ(DaysOfMonth(2025, 12), 31);
    EXPECT_EQ(DaysOfMonth(2025, 13), 0);
    EXPECT_EQ(DaysOfMonth(ZoDateTime(2024, 2, 10)), 29);
    EXPECT_EQ(DaysOfMonth(ZoDateTime()), 0);
}

TEST(ZoDateTime, DayOfWeekCountsFromSundayAsOne)
{
    EXPECT_EQ(ZoDateTime(2024, 12, 25).DayOfWeek(), 4); // a Wednesday
    EXPECT_EQ(ZoDateTime(2025, 1, 5).DayOfWeek(), 1);   // a Sunday
    EXPECT_EQ(ZoDateTime(2025, 1, 6).DayOfWeek(), 2);   // a Monday
    EXPECT_EQ(ZoDateTime(2000, 2, 29).DayOfWeek(), 3);  // a Tuesday
    EXPECT_EQ(ZoDateTime(1, 1, 1).DayOfWeek(), 2);
    EXPECT_EQ(ZoDateTime().DayOfWeek(), 0);
}

TEST(ZoDateTime, SetDateTakesTheMonthsLastDayForADayItLacks)
{
    ZoDateTime date;
    EXPECT_TRUE(date.SetDate(2025, 2, 31));
    EXPECT_EQ(date, ZoDateTime(2025, 2, 28));
    EXPECT_EQ(ZoDateTime(2024, 2, 30), ZoDateTime(2024, 2, 29));
    EXPECT_EQ(ZoDateTime(2025, 4, 31).Day(), 30);
    // Anything else that is no date is invalid.
    EXPECT_FALSE(date.SetDate(2025, 0, 1));
    EXPECT_FALSE(date.Valid());
    EXPECT_FALSE(ZoDateTime(2025, 13, 1).Valid());
    EXPECT_FALSE(ZoDateTime(2025, 1, 0).Valid());
    EXPECT_FALSE(ZoDateTime(0, 1, 1).Valid());
    EXPECT_FALSE(ZoDateTime(10000, 1, 1).Valid());
}

TEST(ZoDateTime, MonthStepsKeepTheDayAndCrossTheYearEnd)
{
    EXPECT_EQ(ZoDateTime(2024, 12, 25).AddMonths(1), ZoDateTime(2025, 1, 25));
    EXPECT_EQ(ZoDateTime(2025, 1, 31).AddMonths(1), ZoDateTime(2025, 2, 28));
    EXPECT_EQ(ZoDateTime(2025, 3, 15).AddMonths(-3), ZoDateTime(2024, 12, 15));
    EXPECT_EQ(ZoDateTime(2024, 2, 29).AddMonths(12), ZoDateTime(2025, 2, 28));
    EXPECT_EQ(ZoDateTime(2024, 12, 31).AddDays(1), ZoDateTime(2025, 1, 1));
    EXPECT_EQ(ZoDateTime(2024, 3, 1).AddDays(-1), ZoDateTime(2024, 2, 29));
    EXPECT_FALSE(ZoDateTime(1, 1, 1).AddDays(-1).Valid());
}

TEST(ZoDateTime, SerialsOrderDatesAndRoundTrip)
{
    EXPECT_LT(ZoDateTime(2024, 12, 31), ZoDateTime(2025, 1, 1));
    EXPECT_LT(ZoDateTime(), ZoDateTime(1, 1, 1)); // invalid dates come first
    EXPECT_EQ(ZoDateTime(1, 1, 1).Serial(), 0);
    for (int serial = 0; serial < 800000; serial += 997) {
        ZoDateTime const date = ZoDateTime::FromSerial(serial);
        ASSERT_TRUE(date.Valid()) << serial;
        ASSERT_EQ(date.Serial(), serial);
    }
    EXPECT_EQ(ZoDateTime::FromSerial(ZoDateTime(2024, 2, 29).Serial()), ZoDateTime(2024, 2, 29));
    EXPECT_FALSE(ZoDateTime::FromSerial(-1).Valid());
}
