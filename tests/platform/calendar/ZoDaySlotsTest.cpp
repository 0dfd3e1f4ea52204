// A day program is a set of minutes: slots merge, split and vanish by the minute map, and
// bad slot texts are ignored without harm.
#include "platform/calendar/ZoDaySlots.h"
#include "timetables/TimeTableTestDocs.h"
#include <gtest/gtest.h>

using namespace timetables_test;

namespace {

std::string Text(std::vector<DaySlot> const& slots)
{
    std::string out;
    for (DaySlot const& slot : slots)
        out += (out.empty() ? "" : ",") + ZoToUtf8(SlotTimeText(slot.from)) + "-" + ZoToUtf8(SlotTimeText(slot.to));
    return out;
}

DaySlot S(int fromHour, int fromMinute, int toHour, int toMinute)
{
    return {fromHour * 60 + fromMinute, toHour * 60 + toMinute};
}

std::string SlotsOfDay(std::string const& slotsXml)
{
    XmlDocument doc;
    Load(doc, "<day>" + slotsXml + "</day>");
    DayMinuteMap map;
    map.MarkSlotsOf(doc.Root());
    return Text(map.Slots());
}

} // namespace

TEST(DaySlots, OverlappingAndTouchingSlotsMergeAndRemovalSplits)
{
    DayMinuteMap map;
    map.Mark(S(9, 0, 12, 0));
    map.Mark(S(8, 0, 10, 0));
    EXPECT_EQ(Text(map.Slots()), "08:00-12:00");
    map.Mark(S(12, 0, 13, 0)); // touching
    EXPECT_EQ(Text(map.Slots()), "08:00-13:00");
    map.Mark(S(15, 0, 16, 0));
    EXPECT_EQ(Text(map.Slots()), "08:00-13:00,15:00-16:00");

    // Removing a middle part splits a slot; removing a merged slot removes the whole range.
    map.Unmark(S(10, 0, 10, 30));
    EXPECT_EQ(Text(map.Slots()), "08:00-10:00,10:30-13:00,15:00-16:00");
    map.Unmark(S(8, 0, 13, 0));
    EXPECT_EQ(Text(map.Slots()), "15:00-16:00");

    // A slot with equal ends marks nothing; the whole day lists as 00:00-24:00.
    map.Mark(S(17, 0, 17, 0));
    EXPECT_EQ(Text(map.Slots()), "15:00-16:00");
    map.Mark(S(0, 0, 24, 0));
    EXPECT_EQ(Text(map.Slots()), "00:00-24:00");
    EXPECT_TRUE(map.IsInside(1439));
    EXPECT_FALSE(map.IsInside(1440));
}

TEST(DaySlots, SlotTextsAreReadByTheirLastThreeCharacters)
{
    EXPECT_EQ(SlotTextMinutes(L"08:30"), 510);
    EXPECT_EQ(SlotTextMinutes(L"8:30"), 510);  // the hours are whatever precedes ":MM"
    EXPECT_EQ(SlotTextMinutes(L"24:00"), 1440);
    EXPECT_EQ(SlotTextMinutes(L"008h30"), 510); // the separator is not looked at
    EXPECT_FALSE(SlotTextMinutes(L":30"));
    EXPECT_FALSE(SlotTextMinutes(L"ab:cd"));
    EXPECT_FALSE(SlotTextMinutes(L"8:3"));
    EXPECT_FALSE(SlotTextMinutes(L"-1:00"));
    EXPECT_FALSE(SlotTextMinutes(L"99999999:00"));
}

TEST(DaySlots, InvalidSlotsAreIgnoredAndTheRestMerged)
{
    EXPECT_EQ(SlotsOfDay(Join({Slot("08:00", "10:00"), Slot("25:00", "26:00"), Slot("24:30", "24:30"),
                               Slot("10:00", "09:00"), Slot("07:60", "09:00"), Slot("x", "09:00"),
                               Slot("", ""), "<slot><from>01:00</from></slot>", Slot("09:30", "24:00"),
                               "<other><from>01:00</from><to>02:00</to></other>"})),
              "08:00-24:00");
    // Thousands of one-minute slots every other minute load as they are.
    std::string many;
    for (int minute = 0; minute < 1440; minute += 2)
        many += Slot(ZoToUtf8(SlotTimeText(minute)), ZoToUtf8(SlotTimeText(minute + 1)));
    XmlDocument doc;
    Load(doc, "<day>" + many + many + "</day>");
    DayMinuteMap map;
    map.MarkSlotsOf(doc.Root());
    EXPECT_EQ(map.Slots().size(), 720u);
}

TEST(DaySlots, WritingReplacesTheSlotsByTheMergedList)
{
    XmlDocument doc;
    Load(doc, "<day><name>N</name>" + Slot("09:00", "12:00") + "<color>FF0000</color>" + Slot("08:00", "10:00") + "</day>");
    DayMinuteMap map;
    map.MarkSlotsOf(doc.Root());
    WriteDaySlots(doc.Root(), map);
    EXPECT_EQ(Xml(doc.Root()), "<day><name>N</name><color>FF0000</color>" + Slot("08:00", "12:00") + "</day>");
}
