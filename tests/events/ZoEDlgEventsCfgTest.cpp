#include "events/ZoEDlgEventsCfg.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/EventsListModel.h"
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
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

using namespace events_test;

namespace {

// The events list over its four documents, initialised and shown offscreen, with its
// model under Qt's model checker.
class EventsList {
public:
    explicit EventsList(std::string const& cfgXml,
                        std::string const& devicesXml = "<deviceGroups/>",
                        std::string const& timeTablesXml = "<timeTables/>")
    {
        Load(cfg, cfgXml);
        Load(devices, devicesXml);
        Load(timeTables, timeTablesXml);
        users.Create(L"usersBD");
        dialog = std::make_unique<ZoEDlgEventsCfg>(nullptr, devices.Root(), &cfg, &timeTables, &users);
        dialog->EnsureInitialized();
        dialog->show();
        list = dialog->findChild<QTreeView*>("eventsList");
        tester = std::make_unique<QAbstractItemModelTester>(
            list->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    }

    QPushButton* Button(char const* name) const { return dialog->findChild<QPushButton*>(name); }
    void Click(char const* name) const { Button(name)->click(); }

    // Column 0 of every row, joined by ",".
    QString Rows() const
    {
        QStringList names;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            names << list->model()->index(row, 0).data().toString();
        return names.join(u',');
    }
    QString Selected() const
    {
        QStringList names;
        QModelIndexList rows = list->selectionModel()->selectedRows();
        std::sort(rows.begin(), rows.end());
        for (QModelIndex const& index : rows)
            names << index.data().toString();
        return names.join(u',');
    }
    void Select(std::initializer_list<int> rows) const
    {
        list->selectionModel()->clearSelection();
        for (int row : rows)
            list->selectionModel()->select(list->model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    // Which of Add, Modify and Delete are enabled, as "AMD" with "-" for a disabled one.
    std::string Buttons() const
    {
        return std::string(Button("addButton")->isEnabled() ? "A" : "-")
            + (Button("modifyButton")->isEnabled() ? "M" : "-")
            + (Button("deleteButton")->isEnabled() ? "D" : "-");
    }
    int Result()
    {
        dialog->setResult(-1);
        Click("okButton");
        return dialog->result();
    }

    ScriptedAnswerer messages; // no test ever waits on a message box
    XmlDocument cfg, devices, timeTables, users;
    std::unique_ptr<ZoEDlgEventsCfg> dialog;
    QTreeView* list = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
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

std::string ClipboardText()
{
    std::string buffer;
    return GetFromClipboard(buffer, 1) > 0 ? std::string(buffer.c_str()) : std::string();
}

QStringList MenuEntries(QMenu const& menu)
{
    QStringList entries;
    for (QAction const* action : menu.actions())
        entries << action->objectName() + (action->isEnabled() ? "" : " (disabled)");
    return entries;
}

// An event the editor accepts as it stands (it has a condition).
std::string Ev(std::string const& name, std::string const& extra = {})
{
    return Event(name, "<condition>1</condition>" + extra);
}

std::string const kFourEvents = EventsCfg({Ev("Delta"), Ev("alpha"), Ev("Charlie"), Ev("Bravo")});

} // namespace

TEST(EventsListDialog, ShowsItsTextsAndSizesItsColumns)
{
    EventsList events(kFourEvents);
    EXPECT_EQ(events.dialog->windowTitle(), ZoText(32791));
    EXPECT_EQ(events.dialog->findChild<QLabel*>()->text(), ZoText(32782));
    EXPECT_EQ(events.Button("addButton")->text(), ZoText(378));
    EXPECT_EQ(events.Button("modifyButton")->text(), ZoText(379));
    EXPECT_EQ(events.Button("deleteButton")->text(), ZoText(380));
    EXPECT_EQ(events.Button("okButton")->text(), ZoText(311));
    EXPECT_EQ(events.Button("cancelButton")->text(), ZoText(312));
    EXPECT_EQ(events.Rows(), "alpha,Bravo,Charlie,Delta");
    EXPECT_EQ(events.Buttons(), "A--");
    EXPECT_EQ(events.dialog->minimumSize(), events.dialog->size());

    // Column 2 gets 30 %, columns 1, 3 and 4 15 % each, column 0 the rest; also on resize.
    for (QSize size : {events.dialog->size(), events.dialog->size() + QSize(317, 40)}) {
        events.dialog->resize(size);
        QApplication::processEvents();
        QHeaderView const* header = events.list->header();
        int const width = events.list->viewport()->width();
        EXPECT_EQ(header->sectionSize(2), qRound(0.30 * width));
        EXPECT_EQ(header->sectionSize(1), qRound(0.15 * width));
        EXPECT_EQ(header->sectionSize(3), qRound(0.15 * width));
        EXPECT_EQ(header->sectionSize(4), qRound(0.15 * width));
        EXPECT_EQ(header->length(), width);
    }
}

TEST(EventsListDialog, OkReportsAChangeOnlyWhenThereWasOne)
{
    EventsList events(kFourEvents);
    EXPECT_EQ(events.Result(), QDialog::Rejected); // nothing changed: the host saves nothing

    ModalScript editor(ModalScript::Reject());
    events.Click("addButton");
    EXPECT_FALSE(events.dialog->IsModified()); // a cancelled editor changes nothing
    EXPECT_EQ(events.Result(), QDialog::Rejected);

    editor.Then(TypeAndOk("Echo", "1"));
    events.Click("addButton");
    EXPECT_TRUE(events.dialog->IsModified());
    EXPECT_EQ(events.Result(), QDialog::Accepted);
}

TEST(EventsListDialog, AddRunsTheEditorOnAWorkingCopyAndRegistersTheNewEvent)
{
    EventsList events(kFourEvents, "<deviceGroups><devices><device><id>ID-alpha</id></device></devices></deviceGroups>");
    std::string const before = Xml(events.cfg.Root());

    ModalScript editor(ModalScript::As<ZoEDlgEventCfg>([&](ZoEDlgEventCfg& dialog) {
        dialog.findChild<QLineEdit*>("nameEdit")->setText("Echo");
        dialog.findChild<QLineEdit*>("conditionEdit")->setText("1");
        EXPECT_EQ(Xml(events.cfg.Root()), before); // the live tree waits for OK
        return ModalScript::ClickOk(dialog);
    }));
    editor.Then(ModalScript::Reject());
    events.Click("addButton");

    EXPECT_EQ(editor.Classes(), QStringList{"ZoEDlgEventCfg"});
    EXPECT_EQ(Names(events.cfg), "Delta,alpha,Charlie,Bravo,Echo");
    EXPECT_EQ(events.Rows(), "alpha,Bravo,Charlie,Delta,Echo");
    EXPECT_EQ(events.Selected(), "Echo");
    EXPECT_EQ(events.Buttons(), "AMD");
    XmlNode const* echo = events.cfg.Node(L"events/event?name=Echo?");
    ASSERT_NE(echo, nullptr);
    EXPECT_EQ(echo->Value(L"id", L"").size(), 38u);
    EXPECT_EQ(DeviceIds(events.devices.Root()), "ID-alpha," + ZoToUtf8(echo->Value(L"id", L"")));
    EXPECT_EQ(events.devices.Root()->Node(L"devices")->Size(), 2);

    // The Insert key adds too; a cancelled editor leaves the tree as it was.
    std::string const afterAdd = Xml(events.cfg.Root());
    QTest::keyClick(events.list, Qt::Key_Insert);
    EXPECT_EQ(editor.Count(), 2);
    EXPECT_EQ(Xml(events.cfg.Root()), afterAdd);
}

// The host creates `events` with the document; should it be missing, the first event added
// creates it, and a cancelled editor leaves the document untouched.
TEST(EventsListDialog, AddCreatesTheEventsElementWhenItIsMissing)
{
    EventsList events("<cfg><eventsGroups/></cfg>", "<deviceGroups/>");
    EXPECT_EQ(events.Rows(), "");

    ModalScript editor(ModalScript::Reject());
    events.Click("addButton");
    EXPECT_EQ(events.cfg.Root()->Child(L"events"), nullptr);

    editor.Then(TypeAndOk("First", "1"));
    events.Click("addButton");
    EXPECT_EQ(Names(events.cfg), "First");
    EXPECT_EQ(events.Selected(), "First");
    EXPECT_EQ(events.devices.Root()->Node(L"devices")->Size(), 1);
}

TEST(EventsListDialog, ModifyRenamesAndReselectsWithoutTouchingTheDevices)
{
    EventsList events(kFourEvents, "<deviceGroups><devices><device><id>ID-Delta</id></device></devices></deviceGroups>");
    std::string const devicesBefore = Xml(events.devices.Root());
    events.Select({1});
    EXPECT_EQ(events.Buttons(), "AMD");

    QString shown;
    ModalScript editor(TypeAndOk("Zulu", {}, &shown));
    events.Click("modifyButton");
    EXPECT_EQ(shown, "Bravo"); // the editor opened on the selected event
    EXPECT_EQ(Names(events.cfg), "Delta,alpha,Charlie,Zulu");
    EXPECT_EQ(events.Rows(), "alpha,Charlie,Delta,Zulu");
    EXPECT_EQ(events.Selected(), "Zulu");
    EXPECT_EQ(events.cfg.Node(L"events/event?name=Zulu?")->Value(L"id", L""), L"ID-Bravo");
    EXPECT_EQ(Xml(events.devices.Root()), devicesBefore);
    EXPECT_TRUE(events.dialog->IsModified());

    // Modify is for exactly one row; a double click opens the selected event.
    events.Select({0, 2});
    EXPECT_EQ(events.Buttons(), "A-D");
    events.Select({2});
    editor.Then(ModalScript::Reject());
    QRect const cell = events.list->visualRect(events.list->model()->index(2, 0));
    QTest::mouseDClick(events.list->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(editor.Count(), 2);
    EXPECT_EQ(Names(events.cfg), "Delta,alpha,Charlie,Zulu");
}

TEST(EventsListDialog, DeleteAsksThenUnregistersEverywhereAndReselects)
{
    std::string const devices =
        "<deviceGroups><devices><device><id>ID-Delta</id></device><device><id>ID-alpha</id></device>"
        "<device><id>ID-Delta</id></device></devices>"
        "<groups><plant><devices><device><id>ID-Delta</id></device></devices>"
        "<groups><line><devices><device><id>ID-Charlie</id></device><device><id>ID-Delta</id></device>"
        "</devices></line></groups></plant></groups></deviceGroups>";
    EventsList events(kFourEvents, devices);

    // No: nothing happens.
    ScriptedAnswerer answers{ZoAnswer::No};
    events.Select({3});
    events.Click("deleteButton");
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32792});
    EXPECT_EQ(answers.Last().buttons, ZoMsgButtons::YesNo);
    EXPECT_EQ(events.Rows(), "alpha,Bravo,Charlie,Delta");
    EXPECT_FALSE(events.dialog->IsModified());

    // Deleting the last rows selects the new last row; every registration of the events,
    // duplicates and nested groups included, goes with them.
    events.Select({2, 3});
    events.Click("deleteButton");
    EXPECT_EQ(Names(events.cfg), "alpha,Bravo");
    EXPECT_EQ(DeviceIds(events.devices.Root()), "ID-alpha");
    EXPECT_NE(events.devices.Root()->Node(L"groups/plant/groups/line/devices"), nullptr);
    EXPECT_EQ(events.Selected(), "Bravo");
    EXPECT_TRUE(events.dialog->IsModified());

    // A deleted row in the middle leaves the selection at its position; the Delete key works.
    EventsList more(EventsCfg({Ev("a"), Ev("b"), Ev("c")}));
    more.Select({1});
    QTest::keyClick(more.list, Qt::Key_Delete);
    EXPECT_EQ(more.Rows(), "a,c");
    EXPECT_EQ(more.Selected(), "c");

    // Deleting every row leaves no selection and only Add enabled.
    more.Select({0, 1});
    more.Click("deleteButton");
    EXPECT_EQ(more.Rows(), "");
    EXPECT_EQ(more.Selected(), "");
    EXPECT_EQ(more.Buttons(), "A--");
    // The Delete key with nothing selected asks nothing.
    int const asked = more.messages.Count();
    QTest::keyClick(more.list, Qt::Key_Delete);
    EXPECT_EQ(more.messages.Count(), asked);
}

TEST(EventsListDialog, HeadingClicksSortOnceAndShowTheIndicator)
{
    EventsList events(EventsCfg({Ev("b", "<record>T</record>"), Ev("a"), Ev("c", "<record>T</record>")}));
    QHeaderView* header = events.list->header();
    auto clickHeading = [&](int column) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 5, header->height() / 2));
    };
    int resets = 0;
    QObject::connect(events.list->model(), &QAbstractItemModel::modelReset, [&] { ++resets; });

    clickHeading(0);
    EXPECT_EQ(resets, 1); // one sort per click
    EXPECT_EQ(events.Rows(), "c,b,a");
    EXPECT_EQ(header->sortIndicatorSection(), 0);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
    clickHeading(0);
    EXPECT_EQ(events.Rows(), "a,b,c");
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder);

    clickHeading(4);
    EXPECT_EQ(header->sortIndicatorSection(), 4);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder);
    bool const yesFirst = ZoText(711).toLower() < ZoText(712).toLower();
    EXPECT_EQ(events.Rows(), yesFirst ? "b,c,a" : "a,b,c");
    clickHeading(4);
    EXPECT_EQ(events.Rows(), yesFirst ? "a,c,b" : "c,b,a");
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST(EventsListDialog, CopyAndPasteThroughKeysAndContextMenu)
{
    EventsList events(EventsCfg({Ev("Pump"), Ev("A"), Ev("A_1")}));
    QApplication::clipboard()->clear();

    // Nothing selected, nothing to paste: only the search entry, disabled for now.
    std::unique_ptr<QMenu> menu = events.dialog->CreateContextMenu();
    EXPECT_EQ(MenuEntries(*menu), QStringList{"searchAction (disabled)"});
    EXPECT_EQ(menu->actions().front()->text(), ZoText(34894));
    EXPECT_EQ(events.dialog->SearchStartPosition(), -1);

    // Ctrl+C copies the selected events (rows "A", "A_1").
    events.Select({0, 1});
    QTest::keyClick(events.list, Qt::Key_C, Qt::ControlModifier);
    std::string const copied = ClipboardText();
    EXPECT_EQ(copied.rfind("<eventsClipboard><event>", 0), 0u) << copied;
    EXPECT_FALSE(events.dialog->IsModified());

    menu = events.dialog->CreateContextMenu();
    EXPECT_EQ(MenuEntries(*menu), (QStringList{"copyAction", "pasteAction", "searchAction (disabled)"}));
    EXPECT_EQ(menu->actions()[0]->text(), ZoText(732) + "\tCtrl+C");
    EXPECT_EQ(menu->actions()[1]->text(), ZoText(742) + "\tCtrl+V");
    EXPECT_EQ(events.dialog->SearchStartPosition(), 1);

    // Paste: A -> A_2 (A_1 taken), A_1 -> A_1_1; no row is selected afterwards.
    menu->actions()[1]->trigger();
    EXPECT_EQ(Names(events.cfg), "Pump,A,A_1,A_2,A_1_1");
    EXPECT_EQ(events.Selected(), "");
    EXPECT_TRUE(events.dialog->IsModified());
    EXPECT_EQ(events.devices.Root()->Node(L"devices")->Size(), 2);

    // Case is ignored; Ctrl+V pastes.
    SetClipboard("<eventsClipboard>" + Event("pump") + "</eventsClipboard>");
    QTest::keyClick(events.list, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Names(events.cfg), "Pump,A,A_1,A_2,A_1_1,pump_1");

    // The copy entry copies, too.
    events.list->selectionModel()->clearSelection();
    events.Select({events.list->model()->rowCount() - 1});
    menu = events.dialog->CreateContextMenu();
    menu->actions()[0]->trigger();
    EXPECT_NE(ClipboardText().find("<name>pump_1</name>"), std::string::npos) << ClipboardText();
}

TEST(EventsListDialog, ForeignClipboardIsIgnoredAndAnEmptyEventsClipboardStillCounts)
{
    EventsList events(EventsCfg({Ev("A")}));
    std::string const before = Xml(events.cfg.Root());
    for (std::string const& foreign : {std::string("just words"), std::string("<actionClipboard/>"),
                                      std::string("<eventsClipboard><event>")}) {
        SetClipboard(foreign);
        EXPECT_EQ(MenuEntries(*events.dialog->CreateContextMenu()), QStringList{"searchAction (disabled)"});
        events.dialog->PasteFromClipboard();
    }
    QApplication::clipboard()->clear();
    events.dialog->PasteFromClipboard();
    EXPECT_EQ(Xml(events.cfg.Root()), before);
    EXPECT_FALSE(events.dialog->IsModified());

    SetClipboard("<eventsClipboard></eventsClipboard>");
    EXPECT_EQ(MenuEntries(*events.dialog->CreateContextMenu()),
              (QStringList{"pasteAction", "searchAction (disabled)"}));
    events.dialog->PasteFromClipboard();
    EXPECT_EQ(Xml(events.cfg.Root()), before);
    EXPECT_TRUE(events.dialog->IsModified());
    EXPECT_EQ(events.Result(), QDialog::Accepted);
}
