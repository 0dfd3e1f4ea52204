#include "events/ZoEDlgEventsCfg.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/EventsTestDocs.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoClipboard.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"
#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTreeView>

using namespace events_test;

namespace {

struct EventsDocs {
    EventsDocs(std::string const& cfgXml, std::string const& devicesXml, std::string const& timeTablesXml)
    {
        Load(cfg, cfgXml);
        Load(devices, devicesXml);
        Load(timeTables, timeTablesXml);
        users.Create(L"usersBD");
    }
    XmlDocument cfg, devices, timeTables, users;
};

// The events list over its documents, initialised and shown offscreen, with its model
// under Qt's model checker.
struct EventsList : EventsDocs {
    explicit EventsList(std::string const& cfgXml, std::string const& devicesXml = "<deviceGroups/>",
                        std::string const& timeTablesXml = "<timeTables/>")
        : EventsDocs(cfgXml, devicesXml, timeTablesXml)
    {
        dialog.EnsureInitialized();
        dialog.show();
    }

    QAbstractItemModel* Model() const { return list->model(); }
    void Click(char const* button) const { dialog.findChild<QPushButton*>(button)->click(); }
    // The cells of a row joined by "|", or column 0 of every row joined by ",".
    QString Row(int row) const
    {
        QStringList cells;
        for (int column = 0; column < Model()->columnCount(); ++column)
            cells << Model()->index(row, column).data().toString();
        return cells.join(u'|');
    }
    QString Rows() const
    {
        QStringList names;
        for (int row = 0; row < Model()->rowCount(); ++row)
            names << Model()->index(row, 0).data().toString();
        return names.join(u',');
    }
    QString Selected() const
    {
        QModelIndexList rows = list->selectionModel()->selectedRows();
        std::sort(rows.begin(), rows.end());
        QStringList names;
        for (QModelIndex const& index : rows)
            names << index.data().toString();
        return names.join(u',');
    }
    void Select(std::initializer_list<int> rows) const
    {
        list->selectionModel()->clearSelection();
        for (int row : rows)
            list->selectionModel()->select(Model()->index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    // Which of Modify and Delete are enabled, as "MD" with "-" for a disabled one.
    std::string Buttons() const
    {
        return std::string(dialog.findChild<QPushButton*>("modifyButton")->isEnabled() ? "M" : "-")
            + (dialog.findChild<QPushButton*>("deleteButton")->isEnabled() ? "D" : "-");
    }
    int Result()
    {
        dialog.setResult(-1);
        Click("okButton");
        return dialog.result();
    }
    // The object names of the context menu's entries.
    QStringList Menu()
    {
        QStringList entries;
        std::unique_ptr<QMenu> const menu = dialog.CreateContextMenu();
        for (QAction const* action : menu->actions())
            entries << action->objectName();
        return entries;
    }

    ScriptedAnswerer messages; // no test ever waits on a message box
    ZoEDlgEventsCfg dialog{nullptr, devices.Root(), &cfg, &timeTables, &users};
    QAbstractItemView* list = dialog.findChild<QAbstractItemView*>("eventsList");
    QAbstractItemModelTester tester{list->model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

// An editor step that types a name (and a condition when given) and presses OK.
ModalScript::Step TypeAndOk(QString name, QString condition = {}, QString* shownName = nullptr)
{
    return ModalScript::As<ZoEDlgEventCfg>([=](ZoEDlgEventCfg& editor) {
        auto* nameEdit = editor.findChild<QLineEdit*>("nameEdit");
        if (shownName)
            *shownName = nameEdit->text();
        nameEdit->setText(name);
        if (!condition.isEmpty())
            editor.findChild<QLineEdit*>("conditionEdit")->setText(condition);
        return ModalScript::ClickOk(editor);
    });
}

void SetClipboard(std::string const& text)
{
    PutToClipboard(text.c_str(), text.size() + 1, 1);
}

// An event the editor accepts as it stands (it has a condition).
std::string Ev(std::string const& name, std::string const& extra = {})
{
    return Event(name, "<condition>1</condition>" + extra);
}

std::string const kFourEvents = EventsCfg({Ev("Delta"), Ev("alpha"), Ev("Charlie"), Ev("Bravo")});

} // namespace

TEST(EventsListDialog, RowsShowTheEventsAndTheirTimeTables)
{
    // Time tables are looked up in days, then weeks, then calendars; the first found wins.
    std::string const timeTables =
        "<timeTables><days><day><id>D</id><name>Weekday</name></day><day><id>D</id><name>Second</name></day>"
        "<day><id>S</id><name>Shared day</name></day></days><weeks><week><id>S</id><name>Shared week</name></week>"
        "<week><id>W</id><name>Office week</name></week></weeks><calendars><calendar><id>W</id><name>Shared"
        "</name></calendar><calendar><id>C</id><name>Holidays</name></calendar></calendars></timeTables>";
    EventsList events(EventsCfg({Ev("Pump", "<disabled>T</disabled><notify>T</notify><timeTable>S</timeTable>"),
                                 "<group><name>not an event</name></group>",
                                 Ev("Valve", "<disabled>yes</disabled><record>T</record><timeTable>C</timeTable>"),
                                 Ev("Fan", "<timeTable>dangling</timeTable>"), Ev("door", "<timeTable>D</timeTable>"),
                                 Ev("Hall", "<timeTable>W</timeTable>")}),
                      "<deviceGroups/>", timeTables);
    // Only "T" disables; any other text counts as enabled.
    QString const y = ZoText(711), n = ZoText(712), none = ZoText(32830);
    QStringList rows;
    for (int row = 0; row < events.Model()->rowCount(); ++row)
        rows << events.Row(row);
    EXPECT_EQ(rows, (QStringList{"door|" + y + "|Weekday|" + n + "|" + n, "Fan|" + y + "|" + none + "|" + n + "|" + n,
                                 "Hall|" + y + "|Office week|" + n + "|" + n, "Pump|" + n + "|Shared day|" + y + "|" + n,
                                 "Valve|" + y + "|Holidays|" + n + "|" + y}));
    EXPECT_EQ(events.Buttons(), "--");
}

TEST(EventsListDialog, AddRunsTheEditorOnACopyAndOkReportsTheChange)
{
    EventsList events(kFourEvents, "<deviceGroups><devices><device><id>ID-alpha</id></device></devices></deviceGroups>");
    std::string const before = Xml(events.cfg.Root());
    EXPECT_EQ(events.Result(), QDialog::Rejected); // nothing changed: the host saves nothing

    // A cancelled editor (here through the Insert key) changes nothing.
    ModalScript editor(ModalScript::Reject());
    QTest::keyClick(events.list, Qt::Key_Insert);
    EXPECT_EQ(Xml(events.cfg.Root()), before);
    EXPECT_FALSE(events.dialog.IsModified());

    editor.Then(ModalScript::As<ZoEDlgEventCfg>([&](ZoEDlgEventCfg& dialog) {
        dialog.findChild<QLineEdit*>("nameEdit")->setText("Echo");
        dialog.findChild<QLineEdit*>("conditionEdit")->setText("1");
        EXPECT_EQ(Xml(events.cfg.Root()), before); // the live tree waits for OK
        return ModalScript::ClickOk(dialog);
    }));
    events.Click("addButton");
    EXPECT_EQ(editor.Classes(), (QStringList{"ZoEDlgEventCfg", "ZoEDlgEventCfg"}));
    EXPECT_EQ(Names(events.cfg), "Delta,alpha,Charlie,Bravo,Echo");
    EXPECT_EQ(events.Rows(), "alpha,Bravo,Charlie,Delta,Echo");
    EXPECT_EQ(events.Selected(), "Echo");
    std::wstring const id = events.cfg.Node(L"events/event?name=Echo?")->Value(L"id", L"");
    EXPECT_EQ(id.size(), 38u);
    EXPECT_EQ(DeviceIds(events.devices.Root()), "ID-alpha," + ZoToUtf8(id));
    EXPECT_EQ(events.Result(), QDialog::Accepted);
}

TEST(EventsListDialog, ModifyRenamesAndReselectsWithoutTouchingTheDevices)
{
    EventsList events(kFourEvents, "<deviceGroups><devices><device><id>ID-Bravo</id></device></devices></deviceGroups>");
    std::string const devicesBefore = Xml(events.devices.Root());
    events.Select({1});
    EXPECT_EQ(events.Buttons(), "MD");

    QString shown;
    ModalScript editor(TypeAndOk("Zulu", {}, &shown));
    events.Click("modifyButton");
    EXPECT_EQ(shown, "Bravo"); // the editor opened on the selected event
    EXPECT_EQ(Names(events.cfg), "Delta,alpha,Charlie,Zulu");
    EXPECT_EQ(events.Rows(), "alpha,Charlie,Delta,Zulu");
    EXPECT_EQ(events.Selected(), "Zulu");
    EXPECT_EQ(events.cfg.Node(L"events/event?name=Zulu?")->Value(L"id", L""), L"ID-Bravo");
    EXPECT_EQ(Xml(events.devices.Root()), devicesBefore);
    EXPECT_TRUE(events.dialog.IsModified());

    // Modify is for exactly one row; a double click opens the selected event.
    events.Select({0, 2});
    EXPECT_EQ(events.Buttons(), "-D");
    events.Select({2});
    editor.Then(ModalScript::Reject());
    QTest::mouseDClick(events.list->viewport(), Qt::LeftButton, {},
                       events.list->visualRect(events.Model()->index(2, 0)).center());
    EXPECT_EQ(editor.Count(), 2);

    // The rows tell the editor which names may clash; the check itself stays exact: another
    // event's very name is refused, the same name in other case is not.
    events.Select({1}); // Charlie
    editor.Then(TypeAndOk("Delta"));
    events.Click("modifyButton");
    EXPECT_EQ(events.messages.Ids(), std::vector<unsigned>{32796});
    EXPECT_EQ(events.Rows(), "alpha,Charlie,Delta,Zulu");
    editor.Then(TypeAndOk("DELTA"));
    events.Click("modifyButton");
    EXPECT_EQ(events.Rows(), "alpha,Delta,DELTA,Zulu");
}

TEST(EventsListDialog, DeleteAsksThenUnregistersEverywhereAndReselects)
{
    EventsList events(kFourEvents,
                      "<deviceGroups><devices><device><id>ID-Delta</id></device><device><id>ID-alpha</id></device>"
                      "<device><id>ID-Delta</id></device></devices><groups><plant><devices><device><id>ID-Delta</id>"
                      "</device></devices><groups><line><devices><device><id>ID-Charlie</id></device><device><id>"
                      "ID-Delta</id></device></devices></line></groups></plant></groups></deviceGroups>");
    // No: nothing happens.
    ScriptedAnswerer answers{ZoAnswer::No};
    events.Select({3});
    events.Click("deleteButton");
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32792});
    EXPECT_EQ(answers.Last().buttons, ZoMsgButtons::YesNo);
    EXPECT_EQ(events.Rows(), "alpha,Bravo,Charlie,Delta");
    EXPECT_FALSE(events.dialog.IsModified());

    // Deleting the last rows selects the new last row; every registration of the events,
    // duplicates and nested groups included, goes with them.
    events.Select({2, 3});
    events.Click("deleteButton");
    EXPECT_EQ(Names(events.cfg), "alpha,Bravo");
    EXPECT_EQ(DeviceIds(events.devices.Root()), "ID-alpha");
    EXPECT_EQ(events.Selected(), "Bravo");
    EXPECT_TRUE(events.dialog.IsModified());

    // A deleted row in the middle leaves the selection at its position; the Delete key works.
    EventsList more(EventsCfg({Ev("a"), Ev("b"), Ev("c")}));
    more.Select({1});
    QTest::keyClick(more.list, Qt::Key_Delete);
    EXPECT_EQ(more.Rows(), "a,c");
    EXPECT_EQ(more.Selected(), "c");
    // Deleting every row leaves no selection.
    more.Select({0, 1});
    more.Click("deleteButton");
    EXPECT_EQ(more.Rows(), "");
    EXPECT_EQ(more.Buttons(), "--");
}

// A heading click sorts ascending, a second one descending, a third ascending again; equal
// cells are ordered by name in the same direction.
TEST(EventsListDialog, HeadingClicksCycleTheSortAndOrderTiesByName)
{
    EventsList events(EventsCfg({Ev("b", "<notify>T</notify>"), Ev("a"), Ev("d"), Ev("c", "<notify>T</notify>")}));
    QHeaderView* header = static_cast<QTableView*>(events.list)->horizontalHeader();
    auto clickHeading = [&](int column) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 5, header->height() / 2));
    };
    clickHeading(0); // the list starts sorted by name, ascending
    EXPECT_EQ(events.Rows(), "d,c,b,a");

    // Which of the yes and no words sorts first is the text table's business.
    bool const yesFirst = ZoText(711).toLower() < ZoText(712).toLower();
    QString const up = yesFirst ? "b,c,a,d" : "a,d,b,c", down = yesFirst ? "d,a,c,b" : "c,b,d,a";
    for (QString const& expected : {up, down, up}) {
        clickHeading(3);
        EXPECT_EQ(events.Rows(), expected);
        EXPECT_EQ(header->sortIndicatorSection(), 3);
        EXPECT_EQ(header->sortIndicatorOrder(), expected == up ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
}

TEST(EventsListDialog, CopyAndPasteThroughKeysAndContextMenu)
{
    EventsList events(EventsCfg({Ev("Pump"), Ev("A"), Ev("A_1")}));
    QApplication::clipboard()->clear();
    EXPECT_EQ(events.Menu(), QStringList{"searchAction"}); // nothing to copy or paste

    // Ctrl+C copies the selected events (rows "A", "A_1"); the menu then offers both.
    events.Select({0, 1});
    QTest::keyClick(events.list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(events.dialog.IsModified());
    EXPECT_EQ(events.Menu(), (QStringList{"copyAction", "pasteAction", "searchAction"}));

    // The menu pastes: A -> A_2 (A_1 taken), A_1 -> A_1_1; no row is selected afterwards.
    events.dialog.CreateContextMenu()->actions()[1]->trigger();
    EXPECT_EQ(Names(events.cfg), "Pump,A,A_1,A_2,A_1_1");
    EXPECT_EQ(events.Selected(), "");
    EXPECT_TRUE(events.dialog.IsModified());
    EXPECT_EQ(events.devices.Root()->Node(L"devices")->Size(), 2);
    // Ctrl+V pastes the same events again, named against the list as it is now.
    QTest::keyClick(events.list, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Names(events.cfg), "Pump,A,A_1,A_2,A_1_1,A_3,A_1_2");
}

TEST(EventsListDialog, ForeignClipboardIsIgnoredAndAnEmptyEventsClipboardStillCounts)
{
    EventsList events(EventsCfg({Ev("A")}));
    std::string const before = Xml(events.cfg.Root());
    for (std::string const& foreign : {std::string("just words"), std::string("<actionClipboard/>")}) {
        SetClipboard(foreign);
        EXPECT_EQ(events.Menu(), QStringList{"searchAction"});
        events.dialog.PasteFromClipboard();
    }
    EXPECT_FALSE(events.dialog.IsModified());

    SetClipboard("<eventsClipboard></eventsClipboard>");
    EXPECT_EQ(events.Menu(), (QStringList{"pasteAction", "searchAction"}));
    events.dialog.PasteFromClipboard();
    EXPECT_EQ(Xml(events.cfg.Root()), before);
    EXPECT_TRUE(events.dialog.IsModified());
    EXPECT_EQ(events.Result(), QDialog::Accepted);
}
