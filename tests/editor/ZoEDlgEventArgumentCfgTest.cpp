// The argument dialog: its live sample value, the format controls, and OK's rules.
#include "EventEditorFixture.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"

#include "editor/ZoEDlgEventArgumentCfg.h"
#include "platform/reports/CDlgWizzard.h"
#include "platform/tools/ZoTexts.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTest>
#include <QToolButton>

namespace {

class ArgumentDialogTest : public EventEditorTest {
protected:
    // Opens the dialog on an argument with these keys.
    ZoEDlgEventArgumentCfg& OpenArgument(std::string const& keys)
    {
        XmlDocument piece;
        EXPECT_TRUE(piece.Parse(("<argument>" + keys + "</argument>").c_str()));
        m_argument.Create(L"argument");
        *m_argument.Root() = *piece.Root();
        m_argumentDialog = std::make_unique<ZoEDlgEventArgumentCfg>(nullptr, m_argument.Root());
        m_argumentDialog->EnsureInitialized();
        return *m_argumentDialog;
    }
    template <class W>
    W* Control(char const* name) const
    {
        W* widget = m_argumentDialog->findChild<W*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QLineEdit* Value() const { return Control<QLineEdit>("valueEdit"); }
    QString Label() const { return Control<QLabel>("valueLabel")->text().remove(QLatin1Char('&')); }
    QComboBox* Combo(char const* name) const { return Control<QComboBox>(name); }
    std::wstring Key(wchar_t const* key) const { return m_argument.Root()->Value(key, L"<none>"); }
    // "Value (status)" as the label shows it.
    static QString WithStatus(QString const& status) { return ZoText(32433) + QStringLiteral(" (") + status + ")"; }
    static QString WithStatus(unsigned id) { return WithStatus(ZoText(id)); }

    XmlDocument m_argument;
    std::unique_ptr<ZoEDlgEventArgumentCfg> m_argumentDialog;
};

} // namespace

TEST_F(ArgumentDialogTest, LoadsTheArgumentAndTitlesByWhetherItHasAValue)
{
    OpenArgument("<id>{A}</id>");
    EXPECT_EQ(m_argumentDialog->windowTitle(), ZoText(32809));
    EXPECT_EQ(Combo("integerDigitsCombo")->currentText(), ZoText(753)); // the defaults
    EXPECT_EQ(Combo("decimalsCombo")->currentText(), QStringLiteral("3"));
    EXPECT_FALSE(Control<QCheckBox>("padIntegerCheck")->isEnabled()); // no padding of an automatic count
    EXPECT_TRUE(Control<QCheckBox>("padDecimalsCheck")->isEnabled());
    EXPECT_EQ(Label(), WithStatus(32449));
    // The lists offer Automatic and the counts one character can hold.
    EXPECT_EQ(Combo("integerDigitsCombo")->count(), 10);
    EXPECT_EQ(Combo("decimalsCombo")->count(), 11);
    EXPECT_EQ(Combo("integerDigitsCombo")->itemText(9), QStringLiteral("9"));
    EXPECT_EQ(m_argumentDialog->focusWidget(), Value());

    OpenArgument("<value>[BOILER.T1]</value><format>05.02</format><thousandSeparator>T</thousandSeparator>");
    EXPECT_EQ(m_argumentDialog->windowTitle(), ZoText(32810));
    EXPECT_EQ(Value()->text(), QStringLiteral("[BOILER.T1]"));
    EXPECT_EQ(Combo("integerDigitsCombo")->currentText(), QStringLiteral("5"));
    EXPECT_EQ(Combo("decimalsCombo")->currentText(), QStringLiteral("2"));
    EXPECT_TRUE(Control<QCheckBox>("padIntegerCheck")->isChecked());
    EXPECT_TRUE(Control<QCheckBox>("padDecimalsCheck")->isChecked());
    EXPECT_TRUE(Control<QCheckBox>("thousandsCheck")->isChecked());

    // A format this program does not write reads as the defaults.
    OpenArgument("<value>1</value><format>%5.2f</format>");
    EXPECT_EQ(Combo("integerDigitsCombo")->currentText(), ZoText(753));
    EXPECT_EQ(Combo("decimalsCombo")->currentText(), QStringLiteral("3"));
}

TEST_F(ArgumentDialogTest, LabelShowsTheSampleValueInTheChosenFormatOrWhyThereIsNone)
{
    OpenArgument("");
    Value()->setText(QStringLiteral("1234.5678"));
    EXPECT_EQ(Label(), WithStatus(QStringLiteral("1234.568")));
    Control<QCheckBox>("thousandsCheck")->setChecked(true);
    Combo("decimalsCombo")->setCurrentIndex(Combo("decimalsCombo")->findData(1));
    EXPECT_EQ(Label(), WithStatus(QStringLiteral("1,234.6")));
    Combo("integerDigitsCombo")->setCurrentIndex(Combo("integerDigitsCombo")->findData(6));
    Control<QCheckBox>("padIntegerCheck")->setChecked(true);
    Control<QCheckBox>("padDecimalsCheck")->setChecked(true);
    EXPECT_EQ(Label(), WithStatus(QStringLiteral("001,234.6")));
    Value()->setText(QStringLiteral("2"));
    EXPECT_EQ(Label(), WithStatus(QStringLiteral("000,002.0")));

    Value()->clear();
    EXPECT_EQ(Label(), WithStatus(32449));
    Value()->setText(QStringLiteral("[BOILER.T1] >"));
    EXPECT_EQ(Label(), WithStatus(32446));
    Value()->setText(QStringLiteral("[BOILER.T1] > 5")); // a condition is no value
    EXPECT_EQ(Label(), WithStatus(32446));
    Value()->setText(QStringLiteral("@Pumps.Count"));
    EXPECT_EQ(Label(), WithStatus(37540));
    // A variable takes its sample value: some number in the format.
    Value()->setText(QStringLiteral("[BOILER.T1] * 0"));
    EXPECT_EQ(Label(), WithStatus(QStringLiteral("000,000.0")));
}

TEST_F(ArgumentDialogTest, OkRefusesAnEmptyValueAndAsksAboutAFaultyOne)
{
    OpenArgument("<id>{A}</id>");
    {
        ScriptedAnswerer answers;
        Control<QPushButton>("okButton")->click();
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32812});
        EXPECT_EQ(m_argumentDialog->result(), QDialog::Rejected);
        EXPECT_EQ(Key(L"value"), L"<none>");
    }
    Value()->setText(QStringLiteral("[BOILER.NOPE] + 1"));
    {
        // No: the dialog stays open with the value selected for correction.
        ScriptedAnswerer answers{ZoAnswer::No};
        Control<QPushButton>("cancelButton")->setFocus();
        Control<QPushButton>("okButton")->click();
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32811});
        EXPECT_EQ(answers.Last().buttons, ZoMsgButtons::YesNo);
        EXPECT_NE(answers.LastText().find(L"NOPE"), std::wstring::npos) << "the detail names the fault";
        EXPECT_EQ(m_argumentDialog->result(), QDialog::Rejected);
        EXPECT_EQ(m_argumentDialog->focusWidget(), Value());
        EXPECT_EQ(Value()->selectedText(), Value()->text());
        EXPECT_EQ(Key(L"value"), L"<none>");
    }
    ScriptedAnswerer answers{ZoAnswer::Yes};
    Control<QPushButton>("okButton")->click();
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32811});
    EXPECT_EQ(m_argumentDialog->result(), QDialog::Accepted);
    EXPECT_EQ(Key(L"value"), L"[BOILER.NOPE] + 1");
    // The defaults are written as ".3", grouping off.
    EXPECT_EQ(Key(L"format"), L".3");
    EXPECT_EQ(Key(L"thousandSeparator"), L"F");
    EXPECT_EQ(Key(L"id"), L"{A}");
}

TEST_F(ArgumentDialogTest, OkWritesTheFormatAndAValueOfAtMost1023Characters)
{
    OpenArgument("<value>old</value>");
    QString const longValue = QStringLiteral("1") + QString(1100, QLatin1Char('0'));
    Value()->setMaxLength(2000); // as if pasted past the field's limit
    Value()->setText(longValue);
    Combo("integerDigitsCombo")->setCurrentIndex(Combo("integerDigitsCombo")->findData(4));
    Combo("decimalsCombo")->setCurrentIndex(Combo("decimalsCombo")->findData(0));
    Control<QCheckBox>("padDecimalsCheck")->setChecked(true);
    Control<QCheckBox>("thousandsCheck")->setChecked(true);
    ScriptedAnswerer answers; // a number this long is still a number
    Control<QPushButton>("okButton")->click();
    EXPECT_EQ(m_argumentDialog->result(), QDialog::Accepted);
    EXPECT_EQ(Key(L"value"), longValue.left(1023).toStdWString());
    EXPECT_EQ(Key(L"format"), L"4.00");
    EXPECT_EQ(Key(L"thousandSeparator"), L"T");
}

TEST_F(ArgumentDialogTest, FormulaWizardComposesTheValue)
{
    OpenArgument("<value>[BOILER.T1]</value>");
    EXPECT_FALSE(Value()->toolTip().isEmpty());
    ModalScript modal(ModalScript::As<CDlgWizzard>([](CDlgWizzard& wizard) {
        wizard.findChild<QPlainTextEdit*>(QStringLiteral("expressionEdit"))->setPlainText(QStringLiteral("[BOILER.SP] / 2"));
        return ModalScript::ClickOk(wizard);
    }));
    Control<QToolButton>("valueWizardButton")->click();
    EXPECT_EQ(Value()->text(), QStringLiteral("[BOILER.SP] / 2"));
    modal.Then(ModalScript::Reject());
    auto* shortcut = Value()->findChild<QShortcut*>();
    ASSERT_NE(shortcut, nullptr);
    EXPECT_EQ(shortcut->key(), QKeySequence(Qt::CTRL | Qt::Key_Space));
    emit shortcut->activated();
    EXPECT_EQ(modal.Classes(), (QStringList{"CDlgWizzard", "CDlgWizzard"}));
    EXPECT_EQ(Value()->text(), QStringLiteral("[BOILER.SP] / 2"));
}
