#include "events/EventsListModel.h"
#include "events/EventsTestDocs.h"
#include "platform/tools/ZoTexts.h"
#include <QAbstractItemModelTester>

using namespace events_test;

namespace {

// A model over the documents, watched by Qt's model checker for its whole life.
struct CheckedModel {
    CheckedModel(XmlDocument* cfg, XmlDocument const* timeTables)
        : model(cfg, timeTables)
        , tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        model.UpdateList();
    }

    QString Cell(int row, int column) const { return model.data(model.index(row, column)).toString(); }

    // One column of every row, joined by ",".
    QString Column(int column) const
    {
        QStringList cells;
        for (int row = 0; row < model.rowCount(); ++row)
            cells << Cell(row, column);
        return cells.join(u',');
    }

    EventsListModel model;
    QAbstractItemModelTester tester;
};

constexpr char const* kTimeTables =
    "<timeTables>"
    "<days><day><id>D</id><name>Weekday</name></day><day><id>D</id><name>Second day</name></day>"
    "<day><id>S</id><name>Shared day</name></day></days>"
    "<weeks><week><id>S</id><name>Shared week</name></week><week><id>W</id><name>Office week</name></week></weeks>"
    "<calendars><calendar><id>W</id><name>Shared calendar</name></calendar>"
    "<calendar><id>C</id><name>Holidays</name></calendar></calendars>"
    "</timeTables>";

} // namespace

TEST(EventsListModel, ShowsEveryEventWithItsCells)
{
    XmlDocument cfg, timeTables;
    Load(cfg, EventsCfg({Event("Pump", "<disabled>T</disabled><notify>T</notify><timeTable>S</timeTable>"),
                         "<group><name>not an event</name></group>",
                         Event("Valve", "<disabled>yes</disabled><record>T</record><timeTable>C</timeTable>"),
                         "<event><id>E</id></event>",
                         Event("Fan", "<timeTable>dangling</timeTable>"),
                         Event("Door", "<timeTable>D</timeTable>"), Event("Hall", "<timeTable>W</timeTable>")}));
    Load(timeTables, kTimeTables);
    CheckedModel list(&cfg, &timeTables);

    EXPECT_EQ(list.model.columnCount(), 5);
    ASSERT_EQ(list.model.rowCount(), 6); // the `group` child is not an event
    EXPECT_EQ(list.model.headerData(0, Qt::Horizontal).toString(), ZoText(355));
    EXPECT_EQ(list.model.headerData(1, Qt::Horizontal).toString(), ZoText(35472));
    EXPECT_EQ(list.model.headerData(2, Qt::Horizontal).toString(), ZoText(32829));
    EXPECT_EQ(list.model.headerData(3, Qt::Horizontal).toString(), ZoText(32799));
    EXPECT_EQ(list.model.headerData(4, Qt::Horizontal).toString(), ZoText(32800));

    // Sorted by name: the nameless event lists first with an empty cell.
    EXPECT_EQ(list.Column(0), ",Door,Fan,Hall,Pump,Valve");
    QString const yes = ZoText(711), no = ZoText(712), none = ZoText(32830);
    int const pump = 4, valve = 5;
    // Only "T" disables; any other text counts as enabled.
    EXPECT_EQ(list.Cell(pump, 1), no);
    EXPECT_EQ(list.Cell(valve, 1), yes);
    EXPECT_EQ(list.Cell(pump, 3), yes);
    EXPECT_EQ(list.Cell(pump, 4), no);
    EXPECT_EQ(list.Cell(valve, 3), no);
    EXPECT_EQ(list.Cell(valve, 4), yes);
    EXPECT_EQ(list.model.data(list.model.index(pump, 0), EventsListModel::ImageIndexRole).toInt(), 1);
    EXPECT_EQ(list.model.data(list.model.index(valve, 0), EventsListModel::ImageIndexRole).toInt(), 0);
    EXPECT_FALSE(list.model.data(list.model.index(pump, 0), Qt::DecorationRole).value<QPixmap>().isNull());

    // Time tables: days, then weeks, then calendars, first found wins; none: text 32830.
    EXPECT_EQ(list.Column(2), none + ",Weekday," + none + ",Office week,Shared day,Holidays");
    EXPECT_EQ(list.Cell(0, 2), none); // no timeTable at all

    // Rows point at their live elements and remember their document position.
    EXPECT_EQ(list.model.EventAt(pump), cfg.Node(L"events/event?name=Pump?"));
    EXPECT_EQ(list.model.PositionAt(pump), 0);
    EXPECT_EQ(list.model.PositionAt(valve), 1);
    EXPECT_EQ(list.model.NameAt(valve), L"Valve");
    EXPECT_EQ(list.model.FindName(L"VALVE"), valve);
    EXPECT_EQ(list.model.FindName(L"Valv"), -1);
    EXPECT_TRUE(list.model.NameSet().Contains(L"dOOr"));
}

TEST(EventsListModel, MissingEventsOrTimeTablesGiveAnEmptyOrPlainList)
{
    XmlDocument cfg;
    Load(cfg, "<cfg><eventsGroups/></cfg>");
    CheckedModel empty(&cfg, nullptr);
    EXPECT_EQ(empty.model.rowCount(), 0);

    XmlDocument withEvents;
    Load(withEvents, EventsCfg({Event("A", "<timeTable>D</timeTable>")}));
    CheckedModel noTables(&withEvents, nullptr);
    EXPECT_EQ(noTables.Cell(0, 2), ZoText(32830));
}

TEST(EventsListModel, EqualCellsAreOrderedByNameInTheSameDirection)
{
    XmlDocument cfg, timeTables;
    Load(cfg, EventsCfg({Event("d", "<notify>T</notify><timeTable>D</timeTable>"), Event("B"),
                         Event("a", "<notify>T</notify><timeTable>C</timeTable>"),
                         Event("C", "<timeTable>D</timeTable>")}));
    Load(timeTables, kTimeTables);
    CheckedModel list(&cfg, &timeTables);

    // Which of the yes and no words sorts first is the text table's business.
    bool const yesFirst = ZoText(711).toLower() < ZoText(712).toLower();
    QString const notifiedUp = "a,d", othersUp = "B,C", notifiedDown = "d,a", othersDown = "C,B";

    list.model.ClickColumn(3);
    EXPECT_EQ(list.Column(0), yesFirst ? notifiedUp + "," + othersUp : othersUp + "," + notifiedUp);
    list.model.ClickColumn(3);
    EXPECT_EQ(list.Column(0), yesFirst ? othersDown + "," + notifiedDown : notifiedDown + "," + othersDown);

    // Column 2 compares the time tables' names: "Holidays" < "Weekday"; none is text 32830.
    list.model.ClickColumn(2);
    QStringList tables = list.Column(2).split(u',');
    QStringList sorted = tables;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](QString const& l, QString const& r) { return l.toLower() < r.toLower(); });
    EXPECT_EQ(tables, sorted);
    int const firstWeekday = tables.indexOf("Weekday");
    EXPECT_EQ(list.Cell(firstWeekday, 0), "C"); // "C" before "d" among the Weekday rows
    EXPECT_EQ(list.Cell(firstWeekday + 1, 0), "d");
    list.model.ClickColumn(2);
    EXPECT_EQ(list.Cell(list.Column(2).split(u',').indexOf("Weekday"), 0), "d");
    // A refill keeps the sort; a column that does not exist changes nothing.
    list.model.ClickColumn(7);
    list.model.UpdateList();
    EXPECT_EQ(list.model.SortColumn(), 2);
    EXPECT_TRUE(list.model.Descending());
    EXPECT_EQ(list.Cell(list.Column(2).split(u',').indexOf("Weekday"), 0), "d");
}
