#pragma once
#include "platform/tools/ZoBasicString.h"

#include <optional>
#include <string_view>

class ZoEvaluator;

// What an event's formula must be when the event is saved.
enum class ZoFormulaRole {
    Condition,     // logical; a module reference is always reported as such
    StopCondition, // logical
    Argument,      // numeric (an annotation argument's value)
};

// The detail text of a formula's fault for the save questions, or nothing when the formula
// passes. The formula is analysed and evaluated with the editor's flags. A mark (code 62)
// is not a fault.
std::optional<ZoBasicString<wchar_t>> ZoFormulaFault(ZoEvaluator& evaluator, std::wstring_view formula,
                                                     ZoFormulaRole role);
