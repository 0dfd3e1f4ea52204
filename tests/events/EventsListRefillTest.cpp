// A refill reads again only what the document noted as changed: after any kind of change
// the list must show exactly what a list filled from scratch shows.
#include "EventsTestDocs.h"
#include "events/EventsListModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <functional>
#include <string>

using namespace events_test;

namespace {

// Every row, every column, in the list's order.
std::string Rows(EventsListModel const& model)
{
    std::string rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column)
            rows += model.index(row, column).data().toString().toStdString() + "|";
        rows += "\n";
    }
    return rows;
}

std::string FreshRows(XmlDocument* doc, XmlDocument const* tables, int sortColumn)
{
    EventsListModel::DropKept();
    EventsListModel fresh(doc, tables);
    fresh.UpdateList();
    if (sortColumn != 0)
        fresh.ClickColumn(sortColumn);
    return Rows(fresh);
}

} // namespace

TEST(EventsListRefill, EveryChangeShowsAsAFullFillWould)
{
    XmlDocument doc, tables;
    Load(tables, "<timeTables><days><day><id>D1</id><name>Office</name></day>"
                 "<day><id>D2</id><name>Night</name></day></days><weeks/><calendars/></timeTables>");
    std::string events = "<cfg><events>";
    for (int i = 0; i < 300; ++i) {
        std::string const name = "Event " + std::to_string(i % 7) + "-" + std::to_string(i);
        events += Event(name, i % 3 ? "<timeTable>D1</timeTable><notify>T</notify>" : "<disabled>T</disabled>");
    }
    Load(doc, events + "</events><eventsGroups/></cfg>");
    XmlNode* live = doc.Node(L"events");

    EventsListModel model(&doc, &tables);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.UpdateList();
    model.ClickColumn(2); // sorted by time table, falling back on names

    auto nth = [&](int n) { return live->NodeV(L"event?id=ID-Event %d-%d?", n % 7, n); };
    std::vector<std::pair<char const*, std::function<void()>>> const changes = {
        {"rename to the front", [&] { nth(150)->SetValue(L"name", L"AAA first"); }},
        {"rename to the same folded name", [&] { nth(151)->SetValue(L"name", L"aaa FIRST"); }},
        {"toggle a flag", [&] { nth(10)->SetValue(L"disabled", L"T"); }},
        {"change the time table", [&] { nth(11)->SetValue(L"timeTable", L"D2"); }},
        {"delete one", [&] { live->RemoveChild(nth(12)); }},
        {"delete a block", [&] { for (int i = 20; i < 120; ++i) live->RemoveChild(nth(i)); }},
        {"append", [&] { live->NewChild(L"event")->SetValue(L"name", L"Zulu"); }},
        {"insert in the middle", [&] {
             XmlNode* added = live->NewChild(L"event", nth(200));
             added->SetValue(L"name", L"Middle");
         }},
        {"a key removed", [&] { nth(201)->EraseTag(L"timeTable"); }},
        {"through a working copy", [&] {
             XmlDocument copy(*live);
             copy.Root()->Node(L"event?name=Zulu?")->SetValue(L"name", L"Yankee");
             copy.Root()->RemoveChild(copy.Root()->Node(L"event?name=Middle?"));
             copy.Root()->NewChild(L"event")->SetValue(L"name", L"Xray");
             *live = *copy.Root();
         }},
        {"an undone journal", [&] {
             doc.BeginJournal();
             live->RemoveChild(nth(250));
             nth(251)->SetValue(L"name", L"Gone soon");
             doc.UndoJournal();
         }},
    };
    for (auto const& [what, change] : changes) {
        model.Clear();
        change();
        model.UpdateList();
        EXPECT_EQ(Rows(model), FreshRows(&doc, &tables, 2)) << what;
    }
    model.ClickColumn(0);
    EXPECT_EQ(Rows(model), FreshRows(&doc, &tables, 0));

    // The time tables change between two fills: every row's time table is read again.
    tables.Node(L"days/day?id=D1?")->SetValue(L"name", L"Office hours");
    model.ClickColumn(2);
    model.Clear();
    nth(3)->SetValue(L"notify", L"T");
    model.UpdateList();
    EXPECT_EQ(Rows(model), FreshRows(&doc, &tables, 2));
}

// A replace all changes keys the rows do not show in every event: the rows are kept as they
// are, and a later change is read again alone, as a full fill would show it.
TEST(EventsListRefill, RowsKeptOverChangesTheyDoNotShow)
{
    XmlDocument doc;
    std::string events = "<cfg><events>";
    for (int i = 0; i < 300; ++i)
        events += Event("Event " + std::to_string(i), "<condition>[PLC.T" + std::to_string(i) + "] &gt; 1</condition>");
    Load(doc, events + "</events></cfg>");
    XmlNode* live = doc.Node(L"events");
    EventsListModel model(&doc, nullptr);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.UpdateList();
    std::string const before = Rows(model);

    for (XmlNode* event = live->FirstChild(); event; event = event->NextSibling())
        event->SetValue(L"condition", L"[CTL.T1] > 1");
    model.KeepRowsOverUnshownChanges();
    EXPECT_EQ(Rows(model), before);
    EXPECT_EQ(Rows(model), FreshRows(&doc, nullptr, 0));

    model.Clear();
    live->NodeV(L"event?name=Event 17?")->SetValue(L"name", L"AAA first");
    live->NodeV(L"event?name=Event 18?")->SetValue(L"disabled", L"T");
    model.UpdateList();
    EXPECT_EQ(Rows(model), FreshRows(&doc, nullptr, 0));
}

// Names alike for their first 40 bytes and more are still ordered by their whole text,
// without regard to case, and equal names keep their order in the document.
TEST(EventsListRefill, LongNamesSortByTheirWholeText)
{
    std::string const common = "PLC3_PUMP_STATION_NORTH_PRESSURE_SENSOR_BANK_";
    XmlDocument doc;
    Load(doc, EventsCfg({Event(common + "B"), Event(common + "a2"), Event("plc3"), Event(common + "A"),
                         Event(common + "a"), Event(common.substr(0, 40))}));
    EventsListModel model(&doc, nullptr);
    model.UpdateList();
    std::string names;
    for (int row = 0; row < model.rowCount(); ++row)
        names += std::to_string(model.PositionAt(row)) + " ";
    EXPECT_EQ(names, "2 5 3 4 1 0 ");
}

// A list that closes keeps its rows for the next list of the same documents, which reads
// again only what changed in between; rows kept while another list filled are not used.
// Rows forgotten before their events go leave nothing to read again.
TEST(EventsListRefill, TheNextListStartsFromTheRowsTheLastOneKept)
{
    XmlDocument doc;
    std::string events = "<cfg><events>";
    for (int i = 0; i < 50; ++i)
        events += Event("Event " + std::to_string(i), i % 2 ? "<notify>T</notify>" : "");
    Load(doc, events + "</events><eventsGroups/></cfg>");
    XmlNode* live = doc.Node(L"events");
    auto nth = [&](int n) { return live->NodeV(L"event?name=Event %d?", n); };
    {
        EventsListModel first(&doc, nullptr);
        first.UpdateList();
    }
    nth(7)->SetValue(L"name", L"AAA renamed");
    nth(8)->SetValue(L"notify", L"T");
    {
        EventsListModel second(&doc, nullptr);
        second.UpdateList();
        EXPECT_EQ(Rows(second), FreshRows(&doc, nullptr, 0)) << "kept, a rename since";
        // The fresh list filled after this one: what this one keeps is not used.
    }
    live->RemoveChild(nth(9));
    {
        EventsListModel third(&doc, nullptr);
        third.UpdateList();
        EXPECT_EQ(Rows(third), FreshRows(&doc, nullptr, 0)) << "a removal since";
        third.Clear();
        third.ForgetEvents({nth(10), nth(30)});
        live->RemoveChild(nth(10));
        live->RemoveChild(nth(30));
        nth(11)->SetValue(L"name", L"zzz last");
        third.UpdateList();
        EXPECT_EQ(Rows(third), FreshRows(&doc, nullptr, 0)) << "forgotten, then removed";
    }
}

// An edit that leaves a list sorted by name in its order tells the view of that row alone,
// so that the view keeps its layout of every other row; one that moves a row resets.
TEST(EventsListRefill, AnEditInPlaceChangesTheRowAlone)
{
    XmlDocument doc;
    Load(doc, EventsCfg({Event("Alpha"), Event("Bravo"), Event("Charlie")}));
    XmlNode* live = doc.Node(L"events");
    EventsListModel model(&doc, nullptr);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.UpdateList();
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);

    live->NodeV(L"event?name=Bravo?")->SetValue(L"notify", L"T");
    model.UpdateList();
    EXPECT_EQ(resets.count(), 0);
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 1);
    EXPECT_EQ(Rows(model), FreshRows(&doc, nullptr, 0));

    live->NodeV(L"event?name=Bravo?")->SetValue(L"name", L"Zulu");
    model.UpdateList();
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(Rows(model), FreshRows(&doc, nullptr, 0));
}
