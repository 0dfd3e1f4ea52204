// The allowed intervals of a time-table reference, "allowed at this moment?", the peak the
// flood rule reports and the project's coverage of a week, as tables of cases.
#include "TimelineTestDocs.h"

#include "timeline/ZoTimeTableCoverage.h"
#include "timeline/ZoTimeline.h"

using namespace timeline_test;

namespace {

std::string Text(std::wstring const& text)
{
    return ZoToUtf8(text);
}

std::string Intervals(std::vector<ZoInterval> const& intervals)
{
    std::string out;
    for (ZoInterval const& interval : intervals)
        out += (out.empty() ? "" : ", ") + Text(ZoMomentText(interval.from)) + ".." + Text(ZoMomentText(interval.to));
    return out;
}

ZoMoment At(char const* text)
{
    ZoMoment moment = 0;
    EXPECT_TRUE(ZoParseMoment(QString(text).toStdWString(), moment)) << text;
    return moment;
}

class Timeline : public ::testing::Test {
protected:
    void SetUp() override { Load(m_doc, kTables); }
    ZoTimeTableResolution Tables() const { return ZoTimeTableResolution(m_doc.Root()); }
    XmlDocument m_doc;
};

struct IntervalCase {
    char const* what;
    wchar_t const* reference;
    QDate from, to;
    char const* expected;
};

TEST_F(Timeline, AllowedIntervalsOfEachKindOfTable)
{
    QDate const monday(2026, 3, 2);
    IntervalCase const cases[] = {
        {"overlapping slots merge", L"D-office", monday, monday,
         "2026-03-02 08:00..2026-03-02 13:00, 2026-03-02 14:00..2026-03-02 18:00"},
        {"24:00 joins the next day's 00:00", L"D-night", monday, monday.addDays(1),
         "2026-03-02 00:00..2026-03-02 06:00, 2026-03-02 22:00..2026-03-03 06:00, 2026-03-03 22:00..2026-03-04 00:00"},
        {"a week joins Monday's evening to Tuesday's morning", L"W-lateearly", monday, monday.addDays(13),
         "2026-03-02 20:00..2026-03-03 04:00, 2026-03-09 20:00..2026-03-10 04:00"},
        {"a dangling day id in a week allows nothing that day", L"W-dangling", monday, monday.addDays(6),
         "2026-03-04 08:00..2026-03-04 13:00, 2026-03-04 14:00..2026-03-04 18:00"},
        {"a calendar joins New Year's Eve to New Year's Day", L"C-newyear", QDate(2026, 12, 1), QDate(2027, 1, 31),
         "2026-12-31 20:00..2027-01-01 04:00"},
        {"the 29th of February of a leap year", L"C-leap", QDate(2028, 2, 27), QDate(2028, 3, 1),
         "2028-02-29 08:00..2028-02-29 13:00, 2028-02-29 14:00..2028-02-29 18:00"},
        {"the 29th of February of a common year is no date", L"C-leap", QDate(2027, 1, 1), QDate(2027, 12, 31), ""},
        {"unpainted dates allow nothing", L"C-newyear", QDate(2027, 1, 2), QDate(2027, 12, 31), ""},
        {"no time table: the whole span", L"", monday, monday.addDays(1), "2026-03-02 00:00..2026-03-04 00:00"},
        {"a deleted table: never", L"{gone}", monday, monday.addDays(6), ""},
        {"a day program without slots", L"D-empty", monday, monday.addDays(6), ""},
        {"a day program whose slots are all invalid", L"D-broken", monday, monday.addDays(6), ""},
        {"a week without day entries", L"W-none", monday, monday.addDays(6), ""},
        {"a calendar without dates", L"C-empty", monday, monday.addDays(366), ""},
        {"a span that ends before it starts", L"D-office", monday, monday.addDays(-1), ""},
    };
    ZoTimeTableResolution const tables = Tables();
    for (IntervalCase const& c : cases)
        EXPECT_EQ(Intervals(ZoAllowedIntervals(tables, c.reference, c.from, c.to)), c.expected) << c.what;
}

TEST_F(Timeline, AllowedAtAMoment)
{
    struct Case {
        wchar_t const* reference;
        char const* at;
        bool allowed;
    } const cases[] = {
        {L"D-night", "2026-03-02 23:59", true},   {L"D-night", "2026-03-02 05:59", true},
        {L"D-night", "2026-03-02 06:00", false},  {L"D-office", "2026-03-02 13:00", false},
        {L"D-office", "2026-03-02 12:30", true},  {L"W-lateearly", "2026-03-03 03:00", true},
        {L"W-lateearly", "2026-03-04 03:00", false}, {L"C-leap", "2028-02-29 09:00", true},
        {L"C-leap", "2028-03-01 09:00", false},   {L"", "2026-12-25 14:00", true},
        {L"{gone}", "2026-12-25 14:00", false},   {L"D-night", "2026-03-02 24:00", true}, // the 3rd, 00:00
    };
    ZoTimeTableResolution const tables = Tables();
    for (Case const& c : cases)
        EXPECT_EQ(ZoAllowedAt(tables, c.reference, At(c.at)), c.allowed) << Text(c.reference) << " at " << c.at;
}

TEST(TimelineMoments, ParseAndWrite)
{
    ZoMoment moment = 0;
    EXPECT_TRUE(ZoParseMoment(L"2026-12-25T14:05", moment));
    EXPECT_EQ(Text(ZoMomentText(moment)), "2026-12-25 14:05");
    EXPECT_TRUE(ZoParseMoment(L"2026-12-31 24:00", moment));
    EXPECT_EQ(Text(ZoMomentText(moment)), "2027-01-01 00:00");
    for (wchar_t const* bad : {L"2026-02-30 10:00", L"2026-12-25 24:01", L"2026-12-25 14:60", L"2026-12-25 14:0",
                               L"2026-12-25", L"2026/12/25 14:00", L"", L"2026-12-25 1a:00"})
        EXPECT_FALSE(ZoParseMoment(bad, moment)) << Text(bad);
    // Before the common era and far ahead the arithmetic still holds.
    EXPECT_EQ(ZoDateOf(ZoMomentOf(QDate(-44, 3, 15), 1439)), QDate(-44, 3, 15));
    EXPECT_EQ(ZoMinuteOf(ZoMomentOf(QDate(-44, 3, 15), 1439)), 1439);
}

TEST_F(Timeline, PeakCountsTouchingIntervalsOnce)
{
    ZoTimeTableResolution const tables = Tables();
    QDate const monday(2026, 3, 2);
    // 08:00-13:00 and 13:00-14:00 touch: two each, never four.
    ZoPeak peak = ZoPeakAllowed(tables, {{L"D-office", 2}, {L"D-afternoon", 2}}, 1, monday, monday);
    EXPECT_EQ(peak.count, 3);
    EXPECT_EQ(Text(ZoMomentText(peak.moment)), "2026-03-02 08:00");
    peak = ZoPeakAllowed(tables, {{L"D-office", 2}, {L"W-dangling", 5}}, 0, monday, monday.addDays(6));
    EXPECT_EQ(peak.count, 7);
    EXPECT_EQ(Text(ZoMomentText(peak.moment)), "2026-03-04 08:00");
    EXPECT_EQ(ZoPeakAllowed(tables, {{L"{gone}", 9}}, 0, monday, monday).count, 0);
}

TEST_F(Timeline, TheResolutionNamesAndColoursDayPrograms)
{
    ZoTimeTableResolution const tables = Tables();
    EXPECT_EQ(Text(tables.DayProgramName(L"D-night")), "night");
    EXPECT_EQ(tables.DayProgramColor(L"D-night"), 0xFF0000u);
    EXPECT_EQ(tables.DayProgramName(L"{gone}"), L"");
    EXPECT_EQ(tables.DayProgramColor(L"{gone}"), 0xFFFFFFu);
}

// <event> with the keys given, in the `events` of an events document.
std::string Event(std::string const& name, std::string const& keys)
{
    return "<event><name>" + name + "</name>" + keys + "</event>";
}

// "name@position" of each event.
std::string Names(std::vector<ZoTimeTableCoverage::Allowed> const& events)
{
    std::string out;
    for (auto const& allowed : events)
        out += (out.empty() ? "" : ",") + Text(allowed.event->Value(L"name", L"")) + "@" + std::to_string(allowed.position);
    return out;
}

TEST_F(Timeline, CoverageOfAWeekCountsNotifyingEventsByHour)
{
    std::string const on = "<notify>T</notify><disabled>F</disabled>";
    XmlDocument events;
    Load(events, "<eventsConfiguration><events>"
                     + Join({Event("always", on), Event("office", on + "<timeTable>D-office</timeTable>"),
                             Event("newyear", on + "<timeTable>C-newyear</timeTable>"),
                             Event("silent", "<notify>F</notify><disabled>F</disabled>"),
                             Event("disabled", "<notify>T</notify><disabled>T</disabled>"),
                             Event("unset", "<notify>T</notify>"), Event("gone", on + "<timeTable>{gone}</timeTable>"),
                             Event("office2", on + "<timeTable>D-office</timeTable>")})
                     + "</events></eventsConfiguration>");
    ZoTimeTableResolution const tables = Tables();
    ZoTimeTableCoverage const coverage(events.Root()->Child(L"events"), tables, QDate(2026, 12, 28)); // a Monday
    auto const hour = [](int day, int h) { return day * 24 + h; };
    EXPECT_EQ(coverage.NotifyingCount(), 5);
    EXPECT_EQ(coverage.CountAt(hour(0, 8)), 3);
    EXPECT_EQ(coverage.CountAt(hour(0, 12)), 3); // the merged slot 08:00-13:00
    EXPECT_EQ(coverage.CountAt(hour(0, 13)), 1);
    EXPECT_EQ(coverage.CountAt(hour(0, 17)), 3);
    EXPECT_EQ(coverage.CountAt(hour(0, 18)), 1);
    EXPECT_EQ(coverage.CountAt(hour(3, 20)), 2); // New Year's Eve from 20:00
    EXPECT_EQ(coverage.CountAt(hour(4, 3)), 2);
    EXPECT_EQ(coverage.CountAt(hour(4, 4)), 1);
    EXPECT_EQ(coverage.CountAt(-1), 0);
    EXPECT_EQ(coverage.Peak(), 3);
    EXPECT_EQ(coverage.PeakHour(), hour(0, 8));
    EXPECT_EQ(Names(coverage.EventsAt(hour(3, 23))), "always@0,newyear@2");
    EXPECT_EQ(Names(coverage.EventsAt(hour(6, 9))), "always@0,office@1,office2@7");
    EXPECT_EQ(Names(coverage.EventsAt(ZoTimeTableCoverage::kHours)), "");
}

TEST(TimelineCoverage, AProjectWithoutEventsCountsNothing)
{
    ZoTimeTableResolution const tables(nullptr);
    ZoTimeTableCoverage const coverage(nullptr, tables, QDate(2026, 3, 2));
    EXPECT_EQ(coverage.Peak(), 0);
    EXPECT_EQ(coverage.NotifyingCount(), 0);
}

} // namespace

namespace {

// The resolution reads many day programs at once by sorting their slots; the editors by
// marking minutes. Both must give one slot list.
TEST(TimelineDaySlots, SortedSlotsEqualTheMinuteMap)
{
    std::string const days[] = {
        Slot("08:00", "12:00") + Slot("11:00", "13:00") + Slot("13:00", "14:00"), // overlap, then touch
        Slot("22:00", "24:00") + Slot("00:00", "00:00") + Slot("00:00", "06:00"), // an empty slot
        Slot("10:00", "09:00") + Slot("25:00", "26:00") + Slot("07:30", "07:31"), // invalid ones
        Slot("00:00", "24:00") + Slot("05:00", "06:00"),
        "",
    };
    for (std::string const& daySlots : days) {
        XmlDocument doc;
        Load(doc, Day("d", "FFFFFF", daySlots));
        DayMinuteMap map;
        map.MarkSlotsOf(doc.Root());
        EXPECT_EQ(DaySlotsOf(doc.Root()), map.Slots()) << daySlots;
    }
}

} // namespace
