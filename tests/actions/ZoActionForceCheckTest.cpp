#include "ActionEditorTestSupport.h"
#include "actions/ZoForceActionCheck.h"
#include "editor/ZoActionChecks.h"
#include "platform/drivers/ZoVariable.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoTexts.h"

// The checks the event's validation and the force editor share: both refuse the same
// inputs, each with its own wording.
class ForceCheck : public ActionEditorTest {
protected:
    ZoForceFault ValueFault(wchar_t const* variable, wchar_t const* value)
    {
        ZoDriverVariable target;
        EXPECT_TRUE(ZoCheckForceVariable(m_evaluator, variable, target));
        return ZoCheckForceValue(m_evaluator, value, target).fault;
    }
    ZoEvaluator m_evaluator;
};

TEST_F(ForceCheck, ValueMustSuitTheVariable)
{
    EXPECT_EQ(ValueFault(L" [BOILER.SP] ", L"75"), ZoForceFault::None) << "blanks around the brackets";
    EXPECT_EQ(ValueFault(L"[BOILER.SP]", L"1 +"), ZoForceFault::Syntax);
    EXPECT_EQ(ValueFault(L"[BOILER.SP]", L"@Calc.Level(1)"), ZoForceFault::Module);
    EXPECT_EQ(ValueFault(L"[BOILER.SP]", L"1 / 0"), ZoForceFault::Evaluator);
    EXPECT_EQ(ValueFault(L"[BOILER.SP]", L"151"), ZoForceFault::Unsuitable);
    EXPECT_EQ(ValueFault(L"[BOILER.SP]", L"[BOILER.SP] - 200"), ZoForceFault::None) << "known only when it runs";
    EXPECT_EQ(ValueFault(L"[BOILER.PUMP]", L"2"), ZoForceFault::Unsuitable);
    EXPECT_EQ(ValueFault(L"[BOILER.LABEL]", L"5"), ZoForceFault::Unsuitable);
    EXPECT_EQ(ValueFault(L"[BOILER.LABEL]", L"\"Open\""), ZoForceFault::None);
}

TEST_F(ForceCheck, EventValidationWordsTheSameFaultsItsOwnWay)
{
    Load("<force><id>{F-1}</id><variable>[BOILER.SP]</variable><value>200</value></force>"
         "<force><id>{F-2}</id><variable>BOILER.SP</variable><value>1</value></force>"
         "<force><id>{F-3}</id><variable>[BOILER.SP]</variable><value>100</value></force>");
    auto fault = ZoCheckForceAction(m_evaluator, *Action(L"{F-1}", L"force"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->detail, ZoLoadString(608) + L": " + ZoLoadString(32838));
    fault = ZoCheckForceAction(m_evaluator, *Action(L"{F-2}", L"force"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->detail, ZoLoadString(607) + L": " + ZoLoadString(32452));
    EXPECT_FALSE(ZoCheckForceAction(m_evaluator, *Action(L"{F-3}", L"force")));
}
