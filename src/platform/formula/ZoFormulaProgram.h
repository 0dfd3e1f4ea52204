#pragma once
#include "ZoPeriod.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class ZoDriver;
struct ZoVariableInfo;

// The value types of formulas; the first three are the evaluator's result types.
enum class ZoFormulaType : std::uint8_t {
    Number = 0,
    Logical = 1,
    Text = 2,
    Unknown = 3, // of a name that did not resolve: matches anything, so that checking goes on
};

enum class ZoOp : std::uint8_t {
    Number, Text, Variable, Module,
    Negate, Plus, Not,
    Add, Subtract, Multiply, Divide, Modulo, Power,
    Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual,
    And, Or,
    Call,
};

// Node flags.
inline constexpr std::uint8_t kZoNodeConstant = 1; // depends on no variable and no module
inline constexpr std::uint8_t kZoNodeReal = 2;     // carries a real measurement (analog, counter)

// One node of an analysed formula. The nodes are kept in postfix order (operands before
// their operator), so that evaluating is one pass over the list with a stack of values.
struct ZoFormulaNode {
    ZoOp op = ZoOp::Number;
    ZoFormulaType type = ZoFormulaType::Number;
    std::uint8_t flags = 0;
    std::uint8_t function = 0; // Call: the function's index
    std::uint32_t argc = 0;    // Call, Module: the number of arguments
    std::uint32_t pos = 0;     // the token in the expression: operator, name, literal
    std::uint32_t len = 0;
    std::uint32_t left = 0;    // binary operators: the left operand's root node
    std::uint32_t ref = 0;     // Variable: index in references; Text: index in texts
    double number = 0;         // Number: its value
};

// A device variable the formula names.
struct ZoFormulaReference {
    std::uint32_t pos = 0; // the whole "[...]"
    std::uint32_t len = 0;
    std::uint32_t devicePos = 0;
    std::uint32_t deviceLen = 0;
    std::uint32_t codePos = 0;
    std::uint32_t codeLen = 0;
    bool hasFilter = false;
    ZoPeriod period;
    ZoDriver const* driver = nullptr;
    ZoVariableInfo const* variable = nullptr; // null when it did not resolve
};

struct ZoFormulaTextLiteral {
    std::uint32_t offset = 0; // in ZoFormulaProgram::texts
    std::uint32_t length = 0;
};

// An analysed formula. Its lists keep their memory from one formula to the next.
struct ZoFormulaProgram {
    std::vector<ZoFormulaNode> nodes;
    std::vector<ZoFormulaReference> references;
    std::vector<ZoFormulaTextLiteral> literals;
    std::wstring texts; // the text literals, unescaped, side by side
    std::vector<std::uint32_t> argumentRoots; // the parser's scratch list
    std::uint32_t modulePos = 0; // the first module reference, when hasModule
    std::uint32_t moduleLen = 0;
    bool hasModule = false;

    void Clear()
    {
        nodes.clear();
        references.clear();
        literals.clear();
        texts.clear();
        argumentRoots.clear();
        hasModule = false;
        modulePos = moduleLen = 0;
    }
    std::wstring_view Literal(std::uint32_t i) const
    {
        return std::wstring_view(texts).substr(literals[i].offset, literals[i].length);
    }
};
