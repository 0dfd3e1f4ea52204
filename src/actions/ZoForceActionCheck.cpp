#include "actions/ZoForceActionCheck.h"

#include "platform/drivers/ZoValueInfo.h"
#include "platform/drivers/ZoVariable.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/formula/ZoVariableName.h"

#include <vector>

namespace {

constexpr int kNumber = 0;
constexpr int kLogical = 1;
constexpr int kText = 2;

// The evaluator readied for one check: nothing of the last formula kept, period filters
// off (a forced variable takes none, and a value is computed now, not over a period).
void Prepare(ZoEvaluator& evaluator, std::wstring_view formula, unsigned flags)
{
    evaluator.Clear();
    evaluator.EnableDiscriminators(false);
    evaluator.SetFlags(flags, ~0u);
    evaluator.Set(formula);
}

ZoForceCheck Fault(ZoForceFault fault, int code = 0)
{
    return ZoForceCheck{fault, code};
}

bool Succeeded(int code)
{
    return code == kZoFormulaOk || code == kZoFormulaMarked;
}

} // namespace

ZoForceCheck ZoCheckForceVariable(ZoEvaluator& evaluator, std::wstring_view variable, ZoDriverVariable& target)
{
    Prepare(evaluator, variable, ZoEvaluator::kWriteTarget | ZoEvaluator::kEditorCheck);
    if (evaluator.AnalizeExpression() < 0 || !evaluator.IsOnlyOneDeviceVariable())
        return Fault(ZoForceFault::NotOneVariable, evaluator.ErrorCode());
    double result = 0;
    int type = -1;
    int const code = evaluator.Evaluate(result, type);
    if (code == kZoFormulaModule && isThereAModuleInExpression(variable))
        return Fault(ZoForceFault::Module, code);
    if (!Succeeded(code))
        return Fault(ZoForceFault::Evaluator, code);

    // The brackets are the first and last character once the blanks around are dropped,
    // which the evaluator allowed.
    std::wstring_view trimmed = variable;
    while (!trimmed.empty() && (trimmed.front() == L' ' || trimmed.front() == L'\t'))
        trimmed.remove_prefix(1);
    while (!trimmed.empty() && (trimmed.back() == L' ' || trimmed.back() == L'\t'))
        trimmed.remove_suffix(1);
    std::wstring_view const inner = trimmed.size() >= 2 ? trimmed.substr(1, trimmed.size() - 2) : std::wstring_view();
    ZoBasicString<wchar_t> device, name, filter;
    if (!SplitFilterDriverVariable(inner, device, name, filter) || !filter.empty())
        return Fault(ZoForceFault::Unknown);
    if (!target.Setup(inner) || !target.Lock(evaluator.Catalog()))
        return Fault(ZoForceFault::Unknown);
    return {};
}

ZoForceCheck ZoCheckForceValue(ZoEvaluator& evaluator, std::wstring_view value, ZoDriverVariable const& target)
{
    Prepare(evaluator, value, ZoEvaluator::kEditorCheck);
    if (evaluator.AnalizeExpression() < 0)
        return Fault(ZoForceFault::Syntax, evaluator.ErrorCode());
    double result = 0;
    int type = -1;
    int const code = evaluator.Evaluate(result, type);
    if (code == kZoFormulaModule)
        return Fault(ZoForceFault::Module, code);
    if (!Succeeded(code))
        return Fault(ZoForceFault::Evaluator, code);

    ZoValueInfo const& info = target.ValueInfo();
    bool const textVariable = target.Info() && target.Info()->kind == kZoText;
    // A value computed from variables is known only when the project runs: the sample
    // values the editor evaluates with say nothing of its range.
    std::vector<ZoBasicString<wchar_t>> variables;
    evaluator.GetDeviceVariables(variables);
    bool const known = variables.empty();
    bool const suits = textVariable ? type == kText
                                    : (type == kNumber || type == kLogical)
            && ((info.flags & kZoValueNoCheck) != 0 || !known || info.Accepts(result));
    return suits ? ZoForceCheck{} : Fault(ZoForceFault::Unsuitable);
}
