#pragma once
#include "ZoFormulaLexer.h"
#include "ZoFormulaProgram.h"

// The binding strength of the formula language's operators, shared by the parser's files.
namespace zo::formula {

// Binary operators from the loosest (1) to the tightest (8); 0: not a binary operator.
// NOT sits between AND and the comparisons (3); unary minus binds less than "^" and more
// than "*" (7).
inline constexpr int kOrPrecedence = 1;
inline constexpr int kAndPrecedence = 2;
inline constexpr int kComparisonPrecedence = 4;
inline constexpr int kPowerPrecedence = 8;

int Precedence(ZoTok kind);
ZoOp BinaryOp(ZoTok kind);

} // namespace zo::formula
