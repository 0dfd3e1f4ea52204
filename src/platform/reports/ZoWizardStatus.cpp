#include "ZoWizardStatus.h"

#include "editor/ZoFormulaStatus.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoTexts.h"

namespace {

constexpr int kNumeric = 0;

// Status texts that say the formula cannot be used as it stands.
bool IsFault(ZoFormulaStatus const& status)
{
    for (unsigned const id : {32446u, 32449u, 32452u, 32485u})
        if (status.text == ZoLoadString(id))
            return true;
    return false;
}

ZoWizardStatus FromEditorStatus(unsigned labelId, ZoFormulaStatus const& status)
{
    ZoWizardStatus out;
    out.line = QString::fromStdWString(ZoLabelWithStatus(ZoLoadString(labelId), status));
    out.detail = QString::fromStdWString(status.detail);
    if (status.marked || status.text == ZoLoadString(37540))
        out.severity = ZoWizardStatus::Severity::Note;
    if (IsFault(status) || (!status.detail.empty() && !status.marked))
        out.severity = ZoWizardStatus::Severity::Error;
    return out;
}

// A force action's variable: one writable device variable, without a period filter.
ZoWizardStatus WriteTargetStatus(ZoEvaluator& evaluator, std::wstring_view formula)
{
    ZoFormulaStatus status;
    status.shown = true;
    if (formula.empty()) {
        status.text = ZoLoadString(32449);
        return FromEditorStatus(62209, status);
    }
    evaluator.Clear();
    evaluator.EnableDiscriminators(false);
    evaluator.SetFlags(ZoEvaluator::kWriteTarget, ~0u);
    evaluator.Set(formula);
    int code = kZoFormulaOk;
    if (evaluator.AnalizeExpression() != kNumeric) {
        code = evaluator.ErrorCode();
        status.text = ZoLoadString(32446);
    } else {
        double value = 0;
        int type = -1;
        code = evaluator.Evaluate(value, type);
        status.text = code == kZoFormulaOk ? ZoLoadString(36029) : evaluator.ErrorMsg(code);
    }
    if (code != kZoFormulaOk)
        status.detail = evaluator.ErrorMsg(code);
    evaluator.EnableDiscriminators(true);
    return FromEditorStatus(62209, status);
}

} // namespace

ZoWizardStatus ZoComputeWizardStatus(ZoEvaluator& evaluator, std::wstring_view formula, ZoWizardStatus::Expect expect)
{
    using Expect = ZoWizardStatus::Expect;
    if (expect == Expect::WriteTarget)
        return WriteTargetStatus(evaluator, formula);
    if (expect == Expect::Any && !formula.empty()) {
        evaluator.Clear();
        evaluator.SetFlags(ZoEvaluator::kEditorCheck, ~0u);
        evaluator.Set(formula);
        expect = evaluator.AnalizeExpression() == kNumeric ? Expect::Numeric : Expect::Logical;
    }
    if (expect == Expect::Numeric) {
        ZoWizardStatus out = FromEditorStatus(62208, ZoNumericFormulaStatus(evaluator, formula));
        if (formula.empty()) // the editor shows an empty delay's label alone; here it is no formula yet
            out.severity = ZoWizardStatus::Severity::Error;
        return out;
    }
    return FromEditorStatus(62207, ZoLogicalFormulaStatus(evaluator, formula));
}
