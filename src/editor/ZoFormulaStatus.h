#pragma once
#include "platform/tools/ZoBasicString.h"

#include <string_view>

class ZoEvaluator;

// The status a formula's label shows while the user types: the label text, then the
// status in parentheses, then "*" when the evaluator marked the formula (code 62).
struct ZoFormulaStatus {
    bool shown = false;          // false: the label shows its text alone
    ZoBasicString<wchar_t> text; // the status (may be empty: "Condition ()")
    bool marked = false;
    // The evaluator's own sentence (position and token) when the formula has a fault or a
    // mark, for the label's tooltip; empty otherwise.
    ZoBasicString<wchar_t> detail;
};

// Readies the evaluator for the editor's checks on this formula: the editor's flags, period
// filters allowed (a force check that refused them may have used the evaluator before),
// the formula set, nothing of the last one kept.
void ZoPrepareEditorCheck(ZoEvaluator& evaluator, std::wstring_view formula);

// A condition or stop condition: must be a logical formula.
ZoFormulaStatus ZoLogicalFormulaStatus(ZoEvaluator& evaluator, std::wstring_view formula);
// A delay: must be a numeric formula; an empty field shows no status.
ZoFormulaStatus ZoNumericFormulaStatus(ZoEvaluator& evaluator, std::wstring_view formula);

// Whether a logical formula is the number 1 or 0 alone, which the editor takes as TRUE or
// FALSE: value is then 1.0 or 0.0.
bool ZoIsLogicalConstant(std::wstring_view formula, double& value);

// "Label (status)*" as the label shows it.
ZoBasicString<wchar_t> ZoLabelWithStatus(std::wstring_view label, ZoFormulaStatus const& status);
