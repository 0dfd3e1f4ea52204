#include "editor/ZoFormulaStatus.h"

#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoTexts.h"

namespace {

constexpr int kLogical = 1;
constexpr int kNumeric = 0;

ZoFormulaStatus Shown(ZoBasicString<wchar_t> text)
{
    ZoFormulaStatus status;
    status.shown = true;
    status.text = std::move(text);
    return status;
}

ZoFormulaStatus WithDetail(ZoFormulaStatus status, ZoEvaluator const& evaluator, int code)
{
    if (code != 0)
        status.detail = evaluator.ErrorMsg(code);
    return status;
}

} // namespace

void ZoPrepareEditorCheck(ZoEvaluator& evaluator, std::wstring_view formula)
{
    evaluator.Clear();
    evaluator.EnableDiscriminators(true);
    evaluator.SetFlags(ZoEvaluator::kEditorCheck, ~0u);
    evaluator.Set(formula);
}

bool ZoIsLogicalConstant(std::wstring_view formula, double& value)
{
    std::size_t const first = formula.find_first_not_of(L" \t");
    if (first == std::wstring_view::npos)
        return false;
    std::wstring_view const rest = formula.substr(first, formula.find_last_not_of(L" \t") - first + 1);
    if (rest != L"1" && rest != L"0")
        return false;
    value = rest == L"1" ? 1.0 : 0.0;
    return true;
}

ZoFormulaStatus ZoLogicalFormulaStatus(ZoEvaluator& evaluator, std::wstring_view formula)
{
    if (formula.empty())
        return Shown(ZoLoadString(32449));
    if (double constant = 0; ZoIsLogicalConstant(formula, constant))
        return Shown(ZoLoadString(constant == 1.0 ? 32486 : 32487));
    ZoPrepareEditorCheck(evaluator, formula);
    if (evaluator.AnalizeExpression() != kLogical)
        return WithDetail(Shown(ZoLoadString(32446)), evaluator, evaluator.ErrorCode());
    double value = 0;
    int type = -1;
    int const code = evaluator.Evaluate(value, type);
    if (code == kZoFormulaModule) {
        if (isThereAModuleInExpression(evaluator.Expr().c_str()))
            return Shown(ZoLoadString(37540));
        return WithDetail(Shown(evaluator.ErrorMsg(code)), evaluator, code);
    }
    if (code != kZoFormulaOk && code != kZoFormulaMarked)
        return WithDetail(Shown(evaluator.ErrorMsg(code)), evaluator, code);
    ZoFormulaStatus status;
    if (type != kLogical) {
        status = Shown(ZoLoadString(32485));
    } else {
        std::vector<ZoBasicString<wchar_t>> variables;
        evaluator.GetDeviceVariables(variables);
        if (!variables.empty())
            status = Shown(ZoLoadString(36029));
        else if (value == 1.0) // a constant condition: say which way it always goes
            status = Shown(ZoLoadString(32486));
        else if (value == 0.0)
            status = Shown(ZoLoadString(32487));
        else
            status = Shown({});
    }
    status.marked = code == kZoFormulaMarked;
    return status.marked ? WithDetail(std::move(status), evaluator, code) : status;
}

ZoFormulaStatus ZoNumericFormulaStatus(ZoEvaluator& evaluator, std::wstring_view formula)
{
    if (formula.empty())
        return {};
    ZoPrepareEditorCheck(evaluator, formula);
    if (evaluator.AnalizeExpression() != kNumeric)
        return WithDetail(Shown(ZoLoadString(32446)), evaluator, evaluator.ErrorCode());
    double value = 0;
    int type = -1;
    int const code = evaluator.Evaluate(value, type);
    if (code == kZoFormulaModule) {
        return isThereAModuleInExpression(evaluator.Expr().c_str()) ? Shown(ZoLoadString(37540))
                                                                    : Shown(ZoLoadString(32452));
    }
    // Any other outcome shows the label alone; the evaluator's sentence still explains a
    // fault in the tooltip.
    ZoFormulaStatus status;
    if (code != kZoFormulaOk)
        status.detail = evaluator.ErrorMsg(code);
    return status;
}

ZoBasicString<wchar_t> ZoLabelWithStatus(std::wstring_view label, ZoFormulaStatus const& status)
{
    ZoBasicString<wchar_t> text(label);
    if (!status.shown)
        return text;
    text += L" (";
    text += status.text;
    text += L")";
    if (status.marked)
        text += L"*";
    return text;
}
