#pragma once
#include "ZoFormulaCodes.h"
#include "platform/tools/ZoBasicString.h"

#include <string_view>

// The sentence for a fault of a formula: names the position (counted from 1) and the
// token as the expression writes them.
ZoBasicString<wchar_t> ZoFormulaMessage(ZoFormulaFinding const& fault, std::wstring_view expression);
// The general sentence for a code, when no detail is known.
ZoBasicString<wchar_t> ZoFormulaCodeMessage(int code);
