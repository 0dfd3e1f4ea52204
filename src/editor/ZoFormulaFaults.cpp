#include "editor/ZoFormulaFaults.h"

#include "editor/ZoFormulaStatus.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoTexts.h"

std::optional<ZoBasicString<wchar_t>> ZoFormulaFault(ZoEvaluator& evaluator, std::wstring_view formula,
                                                     ZoFormulaRole role)
{
    bool const logical = role != ZoFormulaRole::Argument;
    int const kind = logical ? 1 : 0;
    if (double constant = 0; logical && ZoIsLogicalConstant(formula, constant))
        return std::nullopt;
    ZoPrepareEditorCheck(evaluator, formula);
    if (evaluator.AnalizeExpression() != kind)
        return ZoLoadString(32446);
    double value = 0;
    int type = -1;
    int const code = evaluator.Evaluate(value, type);
    if (code == kZoFormulaOk || code == kZoFormulaMarked) {
        if (type == kind)
            return std::nullopt;
        return ZoLoadString(logical ? 32485 : 32878);
    }
    if (code == kZoFormulaModule) {
        // The condition's wording holds for any code 1; the others name a module only when
        // the formula really refers to one.
        if (role == ZoFormulaRole::Condition || isThereAModuleInExpression(evaluator.Expr().c_str()))
            return ZoLoadString(37540);
    }
    return evaluator.ErrorMsg(code);
}
