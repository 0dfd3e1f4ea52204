// The action pane's commands: add through the wizard and the kind's editor, modify, remove
// after a question, the keys, and the OK and Cancel it passes on to the event editor.
#include "ActionsPaneFixture.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"
#include "support/XmlText.h"

#include <QTest>

using namespace actions_test;

namespace {

ModalScript::Step ChooseKind(unsigned kind)
{
    return ModalScript::As<ZoEDlgEventActionsWizzard>([kind](ZoEDlgEventActionsWizzard& wizard) {
        wizard.Choose(kind);
        return wizard.result();
    });
}

std::wstring Id(XmlNode const* action)
{
    return action ? action->Value(L"id", L"") : std::wstring();
}

class ActionsPane : public PaneTest {};

TEST_F(ActionsPane, ButtonsFollowTheSelection)
{
    Open(1, 0, "<beep><id>{B}</id></beep><shellExecute><id>{C}</id><command>x</command></shellExecute>");
    EXPECT_EQ(Rows(), ByKind({"Beep:", "Command:x "}));
    EXPECT_EQ(Buttons(), "N--");
    Select({RowOf("Command:x ")});
    EXPECT_EQ(Buttons(), "NMR");
    Select({RowOf("Beep:")});
    EXPECT_EQ(Buttons(), "N-R") << "a beep has nothing to modify";
    Select({0, 1});
    EXPECT_EQ(Buttons(), "N-R");
    EXPECT_FALSE(Button("newActionButton")->autoDefault()) << "Enter belongs to the event editor";
}

TEST_F(ActionsPane, ABeepIsAddedAtOnceAtTheEnd)
{
    Open(1, 0, "<note/><shellExecute><id>{C}</id><command>x</command></shellExecute>");
    ModalScript modal(ChooseKind(kActionBeep));
    QTest::keyClick(m_list, Qt::Key_Insert);
    EXPECT_EQ(modal.Classes(), QStringList{"ZoEDlgEventActionsWizzard"});
    EXPECT_EQ(Children(), "note shellExecute beep");
    XmlNode const* beep = m_moment->Child(L"beep");
    EXPECT_EQ(Id(beep).size(), 38u) << "a new GUID";
    EXPECT_TRUE(m_pane->IsModified());
    EXPECT_EQ(Rows(), ByKind({"Beep:", "Command:x "}));
    EXPECT_EQ(m_list->currentIndex().row(), RowOf("Beep:")) << "the new action is selected";
}

TEST_F(ActionsPane, AnEditorKindIsAppendedEditedAndKeptOnOk)
{
    Open(0, 0, "<note/>");
    ModalScript modal(ChooseKind(kActionShellExecute));
    modal.Then([](QDialog&) { return int(QDialog::Accepted); });
    m_pane->OnNew();
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventActionsWizzard", "ZoEDlgEventActionShellExecuteCfg"}));
    EXPECT_EQ(Children(), "note shellExecute");
    EXPECT_TRUE(m_pane->IsModified());
}

TEST_F(ActionsPane, ACancelledAddLeavesNothing)
{
    Open(0, 0, "<note/><force><id>{F}</id><variable>[A]</variable><value>1</value></force>");
    std::string const before = Xml(m_moment);
    ModalScript modal(ChooseKind(kActionForce));
    modal.Then(ModalScript::Reject());
    m_pane->OnNew();
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventActionsWizzard", "ZoEDlgEventActionForceCfg"}));
    EXPECT_EQ(Xml(m_moment), before);
    EXPECT_FALSE(m_pane->IsModified());

    ModalScript cancelled(ModalScript::Reject());
    m_pane->OnNew();
    EXPECT_EQ(Xml(m_moment), before) << "a cancelled wizard adds nothing either";
}

TEST_F(ActionsPane, ADeviceIsChosenWithTheDriverChooser)
{
    XmlDocument devices;
    ASSERT_TRUE(devices.Parse("<deviceTree><catalog><driver><name>BOILER</name><type>MODBUS-TCP</type>"
                              "<variable><code>T1</code><type>analog</type></variable></driver></catalog></deviceTree>"));
    ZoInstallProjectCatalog(devices.Root(), nullptr);
    Open(1, 2, "");
    auto const chooseFirst = ModalScript::As<ZoSelectDriver>([](ZoSelectDriver& chooser) {
        auto* tree = chooser.findChild<QTreeView*>("devicesTree");
        tree->setCurrentIndex(tree->model()->index(0, 0));
        return ModalScript::ClickOk(chooser);
    });
    {
        ModalScript modal(ChooseKind(kActionDevice));
        modal.Then(ModalScript::Reject());
        m_pane->OnNew();
        EXPECT_EQ(Children(), "") << "no device chosen, nothing added";
    }
    ModalScript modal(ChooseKind(kActionDevice));
    modal.Then(chooseFirst);
    m_pane->OnNew();
    EXPECT_EQ(Rows(), "Device:BOILER");
    EXPECT_EQ(Id(m_moment->Child(L"device")).size(), 38u);
    ZoDeviceCatalog::Install(nullptr);
}

TEST_F(ActionsPane, ModifyOpensTheEditorOnTheElementWithTheFlags)
{
    Open(0, 0, "<force><id>{F}</id><variable>[A]</variable><value>1</value></force>");
    XmlNode* const force = m_moment->Child(L"force");
    ZoActionEditorFlags seen;
    XmlNode* edited = nullptr;
    EditorRunnerGuard editors([&](unsigned kind, XmlNode* action, XmlNode*, XmlDocument*, ZoActionEditorFlags const& flags) {
        EXPECT_EQ(kind, unsigned(kActionForce));
        edited = action;
        seen = flags;
        action->SetValue(L"value", L"2");
        return true;
    });
    m_pane->SetEditorFlags(-1, true, true);
    Select({0});
    QTest::keyClick(m_list, Qt::Key_Return);
    EXPECT_EQ(edited, force);
    EXPECT_TRUE(seen.skipCheck);
    EXPECT_TRUE(seen.keep);
    EXPECT_EQ(Rows(), "Force:[A] = (2)");
    EXPECT_TRUE(m_pane->IsModified());
    EXPECT_EQ(HostResult(), -1) << "without a preset index the event editor stays open";
}

TEST_F(ActionsPane, ACancelledModifyChangesNothing)
{
    Open(0, 0, "<force><id>{F}</id><variable>[A]</variable><value>1</value></force>");
    ModalScript modal(ModalScript::Reject());
    Select({0});
    Button("modifyActionButton")->click();
    EXPECT_EQ(modal.Classes(), QStringList{"ZoEDlgEventActionForceCfg"});
    EXPECT_FALSE(m_pane->IsModified());
}

// Mail and SMS are edited on a copy: a cancelled edit leaves the element exactly as it was,
// whatever the editor did to its element meanwhile.
TEST_F(ActionsPane, MailIsEditedOnACopyAssignedBackOnOk)
{
    m_users.Create(L"usersBD"); // loaded: no wait box
    Open(0, 2, "<mail><id>{M}</id><message>old</message><users><user>{U}</user></users></mail>");
    XmlNode* const mail = m_moment->Child(L"mail");
    std::string const before = Xml(mail);
    bool answer = false;
    XmlDocument* users = nullptr;
    EditorRunnerGuard editors([&](unsigned kind, XmlNode* action, XmlNode*, XmlDocument* handed, ZoActionEditorFlags const&) {
        EXPECT_EQ(kind, unsigned(kActionMail));
        EXPECT_NE(action, mail);
        users = handed;
        action->SetValue(L"message", L"new");
        action->Child(L"users")->Reset();
        return answer;
    });
    Select({0});
    m_pane->OnModify();
    EXPECT_EQ(Xml(mail), before);
    EXPECT_FALSE(m_pane->IsModified());
    EXPECT_EQ(users, &m_users);

    answer = true;
    m_pane->OnModify();
    EXPECT_EQ(m_moment->Child(L"mail"), mail) << "assigned over the element, not replaced";
    EXPECT_EQ(Xml(mail), "<mail><id>{M}</id><message>new</message><users/></mail>");
    EXPECT_EQ(Rows(), "Mail:new");
    EXPECT_TRUE(m_pane->IsModified());
}

// With a preset index the pane edits that row and, on OK, ends the event editor with OK.
TEST_F(ActionsPane, APresetIndexEditsItsRowAndPassesOk)
{
    Open(1, 0, "<shellExecute><id>{1}</id><command>b</command></shellExecute>"
               "<shellExecute><id>{2}</id><command>a</command></shellExecute>");
    m_pane->SetEditorFlags(1, false, false);
    XmlNode* edited = nullptr;
    EditorRunnerGuard editors([&](unsigned, XmlNode* action, XmlNode*, XmlDocument*, ZoActionEditorFlags const& flags) {
        edited = action;
        EXPECT_EQ(flags.presetIndex, 1);
        return true;
    });
    Select({0});
    m_pane->OnModify();
    EXPECT_EQ(Id(edited), L"{2}") << "the row at the preset index, in document order";
    EXPECT_EQ(HostResult(), QDialog::Accepted);
    EXPECT_FALSE(m_pane->IsModified()) << "the event editor ends instead of the list being marked";
}

TEST_F(ActionsPane, RemoveAsksFirst)
{
    Open(1, 0, "<beep><id>{1}</id></beep><note/><shellExecute><id>{2}</id><command>x</command></shellExecute>"
               "<launchWeb><id>{3}</id><url>u</url></launchWeb>");
    EXPECT_EQ(Rows(), ByKind({"Beep:", "Command:x ", "Web page:u - New browser window"}));
    {
        ScriptedAnswerer answers{ZoAnswer::No};
        Select({RowOf("Beep:"), RowOf("Web page:u - New browser window")});
        QTest::keyClick(m_list, Qt::Key_Delete);
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32835});
        EXPECT_EQ(answers.Last().buttons, ZoMsgButtons::YesNo);
        EXPECT_EQ(Children(), "beep note shellExecute launchWeb");
        EXPECT_FALSE(m_pane->IsModified());
    }
    ScriptedAnswerer answers{ZoAnswer::Yes};
    Select({RowOf("Beep:"), RowOf("Web page:u - New browser window")});
    Button("removeActionButton")->click();
    EXPECT_EQ(Children(), "note shellExecute");
    EXPECT_EQ(Rows(), "Command:x ");
    EXPECT_TRUE(m_pane->IsModified());
    Select({});
    m_pane->OnRemove();
    EXPECT_EQ(answers.Count(), 1) << "nothing selected: no question";
}

TEST_F(ActionsPane, EnterAndEscapeWithoutARowActOnTheEventEditor)
{
    Open(1, 0, "");
    QTest::keyClick(m_list, Qt::Key_Return);
    EXPECT_EQ(HostResult(), QDialog::Accepted);
    m_host->setResult(-1);
    QTest::keyClick(m_list, Qt::Key_Escape);
    EXPECT_EQ(HostResult(), QDialog::Rejected);
}

// Adds, removes and pastes never touch a child the list does not show.
TEST_F(ActionsPane, AnUnknownChildSurvivesEveryCommand)
{
    Open(1, 1, "<custom><id>{X}</id><deep>1</deep></custom>");
    std::string const custom = Xml(m_moment->Child(L"custom"));
    {
        ModalScript modal(ChooseKind(kActionBeep));
        m_pane->OnNew();
    }
    {
        ScriptedAnswerer answers{ZoAnswer::Yes};
        Select({0});
        m_pane->OnRemove();
    }
    {
        ModalScript modal(ChooseKind(kActionBeep));
        m_pane->OnNew();
        Select({0});
        m_pane->CopyToClipboard();
        m_pane->PasteFromClipboard();
    }
    EXPECT_EQ(Children(), "custom beep beep");
    EXPECT_EQ(Xml(m_moment->Child(L"custom")), custom);
    EXPECT_EQ(Rows(), "Beep:|Beep:");
}

} // namespace
