#include "EventChooserDlg.h"
#include "HostTestSupport.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/ui/ZoClipboard.h"
#include "support/ScriptedAnswerer.h"
#include "variables/CDlgSelectVarEventsVariables.h"

#include <QAction>
#include <QCheckBox>
#include <QStatusBar>

using namespace host_test;
using HostEventVariables = HostTest;

// Events > Event variables: an event is chosen, then variables of its state, and they land
// on the clipboard as formula references to paste into a condition.
TEST_F(HostEventVariables, ChosenVariablesGoToTheClipboardAsFormulaText)
{
    DemoWindow demo;
    EXPECT_TRUE(demo.window.findChild<QAction*>("eventVariablesAction")->isEnabled());
    ModalScript modal(ModalScript::As<EventChooserDlg>([](EventChooserDlg& chooser) {
        EXPECT_TRUE(chooser.SelectName("Heavy rain"));
        return ModalScript::ClickOk(chooser);
    }));
    modal.Then(ModalScript::As<CDlgSelectVarEventsVariables>([](CDlgSelectVarEventsVariables& dialog) {
        EXPECT_TRUE(dialog.windowTitle().endsWith(" - Heavy rain")) << dialog.windowTitle().toStdString();
        dialog.findChild<QCheckBox*>("variableCheck2")->click(); // CACT
        dialog.findChild<QCheckBox*>("variableCheck0")->click(); // ST
        return ModalScript::ClickOk(dialog);
    }));
    demo.window.OnEventVariables();
    EXPECT_EQ(modal.Classes(), (QStringList{"EventChooserDlg", "CDlgSelectVarEventsVariables"}));
    std::string clipboard;
    GetFromClipboard(clipboard, 0);
    EXPECT_STREQ(clipboard.c_str(), "[R$EVE_Heavy rain.ST] [R$EVE_Heavy rain.CACT]");
    EXPECT_TRUE(demo.window.statusBar()->currentMessage().contains("[R$EVE_Heavy rain.ST]"));

    // The copied text is a valid condition of another event.
    ZoEvaluator evaluator(L"[R$EVE_Heavy rain.ST] = 1");
    EXPECT_EQ(evaluator.AnalizeExpression(), 1);

    // Cancelled, nothing is copied.
    PutToClipboard("before", 6, 0);
    ModalScript cancel(ModalScript::As<EventChooserDlg>([](EventChooserDlg& chooser) {
        chooser.SelectName("Heavy rain");
        return ModalScript::ClickOk(chooser);
    }));
    demo.window.OnEventVariables();
    GetFromClipboard(clipboard, 0);
    EXPECT_STREQ(clipboard.c_str(), "before");
}
