#include "editor/ZoEDlgEventCfg.h"
#include "events/EventsTestDocs.h"
#include "events/ZoEDlgEventsCfg.h"
#include "platform/reports/CDlgSearchReplace.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QCheckBox>
#include <QItemSelection>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include <algorithm>

using namespace events_test;

namespace {

// Three events: their conditions name T1 twice, their actions name it in other places.
std::string const kPlant = EventsCfg({
    Event("Boiler", "<condition>[T1] &gt; 80 AND [T1] &lt; 99</condition>"),
    Event("Alpha", "<condition>1</condition><clientActions><activate/><while/><deactivate>"
                   "<screen><id>S</id><name>Overview T1</name></screen></deactivate></clientActions>"),
    Event("Chiller", "<condition>[t1] &gt; 5 AND [T1] &lt; 7</condition>"
                     "<actions><activate><force><id>F</id><variable>[T1]</variable><value>1</value></force>"
                     "</activate></actions>"),
});

// The events list over the documents, shown offscreen, its model checked.
struct SearchList {
    explicit SearchList(std::string const& cfgXml = kPlant)
    {
        Load(cfg, cfgXml);
        Load(devices, "<deviceGroups/>");
        Load(timeTables, "<timeTables/>");
        users.Create(L"usersBD");
        dialog.EnsureInitialized();
        dialog.show();
    }
    // Rows are sorted by name: Alpha, Boiler, Chiller.
    void SelectRow(int row) const
    {
        list->selectionModel()->select(list->model()->index(row, 0),
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    // Opens search as the context menu's entry does, with the selection as it stands.
    void OpenSearch()
    {
        std::unique_ptr<QMenu> const menu = dialog.CreateContextMenu();
        for (QAction* action : menu->actions())
            if (action->objectName() == "searchAction")
                action->trigger();
    }
    void Request(char const* command, std::wstring find, std::wstring replace = {}, bool matchCase = false)
    {
        ZoSearchReplaceRequest request;
        request.find = std::move(find);
        request.replace = std::move(replace);
        request.matchCase = matchCase;
        request.command = QString::fromLatin1(command).toStdWString();
        dialog.OnCtrlSearchReplace(0, request);
    }
    std::wstring Condition(char const* name) const
    {
        return cfg.Root()->Child(L"events")->NodeV(L"event?name=%s?", QString(name).toStdWString().c_str())->Value(L"condition", L"");
    }

    XmlDocument cfg, devices, timeTables, users;
    ScriptedAnswerer messages;
    ZoEDlgEventsCfg dialog{nullptr, devices.Root(), &cfg, &timeTables, &users};
    QAbstractItemView* list = dialog.findChild<QAbstractItemView*>("eventsList");
    QAbstractItemModelTester tester{list->model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

// An editor step that writes down where it opened, as "name focusCode tab[/moment] OK-text",
// then presses OK (or Cancel).
ModalScript::Step Look(QStringList& seen, bool ok = true)
{
    return ModalScript::As<ZoEDlgEventCfg>([&seen, ok](ZoEDlgEventCfg& editor) {
        auto* tabs = editor.findChild<QTabWidget*>("tabs");
        QString where = editor.findChild<QLineEdit*>("nameEdit")->text() + " " + QString::number(editor.m_focusCode) + " "
            + QString::number(tabs->currentIndex());
        if (tabs->currentIndex() == ZoEDlgEventCfg::TabActions)
            where += "/" + QString::number(editor.findChild<QTabWidget*>("actionsMomentTabs")->currentIndex());
        if (tabs->currentIndex() == ZoEDlgEventCfg::TabClientActions)
            where += "/" + QString::number(editor.findChild<QTabWidget*>("clientActionsMomentTabs")->currentIndex());
        where += " " + editor.findChild<QPushButton*>("okButton")->text().remove('&');
        seen << where;
        if (!ok) {
            editor.reject();
            return int(QDialog::Rejected);
        }
        return ModalScript::ClickOk(editor);
    });
}

} // namespace

TEST(EventsListSearch, TheMenuEntryShowsTheModelessDialogInFindMode)
{
    SearchList s;
    s.OpenSearch();
    CDlgSearchReplace* search = s.dialog.SearchDialog();
    ASSERT_NE(search, nullptr);
    EXPECT_TRUE(search->isVisible());
    EXPECT_FALSE(search->isModal());
    EXPECT_FALSE(search->IsReplace());
    // Opened again it is the same dialog, back in find mode.
    search->SetReplace(true);
    s.OpenSearch();
    EXPECT_EQ(s.dialog.SearchDialog(), search);
    EXPECT_FALSE(search->IsReplace());
}

TEST(EventsListSearch, CtrlFInTheListOpensSearchAtTheSelectedEvent)
{
    SearchList s;
    s.SelectRow(2); // Chiller
    QTest::keyClick(s.list, Qt::Key_F, Qt::ControlModifier);
    ASSERT_NE(s.dialog.SearchDialog(), nullptr);
    EXPECT_TRUE(s.dialog.SearchDialog()->isVisible());
    QStringList seen;
    ModalScript modal(Look(seen));
    s.Request("Search", L"t1");
    EXPECT_EQ(seen, (QStringList{"Chiller 3 2/0 OK"}));
}

TEST(EventsListSearch, WithNoRowSelectedTheWalkStartsAtTheFirstEventAndGoesOnAfterEachPlace)
{
    SearchList s;
    s.OpenSearch();
    QStringList seen;
    ModalScript modal(Look(seen));
    modal.Then(Look(seen)).Then(Look(seen)).Then(Look(seen)).Then(Look(seen));
    // Document order, not the list's: Boiler's condition (General tab), Alpha's client
    // screen at deactivation, Chiller's force variable (Actions, activation), then its condition.
    for (int i = 0; i < 4; ++i)
        s.Request("Search", L"t1");
    EXPECT_EQ(seen, (QStringList{"Boiler 1 0 OK", "Alpha 9 3/2 OK", "Chiller 3 2/0 OK", "Chiller 1 0 OK"}));
    EXPECT_EQ(s.messages.Count(), 0);
    // The end of the events: the message, and the next search starts over.
    s.Request("Search", L"t1");
    EXPECT_EQ(s.messages.Ids(), (std::vector<unsigned>{34899}));
    s.Request("Search", L"t1");
    EXPECT_EQ(seen.last(), "Boiler 1 0 OK");
    // Looking changed nothing.
    EXPECT_FALSE(s.dialog.IsModified());
}

TEST(EventsListSearch, MatchCaseAndAnEmptyText)
{
    SearchList s;
    s.SelectRow(2); // Chiller: "[t1]" only in lower case in its condition
    s.OpenSearch();
    QStringList seen;
    ModalScript modal(Look(seen));
    modal.Then(Look(seen));
    s.Request("Search", L"[t1]", {}, true);
    EXPECT_EQ(seen, (QStringList{"Chiller 1 0 OK"}));
    s.Request("Search", L"[t1]", {}, true);
    EXPECT_EQ(s.messages.Ids(), (std::vector<unsigned>{34899}));
    // An empty text finds nothing, wherever the walk stands.
    s.Request("Search", L"");
    EXPECT_EQ(s.messages.Ids(), (std::vector<unsigned>{34899, 34899}));
    EXPECT_EQ(modal.Count(), 1);
}

TEST(EventsListSearch, ReplaceReplacesTheFieldWhenTheEditorEndsWithReplace)
{
    SearchList s;
    s.OpenSearch();
    QStringList seen;
    ModalScript modal(Look(seen));
    s.Request("Replace", L"T1", L"PLC.T1");
    EXPECT_EQ(seen, (QStringList{"Boiler 1 0 " + ZoText(34893)}));
    EXPECT_EQ(s.Condition("Boiler"), L"[PLC.T1] > 80 AND [PLC.T1] < 99");
    EXPECT_TRUE(s.dialog.IsModified());
    EXPECT_EQ(s.list->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(s.list->selectionModel()->selectedRows().front().data().toString(), "Boiler");
}

TEST(EventsListSearch, ACancelledEditorReplacesNothingAndTheNextReplaceGoesOn)
{
    SearchList s;
    s.OpenSearch();
    QStringList seen;
    ModalScript modal(Look(seen, false));
    modal.Then(Look(seen));
    s.Request("Replace", L"T1", L"T9");
    EXPECT_EQ(s.Condition("Boiler"), L"[T1] > 80 AND [T1] < 99");
    EXPECT_FALSE(s.dialog.IsModified());
    // Cancel skipped Boiler: the next place is Alpha's screen.
    s.Request("Replace", L"T1", L"T9");
    EXPECT_EQ(seen, (QStringList{"Boiler 1 0 " + ZoText(34893), "Alpha 9 3/2 " + ZoText(34893)}));
    XmlNode const* alpha = s.cfg.Root()->NodeV(L"events/event?name=Alpha?");
    EXPECT_EQ(alpha->Value(L"clientActions/deactivate/screen/name", L""), L"Overview T9");
    EXPECT_TRUE(s.dialog.IsModified());
}

TEST(EventsListSearch, ReplaceAllFromTheCurrentEventShowsItsMessageAndHidesTheDialog)
{
    SearchList s;
    s.SelectRow(1); // Boiler, the first event: everything
    s.OpenSearch();
    s.Request("ReplaceAll", L"t1", L"[PLC.T1]");
    EXPECT_EQ(s.messages.Ids(), (std::vector<unsigned>{36366}));
    EXPECT_NE(s.messages.LastText().find(L"6, in 4"), std::wstring::npos);
    EXPECT_FALSE(s.dialog.SearchDialog()->isVisible());
    // Both occurrences of each condition, whatever their case.
    EXPECT_EQ(s.Condition("Boiler"), L"[[PLC.T1]] > 80 AND [[PLC.T1]] < 99");
    EXPECT_EQ(s.Condition("Chiller"), L"[[PLC.T1]] > 5 AND [[PLC.T1]] < 7");
    EXPECT_TRUE(s.dialog.IsModified());
    EXPECT_EQ(s.list->model()->rowCount(), 3);
}

TEST(EventsListSearch, ReplaceAllStartsAtTheSelectedEventAndEndsWithAReplacementHoldingTheText)
{
    SearchList s;
    s.SelectRow(2); // Chiller, the last event
    s.OpenSearch();
    // The replacement holds the text: each occurrence is replaced once, and the walk ends.
    s.Request("ReplaceAll", L"T1", L"T1T1");
    EXPECT_EQ(s.Condition("Boiler"), L"[T1] > 80 AND [T1] < 99");
    EXPECT_EQ(s.Condition("Chiller"), L"[T1T1] > 5 AND [T1T1] < 7");
    EXPECT_TRUE(s.dialog.IsModified());
}

TEST(EventsListSearch, ReplaceAllLeavesTheRowsAndTheirSelectionAsTheyWere)
{
    SearchList s;
    s.list->selectionModel()->select(QItemSelection(s.list->model()->index(1, 0), s.list->model()->index(2, 0)),
                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    s.OpenSearch();
    s.Request("ReplaceAll", L"T1", L"T2");
    EXPECT_EQ(s.messages.Ids(), (std::vector<unsigned>{36366}));
    EXPECT_EQ(s.Condition("Chiller"), L"[T2] > 5 AND [T2] < 7");
    ASSERT_EQ(s.list->model()->rowCount(), 3);
    EXPECT_EQ(s.list->model()->index(0, 0).data().toString(), "Alpha");
    std::vector<int> selected;
    for (QModelIndex const& index : s.list->selectionModel()->selectedRows())
        selected.push_back(index.row());
    std::sort(selected.begin(), selected.end());
    EXPECT_EQ(selected, (std::vector<int>{1, 2}));
    // The list's next fill sees the events as they are now.
    s.list->selectionModel()->select(s.list->model()->index(2, 0),
                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    s.dialog.findChild<QPushButton*>("deleteButton")->click();
    ASSERT_EQ(s.list->model()->rowCount(), 2);
    EXPECT_EQ(s.list->model()->index(1, 0).data().toString(), "Boiler");
    EXPECT_EQ(s.Condition("Boiler"), L"[T2] > 80 AND [T2] < 99");
}

TEST(EventsListSearch, ReplaceAllThatFindsNothingStillTellsTheUserAndChangesNothing)
{
    SearchList s;
    s.cfg.BeginJournal();
    s.OpenSearch();
    s.Request("ReplaceAll", L"nowhere", L"x");
    EXPECT_EQ(s.messages.Ids(), (std::vector<unsigned>{36366}));
    EXPECT_FALSE(s.dialog.IsModified());
    EXPECT_FALSE(s.cfg.JournalHasChanges());
}

TEST(EventsListSearch, AReplaceAllIsAChangeTheHostsJournalSees)
{
    // The host journals the documents while the list runs: a Cancel of the list after a
    // replace all is a change it asks about, an OK one it saves.
    SearchList s;
    s.cfg.BeginJournal();
    s.OpenSearch();
    s.Request("ReplaceAll", L"T1", L"T2");
    EXPECT_TRUE(s.cfg.JournalHasChanges());
    s.dialog.setResult(-1);
    s.dialog.findChild<QPushButton*>("okButton")->click();
    EXPECT_EQ(s.dialog.result(), int(QDialog::Accepted));
    s.cfg.UndoJournal();
    EXPECT_EQ(s.Condition("Boiler"), L"[T1] > 80 AND [T1] < 99");
}

TEST(EventsListSearch, TheWalkSurvivesADeletedEventAndTheDialogsClosingNotification)
{
    SearchList s;
    s.OpenSearch();
    QStringList seen;
    ModalScript modal(Look(seen));
    modal.Then(Look(seen));
    s.Request("Search", L"T1"); // Boiler; the walk stands in Boiler
    s.dialog.OnCtrlSearchReplace(1, ZoSearchReplaceRequest{});
    // Boiler is deleted from the list meanwhile: the walk goes on with the event at its place.
    s.SelectRow(1);
    s.dialog.findChild<QPushButton*>("deleteButton")->click();
    s.Request("Search", L"T1");
    EXPECT_EQ(seen, (QStringList{"Boiler 1 0 OK", "Alpha 9 3/2 OK"}));
}

TEST(EventsListSearch, TheDialogsButtonsReachTheList)
{
    SearchList s;
    s.OpenSearch();
    CDlgSearchReplace* search = s.dialog.SearchDialog();
    search->findChild<QLineEdit*>("findEdit")->setText("t1");
    QStringList seen;
    ModalScript modal(Look(seen));
    modal.Then(Look(seen)).Then(Look(seen));
    QTest::keyClick(search->findChild<QLineEdit*>("findEdit"), Qt::Key_Return);
    search->SetReplace(true);
    search->findChild<QLineEdit*>("replaceEdit")->setText("T2");
    // Find Next looks only, even with a replacement typed; Replace replaces.
    search->findChild<QPushButton*>("findNextButton")->click();
    search->findChild<QPushButton*>("replaceButton")->click();
    EXPECT_EQ(seen, (QStringList{"Boiler 1 0 OK", "Alpha 9 3/2 OK", "Chiller 3 2/0 " + ZoText(34893)}));
    EXPECT_EQ(s.cfg.Root()->NodeV(L"events/event?name=Chiller?")->Value(L"actions/activate/force/variable", L""), L"[T2]");
    search->findChild<QPushButton*>("replaceAllButton")->click();
    EXPECT_EQ(s.messages.Ids(), (std::vector<unsigned>{36366}));
    EXPECT_FALSE(search->isVisible());
    EXPECT_EQ(s.Condition("Chiller"), L"[T2] > 5 AND [T2] < 7");
}
