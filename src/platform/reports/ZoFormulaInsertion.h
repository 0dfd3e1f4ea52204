#pragma once
#include <QString>

#include <span>

// What the formula wizard inserts, and where: pure text arithmetic on the expression and its
// selection, so that the dialog only applies the result to its editor (keeping undo).
//
// Positions count QString units, as the editors report them.

// One operator or constant of the wizard's buttons.
struct ZoFormulaOperator {
    enum class Kind {
        Binary,   // "+", "AND"...: goes after the selection (which stays its left operand), between blanks
        Prefix,   // "NOT": goes before the selection
        Wrap,     // "(" ")" or quotes: around the selection, the caret inside when it is empty
        Constant, // "TRUE", "FALSE": replaces the selection
    };
    QString text;     // "AND"; for Wrap the opening and closing characters ("()", "\"\"")
    Kind kind;
    unsigned tipId;   // the text that explains it
};

// One function of the formula language with its arguments' placeholders ("round", "x, n").
struct ZoFormulaFunction {
    QString name;
    QString arguments;
    unsigned tipId;
};

// The wizard's operators and functions, in the order shown (docs/formulas.md).
std::span<ZoFormulaOperator const> ZoWizardOperators();
std::span<ZoFormulaFunction const> ZoWizardFunctions();

// A change to make: replace [from, to) by text, then select [selStart, selEnd).
struct ZoFormulaEdit {
    int from = 0;
    int to = 0;
    QString text;
    int selStart = 0;
    int selEnd = 0;

    // The expression after the change (for tests and callers without an editor).
    QString AppliedTo(QString const& expression) const;
};

ZoFormulaEdit ZoInsertOperator(QString const& expression, int selStart, int selEnd, ZoFormulaOperator const& op);
// Without a selection: "name(arguments)" with the arguments selected, ready to be typed over.
// With one: "name(selection, rest)" with the rest of the arguments selected, or the caret
// after the ")" when there is no rest.
ZoFormulaEdit ZoInsertFunction(QString const& expression, int selStart, int selEnd, ZoFormulaFunction const& function);
// "[DEVICE.CODE]" in place of the selection, the caret after it.
ZoFormulaEdit ZoInsertVariable(QString const& expression, int selStart, int selEnd, QString const& reference);
