// The event editor's two action tabs: eight panes on their moments, the focus codes that
// open a side and a moment, the open-at fields handed to the pane shown, and a pane's
// change counting as a change of the event.
#include "EventEditorFixture.h"
#include "actions/ZoActionEditors.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoActionsListModel.h"
#include "actions/ZoEDlgEventActionsCfg.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QTreeView>

namespace {

class EventEditorActions : public EventEditorTest {
protected:
    QTabWidget* Moments(int side) const
    {
        return Get<QTabWidget>(side == 0 ? "actionsMomentTabs" : "clientActionsMomentTabs");
    }
    ZoEDlgEventActionsCfg* ShownPane(int side) const
    {
        return qobject_cast<ZoEDlgEventActionsCfg*>(Moments(side)->currentWidget());
    }
};

TEST_F(EventEditorActions, EightPanesOneForEachSideAndMoment)
{
    XmlNode* event = AddEvent("<id>{E-1}</id><name>New</name><actions><while><beep><id>{B}</id></beep></while>"
                              "</actions>");
    ZoEDlgEventCfg& editor = Open(event);
    QStringList const names{"activate", "while", "deactivate", "acknowledge"};
    for (int side = 0; side < 2; ++side) {
        ASSERT_EQ(Moments(side)->count(), 4);
        EXPECT_TRUE(Moments(side)->isEnabled());
        for (int moment = 0; moment < 4; ++moment) {
            ZoEDlgEventActionsCfg* pane = editor.ActionPane(side, moment);
            ASSERT_NE(pane, nullptr);
            EXPECT_EQ(Moments(side)->widget(moment), pane);
            EXPECT_EQ(pane->MomentIndex(), moment);
            EXPECT_EQ(pane->IsClient(), side == 1);
            ASSERT_NE(pane->Moment(), nullptr) << "created when missing";
            EXPECT_EQ(QString::fromStdWString(pane->Moment()->Tag()), names[moment]);
            EXPECT_EQ(pane->Moment()->Parent()->Tag(), side == 0 ? L"actions" : L"clientActions");
        }
    }
    EXPECT_EQ(Moments(0)->tabText(1), ZoText(32832));
    EXPECT_EQ(editor.ActionPane(0, 1)->Model()->rowCount(), 1) << "the stored beep shows in its pane";
    EXPECT_EQ(editor.ActionPane(0, 1)->findChild<QPushButton*>("newActionButton")->text().count(QLatin1Char('&')), 1)
        << "the pane's buttons have their Alt keys";
}

TEST_F(EventEditorActions, FocusCodesOpenTheSideAndTheMoment)
{
    XmlNode* event = AddEvent(kFullEvent);
    for (int code = 3; code <= 10; ++code) {
        ZoEDlgEventCfg& editor = Create(event);
        editor.m_focusCode = code;
        editor.EnsureInitialized();
        int const side = code <= 6 ? 0 : 1;
        EXPECT_EQ(Tabs()->currentIndex(), side == 0 ? ZoEDlgEventCfg::TabActions : ZoEDlgEventCfg::TabClientActions)
            << code;
        EXPECT_EQ(Moments(side)->currentIndex(), (code - 3) % 4) << code;
    }
}

// The pane shown receives the open-at flags and index: with a preset index, its Modify
// edits that action with the flags and then ends the event editor with OK, unchecked.
TEST_F(EventEditorActions, ThePaneShownReceivesTheOpenAtFields)
{
    XmlNode* event = AddEvent(std::string(kFullEvent)
                              + "<clientActions><deactivate><shellExecute><id>{1}</id><command>b</command>"
                                "</shellExecute><shellExecute><id>{2}</id><command>a</command></shellExecute>"
                                "</deactivate></clientActions>");
    ZoEDlgEventCfg& editor = Create(event);
    editor.m_focusCode = 9;
    editor.m_presetIndex = 1;
    editor.m_skipCheck = true;
    editor.EnsureInitialized();
    editor.setResult(-1);
    ZoEDlgEventActionsCfg* pane = ShownPane(1);
    ASSERT_EQ(pane, editor.ActionPane(1, 2));
    std::wstring editedId;
    ZoActionEditorFlags seen;
    ZoActionEditorRunner const previous = ZoGetActionEditorRunner();
    ZoSetActionEditorRunner([&](unsigned, XmlNode* action, XmlNode*, XmlDocument*, ZoActionEditorFlags const& flags) {
        editedId = action->Value(L"id", L"");
        seen = flags;
        action->SetValue(L"command", L"changed");
        return true;
    });
    pane->OnModify();
    ZoSetActionEditorRunner(previous);
    EXPECT_EQ(editedId, L"{2}") << "the preset row, in document order";
    EXPECT_TRUE(seen.skipCheck);
    EXPECT_EQ(seen.presetIndex, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(editor.result(), QDialog::Accepted);
    EXPECT_EQ(Get<QPushButton>("okButton")->text(), ZoText(34893));
}

// Step 9 of the change test: an action added in a pane is a change of the event.
TEST_F(EventEditorActions, APaneChangeIsAnEventChange)
{
    XmlNode* event = AddEvent(kFullEvent);
    ZoEDlgEventCfg& editor = Open(event);
    EXPECT_FALSE(editor.HasChanged());
    Tabs()->setCurrentIndex(ZoEDlgEventCfg::TabClientActions);
    Moments(1)->setCurrentIndex(3);
    ModalScript modal(ModalScript::As<ZoEDlgEventActionsWizzard>([](ZoEDlgEventActionsWizzard& wizard) {
        EXPECT_EQ(wizard.KindMask(), kClientActionsMask);
        wizard.Choose(kActionBeep);
        return wizard.result();
    }));
    ShownPane(1)->findChild<QPushButton*>("newActionButton")->click();
    EXPECT_TRUE(editor.ActionPane(1, 3)->IsModified());
    EXPECT_TRUE(editor.HasChanged());
    EXPECT_NE(event->Node(L"clientActions/acknowledge/beep"), nullptr) << "straight into the event";
}

} // namespace
