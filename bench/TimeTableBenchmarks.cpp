// The time-table dialogs' work on large inputs: rebuilding a day's slot list from its minute
// map, filling the setup list with thousands of tables, and writing a painted calendar.
#include "config/XmlDocument.h"
#include "platform/calendar/ZoCalendarDates.h"
#include "platform/calendar/ZoDaySlots.h"
#include "platform/tools/ZoFormat.h"
#include "platform/ui/ZoListView.h"
#include "timetables/CalendarPainting.h"
#include "timetables/DaySlotsModel.h"
#include "timetables/TimeTablesListModel.h"

#include <QTreeView>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

using XmlNode = XmlDocument::XmlNode;

std::string Slot(int from, int to)
{
    char text[64];
    std::snprintf(text, sizeof text, "<slot><from>%02d:%02d</from><to>%02d:%02d</to></slot>", from / 60, from % 60,
                  to / 60, to % 60);
    return text;
}

std::string Id(char kind, int number)
{
    char text[48];
    std::snprintf(text, sizeof text, "{%c%07X-0000-4000-8000-%012X}", kind, number, number * 7919);
    return text;
}

// A time-tables document of `count` tables: two fifths day programs (two slots each), two
// fifths week programs (five days set), one fifth calendars (a year with three months).
std::string TimeTablesXml(int count)
{
    int const days = count * 2 / 5;
    int const weeks = count * 2 / 5;
    int const calendars = count - days - weeks;
    std::string xml = "<timeTables><days>";
    for (int i = 0; i < days; ++i) {
        char color[8];
        std::snprintf(color, sizeof color, "%06X", (i * 2654435761u) & 0xFFFFFF);
        xml += "<day><id>" + Id('D', i) + "</id><name>Day program " + std::to_string(days - i) + "</name><color>" + color
            + "</color>" + Slot(7 * 60, 12 * 60) + Slot(13 * 60, 17 * 60 + 30) + "</day>";
    }
    xml += "</days><weeks>";
    for (int i = 0; i < weeks; ++i) {
        xml += "<week><id>" + Id('W', i) + "</id><name>week " + std::to_string(i) + "</name>";
        for (int day = 1; day <= 5; ++day)
            xml += "<day" + std::to_string(day) + ">" + Id('D', (i + day) % days) + "</day" + std::to_string(day) + ">";
        xml += "</week>";
    }
    xml += "</weeks><calendars>";
    for (int i = 0; i < calendars; ++i) {
        xml += "<calendar><id>" + Id('C', i) + "</id><name>Calendar " + std::to_string(i) + "</name><year><year>2025</year>";
        for (int month : {1, 5, 12})
            xml += "<month" + std::to_string(month) + "><day1>" + Id('D', i % days) + "</day1></month"
                + std::to_string(month) + ">";
        xml += "</year></calendar>";
    }
    return xml + "</calendars></timeTables>";
}

// A day with 720 one-minute slots, one every other minute: marked all and the list rebuilt.
void BM_DaySlotsRebuild(benchmark::State& state)
{
    std::string xml = "<day><id>x</id><name>Busy</name><color>00FF00</color>";
    for (int minute = 0; minute < 1440; minute += 2)
        xml += Slot(minute, minute + 1);
    xml += "</day>";
    XmlDocument doc;
    if (!doc.Parse(xml.c_str())) {
        state.SkipWithError("the day does not parse");
        return;
    }
    DaySlotsModel model;
    for (auto _ : state) {
        model.Load(doc.Root());
        benchmark::DoNotOptimize(model.Slots().data());
    }
    state.counters["slots"] = static_cast<double>(model.Slots().size());
}

// The setup dialog's list filled from a document of all kinds, with a list view attached.
void BM_TimeTableSetupFill(benchmark::State& state)
{
    XmlDocument doc;
    if (!doc.Parse(TimeTablesXml(static_cast<int>(state.range(0))).c_str())) {
        state.SkipWithError("the time tables do not parse");
        return;
    }
    TimeTablesListModel model(&doc);
    std::unique_ptr<QTreeView> view(ZoNewListView(nullptr, "timeTablesList", &model));
    for (auto _ : state)
        model.UpdateList();
    state.counters["rows"] = model.rowCount();
}

// A calendar with every date of two years painted (with ten day programs in turn), written
// into its element as the calendar editor's OK does.
void BM_CalendarWrite(benchmark::State& state)
{
    std::string days = "<days>";
    for (int i = 0; i < 10; ++i)
        days += "<day><id>" + Id('D', i) + "</id><name>Program " + std::to_string(i) + "</name><color>00FF00</color></day>";
    days += "</days>";
    XmlDocument daysDoc;
    XmlDocument calendarDoc;
    if (!daysDoc.Parse(days.c_str()) || !calendarDoc.Parse("<calendar><id>C</id><name>Two years</name></calendar>")) {
        state.SkipWithError("the documents do not parse");
        return;
    }
    ZoCalendarDates dates;
    int n = 0;
    for (ZoDateTime date(2025, 1, 1); date.Year() < 2027; date = date.AddDays(1), ++n)
        dates.Select(date, 0x00FF00, ZoFormat(L"Program %d", n % 10));
    for (auto _ : state)
        WriteCalendarDates(calendarDoc.Root(), dates, daysDoc.Root());
    state.counters["dates"] = static_cast<double>(dates.Size());
}

} // namespace

BENCHMARK(BM_DaySlotsRebuild)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TimeTableSetupFill)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CalendarWrite)->Unit(benchmark::kMillisecond);
