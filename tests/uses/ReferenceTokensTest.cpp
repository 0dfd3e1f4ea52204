// Which texts of a formula are references to what, and how a rename rewrites them: the
// formula language's own reading, case by case.
#include "uses/ZoFormulaReferences.h"

#include <QString>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct UseCase {
    std::wstring formula;
    std::wstring device;
    std::wstring code; // empty: any variable of the device
    std::vector<int> columns;
};

std::vector<int> Columns(UseCase const& use)
{
    std::vector<int> columns;
    ZoForEachReference(use.formula, [&](ZoFormulaReference const& reference) {
        if (reference.device == use.device && (use.code.empty() || reference.code == use.code))
            columns.push_back(static_cast<int>(reference.pos) + 1);
    });
    return columns;
}

TEST(ReferenceTokens, AUseIsAWholeReferenceOutsideTexts)
{
    UseCase const cases[] = {
        {L"[PUMP1.RUNNING] = 1", L"PUMP1", L"RUNNING", {1}},
        {L"[PUMP1.RUN] = 1", L"PUMP1", L"RUNNING", {}},                 // a prefix of the code
        {L"[PUMP1.RUNNING_2] = 1", L"PUMP1", L"RUNNING", {}},           // the code continues
        {L"[PUMP10.RUNNING] = 1", L"PUMP1", L"", {}},                   // the device continues
        {L"[XPUMP1.RUNNING] = 1", L"PUMP1", L"", {}},
        {L"[pump1.RUNNING] = 1", L"PUMP1", L"RUNNING", {}},             // names keep their case
        {L"[PUMP1.running] = 1", L"PUMP1", L"RUNNING", {}},
        {L"\"[PUMP1.RUNNING]\" = \"x\"", L"PUMP1", L"RUNNING", {}},      // inside a text
        {L"\"say \"\"[PUMP1.RUNNING]\"\"\" = [PUMP1.RUNNING]", L"PUMP1", L"RUNNING", {29}},
        {L"[PUMP1.RUNNING/day] > 3", L"PUMP1", L"RUNNING", {1}},        // a period filter
        {L"[PUMP1.RUNNING/month-2] > 3", L"PUMP1", L"", {1}},
        {L"[Line 2.A.FLOW] > 3", L"Line 2.A", L"FLOW", {1}},            // points in a device's name
        {L"[Line 2.A.FLOW] > 3", L"Line 2", L"", {}},
        {L"[Line 2.A.FLOW] > 3", L"Line 2", L"A", {}},
        {L"[R$EVE_Tank high.ST] = 1", L"R$EVE_Tank high", L"ST", {1}},  // an event's pseudo-device
        {L"[R$EVE_Tank high level.ST] = 1", L"R$EVE_Tank high", L"", {}},
        {L"[R$EVE_Tank.high.CACT] > 0", L"R$EVE_Tank.high", L"CACT", {1}},
        {L"[ PUMP1.RUNNING] = 1", L"PUMP1", L"", {}},                   // blanks are part of the name
        {L"bit([PUMP1.STATUS],3) OR [PUMP1.RUNNING]", L"PUMP1", L"", {5, 26}},
        {L"[PUMP1.RUNNING = 1", L"PUMP1", L"", {}},                     // never closed
        {L"[PUMP1] = 1", L"PUMP1", L"", {}},                            // no code
        {L"@PUMP1.RUNNING = 1", L"PUMP1", L"", {}},                     // a module, not a device
    };
    for (UseCase const& use : cases)
        EXPECT_EQ(Columns(use), use.columns) << QString::fromStdWString(use.formula).toStdString();
}

struct RewriteCase {
    std::wstring formula;
    std::wstring device;
    std::wstring code;
    ZoReferencePart part;
    std::wstring replacement;
    std::wstring expected;
    int count;
};

TEST(ReferenceTokens, ARenameRewritesOnlyTheNamedPartOfEachUse)
{
    auto const D = ZoReferencePart::Device;
    auto const C = ZoReferencePart::Code;
    RewriteCase const cases[] = {
        {L"[PUMP1.RUN] AND [PUMP10.RUN]", L"PUMP1", L"", D, L"P-1", L"[P-1.RUN] AND [PUMP10.RUN]", 1},
        {L"[PUMP1.RUN/day] + [PUMP1.ERR]", L"PUMP1", L"", D, L"Line 2.A", L"[Line 2.A.RUN/day] + [Line 2.A.ERR]", 2},
        {L"\"[PUMP1.RUN]\" = [PUMP1.NAME]", L"PUMP1", L"", D, L"P2", L"\"[PUMP1.RUN]\" = [P2.NAME]", 1},
        {L"[PUMP1.RUN] OR [PUMP1.RUNNING]", L"PUMP1", L"RUN", C, L"ON", L"[PUMP1.ON] OR [PUMP1.RUNNING]", 1},
        {L"[PUMP1.RUN/day-1]>0", L"PUMP1", L"RUN", C, L"HOURS", L"[PUMP1.HOURS/day-1]>0", 1},
        {L"[R$EVE_A.ST]=1 OR [R$EVE_A B.ST]=1", L"R$EVE_A", L"", D, L"R$EVE_Z", L"[R$EVE_Z.ST]=1 OR [R$EVE_A B.ST]=1", 1},
        {L"[pump1.RUN]", L"PUMP1", L"", D, L"X", L"[pump1.RUN]", 0},
        {L"[PUMP1.RUN", L"PUMP1", L"", D, L"X", L"[PUMP1.RUN", 0},
    };
    for (RewriteCase const& rewrite : cases) {
        int count = -1;
        EXPECT_EQ(ZoRewriteReferences(rewrite.formula, rewrite.device, rewrite.code, rewrite.part,
                                      rewrite.replacement, count),
                  rewrite.expected);
        EXPECT_EQ(count, rewrite.count) << QString::fromStdWString(rewrite.formula).toStdString();
    }
}

} // namespace
