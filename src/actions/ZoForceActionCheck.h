#pragma once
#include <string_view>

class ZoDriverVariable;
class ZoEvaluator;

// The checks of a force action's variable and value. The event's validation and the
// force action editor both run them and word the faults each in its own way, so the two
// never disagree on what a valid force action is.
enum class ZoForceFault {
    None,
    NotOneVariable, // variable: not a formula, or not exactly one device variable
    Module,         // the formula refers to a module
    Evaluator,      // the evaluator's fault `code` (ZoEvaluator::ErrorMsg words it)
    Unknown,        // variable: has a period filter, or no driver knows it
    Syntax,         // value: not a formula (`code` is the evaluator's)
    Unsuitable,     // value: not one the variable takes (type, range, named values)
};

struct ZoForceCheck {
    ZoForceFault fault = ZoForceFault::None;
    int code = 0;
    explicit operator bool() const { return fault == ZoForceFault::None; }
};

// The variable as stored, "[DEVICE.CODE]": one device variable alone (the evaluator with
// period filters off and flags 1 | 2), without a filter once the brackets are stripped, and
// known to its driver. On success target is set up and locked on it.
ZoForceCheck ZoCheckForceVariable(ZoEvaluator& evaluator, std::wstring_view variable, ZoDriverVariable& target);

// The value formula (not empty) for a locked target: it parses and evaluates (period
// filters off, flag 2), and its result suits the variable: a text for a text variable, a
// number or logical value otherwise, within what ValueInfo accepts unless it checks
// nothing (flag 1) or the value reads variables (known only when the project runs).
ZoForceCheck ZoCheckForceValue(ZoEvaluator& evaluator, std::wstring_view value, ZoDriverVariable const& target);
