#pragma once
#include "ZoFormulaCodes.h"
#include "ZoFormulaProgram.h"

#include <string_view>
#include <vector>

// Evaluates an analysed formula whose names all resolved: one pass over its postfix nodes
// with a stack of values, every variable taking its sample value (ZoSampleValue).
//
// A constant operation without a finite result is a fault (division by zero, sqrt(-1),
// 10^400); where a variable or a module is involved the result is NaN or an infinity and
// no fault, since the sample values say nothing of the plant's.
class ZoFormulaRunner {
public:
    struct Result {
        double value = 0;
        ZoFormulaFinding fault; // code 0 when none
        ZoFormulaFinding mark;  // with marks: the first comparison worth a second look (code 62)
    };
    Result Run(ZoFormulaProgram const& program, bool marks);

private:
    void Compare(ZoFormulaProgram const& program, std::uint32_t i, bool marks, Result& result);
    void Arithmetic(ZoFormulaNode const& node, bool constantRight, Result& result);
    void CallFunction(ZoFormulaNode const& node, Result& result);
    void MarkRange(ZoFormulaProgram const& program, std::uint32_t i, Result& result) const;

    // The stack, as numbers and texts side by side (texts are empty for numbers), kept
    // from one run to the next.
    std::vector<double> m_numbers;
    std::vector<std::wstring_view> m_texts;
};
