#include "ActionEditorTestSupport.h"
#include "actions/ZoEDlgEventActionForceCfg.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "platform/drivers/ZoDeviceTreePanel.h"
#include "platform/reports/CDlgWizzard.h"
#include "support/ModalScript.h"
#include "support/TableText.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace {

class ForceEditor : public ActionEditorTest {
protected:
    // Opens the editor on the activation moment's action with that id.
    ZoEDlgEventActionForceCfg& Open(wchar_t const* id, bool skipCheck = false, bool keep = false)
    {
        return OpenEditor(m_dialog, id, L"force", skipCheck, keep);
    }
    QLineEdit* Variable() const { return m_dialog->findChild<QLineEdit*>("variableEdit"); }
    QLineEdit* Value() const { return m_dialog->findChild<QLineEdit*>("valueEdit"); }
    // The value label as shown, without its mnemonic.
    QString ValueLabel() const { return m_dialog->findChild<QLabel*>("valueLabel")->text().remove(QLatin1Char('&')); }
    QPushButton* Ok() const { return m_dialog->findChild<QPushButton*>("okButton"); }
    int Enter(QString const& variable, QString const& value)
    {
        Variable()->setText(variable);
        Value()->setText(value);
        return ModalScript::ClickOk(*m_dialog);
    }

    std::unique_ptr<ZoEDlgEventActionForceCfg> m_dialog;
};

constexpr char kNewForce[] = "<force><id>{F-NEW}</id></force>";
constexpr char kSetPointForce[] = "<force><id>{F-1}</id><variable>[BOILER.SP]</variable><value>50</value></force>";

// One refusal: what is typed, the message's id and the detail filled into it, and the field
// that gets the focus.
constexpr unsigned kNoDetail = 0;
constexpr unsigned kEvaluatorsSentence = ~0u; // the evaluator's own words, not a fixed text
struct Refusal {
    char const* variable;
    char const* value;
    unsigned textId;
    unsigned detailId;
    char const* field;
};

} // namespace

// Given a new force action, when the input is refused at each step in turn, then each
// step shows its own message and puts the focus on the faulty field with its text selected.
TEST_F(ForceEditor, RefusesEachFaultInOrderWithItsMessageAndFocus)
{
    Refusal const refusals[] = {
        {"", "", 32840, kNoDetail, "variableEdit"},
        {"", "50", 32840, kNoDetail, "variableEdit"},
        {"BOILER.SP", "", 32842, 32446, "variableEdit"},
        {"[BOILER.SP] + 1", "", 32842, 32446, "variableEdit"},
        {"[BOILER.T1]", "50", 32842, kEvaluatorsSentence, "variableEdit"},    // read-only
        {"[BOILER.NOPE]", "50", 32842, kEvaluatorsSentence, "variableEdit"},  // unknown variable
        {"[BOILER.SP/day]", "50", 32842, kEvaluatorsSentence, "variableEdit"}, // period filter
        {"[BOILER.PUMP]", "", 32839, kNoDetail, "variableEdit"},
        {"[BOILER.SP]", "", 32841, kNoDetail, "valueEdit"},
        {"[BOILER.SP]", "1 +", 32843, 32446, "valueEdit"},
        {"[BOILER.SP]", "@Calc.Level(1)", 32843, 37540, "valueEdit"},
        {"[BOILER.SP]", "1 / 0", 32843, kEvaluatorsSentence, "valueEdit"},
        {"[BOILER.SP]", "200", 32843, 32838, "valueEdit"},
        {"[BOILER.SP]", "\"high\"", 32843, 32838, "valueEdit"},
        {"[BOILER.COUNT]", "2.5", 32843, 32838, "valueEdit"},
    };
    Load(std::string(kNewForce) + "<force><id>{F-2}</id><variable>[BOILER.PUMP]</variable><value>1</value></force>");
    Open(L"{F-NEW}");
    std::string const before = Xml(m_doc.Root());
    for (Refusal const& refusal : refusals) {
        SCOPED_TRACE(std::string(refusal.variable) + " = " + refusal.value);
        int const count = m_answers.Count();
        EXPECT_EQ(Enter(QString::fromUtf8(refusal.variable), QString::fromUtf8(refusal.value)), QDialog::Rejected);
        ASSERT_EQ(m_answers.Count(), count + 1);
        EXPECT_EQ(m_answers.Last().textId, refusal.textId);
        QString const shown = QString::fromStdWString(m_answers.LastText());
        if (refusal.detailId == kNoDetail) {
            EXPECT_EQ(shown, Said(refusal.textId));
        } else if (refusal.detailId != kEvaluatorsSentence) {
            EXPECT_EQ(shown, Said(refusal.textId, ZoLoadString(refusal.detailId).c_str()));
        } else {
            QString const lead = Said(refusal.textId, L"");
            EXPECT_TRUE(shown.startsWith(lead)) << shown.toStdString();
            EXPECT_GT(shown.size(), lead.size() + 10) << "the evaluator's sentence follows";
            EXPECT_FALSE(shown.endsWith(ZoText(32446))) << shown.toStdString();
        }
        EXPECT_EQ(Focused(*m_dialog), refusal.field);
        auto* field = m_dialog->findChild<QLineEdit*>(refusal.field);
        EXPECT_EQ(field->selectedText(), field->text());
    }
    EXPECT_EQ(Xml(m_doc.Root()), before) << "nothing is written before every check passed";
}

TEST_F(ForceEditor, AcceptsValuesTheVariableTakes)
{
    struct Case {
        char const* variable;
        char const* value;
    } const cases[] = {
        {"[BOILER.SP]", "150"},
        {"[BOILER.SP]", "[BOILER.T1] / 2"},
        {"[BOILER.PUMP]", "1"},
        {"[BOILER.PUMP]", "[BOILER.T1] > 90"},
        // Three named values name the usual modes of an integer, not all of them: only a
        // two-state variable is held to its named values.
        {"[BOILER.MODE]", "7"},
        // A free text variable takes any value, even none.
        {"[BOILER.LABEL]", ""},
        {"[BOILER.LABEL]", "\"Filling\""},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(std::string(c.variable) + " = " + c.value);
        Load(kNewForce);
        Open(L"{F-NEW}");
        EXPECT_EQ(Enter(QString::fromUtf8(c.variable), QString::fromUtf8(c.value)), QDialog::Accepted);
        EXPECT_EQ(m_answers.Count(), 0) << QString::fromStdWString(m_answers.LastText()).toStdString();
        XmlDocument::XmlNode const* action = Action(L"{F-NEW}", L"force");
        EXPECT_EQ(action->Value(L"variable", L"?"), QString::fromUtf8(c.variable).toStdWString());
        EXPECT_EQ(action->Value(L"value", L"?"), QString::fromUtf8(c.value).toStdWString());
    }
}

TEST_F(ForceEditor, AVariableIsForcedOncePerMomentButMayBeForcedInAnotherMoment)
{
    // Given the set point forced at deactivation and the pump at activation,
    Load(std::string(kNewForce) + "<force><id>{F-2}</id><variable>[BOILER.PUMP]</variable><value>1</value></force>",
         "<force><id>{F-3}</id><variable>[BOILER.SP]</variable><value>20</value></force>");
    Open(L"{F-NEW}");
    // the pump is refused a second time in the same moment,
    EXPECT_EQ(Enter("[BOILER.PUMP]", "0"), QDialog::Rejected);
    EXPECT_EQ(m_answers.Ids(), std::vector<unsigned>{32839});
    // while the set point, forced in another moment only, is accepted.
    EXPECT_EQ(Enter("[BOILER.SP]", "80"), QDialog::Accepted);
    EXPECT_EQ(m_answers.Count(), 1);
}

TEST_F(ForceEditor, EditingAnActionDoesNotCountItAsItsOwnDuplicate)
{
    Load(kSetPointForce);
    Open(L"{F-1}");
    EXPECT_EQ(Enter("[BOILER.SP]", "60"), QDialog::Accepted);
    EXPECT_EQ(Xml(Action(L"{F-1}", L"force")),
              "<force><id>{F-1}</id><variable>[BOILER.SP]</variable><value>60</value></force>");
}

TEST_F(ForceEditor, UnchangedEndsWithCancelUnlessKept)
{
    Load(kSetPointForce);
    std::string const before = Xml(m_doc.Root());
    Open(L"{F-1}");
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Rejected);
    EXPECT_EQ(m_answers.Count(), 0) << "the checks pass; nothing changed";

    Open(L"{F-1}", false, true);
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(Xml(m_doc.Root()), before);
}

TEST_F(ForceEditor, SkipCheckAcceptsAnythingAndAlwaysWrites)
{
    Load(kNewForce);
    Open(L"{F-NEW}", true);
    EXPECT_EQ(Ok()->text().remove('&'), ZoText(34893));
    EXPECT_EQ(ModalScript::ClickOk(*m_dialog), QDialog::Accepted);
    EXPECT_EQ(m_answers.Count(), 0);
    EXPECT_EQ(Xml(Activate()), "<activate><force><id>{F-NEW}</id><variable/><value/></force></activate>");
}

TEST_F(ForceEditor, TitleSaysNewOrModify)
{
    Load(std::string(kNewForce) + kSetPointForce);
    EXPECT_EQ(Open(L"{F-NEW}").windowTitle(), ZoText(32852));
    EXPECT_EQ(Open(L"{F-1}").windowTitle(), ZoText(32853));
    EXPECT_EQ(Variable()->text(), "[BOILER.SP]");
    EXPECT_EQ(Value()->text(), "50");
    EXPECT_EQ(Focused(*m_dialog), "variableEdit");
}

TEST_F(ForceEditor, ValueLabelDescribesTheVariableAsItIsTyped)
{
    Load(kNewForce);
    Open(L"{F-NEW}");
    // "Value (what the variable takes)", the kind first, then its range or named values.
    auto const value = [](QString const& about) { return ZoText(32110) + " (" + about + ")"; };
    auto const kind = [](unsigned id, QString const& values) {
        return Said(63303, ZoLoadString(id).c_str(), values.toStdWString().c_str());
    };
    EXPECT_EQ(ValueLabel(), value(ZoText(63301)));
    Variable()->setText("[BOILER.SP]");
    EXPECT_EQ(ValueLabel(), value(kind(62006, Said(61230, L"0", L"150") + " °C")));
    Variable()->setText("[BOILER.PUMP]");
    EXPECT_TRUE(ValueLabel().startsWith(value(kind(62004, "0 ")).chopped(1))) << ValueLabel().toStdString();
    Variable()->setText("[BOILER.MODE]");
    EXPECT_EQ(ValueLabel(), value(kind(62005, "0 Off, 1 Auto, 2 Manual")));
    Variable()->setText("[BOILER.NOPE]");
    EXPECT_EQ(ValueLabel(), value(ZoText(63302)));
    // A free text takes any value: nothing to add.
    Variable()->setText("[BOILER.LABEL]");
    EXPECT_EQ(ValueLabel(), ZoText(32110));
}

TEST_F(ForceEditor, ChooserFillsTheVariableInBrackets)
{
    Load(kSetPointForce);
    Open(L"{F-1}");
    ModalScript modal(ModalScript::As<ZoSelectDriver>([](ZoSelectDriver& chooser) {
        EXPECT_EQ(chooser.Panel()->ChosenReference(), "BOILER.SP") << "opens on the variable typed";
        EXPECT_TRUE(chooser.Panel()->Select("BOILER.PUMP"));
        return ModalScript::ClickOk(chooser);
    }));
    modal.Then(ModalScript::Reject());
    auto* choose = m_dialog->findChild<QToolButton*>("chooseVariableButton");
    EXPECT_TRUE(choose->text().isEmpty()) << "icon only";
    EXPECT_FALSE(choose->toolTip().isEmpty());
    EXPECT_FALSE(choose->shortcut().isEmpty()) << "reachable from the keyboard";
    choose->click();
    EXPECT_EQ(Variable()->text(), "[BOILER.PUMP]");
    // A cancelled chooser leaves the variable alone.
    choose->click();
    EXPECT_EQ(Variable()->text(), "[BOILER.PUMP]");
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoSelectDriver", "ZoSelectDriver"}));
}

TEST_F(ForceEditor, FormulaWizardStartsFromTheValueAndReplacesIt)
{
    Load(kSetPointForce);
    Open(L"{F-1}");
    ModalScript modal(ModalScript::As<CDlgWizzard>([](CDlgWizzard& wizard) {
        auto* expression = wizard.findChild<QPlainTextEdit*>("expressionEdit");
        EXPECT_EQ(expression->toPlainText(), "50");
        expression->setPlainText("[BOILER.T1] - 5");
        return ModalScript::ClickOk(wizard);
    }));
    auto* wizard = m_dialog->findChild<QToolButton*>("valueWizardButton");
    EXPECT_TRUE(wizard->toolTip().contains(ZoText(60204))) << "names the wizard and its key";
    wizard->click();
    EXPECT_EQ(Value()->text(), "[BOILER.T1] - 5");
    EXPECT_EQ(modal.Classes(), QStringList{"CDlgWizzard"});
}

TEST_F(ForceEditor, EnterIsOkAndEscapeIsCancel)
{
    Load(kSetPointForce);
    Open(L"{F-1}").show(); // the default button answers Enter only while it is shown
    Value()->setText("70");
    m_dialog->setResult(-1);
    QTest::keyClick(Value(), Qt::Key_Return);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Action(L"{F-1}", L"force")->Value(L"value", L""), L"70");

    Open(L"{F-1}");
    Value()->setText("80");
    m_dialog->setResult(-1);
    QTest::keyClick(Value(), Qt::Key_Escape);
    EXPECT_EQ(m_dialog->result(), QDialog::Rejected);
    EXPECT_EQ(Action(L"{F-1}", L"force")->Value(L"value", L""), L"70");
}
