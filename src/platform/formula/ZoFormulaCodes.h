#pragma once
#include <cstdint>

// The evaluator's result codes (docs/formulas.md lists them with their meaning).
enum ZoFormulaCode : int {
    kZoFormulaOk = 0,
    kZoFormulaModule = 1,        // refers to a module: cannot be evaluated in the editor
    kZoFormulaSyntax = 40,       // the text is not a formula
    kZoFormulaTooDeep = 41,      // nested more than kZoFormulaMaxDepth levels
    kZoFormulaUnknownFunction = 42,
    kZoFormulaArgumentCount = 43,
    kZoFormulaUnknownDevice = 44,
    kZoFormulaUnknownVariable = 45,
    kZoFormulaType = 46,         // an operator or function is given a value of the wrong type
    kZoFormulaNoPeriods = 47,    // a period filter where discriminators are disabled
    kZoFormulaBadPeriod = 48,
    kZoFormulaPeriodNotNumeric = 49,
    kZoFormulaNotOneVariable = 50, // a variable to write is not one device variable alone
    kZoFormulaReadOnly = 51,
    kZoFormulaDivisionByZero = 52,
    kZoFormulaDomain = 53,       // a constant operation without a finite result
    kZoFormulaMarked = 62,       // valid, with a comparison that deserves a second look
};

inline constexpr int kZoFormulaMaxDepth = 100;
inline constexpr std::uint32_t kZoFormulaMaxLength = 65536;

// Ids of the detailed messages (resources/texts); each names its arguments.
enum ZoFormulaText : unsigned {
    kZoTextEmpty = 61100,
    kZoTextTooLong = 61101,
    kZoTextUnexpectedCharacter = 61102,
    kZoTextValueExpected = 61103,
    kZoTextUnexpectedEnd = 61104,
    kZoTextUnclosedParenthesis = 61105,
    kZoTextUnclosedText = 61106,
    kZoTextUnclosedReference = 61107,
    kZoTextMalformedReference = 61108,
    kZoTextMalformedNumber = 61109,
    kZoTextTrailing = 61110,
    kZoTextChainedComparison = 61111,
    kZoTextBareName = 61112,
    kZoTextMalformedModule = 61113,
    kZoTextArgumentSeparator = 61114,
    kZoTextSingleAndOr = 61115,
    kZoTextCloseExpected = 61116,
    kZoTextTooDeep = 61117,
    kZoTextUnknownFunction = 61118,
    kZoTextArgumentCount = 61119,
    kZoTextUnknownDevice = 61120,
    kZoTextUnknownVariable = 61121,
    kZoTextNeedsNumbers = 61122,
    kZoTextNeedsLogical = 61123,
    kZoTextTextWithNumber = 61124,
    kZoTextBranchTypes = 61125,
    kZoTextNoPeriods = 61126,
    kZoTextBadPeriod = 61127,
    kZoTextPeriodNotNumeric = 61128,
    kZoTextNotOneVariable = 61129,
    kZoTextReadOnly = 61135,
    kZoTextDivisionByZero = 61136,
    kZoTextDomain = 61137,
    kZoTextModule = 61138,
    kZoTextExactAnalog = 61139,
    kZoTextAlwaysBetween = 61140,
    kZoTextAlwaysAtLeast = 61141,
    kZoTextAlwaysAtMost = 61142,
};

// One fault (or the mark of code 62) of a formula, with what its message needs: spans of
// the expression (counted from 0) and numbers.
struct ZoFormulaFinding {
    int code = kZoFormulaOk;
    unsigned text = 0;
    std::uint32_t pos = 0; // the token the message names
    std::uint32_t len = 0;
    std::uint32_t pos2 = 0; // a second span (a variable's code, an opening parenthesis)
    std::uint32_t len2 = 0;
    int count = 0;         // arguments given
    unsigned function = 0; // the function, for the argument count
    int types[2] = {0, 0}; // the types named (0 number, 1 logical, 2 text)
    double values[3] = {0, 0, 0};
    int valueCount = 0;
    bool result = false;   // the constant result of a marked comparison

    explicit operator bool() const { return code != kZoFormulaOk; }
};
