#pragma once
#include "config/XmlDocument.h"
#include "platform/tools/ZoBasicString.h"

#include <optional>
#include <string_view>

class ZoEvaluator;

// What the force action editor checks on OK, in this order, stopping at the first fault:
//  1. the variable is not empty (32840);
//  2. it is one device variable (32842 with 32446), does not refer to a module (32842 with
//     37540) and evaluates (32842 with the evaluator's message);
//  3. without its brackets it has no period filter and its driver knows it (32842 with 32452);
//  4. no other `force` of the moment writes it (32839);
//  5. a variable whose values are not checked (free text) takes any value; otherwise
//  6. the value is not empty (32841);
//  7. it parses (32843 with 32446), does not refer to a module (32843 with 37540) and
//     evaluates (32843 with the evaluator's message; a syntax fault, code 40, with 32446);
//  8. and its result suits the variable (32843 with 32838): a two-state variable takes only
//     its two named values, a ranged one only values in its range.
// The skip-check flag of the editor bypasses all of it; that is the editor's business.

enum class ZoForceField { Variable, Value };

// One refusal: the message (the id it was built from and its final text) and the field
// that gets the focus.
struct ZoForceInputFault {
    unsigned textId = 0;
    ZoBasicString<wchar_t> text;
    ZoForceField field = ZoForceField::Variable;
};

std::optional<ZoForceInputFault> ZoCheckForceInput(ZoEvaluator& evaluator, XmlDocument::XmlNode const& action,
                                                   XmlDocument::XmlNode const* moment, std::wstring_view variable,
                                                   std::wstring_view value);

// The value field's label for the variable typed: text 32110 alone for a variable that
// takes any value (free text), else followed by " (...)": the variable's kind and the values
// it takes ("Value (analog: 0 to 150 °C)", "Value (digital: 0 Off, 1 On)"), or why nothing
// can be said ("Value (unknown variable)").
ZoBasicString<wchar_t> ZoForceValueLabel(std::wstring_view variable);
