// The event editor's live formula status: every edit of a formula re-checks it and shows
// the outcome in the formula's label.
#include "editor/ZoEDlgEventCfg.h"

#include "editor/ZoFormulaStatus.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/reports/CDlgWizzard.h"

#include <QLabel>
#include <QLineEdit>

namespace {

std::wstring FormulaOf(QLineEdit const* edit)
{
    return edit->text().left(512).toStdWString();
}

} // namespace

void ZoEDlgEventCfg::ShowStatus(QLabel* label, ZoFormulaStatus const& status)
{
    std::wstring const caption = label->property("caption").toString().toStdWString();
    label->setText(QString::fromStdWString(ZoLabelWithStatus(caption, status)));
    label->setToolTip(QString::fromStdWString(status.detail));
    m_changed = true;
}

// The condition texts are not compared on OK: editing them marks the event changed.
void ZoEDlgEventCfg::OnEditchangeCondition()
{
    ShowStatus(m_conditionLabel, ZoLogicalFormulaStatus(*m_evaluator, FormulaOf(m_condition)));
}

void ZoEDlgEventCfg::OnEditchangeConditionStop()
{
    ShowStatus(m_stopLabel, ZoLogicalFormulaStatus(*m_evaluator, FormulaOf(m_stopCondition)));
}

void ZoEDlgEventCfg::OnEditchangeActivationFormule()
{
    ShowStatus(m_delayActivateLabel, ZoNumericFormulaStatus(*m_evaluator, FormulaOf(m_delayActivate)));
}

void ZoEDlgEventCfg::OnEditchangeDeactivationFormule()
{
    ShowStatus(m_delayDeactivateLabel, ZoNumericFormulaStatus(*m_evaluator, FormulaOf(m_delayDeactivate)));
}

// The four wizards open the formula wizard on the field's text and selection, offering
// every variable a number or a logical value can be read from; OK replaces the field's
// text (which checks it again through the edit handler).
void ZoEDlgEventCfg::RunFormulaWizard(QLineEdit* field, bool numeric)
{
    CDlgWizzard wizard(this, std::bitset<34>(4), false, 13);
    wizard.SetExpected(numeric ? ZoWizardStatus::Expect::Numeric : ZoWizardStatus::Expect::Logical);
    ZoRunWizardOnField(wizard, field);
}

void ZoEDlgEventCfg::OnWizzard()
{
    RunFormulaWizard(m_condition, false);
}

void ZoEDlgEventCfg::OnStopWizzard()
{
    RunFormulaWizard(m_stopCondition, false);
}

void ZoEDlgEventCfg::OnActivationFormuleWizzard()
{
    RunFormulaWizard(m_delayActivate, true);
}

void ZoEDlgEventCfg::OnDeactivationFormuleWizzard()
{
    RunFormulaWizard(m_delayDeactivate, true);
}
