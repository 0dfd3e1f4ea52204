#pragma once
// One time-tables document holding a case of each resolution question, for the timeline's
// tests: merged slots, slots across midnight, weeks with dangling day ids, calendars across
// years and leap days, and tables that resolve to nothing.
#include "timetables/TimeTableTestDocs.h"

namespace timeline_test {

using namespace timetables_test;

inline std::string const kTables = TimeTables(
    Join({Day("office", "0000FF", Slot("08:00", "12:00") + Slot("11:00", "13:00") + Slot("14:00", "18:00")),
          Day("afternoon", "00FF00", Slot("13:00", "14:00")),
          Day("night", "FF0000", Slot("22:00", "24:00") + Slot("00:00", "06:00")),
          Day("late", "FFFFFF", Slot("20:00", "24:00")), Day("early", "FFFFFF", Slot("00:00", "04:00")),
          Day("empty"), Day("broken", "FFFFFF", Slot("25:00", "26:00"))}),
    Join({Week("nights", "<day1>D-night</day1><day2>D-night</day2><day3>D-night</day3>"),
          Week("lateearly", "<day1>D-late</day1><day2>D-early</day2>"),
          Week("dangling", "<day1>{gone}</day1><day3>D-office</day3>"), Week("none")}),
    Join({Calendar("newyear", "<year><year>2026</year><month12><day31>D-late</day31></month12></year>"
                              "<year><year>2027</year><month1><day1>D-early</day1></month1></year>"),
          Calendar("leap", "<year><year>2028</year><month2><day29>D-office</day29></month2></year>"
                           "<year><year>2027</year><month2><day29>D-office</day29></month2></year>"),
          Calendar("empty")}));

} // namespace timeline_test
