#pragma once
#include "ZoFormulaProgram.h"

#include <cstdint>
#include <span>
#include <string_view>

// The functions of the formula language (docs/formulas.md): names (ASCII case ignored),
// the number of arguments, the types, and the computation.
enum class ZoFunctionKind : std::uint8_t {
    Numeric, // numbers in, a number out
    Test,    // numbers in, a logical value out
    If,      // if(condition, then, else)
};

struct ZoFunction {
    std::wstring_view name;
    std::uint8_t minArgs;
    std::uint8_t maxArgs; // kZoManyArgs: no limit
    ZoFunctionKind kind;
    bool keepsReal;       // the result is as real as its arguments (abs, min...), not whole
};

inline constexpr std::uint8_t kZoManyArgs = 255;

// The index of the function of that name, or -1.
int ZoFindFunction(std::wstring_view name);
ZoFunction const& ZoFunctionAt(unsigned index);

// The result of function index on its arguments (numbers; logical values are 0 and 1).
// Arguments outside a function's domain give NaN or an infinity, which the caller reports
// when they are constant.
double ZoCallFunction(unsigned index, std::span<double const> args);
