#pragma once
#include <QString>

#include <string_view>

class ZoEvaluator;

// The formula wizard's status line: the outcome that the event editor's label shows for the
// same formula (ZoLogicalFormulaStatus, ZoNumericFormulaStatus), with the evaluator's own
// sentence (position and token) below it, and how serious it is, for the line's icon.
struct ZoWizardStatus {
    enum class Severity { Ok, Note, Error };
    enum class Expect {
        Any,         // a condition or a delay: logical unless the formula analyses as numeric
        Logical,     // a condition
        Numeric,     // a delay, a value to force
        WriteTarget, // one device variable that can be written (a force action's variable)
    };

    QString line;   // "Logical formula (Correct)", "Numeric formula (Invalid expression)"...
    QString detail; // the evaluator's sentence, empty when it has none
    Severity severity = Severity::Ok;
};

ZoWizardStatus ZoComputeWizardStatus(ZoEvaluator& evaluator, std::wstring_view formula, ZoWizardStatus::Expect expect);
