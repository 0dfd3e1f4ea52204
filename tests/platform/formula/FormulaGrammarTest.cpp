// The formula language's grammar: literals, operators and their precedence, functions and
// variables, each checked by the kind the analysis gives and the value evaluation gives
// (variables take their sample values: docs/formulas.md).
#include "FormulaTestCatalog.h"
#include "platform/formula/ZoEvaluator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

struct Case {
    wchar_t const* formula;
    int kind; // 0 number, 1 logical, 2 text
    double value;
};

class FormulaGrammar : public ::testing::Test {
protected:
    void Check(Case const& c)
    {
        SCOPED_TRACE(std::string(c.formula, c.formula + std::wcslen(c.formula)));
        ZoEvaluator evaluator(c.formula);
        evaluator.SetCatalog(m_catalog.get());
        EXPECT_EQ(evaluator.AnalizeExpression(), c.kind);
        double value = -999;
        int type = -1;
        int const code = evaluator.Evaluate(value, type);
        EXPECT_EQ(code, 0) << std::string(evaluator.ErrorMsg(code).begin(), evaluator.ErrorMsg(code).end());
        EXPECT_EQ(type, c.kind);
        EXPECT_DOUBLE_EQ(value, c.value);
    }
    std::unique_ptr<ZoDeviceCatalog> m_catalog = MakeFormulaTestCatalog();
};

} // namespace

TEST_F(FormulaGrammar, NumbersInEveryNotation)
{
    for (Case const& c : {Case{L"42", 0, 42}, Case{L"3.25", 0, 3.25}, Case{L".5", 0, 0.5}, Case{L"5.", 0, 5},
                          Case{L"1.5e3", 0, 1500}, Case{L"2E-2", 0, 0.02}, Case{L"1e+2", 0, 100},
                          Case{L"0x1F", 0, 31}, Case{L"0XffFF", 0, 65535}, Case{L"  7\t\n", 0, 7}})
        Check(c);
}

TEST_F(FormulaGrammar, ArithmeticPrecedenceAndGrouping)
{
    for (Case const& c : {Case{L"1 + 2 * 3", 0, 7}, Case{L"(1 + 2) * 3", 0, 9}, Case{L"10 - 4 - 3", 0, 3},
                          Case{L"100 / 10 / 5", 0, 2}, Case{L"7 % 4 + 1", 0, 4}, Case{L"-7 % 4", 0, -3},
                          Case{L"2 ^ 3 ^ 2", 0, 512}, Case{L"-2 ^ 2", 0, -4}, Case{L"2 ^ -1", 0, 0.5},
                          Case{L"2 * -3", 0, -6}, Case{L"--3", 0, 3}, Case{L"+4 - +1", 0, 3},
                          Case{L"((((1))))", 0, 1}, Case{L"1+2*3^2/9-1", 0, 2}})
        Check(c);
}

TEST_F(FormulaGrammar, ComparisonsAcceptBothSpellings)
{
    for (Case const& c : {Case{L"1 = 1", 1, 1}, Case{L"1 == 2", 1, 0}, Case{L"1 <> 2", 1, 1}, Case{L"1 != 1", 1, 0},
                          Case{L"1 < 2", 1, 1}, Case{L"2 <= 2", 1, 1}, Case{L"3 > 4", 1, 0}, Case{L"4 >= 5", 1, 0},
                          Case{L"1 + 1 = 2", 1, 1}, Case{L"(1 < 2) = TRUE", 1, 1}, Case{L"TRUE + TRUE = 2", 1, 1}})
        Check(c);
}

TEST_F(FormulaGrammar, LogicInWordsAndSymbolsWithAndBindingTighterThanOr)
{
    for (Case const& c : {Case{L"TRUE OR FALSE AND FALSE", 1, 1}, Case{L"(TRUE OR FALSE) AND FALSE", 1, 0},
                          Case{L"true && !false", 1, 1}, Case{L"FALSE || NOT TRUE", 1, 0},
                          Case{L"NOT 1 = 2", 1, 1}, Case{L"!(1 < 2) || 3 >= 3", 1, 1},
                          Case{L"NOT TRUE AND FALSE", 1, 0}, Case{L"not false and not false", 1, 1},
                          Case{L"1 < 2 AND 2 < 3 OR 5 < 4", 1, 1}, Case{L"TRUE", 1, 1}, Case{L"False", 1, 0}})
        Check(c);
}

TEST_F(FormulaGrammar, TextsCompareInCharacterOrder)
{
    for (Case const& c : {Case{L"\"abc\" < \"abd\"", 1, 1}, Case{L"\"Run\" = \"Run\"", 1, 1},
                          Case{L"\"run\" == \"Run\"", 1, 0}, Case{L"\"say \"\"hi\"\"\" = \"say \"\"hi\"\"\"", 1, 1},
                          Case{L"\"a\"\"\" <> \"a\"", 1, 1}, Case{L"\"\"", 2, 0}, Case{L"\"text\"", 2, 0},
                          Case{L"[PLC1.NAME] = \"\"", 1, 1}})
        Check(c);
}

TEST_F(FormulaGrammar, FunctionsIgnoreTheCaseOfTheirNames)
{
    for (Case const& c : {Case{L"abs(-3)", 0, 3}, Case{L"ABS(3)", 0, 3}, Case{L"sqrt(16)", 0, 4},
                          Case{L"round(2.5)", 0, 3}, Case{L"round(-2.5)", 0, -3}, Case{L"Round(3.14159, 2)", 0, 3.14},
                          Case{L"floor(-1.5)", 0, -2}, Case{L"ceil(1.2)", 0, 2}, Case{L"min(3, 1, 2)", 0, 1},
                          Case{L"max(3, 1, 2)", 0, 3}, Case{L"max(5)", 0, 5}, Case{L"avg(1, 2, 3, 4)", 0, 2.5},
                          Case{L"limit(150, 0, 100)", 0, 100}, Case{L"limit(-5, 0, 100)", 0, 0},
                          Case{L"if(1 < 2, 10, 20)", 0, 10}, Case{L"if(FALSE, 10, 20)", 0, 20},
                          Case{L"if(TRUE, FALSE, TRUE)", 1, 0}, Case{L"if(TRUE, \"a\", \"b\") = \"a\"", 1, 1},
                          Case{L"bit(5, 2)", 1, 1}, Case{L"bit(5, 1)", 1, 0}, Case{L"bit(-1, 63)", 1, 1},
                          Case{L"bitand(0x1F, 0x0C)", 0, 12}, Case{L"between(5, 1, 10)", 1, 1},
                          Case{L"between(10, 1, 10)", 1, 1}, Case{L"outside(5, 1, 10)", 1, 0},
                          Case{L"outside(0.5, 1, 10)", 1, 1}, Case{L"exp(0)", 0, 1}, Case{L"ln(1)", 0, 0},
                          Case{L"log10(1000)", 0, 3}, Case{L"max(1, min(4, 2 * 3)) + abs(-1)", 0, 5}})
        Check(c);
}

TEST_F(FormulaGrammar, VariablesTakeTheirSampleValuesAndTheTypeOfTheirKind)
{
    for (Case const& c : {Case{L"[PLC1.LEVEL]", 0, 0}, Case{L"[PLC1.CURRENT] * 2", 0, 8},
                          Case{L"[PLC1.RUN]", 1, 0}, Case{L"NOT [PLC1.RUN]", 1, 1}, Case{L"[PLC1.MODE]", 0, 1},
                          Case{L"[PLC1.NAME]", 2, 0}, Case{L"[PLC1.ENERGY/day]", 0, 0},
                          Case{L"[PLC1.ENERGY/Month-12] + 1", 0, 1}, Case{L"[Line 2.A.FLOW] + 1", 0, 1},
                          Case{L"[R$EVE_Pump fault.ST] = 1", 1, 0}, Case{L"[R$EVE_Pump fault.CACT] > 3", 1, 0},
                          Case{L"[PLC1.RUN] + [PLC1.RUN] >= 1", 1, 0}, Case{L"bit([PLC1.STATUS], 3)", 1, 0},
                          Case{L"[PLC1.RUN] == 1 && [PLC1.LEVEL] < 50", 1, 0}})
        Check(c);
}

TEST_F(FormulaGrammar, BlanksAndLineBreaksSeparateTokensAnywhere)
{
    for (Case const& c : {Case{L"1+2", 0, 3}, Case{L" 1 +\n2 ", 0, 3}, Case{L"\u00A01\u00A0>\u00A00", 1, 1},
                          Case{L"max (1,2)", 0, 2}, Case{L"1<=2", 1, 1}})
        Check(c);
}
