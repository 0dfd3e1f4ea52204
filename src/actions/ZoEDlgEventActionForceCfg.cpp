#include "actions/ZoEDlgEventActionForceCfg.h"

#include "actions/ZoActionEditorParts.h"
#include "actions/ZoForceActionInput.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/reports/CDlgWizzard.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoWizardButton.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace {

constexpr int kFormulaLength = 512;

} // namespace

ZoEDlgEventActionForceCfg::ZoEDlgEventActionForceCfg(QWidget* parent, XmlNode* action, XmlNode* moment)
    : ZoActionEditorDlg(parent, action, moment)
{
    setObjectName(QStringLiteral("forceActionEditor"));
    m_variableEdit = ZoNewActionEdit(this, "variableEdit", kFormulaLength);
    m_variableLabel = ZoNewBuddyLabel(this, "variableLabel", m_variableEdit);
    m_valueEdit = ZoNewActionEdit(this, "valueEdit", kFormulaLength);
    m_valueLabel = ZoNewBuddyLabel(this, "valueLabel", m_valueEdit);
    connect(m_variableEdit, &QLineEdit::textChanged, this, &ZoEDlgEventActionForceCfg::UpdateValueLabel);
}

void ZoEDlgEventActionForceCfg::OnInitDialog()
{
    setWindowTitle(ZoText(m_action->Value(L"variable", L"").empty() ? 32852 : 32853));
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());

    QDialogButtonBox* buttons = NewButtons();
    ZoMnemonics mnemonics;
    mnemonics.Set(m_variableLabel, ZoText(774));
    SetButtonCaptions(mnemonics);
    m_valueLabelCaption = mnemonics.Apply(ZoText(32110));
    m_chooseButton = ZoNewIconButton(this, "chooseVariableButton", ZoImageIcon(L"SEARCH-16.png"), ZoText(63300),
                                     mnemonics);
    m_wizardButton = ZoNewIconButton(this, "valueWizardButton", ZoImageIcon(L"WIZARD-16.png"), ZoText(60204),
                                     mnemonics);
    // Ctrl+Space in the value opens the wizard, as in every formula field of the editor.
    ZoBindWizardKey(m_valueEdit, m_wizardButton);
    connect(m_chooseButton, &QToolButton::clicked, this, &ZoEDlgEventActionForceCfg::OnChooseVariable);
    connect(m_wizardButton, &QToolButton::clicked, this, &ZoEDlgEventActionForceCfg::OnValueWizard);

    m_variableEdit->setToolTip(ZoText(63304));
    m_variableEdit->setPlaceholderText(QStringLiteral("[Device.Variable]"));
    m_valueEdit->setToolTip(ZoText(63305));
    m_valueEdit->setPlaceholderText(ZoText(63306));
    m_variableEdit->setText(Stored(L"variable"));
    m_valueEdit->setText(Stored(L"value"));
    UpdateValueLabel();

    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(2);
    fields->addWidget(m_variableLabel, 0, 0, 1, 2);
    fields->addWidget(m_variableEdit, 1, 0);
    fields->addWidget(m_chooseButton, 1, 1);
    fields->setRowMinimumHeight(2, 8);
    fields->addWidget(m_valueLabel, 3, 0, 1, 2);
    fields->addWidget(m_valueEdit, 4, 0);
    fields->addWidget(m_wizardButton, 4, 1);
    fields->setColumnStretch(0, 1);
    PlaceFields(fields, buttons);
    ZoFocusField(m_variableEdit);
}

void ZoEDlgEventActionForceCfg::UpdateValueLabel()
{
    if (!m_valueLabel || m_valueLabelCaption.isEmpty())
        return;
    QString const plain = ZoText(32110);
    QString const full = QString::fromStdWString(ZoForceValueLabel(m_variableEdit->text().toStdWString()));
    // The label keeps the mnemonic of its caption; the variable's description follows it.
    m_valueLabel->setText(m_valueLabelCaption + full.mid(plain.size()));
}

void ZoEDlgEventActionForceCfg::OnChooseVariable()
{
    // The chooser opens on the variable typed, when there is one, without its brackets.
    QString current = m_variableEdit->text().trimmed();
    if (current.startsWith(QLatin1Char('[')) && current.endsWith(QLatin1Char(']')))
        current = current.mid(1, current.size() - 2);
    ZoBasicString<wchar_t> name = current.toStdWString();
    if (!ZoSelectDriver::SelectDriverAndVar(this, name, ZoTypeSet().set(), true))
        return;
    m_variableEdit->setText(QStringLiteral("[") + QString::fromStdWString(name) + QStringLiteral("]"));
    m_variableEdit->setFocus(Qt::OtherFocusReason);
}

void ZoEDlgEventActionForceCfg::OnValueWizard()
{
    // Values are numbers, logical values or texts: the wizard offers every kind of variable.
    CDlgWizzard wizard(this, ZoAllTypes(), false, 62);
    ZoRunWizardOnField(wizard, m_valueEdit);
}

bool ZoEDlgEventActionForceCfg::IsValid()
{
    if (m_skipCheck)
        return true;
    ZoEvaluator evaluator;
    auto const fault = ZoCheckForceInput(evaluator, *m_action, m_moment, m_variableEdit->text().toStdWString(),
                                         m_valueEdit->text().toStdWString());
    if (!fault)
        return true;
    ZoShowMessageText(this, fault->textId, fault->text);
    ZoFocusField(fault->field == ZoForceField::Variable ? m_variableEdit : m_valueEdit);
    return false;
}

bool ZoEDlgEventActionForceCfg::HasChanged() const
{
    return m_skipCheck || m_variableEdit->text() != Stored(L"variable")
        || m_valueEdit->text() != Stored(L"value");
}

void ZoEDlgEventActionForceCfg::UpdateCfg()
{
    m_action->SetValue(L"variable", m_variableEdit->text().toStdWString());
    m_action->SetValue(L"value", m_valueEdit->text().toStdWString());
}
