// Faults of formulas: the code the analysis and the evaluation give, the position they
// name and the message, which quotes the token as typed.
#include "FormulaTestCatalog.h"
#include "platform/formula/ZoEvaluator.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Fault {
    wchar_t const* formula;
    int kind;     // what AnalizeExpression gives
    int code;     // what Evaluate gives
    int position; // ErrorPosition() after Evaluate, from 1
    wchar_t const* message;
};

std::string Narrow(std::wstring const& text)
{
    return std::string(text.begin(), text.end());
}

class FormulaErrors : public ::testing::Test {
protected:
    void Check(Fault const& f, bool periods = true)
    {
        SCOPED_TRACE(Narrow(f.formula));
        ZoEvaluator evaluator(f.formula);
        evaluator.SetCatalog(m_catalog.get());
        evaluator.SetFlags(ZoEvaluator::kEditorCheck, ~0u);
        evaluator.EnableDiscriminators(periods);
        EXPECT_EQ(evaluator.AnalizeExpression(), f.kind);
        double value = 0;
        int type = 0;
        EXPECT_EQ(evaluator.Evaluate(value, type), f.code);
        EXPECT_EQ(evaluator.ErrorCode(), f.code);
        EXPECT_EQ(evaluator.ErrorPosition(), f.position);
        EXPECT_EQ(Narrow(evaluator.ErrorMsg(f.code)), Narrow(f.message));
    }
    std::unique_ptr<ZoDeviceCatalog> m_catalog = MakeFormulaTestCatalog();
};

} // namespace

TEST_F(FormulaErrors, SyntaxFaultsStopTheAnalysisAndNameTheToken)
{
    for (Fault const& f : {
             Fault{L"", -1, 40, 0, L"The formula is empty."},
             Fault{L"  \n ", -1, 40, 0, L"The formula is empty."},
             Fault{L"1 +", -1, 40, 4, L"The formula ends where a value is expected, after position 3."},
             Fault{L"(1 + 2", -1, 40, 1, L"The parenthesis opened at position 1 is not closed."},
             Fault{L"max(1, 2", -1, 40, 4, L"The parenthesis opened at position 4 is not closed."},
             Fault{L"1 + * 2", -1, 40, 5, L"A value is expected at position 5, but '*' was found."},
             Fault{L"1< =2", -1, 40, 4, L"A value is expected at position 4, but '=' was found."},
             Fault{L"1 2", -1, 40, 3, L"Unexpected '2' at position 3: an operator or the end of the formula is expected."},
             Fault{L"1 + 2)", -1, 40, 6, L"Unexpected ')' at position 6: an operator or the end of the formula is expected."},
             Fault{L"(1 2)", -1, 40, 4, L"Unexpected '2' at position 4: an operator or a closing parenthesis is expected."},
             Fault{L"max(1 2)", -1, 40, 7, L"A comma or a closing parenthesis is expected at position 7, but '2' was found."},
             Fault{L"\"abc = 1", -1, 40, 1, L"The text that starts at position 1 has no closing quote."},
             Fault{L"[PLC1.LEVEL > 3", -1, 40, 1, L"The variable reference that starts at position 1 has no closing bracket."},
             Fault{L"[PLC1.LEVEL\n] > 3", -1, 40, 1, L"The variable reference that starts at position 1 has no closing bracket."},
             Fault{L"[PLC1LEVEL] > 3", -1, 40, 1, L"[PLC1LEVEL] at position 1 is not a device variable: write [Device.Variable]."},
             Fault{L"[.LEVEL] > 3", -1, 40, 1, L"[.LEVEL] at position 1 is not a device variable: write [Device.Variable]."},
             Fault{L"1.2.3", -1, 40, 1, L"1.2.3 at position 1 is not a valid number."},
             Fault{L"2 * 12abc", -1, 40, 5, L"12abc at position 5 is not a valid number."},
             Fault{L"1e999", -1, 40, 1, L"1e999 at position 1 is not a valid number."},
             Fault{L"1 < 2 < 3", -1, 40, 7, L"The comparison '<' at position 7 follows another one: join comparisons with AND or OR."},
             Fault{L"PLC1.LEVEL > 3", -1, 40, 1, L"Unknown name 'PLC1' at position 1: device variables are written [Device.Variable], functions with parentheses."},
             Fault{L"@1 > 2", -1, 40, 1, L"@1 at position 1 is not a module reference: write @Module or @Module.Function(...)."},
             Fault{L"@Pumps. > 2", -1, 40, 1, L"@Pumps. at position 1 is not a module reference: write @Module or @Module.Function(...)."},
             Fault{L"1 & 2", -1, 40, 3, L"Unexpected character '&' at position 3: write && or AND, || or OR."},
             Fault{L"1 # 2", -1, 40, 3, L"Unexpected character '#' at position 3."},
             Fault{L"1 = 1 =", -1, 40, 7, L"The comparison '=' at position 7 follows another one: join comparisons with AND or OR."},
         })
        Check(f);
}

TEST_F(FormulaErrors, FaultsPastTheSyntaxLetTheAnalysisGiveTheKindAndEvaluationNameThem)
{
    for (Fault const& f : {
             Fault{L"foo(1) > 2", 1, 42, 1, L"Unknown function 'foo' at position 1."},
             Fault{L"foo(1)", -1, 42, 1, L"Unknown function 'foo' at position 1."},
             Fault{L"abs(1, 2)", 0, 43, 1, L"Wrong number of arguments for abs at position 1 (2 given): it takes one argument."},
             Fault{L"round()", 0, 43, 1, L"Wrong number of arguments for round at position 1 (0 given): it takes 1 or 2 arguments."},
             Fault{L"limit(1, 2)", 0, 43, 1, L"Wrong number of arguments for limit at position 1 (2 given): it takes 3 arguments."},
             Fault{L"max() > 1", 1, 43, 1, L"Wrong number of arguments for max at position 1 (0 given): it takes at least one argument."},
             Fault{L"[NOPE.X] > 1", 1, 44, 2, L"Unknown device 'NOPE' at position 2."},
             Fault{L"[NOPE.X]", -1, 44, 2, L"Unknown device 'NOPE' at position 2."},
             Fault{L"1 + [PLC1.NOPE] > 1", 1, 45, 6, L"The device PLC1 has no variable 'NOPE' (position 11)."},
             Fault{L"[plc1.LEVEL] > 1", 1, 44, 2, L"Unknown device 'plc1' at position 2."},
             Fault{L"\"a\" + 1", 0, 46, 5, L"'+' at position 5 needs numbers, not a text."},
             Fault{L"-[PLC1.NAME]", 0, 46, 1, L"'-' at position 1 needs numbers, not a text."},
             Fault{L"abs(\"a\")", 0, 46, 1, L"'abs' at position 1 needs numbers, not a text."},
             Fault{L"[PLC1.LEVEL] AND [PLC1.RUN]", 1, 46, 14,
                   L"'AND' at position 14 needs logical values, not a number: compare the value, as in [Device.Variable] <> 0."},
             Fault{L"NOT \"x\"", 1, 46, 1,
                   L"'NOT' at position 1 needs logical values, not a text: compare the value, as in [Device.Variable] <> 0."},
             Fault{L"if(1, 2, 3)", 0, 46, 1,
                   L"'if' at position 1 needs logical values, not a number: compare the value, as in [Device.Variable] <> 0."},
             Fault{L"\"a\" = 1", 1, 46, 5, L"'=' at position 5 compares a text with a number."},
             Fault{L"if([PLC1.RUN], 1, \"a\") = 1", 1, 46, 1, L"The two values of if at position 1 are of different types: a number and a text."},
             Fault{L"[PLC1.ENERGY/fortnight] > 5", 1, 48, 14,
                   L"'fortnight' at position 14 is not a period: write hour, day, week, month or year, optionally followed by -N."},
             Fault{L"[PLC1.ENERGY/day-0] > 5", 1, 48, 14,
                   L"'day-0' at position 14 is not a period: write hour, day, week, month or year, optionally followed by -N."},
             Fault{L"[PLC1.RUN/day] > 0", 1, 49, 1, L"[PLC1.RUN/day] at position 1 is not numeric and takes no period filter."},
             Fault{L"[NOPE.X] + foo(1) > 1", 1, 44, 2, L"Unknown device 'NOPE' at position 2."},
         })
        Check(f);
}

TEST_F(FormulaErrors, PeriodFiltersAreRefusedWhereDiscriminatorsAreDisabled)
{
    Check(Fault{L"[PLC1.ENERGY/day] > 5", 1, 47, 13, L"A period filter is not allowed here: '/day' at position 13."}, false);
    Check(Fault{L"[PLC1.ENERGY] > 5", 1, 0, 0, L"No error."}, false);
}

TEST_F(FormulaErrors, ConstantFaultsAreFoundByEvaluationOnly)
{
    for (Fault const& f : {
             Fault{L"1 / 0", 0, 52, 3, L"Division by zero at position 3."},
             Fault{L"[PLC1.LEVEL] / (2 - 2)", 0, 52, 14, L"Division by zero at position 14."},
             Fault{L"5 % 0 > 1", 1, 52, 3, L"Division by zero at position 3."},
             Fault{L"sqrt(-4)", 0, 53, 1, L"sqrt at position 1 has no finite result for (-4)."},
             Fault{L"10 ^ 400", 0, 53, 4, L"^ at position 4 has no finite result for (10, 400)."},
             Fault{L"ln(0) + 1", 0, 53, 1, L"ln at position 1 has no finite result for (0)."},
             Fault{L"round(1, 20)", 0, 53, 1, L"round at position 1 has no finite result for (1, 20)."},
             Fault{L"bit(1, 64)", 1, 53, 1, L"bit at position 1 has no finite result for (1, 64)."},
             Fault{L"limit(1, 10, 0)", 0, 53, 1, L"limit at position 1 has no finite result for (1, 10, 0)."},
         })
        Check(f);
    // With a variable the sample value says nothing of the plant: no fault.
    for (Fault const& f : {Fault{L"1 / [PLC1.LEVEL]", 0, 0, 0, L"No error."},
                           Fault{L"sqrt([PLC1.LEVEL] - 50)", 0, 0, 0, L"No error."},
                           Fault{L"bit([PLC1.STATUS], [PLC1.LEVEL] + 70)", 1, 0, 0, L"No error."}})
        Check(f);
}

TEST_F(FormulaErrors, AModuleReferenceCannotBeEvaluatedInTheEditor)
{
    for (Fault const& f : {
             Fault{L"@Pumps.Running > 1", 1, 1, 1,
                   L"The formula refers to the module @Pumps.Running at position 1, which only the running project can evaluate."},
             Fault{L"1 + @Stats.Mean([PLC1.LEVEL], 60)", 0, 1, 5,
                   L"The formula refers to the module @Stats.Mean at position 5, which only the running project can evaluate."},
             Fault{L"@Alarms > 0 AND [NOPE.X] > 1", 1, 44, 18, L"Unknown device 'NOPE' at position 18."},
         })
        Check(f);
}

TEST_F(FormulaErrors, PositionsCountEveryCharacterAndLongTokensAreCut)
{
    Check(Fault{L"1 +\n  $", -1, 40, 7, L"Unexpected character '$' at position 7."});
    std::wstring const name = L"[NOPE" + std::wstring(60, L'X') + L".A] > 1";
    std::wstring const cut = L"Unknown device 'NOPE" + std::wstring(35, L'X') + L"\u2026' at position 2.";
    Check(Fault{name.c_str(), 1, 44, 2, cut.c_str()});
}

TEST_F(FormulaErrors, AnyCodeHasAGeneralMessageWhenItIsNotTheLastFault)
{
    ZoEvaluator evaluator(L"1 + 1");
    EXPECT_EQ(evaluator.AnalizeExpression(), 0);
    EXPECT_EQ(evaluator.ErrorMsg(0), L"No error.");
    EXPECT_EQ(evaluator.ErrorMsg(1), L"The formula refers to a module, which only the running project can evaluate.");
    EXPECT_EQ(evaluator.ErrorMsg(44), L"The formula names an unknown device.");
    EXPECT_EQ(evaluator.ErrorMsg(62), L"The formula is valid, but one of its comparisons deserves a second look.");
    EXPECT_EQ(evaluator.ErrorMsg(99), L"Formula error 99.");
}

TEST_F(FormulaErrors, NestingBeyondTheLimitIsAFaultNotACrash)
{
    auto check = [this](std::wstring const& formula, int code) {
        ZoEvaluator evaluator(formula);
        evaluator.SetCatalog(m_catalog.get());
        double value = 0;
        int type = 0;
        EXPECT_EQ(evaluator.Evaluate(value, type), code) << formula.size();
        return evaluator.ErrorMsg(code);
    };
    std::wstring const deepest = std::wstring(99, L'(') + L"1" + std::wstring(99, L')');
    EXPECT_EQ(check(deepest, 0), L"No error.");
    std::wstring const tooDeep = std::wstring(100, L'(') + L"1" + std::wstring(100, L')');
    EXPECT_EQ(check(tooDeep, 41), L"The formula is nested more than 100 levels deep at position 101.");
    check(std::wstring(60000, L'('), 41);
    check(std::wstring(60000, L'-') + L"1", 41);
    check(std::wstring(50000, L'!') + L"TRUE", 41);
    check(std::wstring(30000, L'N') + L"OT TRUE", 40);
    check(L"2" + std::wstring(60000, L'^'), 40);
    check(std::wstring(30000, L'[') + L"A.B]", 44);
    std::wstring longChain = L"1";
    for (int i = 0; i < 15000; ++i)
        longChain += L" + 1";
    EXPECT_EQ(check(longChain, 0), L"No error.") << "operators in a row need no recursion";
    std::wstring const tooLong(kZoFormulaMaxLength + 1, L'1');
    EXPECT_EQ(check(tooLong, 40), L"The formula is longer than 65536 characters.");
}
