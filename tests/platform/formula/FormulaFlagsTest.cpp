// What the flags change: a variable to write (flag 1), the editor's marks (flag 2, code
// 62); and what the evaluator tells of an analysed formula: its variables, whether it is
// one variable alone, whether it refers to a module.
#include "FormulaTestCatalog.h"
#include "platform/formula/ZoEvaluator.h"

#include <gtest/gtest.h>

#include <list>
#include <string>

namespace {

struct Outcome {
    wchar_t const* formula;
    int kind;
    int code;
    wchar_t const* message; // of the code, when it is not 0
};

class FormulaFlags : public ::testing::Test {
protected:
    void Check(Outcome const& o, unsigned flags, bool periods = true)
    {
        SCOPED_TRACE(std::string(o.formula, o.formula + std::wcslen(o.formula)));
        ZoEvaluator evaluator;
        evaluator.SetCatalog(m_catalog.get());
        evaluator.EnableDiscriminators(periods);
        evaluator.SetFlags(flags, ~0u);
        evaluator.Set(o.formula);
        EXPECT_EQ(evaluator.AnalizeExpression(), o.kind);
        double value = 0;
        int type = 0;
        EXPECT_EQ(evaluator.Evaluate(value, type), o.code);
        if (o.message) {
            EXPECT_EQ(evaluator.ErrorMsg(o.code), o.message);
        }
    }
    std::unique_ptr<ZoDeviceCatalog> m_catalog = MakeFormulaTestCatalog();
};

constexpr unsigned kForceVariable = ZoEvaluator::kWriteTarget | ZoEvaluator::kEditorCheck; // 3

} // namespace

TEST_F(FormulaFlags, EditorChecksMarkExactComparisonsOfRealValues)
{
    for (Outcome const& o : {
             Outcome{L"[PLC1.LEVEL] = 50", 1, 62,
                     L"'=' at position 14 compares an analog value exactly, which is seldom true: prefer a tolerance, as in abs(a - b) < 0.01."},
             Outcome{L"50 <> [PLC1.LEVEL] * 2", 1, 62, nullptr},
             Outcome{L"[PLC1.ENERGY/day] == 12", 1, 62, nullptr},
             Outcome{L"max([PLC1.LEVEL], 1) = 1", 1, 62, nullptr},
             Outcome{L"[PLC1.LEVEL] > 50", 1, 0, nullptr},
             Outcome{L"round([PLC1.LEVEL]) = 50", 1, 0, nullptr},
             Outcome{L"abs([PLC1.LEVEL] - 50) < 0.5", 1, 0, nullptr},
             Outcome{L"[PLC1.RUN] = 1", 1, 0, nullptr},
             Outcome{L"[PLC1.MODE] = 2", 1, 0, nullptr},
             Outcome{L"[PLC1.UPTIME] = 60", 1, 0, nullptr},
         })
        Check(o, ZoEvaluator::kEditorCheck);
}

TEST_F(FormulaFlags, EditorChecksMarkComparisonsThatTheDeclaredRangeDecides)
{
    for (Outcome const& o : {
             Outcome{L"[PLC1.LEVEL] > 150", 1, 62, L"The comparison at position 14 is always FALSE: [PLC1.LEVEL] lies between 0 and 100."},
             Outcome{L"-5 < [PLC1.LEVEL]", 1, 62, L"The comparison at position 4 is always TRUE: [PLC1.LEVEL] lies between 0 and 100."},
             Outcome{L"[PLC1.ENERGY] >= 0", 1, 62, L"The comparison at position 15 is always TRUE: [PLC1.ENERGY] is at least 0."},
             Outcome{L"[PLC1.RUN] > 1", 1, 62, nullptr},
             Outcome{L"[R$EVE_Pump fault.ST] == 1.5", 1, 62, nullptr},
             Outcome{L"[R$EVE_Pump fault.ST] <> 7", 1, 62, nullptr},
             Outcome{L"[PLC1.LEVEL] >= 0 AND [PLC1.LEVEL] > 100", 1, 62, nullptr},
             Outcome{L"[PLC1.LEVEL] > 99.5", 1, 0, nullptr},
             Outcome{L"[PLC1.LEVEL] >= 100", 1, 0, nullptr},
             Outcome{L"[PLC1.CURRENT] < 4.1", 1, 0, nullptr},
             Outcome{L"[PLC1.STATUS] > 100000", 1, 0, nullptr},
             Outcome{L"[PLC1.LEVEL] > [PLC1.SETPOINT]", 1, 0, nullptr},
         })
        Check(o, ZoEvaluator::kEditorCheck);
}

TEST_F(FormulaFlags, WithoutEditorChecksNothingIsMarked)
{
    for (Outcome const& o : {Outcome{L"[PLC1.LEVEL] = 50", 1, 0, nullptr}, Outcome{L"[PLC1.LEVEL] > 150", 1, 0, nullptr}})
        Check(o, 0);
}

TEST_F(FormulaFlags, AVariableToWriteIsOneWritableVariableAlone)
{
    for (Outcome const& o : {
             Outcome{L"[PLC1.SETPOINT]", 0, 0, nullptr},
             Outcome{L" ( [PLC1.MODE] ) ", 0, 0, nullptr},
             Outcome{L"[PLC1.NAME]", 0, 0, nullptr},
             Outcome{L"[R$EVE_Pump fault.CACT]", 0, 0, nullptr},
             Outcome{L"[PLC1.LEVEL]", 0, 51, L"[PLC1.LEVEL] cannot be written: the catalog declares it read-only."},
             Outcome{L"[PLC1.RUN]", 0, 51, nullptr},
             Outcome{L"[R$EVE_Pump fault.ST]", 0, 51, nullptr},
             Outcome{L"[NOPE.X]", 0, 44, L"Unknown device 'NOPE' at position 2."},
             Outcome{L"[PLC1.SETPOINT] + 1", -1, 50, L"A variable to write must be one device variable alone, written [Device.Variable]."},
             Outcome{L"PLC1.SETPOINT", -1, 40, nullptr},
             Outcome{L"5", -1, 50, nullptr},
             Outcome{L"[PLC1.ENERGY/day]", 0, 50, nullptr},
         })
        Check(o, kForceVariable);
    Check(Outcome{L"[PLC1.SETPOINT/day]", 0, 47, L"A period filter is not allowed here: '/day' at position 15."},
          kForceVariable, false);
}

TEST_F(FormulaFlags, ChangingFlagsOrTheExpressionAnalysesAgain)
{
    ZoEvaluator evaluator(L"[PLC1.SETPOINT] + 1");
    evaluator.SetCatalog(m_catalog.get());
    EXPECT_EQ(evaluator.AnalizeExpression(), 0);
    evaluator.SetFlags(ZoEvaluator::kWriteTarget, ZoEvaluator::kWriteTarget);
    EXPECT_EQ(evaluator.Flags(), 1u);
    EXPECT_EQ(evaluator.AnalizeExpression(), -1);
    evaluator.SetFlags(0, ZoEvaluator::kWriteTarget);
    EXPECT_EQ(evaluator.AnalizeExpression(), 0);
    evaluator.SetFlags(ZoEvaluator::kEditorCheck, ~0u);
    evaluator.Clear();
    EXPECT_EQ(evaluator.Expr(), L"");
    EXPECT_EQ(evaluator.Flags(), 2u) << "Clear keeps the flags";
    EXPECT_EQ(evaluator.AnalizeExpression(), -1);
    evaluator.Set(L"[PLC1.LEVEL] = 1");
    EXPECT_EQ(evaluator.Expr(), L"[PLC1.LEVEL] = 1");
    double value = 0;
    int type = 0;
    EXPECT_EQ(evaluator.Evaluate(value, type), 62);
    EXPECT_EQ(type, 1);
    evaluator.SetUtf8("[Line 2.A.FLOW] > 0 AND \"\xC3\xA9t\xC3\xA9\" <> \"\"");
    EXPECT_EQ(evaluator.Evaluate(value, type), 0);
    EXPECT_EQ(evaluator.Expr(), L"[Line 2.A.FLOW] > 0 AND \"\u00E9t\u00E9\" <> \"\"");
}

TEST_F(FormulaFlags, TheInstalledCatalogServesEvaluatorsWithoutOne)
{
    ZoEvaluator evaluator(L"[PLC1.LEVEL] > 1");
    ZoDeviceCatalog::Install(nullptr);
    double value = 0;
    int type = 0;
    EXPECT_EQ(evaluator.Evaluate(value, type), 44) << "no catalog: every device is unknown";
    ZoDeviceCatalog::Install(MakeFormulaTestCatalog());
    evaluator.Set(L"[PLC1.LEVEL] > 1");
    EXPECT_EQ(evaluator.Evaluate(value, type), 0);
    ZoDeviceCatalog::Install(nullptr);
}

TEST_F(FormulaFlags, DeviceVariablesAreListedOnceInOrderWithoutFilters)
{
    ZoEvaluator evaluator(L"[PLC1.LEVEL] > 1 AND [Line 2.A.FLOW/day] > 0 OR [PLC1.LEVEL] < 0.5 OR [NOPE.X] = 1");
    evaluator.SetCatalog(m_catalog.get());
    EXPECT_EQ(evaluator.AnalizeExpression(), 1);
    std::list<std::wstring> variables{L"before"};
    evaluator.GetDeviceVariables(variables);
    EXPECT_EQ(variables, (std::list<std::wstring>{L"before", L"PLC1.LEVEL", L"Line 2.A.FLOW", L"NOPE.X"}));
    EXPECT_FALSE(evaluator.IsOnlyOneDeviceVariable());

    evaluator.Set(L"1 + 2");
    std::vector<std::wstring> none;
    evaluator.GetDeviceVariables(none);
    EXPECT_TRUE(none.empty()) << "nothing before the analysis";
    evaluator.AnalizeExpression();
    evaluator.GetDeviceVariables(none);
    EXPECT_TRUE(none.empty());

    for (wchar_t const* one : {L"[PLC1.LEVEL]", L"(([PLC1.RUN]))", L"[NOPE.X]"}) {
        evaluator.Set(one);
        evaluator.AnalizeExpression();
        EXPECT_TRUE(evaluator.IsOnlyOneDeviceVariable()) << one;
    }
    for (wchar_t const* notOne : {L"-[PLC1.LEVEL]", L"[PLC1.LEVEL] + 0", L"[PLC1.LEVEL", L"abs([PLC1.LEVEL])"}) {
        evaluator.Set(notOne);
        evaluator.AnalizeExpression();
        EXPECT_FALSE(evaluator.IsOnlyOneDeviceVariable()) << notOne;
    }
}

TEST(FormulaModules, AModuleIsAnAtSignStartingANameOutsideTextsAndReferences)
{
    for (wchar_t const* with : {L"@Pumps > 1", L"1 + @Stats.Mean(1)", L"x @a", L"\"@\" = @M", L"[A.B] + @_m"})
        EXPECT_TRUE(isThereAModuleInExpression(with)) << with;
    for (wchar_t const* without : {L"", L"[PLC1.LEVEL] > 1", L"\"@Pumps\" = \"a\"", L"[R$EVE_@home.ST] = 1",
                                   L"@1", L"@ Pumps", L"a@", L"\"unclosed @M"})
        EXPECT_FALSE(isThereAModuleInExpression(without)) << without;
    EXPECT_FALSE(isThereAModuleInExpression(static_cast<wchar_t const*>(nullptr)));

    ZoEvaluator evaluator(L"@Pumps.Running >= 1");
    EXPECT_EQ(evaluator.AnalizeExpression(), 1);
    EXPECT_TRUE(evaluator.HasModule());
    EXPECT_TRUE(isThereAModuleInExpression(evaluator.Expr().c_str()));
}
