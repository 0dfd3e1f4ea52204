#include "groups/GroupsTestDocs.h"
#include "groups/ZoDlgEventNewModifyGroup.h"
#include "groups/ZoDlgSelect.h"
#include "groups/ZoEDlgEventGroupsCfg.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"
#include <QAbstractItemModelTester>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTreeView>
#include <algorithm>

using namespace groups_test;

namespace {

// Ids G-<name> for the groups of the standard document.
std::string const kProject = Cfg(
    {Ev("Tank high", {"G-Tanks"}), Ev("pump fault", {"G-Pumps", "G-Tanks"}), Ev("Mains", {"G-Power"}),
     Ev("Door", {"G-Power", "G-Power"})},
    {Grp("G-Tanks", "Tanks"), Grp("G-Pumps", "pumps"), Grp("G-Power", "Power")});

QString Rows(QTreeView const* list)
{
    QStringList names;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        names << list->model()->index(row, 0).data().toString();
    return names.join(u',');
}

void Select(QTreeView* list, std::initializer_list<int> rows)
{
    list->selectionModel()->clearSelection();
    for (int row : rows)
        list->selectionModel()->select(list->model()->index(row, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

// The groups dialog over its document, initialised and shown offscreen, with both models
// under Qt's model checker.
struct GroupsDialog {
    explicit GroupsDialog(std::string const& xml = kProject)
    {
        Load(cfg, xml);
        dialog = std::make_unique<ZoEDlgEventGroupsCfg>(nullptr, &cfg);
        groups = dialog->findChild<QTreeView*>("groupsList");
        members = dialog->findChild<QTreeView*>("membersList");
        groupsTester = std::make_unique<QAbstractItemModelTester>(
            groups->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        membersTester = std::make_unique<QAbstractItemModelTester>(
            members->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        dialog->EnsureInitialized();
        dialog->show();
    }

    QPushButton* Button(char const* name) const { return dialog->findChild<QPushButton*>(name); }
    void Click(char const* name) const { Button(name)->click(); }
    // The enabled buttons as "AMD am", with "-" for a disabled one.
    std::string Buttons() const
    {
        auto flag = [this](char const* name, char letter) { return Button(name)->isEnabled() ? letter : '-'; };
        return {flag("addButton", 'A'), flag("modifyButton", 'M'), flag("deleteButton", 'D'), ' ',
                flag("addMemberButton", 'a'), flag("removeMemberButton", 'r')};
    }
    QString MembersTitle() const { return dialog->findChild<QGroupBox*>("membersBox")->title().remove(u'&'); }
    int Result()
    {
        dialog->setResult(-1);
        Click("okButton");
        return dialog->result();
    }

    XmlDocument cfg;
    ScriptedAnswerer messages; // no test ever waits on a message box
    std::unique_ptr<ZoEDlgEventGroupsCfg> dialog;
    QTreeView* groups = nullptr;
    QTreeView* members = nullptr;
    std::unique_ptr<QAbstractItemModelTester> groupsTester, membersTester;
};

// A name dialog step: types the name and presses OK; records the title it showed.
ModalScript::Step TypeName(QString name, QString* title = nullptr)
{
    return ModalScript::As<ZoDlgEventNewModifyGroup>([=](ZoDlgEventNewModifyGroup& named) {
        if (title)
            *title = named.windowTitle();
        named.findChild<QLineEdit*>("nameEdit")->setText(name);
        return ModalScript::ClickOk(named);
    });
}

// A selection dialog step: selects these rows (none: OK with nothing chosen) and presses OK;
// records the rows it offered.
ModalScript::Step Choose(std::initializer_list<int> rows, QString* offered = nullptr)
{
    std::vector<int> const chosen(rows);
    return ModalScript::As<ZoDlgSelect>([=](ZoDlgSelect& select) {
        auto* list = select.findChild<QTreeView*>("selectList");
        if (offered)
            *offered = Rows(list);
        for (int row : chosen)
            list->selectionModel()->select(list->model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
        return ModalScript::ClickOk(select);
    });
}

} // namespace

TEST(EventGroupsDialog, OpensWithTheGroupsSortedAndNoGroupChosen)
{
    GroupsDialog groups;
    EXPECT_EQ(groups.dialog->windowTitle(), ZoText(32787));
    EXPECT_EQ(Rows(groups.groups), QStringLiteral("Power,pumps,Tanks"));
    EXPECT_EQ(groups.groups->model()->headerData(0, Qt::Horizontal).toString(), ZoText(355));
    EXPECT_EQ(groups.MembersTitle(), ZoText(32782));
    EXPECT_EQ(groups.members->model()->rowCount(), 0);
    EXPECT_EQ(groups.Buttons(), "A-- --");
    EXPECT_TRUE(groups.groups->hasFocus() || !groups.dialog->isActiveWindow());
    // Every button and box has a letter of its own, although both lists have Add and Delete.
    QSet<QChar> letters;
    for (char const* name : {"addButton", "modifyButton", "deleteButton", "addMemberButton", "removeMemberButton"}) {
        QString const text = groups.Button(name)->text();
        int const amp = text.indexOf(u'&');
        ASSERT_GE(amp, 0) << name;
        letters.insert(text.at(amp + 1).toLower());
    }
    for (char const* name : {"groupsBox", "membersBox"}) {
        QString const title = groups.dialog->findChild<QGroupBox*>(name)->title();
        ASSERT_GE(title.indexOf(u'&'), 0) << name;
        letters.insert(title.at(title.indexOf(u'&') + 1).toLower());
    }
    EXPECT_EQ(letters.size(), 7);

    // One group: its members, sorted, under a title naming it.
    Select(groups.groups, {2});
    EXPECT_EQ(groups.MembersTitle(), ZoText(32783).replace("%s", "Tanks"));
    EXPECT_EQ(Rows(groups.members), QStringLiteral("pump fault,Tank high"));
    EXPECT_EQ(groups.Buttons(), "AMD a-");
    Select(groups.members, {0});
    EXPECT_EQ(groups.Buttons(), "AMD ar");
    // An event naming the group twice is one member.
    Select(groups.groups, {0});
    EXPECT_EQ(Rows(groups.members), QStringLiteral("Door,Mains"));
    // Two groups: no member list, and only Delete applies to both.
    Select(groups.groups, {0, 1});
    EXPECT_EQ(groups.MembersTitle(), ZoText(32782));
    EXPECT_EQ(groups.Buttons(), "A-D --");
    // Nothing changed: OK ends with Cancel.
    EXPECT_EQ(groups.Result(), int(QDialog::Rejected));
}

TEST(EventGroupsDialog, HeadingClicksReverseTheOrderStartingDescending)
{
    GroupsDialog groups;
    Select(groups.groups, {1});
    QHeaderView* header = groups.groups->header();
    emit header->sectionClicked(0);
    EXPECT_EQ(Rows(groups.groups), QStringLiteral("Tanks,pumps,Power"));
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(Rows(groups.members), QStringLiteral("pump fault")); // still the same group
    emit header->sectionClicked(0);
    EXPECT_EQ(Rows(groups.groups), QStringLiteral("Power,pumps,Tanks"));
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST(EventGroupsDialog, AddingAGroupNamesItAndSelectsIt)
{
    GroupsDialog groups;
    {
        QString title;
        ModalScript modal(TypeName(QStringLiteral("Alarms"), &title));
        groups.Click("addButton");
        EXPECT_EQ(title, ZoText(32789));
    }
    EXPECT_EQ(Rows(groups.groups), QStringLiteral("Alarms,Power,pumps,Tanks"));
    EXPECT_EQ(groups.groups->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(groups.groups->currentIndex().row(), 0);
    EXPECT_EQ(groups.MembersTitle(), ZoText(32783).replace("%s", "Alarms"));
    XmlNode const* added = groups.cfg.Root()->NodeV(L"eventsGroups/eventsGroup?name=%s?", L"Alarms");
    ASSERT_TRUE(added);
    EXPECT_EQ(added->Value(L"id", L"").size(), 38u); // a fresh GUID text
    EXPECT_EQ(groups.Result(), int(QDialog::Accepted));
}

TEST(EventGroupsDialog, CancelledNameDialogAddsNothing)
{
    GroupsDialog groups;
    ModalScript modal(ModalScript::Reject());
    QTest::keyClick(groups.groups, Qt::Key_Insert); // Insert in the group list adds
    EXPECT_EQ(modal.Classes(), QStringList{"ZoDlgEventNewModifyGroup"});
    EXPECT_EQ(GroupNames(groups.cfg), "Tanks,pumps,Power");
    EXPECT_FALSE(groups.dialog->IsModified());
}

// Each refusal shows its message and leaves the dialog open with the focus in the name;
// after the last two the whole name is selected, ready to be typed over.
TEST(EventGroupsDialog, RenameRefusesBadNamesAndKeepsTheFocusInTheName)
{
    GroupsDialog groups;
    Select(groups.groups, {2});
    struct Case {
        QString name;
        unsigned message;
        bool selected;
    };
    std::vector<Case> const cases{{QString(), 32907, false},
                                  {QStringLiteral("Tanks?"), 32764, true},
                                  {QStringLiteral("Power"), 32908, true}};
    for (Case const& refused : cases) {
        QString title;
        bool stillOpen = false, focused = false, selected = false;
        ModalScript modal(ModalScript::As<ZoDlgEventNewModifyGroup>([&](ZoDlgEventNewModifyGroup& named) {
            title = named.windowTitle();
            named.show();
            named.activateWindow();
            auto* edit = named.findChild<QLineEdit*>("nameEdit");
            edit->setText(refused.name);
            edit->deselect();
            int const result = ModalScript::ClickOk(named);
            stillOpen = result == QDialog::Rejected && named.isVisible();
            focused = named.focusWidget() == edit;
            selected = edit->selectedText() == refused.name && !refused.name.isEmpty();
            return result;
        }));
        groups.Click("modifyButton");
        EXPECT_EQ(title, ZoText(32790));
        EXPECT_EQ(groups.messages.Ids().back(), refused.message) << refused.name.toStdString();
        EXPECT_TRUE(stillOpen);
        EXPECT_TRUE(focused) << refused.message;
        EXPECT_EQ(selected, refused.selected) << refused.message;
    }
    EXPECT_EQ(GroupNames(groups.cfg), "Tanks,pumps,Power");
    EXPECT_FALSE(groups.dialog->IsModified());
}

TEST(EventGroupsDialog, RenameToTheSameNameIsNoChange)
{
    GroupsDialog groups;
    Select(groups.groups, {2});
    {
        ModalScript modal(TypeName(QStringLiteral("Tanks")));
        groups.Click("modifyButton");
        EXPECT_EQ(modal.Count(), 1);
    }
    // The name dialog ended with Cancel: nothing is recorded, and OK ends with Cancel.
    EXPECT_TRUE(groups.messages.Ids().empty());
    EXPECT_FALSE(groups.dialog->IsModified());
    EXPECT_EQ(groups.Result(), int(QDialog::Rejected));
}

TEST(EventGroupsDialog, RenameKeepsTheMembersAndTheSelection)
{
    GroupsDialog groups;
    Select(groups.groups, {2});
    {
        ModalScript modal(TypeName(QStringLiteral("Basins")));
        // Enter on the list renames, as a double click does.
        QTest::keyClick(groups.groups, Qt::Key_Return);
        EXPECT_EQ(modal.Count(), 1);
    }
    EXPECT_EQ(Rows(groups.groups), QStringLiteral("Basins,Power,pumps"));
    EXPECT_EQ(Rows(groups.members), QStringLiteral("pump fault,Tank high"));
    EXPECT_EQ(Memberships(groups.cfg, L"Tank high"), "G-Tanks");
    EXPECT_TRUE(groups.dialog->IsModified());

    ModalScript modal(TypeName(QStringLiteral("Tanks")));
    QRect const cell = groups.groups->visualRect(groups.groups->model()->index(0, 0));
    QTest::mouseDClick(groups.groups->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(modal.Count(), 1);
    EXPECT_EQ(Rows(groups.groups), QStringLiteral("Power,pumps,Tanks"));
}

TEST(EventGroupsDialog, DeleteAsksAndRemovesTheGroupsFromTheirEvents)
{
    GroupsDialog groups;
    Select(groups.groups, {0, 2}); // Power and Tanks
    groups.messages.Then(ZoAnswer::No);
    QTest::keyClick(groups.groups, Qt::Key_Delete);
    EXPECT_EQ(groups.messages.Ids(), std::vector<unsigned>{32788});
    EXPECT_EQ(groups.messages.Last().buttons, ZoMsgButtons::YesNo);
    EXPECT_EQ(GroupNames(groups.cfg), "Tanks,pumps,Power");

    groups.Click("deleteButton"); // answered Yes
    EXPECT_EQ(GroupNames(groups.cfg), "pumps");
    EXPECT_EQ(Rows(groups.groups), QStringLiteral("pumps"));
    EXPECT_EQ(Memberships(groups.cfg, L"pump fault"), "G-Pumps");
    EXPECT_EQ(Memberships(groups.cfg, L"Mains"), "");
    // Only the first of Door's two Power memberships goes (see GroupMembers tests).
    EXPECT_EQ(Memberships(groups.cfg, L"Door"), "G-Power");
    EXPECT_EQ(groups.Result(), int(QDialog::Accepted));
}

TEST(EventGroupsDialog, AddMembersThroughTheSelectionDialog)
{
    GroupsDialog groups;
    Select(groups.groups, {1}); // pumps: one member of four events
    QString offered;
    {
        ModalScript modal(Choose({0, 2}, &offered));
        groups.Click("addMemberButton");
    }
    EXPECT_EQ(offered, QStringLiteral("Tank high,Mains,Door"));
    EXPECT_EQ(Rows(groups.members), QStringLiteral("Door,pump fault,Tank high"));
    EXPECT_EQ(Memberships(groups.cfg, L"Door"), "G-Power,G-Power,G-Pumps");
    EXPECT_TRUE(groups.dialog->IsModified());
    EXPECT_EQ(groups.Buttons(), "AMD a-");

    // Insert in the member list adds too; with every event a member, Add is disabled.
    {
        ModalScript modal(Choose({0}));
        QTest::keyClick(groups.members, Qt::Key_Insert);
        EXPECT_EQ(modal.Classes(), QStringList{"ZoDlgSelect"});
    }
    EXPECT_EQ(groups.members->model()->rowCount(), 4);
    EXPECT_EQ(groups.Buttons(), "AMD --");
    ModalScript none;
    QTest::keyClick(groups.members, Qt::Key_Insert);
    EXPECT_EQ(none.Count(), 0);
}

TEST(EventGroupsDialog, ChoosingNothingChangesNothing)
{
    GroupsDialog groups;
    Select(groups.groups, {1});
    ModalScript modal(Choose({}));
    groups.Click("addMemberButton");
    EXPECT_EQ(modal.Count(), 1);
    EXPECT_EQ(Rows(groups.members), QStringLiteral("pump fault"));
    EXPECT_FALSE(groups.dialog->IsModified());
}

TEST(EventGroupsDialog, RemoveMembersAsksWithTheGroupsName)
{
    GroupsDialog groups;
    Select(groups.groups, {2}); // Tanks
    Select(groups.members, {0, 1});
    groups.messages.Then(ZoAnswer::No);
    QTest::keyClick(groups.members, Qt::Key_Delete);
    ASSERT_EQ(groups.messages.Ids(), std::vector<unsigned>{32786});
    EXPECT_EQ(groups.messages.LastText(), ZoFormat(ZoLoadString(32786).c_str(), L"Tanks"));
    EXPECT_EQ(Memberships(groups.cfg, L"Tank high"), "G-Tanks");

    // A member has nothing to open: Enter on it leaves the dialog open.
    groups.dialog->setResult(-1);
    QTest::keyClick(groups.members, Qt::Key_Return);
    EXPECT_EQ(groups.dialog->result(), -1);
    EXPECT_TRUE(groups.dialog->isVisible());

    groups.Click("removeMemberButton"); // answered Yes
    EXPECT_EQ(Memberships(groups.cfg, L"Tank high"), "");
    EXPECT_EQ(Memberships(groups.cfg, L"pump fault"), "G-Pumps");
    EXPECT_EQ(groups.members->model()->rowCount(), 0);
    EXPECT_EQ(groups.Buttons(), "AMD a-");
    EXPECT_EQ(groups.Result(), int(QDialog::Accepted));
}

TEST(EventGroupsDialog, WorksOnAProjectWithoutGroupsOrEvents)
{
    GroupsDialog groups("<cfg/>");
    EXPECT_EQ(Rows(groups.groups), QString());
    ModalScript modal(TypeName(QStringLiteral("First")));
    groups.Click("addButton");
    EXPECT_EQ(GroupNames(groups.cfg), "First");
    EXPECT_EQ(groups.Buttons(), "AMD --"); // no event to add
}
