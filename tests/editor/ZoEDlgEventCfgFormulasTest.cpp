#include "EventEditorFixture.h"

#include "editor/ZoActionChecks.h"
#include "platform/reports/CDlgWizzard.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"

#include <QLabel>
#include <QToolButton>

namespace {

// "Label (status)" as the editor shows it.
QString WithStatus(unsigned label, unsigned status, char const* mark = "")
{
    return ZoText(label) + " (" + ZoText(status) + ")" + mark;
}

} // namespace

class EventFormulaTest : public EventEditorTest {
protected:
    QString Label(char const* name) const { return Get<QLabel>(name)->text().remove(QLatin1Char('&')); }
    // Sets the field and returns what its label shows.
    QString Typed(char const* field, char const* label, QString const& text) const
    {
        SetText(field, text);
        return Label(label);
    }
    XmlNode* m_event = AddEvent(kFullEvent);
};

// The four labels follow every keystroke; a logical formula always shows a status, a delay
// only when it is faulty in a way the label names.
TEST_F(EventFormulaTest, LabelsShowTheLiveStatusOfEachFormula)
{
    Open(m_event);
    // Loading the event already shows the status of the stored formulas.
    EXPECT_EQ(Label("conditionLabel"), WithStatus(32479, 36029));
    EXPECT_EQ(Label("delayActivateLabel"), ZoText(32802));

    struct Case {
        char const* text;
        QString expected;
    };
    std::vector<Case> const logical = {
        {"", WithStatus(32479, 32449)},
        {"[BOILER.T1] > 90 AND NOT [BOILER.DI1]", WithStatus(32479, 36029)},
        {"1", WithStatus(32479, 32486)}, // the number alone is taken as TRUE, and 0 as FALSE
        {" 0 ", WithStatus(32479, 32487)},
        {"2 - 1", WithStatus(32479, 32446)}, // any longer formula stays numeric
        {"1 = 1", WithStatus(32479, 32486)},
        {"TRUE", WithStatus(32479, 32486)},
        {"2 < 1", WithStatus(32479, 32487)},
        {"[BOILER.T1] + 5", WithStatus(32479, 32446)},  // numeric
        {"[BOILER.T1] >", WithStatus(32479, 32446)},    // not a formula
        {"@Pumps.RunningCount >= 1", WithStatus(32479, 37540)}, // a module
        {"[BOILER.T1] = 90.5", WithStatus(32479, 36029, "*")}, // exact test of an analog value
        {"if([BOILER.DI1], \"on\", \"off\") = \"on\"", WithStatus(32479, 36029)},
    };
    for (Case const& c : logical) {
        EXPECT_EQ(Typed("conditionEdit", "conditionLabel", c.text), c.expected) << c.text;
        EXPECT_EQ(Typed("stopConditionEdit", "stopConditionLabel", c.text),
                  QString(c.expected).replace(ZoText(32479), ZoText(33120)))
            << c.text;
    }
    // An unknown variable is named by the evaluator's own message, which the tooltip
    // explains with its position.
    QString const unknown = Typed("conditionEdit", "conditionLabel", "[BOILER.T9] > 1");
    EXPECT_TRUE(unknown.startsWith(ZoText(32479) + " (")) << unknown.toStdString();
    EXPECT_TRUE(unknown.contains("T9")) << unknown.toStdString();
    EXPECT_FALSE(Get<QLabel>("conditionLabel")->toolTip().isEmpty());

    std::vector<Case> const numeric = {
        {"", ZoText(32802)},
        {"5", ZoText(32802)},
        {"[BOILER.T1] / 10 + 2", ZoText(32802)},
        {"[BOILER.T1] > 2", WithStatus(32802, 32446)}, // logical
        {"5 +", WithStatus(32802, 32446)},
        {"@Pumps.delay", WithStatus(32802, 37540)},
        {"[NOPE.X] + 1", ZoText(32802)}, // any other outcome: the label alone
    };
    for (Case const& c : numeric) {
        EXPECT_EQ(Typed("delayActivateEdit", "delayActivateLabel", c.text), c.expected) << c.text;
        EXPECT_EQ(Typed("delayDeactivateEdit", "delayDeactivateLabel", c.text),
                  QString(c.expected).replace(ZoText(32802), ZoText(32803)))
            << c.text;
    }
    // Every formula edit marks the event changed, even back to the stored text.
    Open(m_event);
    EXPECT_FALSE(m_dialog->HasChanged());
    SetText("delayActivateEdit", "6");
    SetText("delayActivateEdit", "5");
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Flag);
}

// Each formula fault is its own question with its own detail text; Yes goes on to the next
// check, No stops on the right tab and field.
TEST_F(EventFormulaTest, FormulaFaultsAreAskedOneAfterTheOther)
{
    XmlDocument arguments;
    ASSERT_TRUE(arguments.Parse("<arguments><argument><value>[BOILER.T1] * 2</value></argument>"
                                "<argument><value>[BOILER.T1] &gt; 2</value></argument></arguments>"));
    *m_event->NewChild(L"arguments", nullptr) = *arguments.Root();
    Open(m_event);
    SetText("conditionEdit", "[BOILER.T1] + 1");
    SetText("stopConditionEdit", "@Pumps.stop");
    {
        ScriptedAnswerer answers; // Yes to everything: each fault asked, then saved
        ClickOk();
        ASSERT_EQ(answers.Ids(), (std::vector<unsigned>{32798, 33123, 32879}));
        EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
        // A logical value where a number is wanted is refused by the analysis already.
        EXPECT_EQ(answers.LastText(), ZoFormat(ZoLoadString(32879).c_str(), 2, ZoLoadString(32446).c_str()) + L"\n"
                                          + ZoLoadString(32883));
    }
    struct Case {
        char const* condition;
        char const* stop;
        std::wstring detail; // of the first question
    };
    std::vector<Case> const cases = {
        {"[BOILER.T1] + 1", "", ZoLoadString(32446)},
        {"if([BOILER.DI1], 1, 2) > 0", "", {}},             // passes: the stop question comes
        {"@Pumps.Go > 0", "", ZoLoadString(37540)},
        {"[BOILER.T1] / 0 > 1", "", {}},                     // the evaluator's message
    };
    for (Case const& c : cases) {
        Open(m_event).show();
        Tabs()->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
        SetText("conditionEdit", c.condition);
        SetText("stopConditionEdit", "[BOILER.T1]");
        ScriptedAnswerer answers{ZoAnswer::No};
        ClickOk();
        EXPECT_EQ(m_dialog->result(), QDialog::Rejected);
        ASSERT_EQ(answers.Count(), 1) << c.condition;
        EXPECT_EQ(Tabs()->currentIndex(), ZoEDlgEventCfg::TabGeneral);
        if (answers.Ids()[0] == 32798 && !c.detail.empty()) {
            EXPECT_EQ(answers.LastText(), ZoFormatN(1024, ZoLoadString(32798).c_str(), c.detail.c_str()));
        }
        if (std::string_view(c.condition).starts_with("if")) {
            EXPECT_EQ(answers.Ids()[0], 33123u); // the stop condition is numeric
        }
    }
    // An empty stop condition with its box checked is a hard error.
    Open(m_event);
    SetText("conditionEdit", "[BOILER.T1] > 90");
    SetText("stopConditionEdit", "");
    ScriptedAnswerer answers;
    ClickOk();
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{33122});
    EXPECT_EQ(m_dialog->result(), QDialog::Rejected);
}

// The action checks: the first refused action shows its side's tab; an acknowledgement
// action is checked only for an event stored as notified.
TEST_F(EventFormulaTest, ActionsAreCheckedInListOrderAndTheAnswerDecides)
{
    auto const addAction = [&](wchar_t const* side, wchar_t const* moment, char const* xml) {
        XmlDocument piece;
        EXPECT_TRUE(piece.Parse(xml));
        XmlNode* list = m_event->NodeV(L"%s/%s", side, moment);
        if (!list) {
            XmlNode* sideNode = m_event->Child(side) ? m_event->Child(side) : m_event->NewChild(side, nullptr);
            list = sideNode->Child(moment) ? sideNode->Child(moment) : sideNode->NewChild(moment, nullptr);
        }
        *list->NewChild(L"x", nullptr) = *piece.Root();
    };
    addAction(L"actions", L"activate", "<force><variable>[BOILER.SP]</variable><value>90</value></force>");
    addAction(L"actions", L"activate", "<mail><message>Hot</message><users><user>{U-1}</user></users></mail>");
    addAction(L"actions", L"acknowledge", "<mail><message></message></mail>");
    addAction(L"clientActions", L"deactivate", "<screen><name></name></screen>");
    Open(m_event);
    {
        ScriptedAnswerer answers{ZoAnswer::No};
        ClickOk();
        // Stored notify is "T": the acknowledgement mail comes first, on the Actions tab.
        ASSERT_EQ(answers.Ids(), std::vector<unsigned>{32882});
        std::wstring expected;
        ActionErrorMsg(expected, 0, 3, kZoActionMail, 34174);
        EXPECT_EQ(answers.LastText(), expected);
        EXPECT_EQ(Tabs()->currentIndex(), ZoEDlgEventCfg::TabActions);
        // The force check refuses period filters; the conditions checked after it still
        // take them.
        EXPECT_EQ(Typed("conditionEdit", "conditionLabel", "[BOILER.T1/day] > 5"), WithStatus(32479, 36029));
        SetText("conditionEdit", "[BOILER.T1] > 90");
    }
    {
        ScriptedAnswerer answers{ZoAnswer::Yes, ZoAnswer::No};
        ClickOk();
        ASSERT_EQ(answers.Count(), 2);
        std::wstring expected;
        ActionErrorMsg(expected, 1, 2, kZoActionScreen, 34117);
        EXPECT_EQ(answers.LastText(), expected);
        EXPECT_EQ(Tabs()->currentIndex(), ZoEDlgEventCfg::TabClientActions);
    }
    // Stored as not notified, the acknowledgement list is not looked at.
    m_event->SetValue(L"notify", L"F");
    Open(m_event);
    ScriptedAnswerer answers{ZoAnswer::Yes};
    ClickOk();
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32882});
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
}

// The force check asks the catalog: the variable must exist and be writable, and the value
// must suit it.
TEST_F(EventFormulaTest, ForceActionNeedsAWritableVariableAndASuitableValue)
{
    ZoEvaluator evaluator;
    struct Case {
        char const* variable;
        char const* value;
        unsigned part; // 0: passes; 607 the variable, 608 the value
    };
    Case const cases[] = {
        {"[BOILER.SP]", "90", 0},
        {"[BOILER.SP]", "[BOILER.T1] / 2", 0},
        {"", "1", 607},
        {"[BOILER.SP]", "", 608},
        {"[BOILER.T1]", "5", 607},      // read only
        {"[BOILER.NONE]", "5", 607},
        {"[BOILER.SP] + 1", "5", 607},  // not one variable
        {"[BOILER.SP/day]", "5", 607},  // a period filter
        {"[BOILER.SP]", "500", 608},    // out of range
        {"[BOILER.SP]", "\"hot\"", 608}, // a text into a number
        {"[BOILER.SP]", "1 +", 608},
    };
    for (Case const& c : cases) {
        XmlDocument action;
        action.Create(L"force");
        action.Root()->SetValue(L"variable", ZoFromUtf8(c.variable).c_str());
        action.Root()->SetValue(L"value", ZoFromUtf8(c.value).c_str());
        auto const fault = ZoCheckForceAction(evaluator, *action.Root());
        EXPECT_EQ(fault.has_value(), c.part != 0) << c.variable << " = " << c.value;
        if (fault && c.part) {
            EXPECT_TRUE(fault->detail.starts_with(ZoLoadString(c.part) + L": ")) << c.variable << " = " << c.value;
        }
    }
    // The mail's recipients: an address, a user or a mailing list will do.
    for (auto const& [xml, passes] : {std::pair{"<mail><message>m</message><address>a@b.c</address></mail>", true},
                                      {"<mail><message>m</message><mailLists><l/></mailLists></mail>", true},
                                      {"<mail><message>m</message><users/><mailLists/></mail>", false}}) {
        XmlDocument mail;
        ASSERT_TRUE(mail.Parse(xml));
        EXPECT_EQ(!ZoCheckMailAction(*mail.Root()), passes) << xml;
    }
}

// Each formula's wizard opens on the field's text and selection and, on OK, replaces the
// text, which the label then checks; Cancel changes nothing. The stop condition's wizard
// follows its check box.
TEST_F(EventFormulaTest, WizardsEditTheirFieldAtTheSelection)
{
    Open(m_event);
    Edit("conditionEdit")->setSelection(14, 2); // "90" of "[BOILER.T1] > 90"
    ModalScript modal(ModalScript::As<CDlgWizzard>([](CDlgWizzard& wizard) {
        EXPECT_TRUE(wizard.m_bShowStatus);
        wizard.InsertVariable("BOILER.DI1");
        return ModalScript::ClickOk(wizard);
    }));
    Get<QToolButton>("conditionWizardButton")->click();
    EXPECT_EQ(Edit("conditionEdit")->text(), "[BOILER.T1] > [BOILER.DI1]");
    EXPECT_EQ(Label("conditionLabel"), WithStatus(32479, 36029));

    modal.Then(ModalScript::Reject());
    Get<QToolButton>("delayActivateWizardButton")->click();
    EXPECT_EQ(Edit("delayActivateEdit")->text(), "5");
    EXPECT_EQ(modal.Classes(), (QStringList{"CDlgWizzard", "CDlgWizzard"}));

    EXPECT_TRUE(Get<QToolButton>("stopConditionWizardButton")->isEnabled());
    Check("stopConditionCheck")->setChecked(false);
    EXPECT_FALSE(Get<QToolButton>("stopConditionWizardButton")->isEnabled());
}
