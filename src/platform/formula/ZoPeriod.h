#pragma once
#include <string_view>

// The period filter of a variable reference, "[MAINS.ENERGY/day]": the variable restricted
// to a period of the calendar. The filter is a unit, optionally followed by "-N" for the
// Nth period before the current one: "day" is today so far, "day-1" yesterday, "month-12"
// the same month a year ago. Units: hour, day, week (from Monday), month, year; ASCII case
// is ignored; N runs from 1 to 9999; no blanks.
//
// What the restricted variable gives: for a counter, its increase during the period; for
// any other numeric variable, its mean over the period.
enum class ZoPeriodUnit { Hour, Day, Week, Month, Year };

struct ZoPeriod {
    ZoPeriodUnit unit = ZoPeriodUnit::Day;
    int back = 0; // 0: the current period; N: N periods before it
};

// False when filter is not a period.
bool ZoParsePeriod(std::wstring_view filter, ZoPeriod& period);
