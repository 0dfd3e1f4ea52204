// Variable names: splitting "DEVICE.CODE" and "DEVICE.CODE/FILTER", and reading periods.
#include "platform/formula/ZoPeriod.h"
#include "platform/formula/ZoVariableName.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// "device|code|filter", or "refused" with the outputs checked empty.
std::wstring SplitFiltered(std::wstring_view text)
{
    std::wstring device = L"x";
    std::wstring code = L"x";
    std::wstring filter = L"x";
    if (!SplitFilterDriverVariable(text, device, code, filter))
        return device.empty() && code.empty() && filter.empty() ? L"refused" : L"refused, outputs kept";
    return device + L'|' + code + L'|' + filter;
}

std::wstring Split(std::wstring_view text)
{
    std::wstring device = L"x";
    std::wstring code = L"x";
    if (!SplitDriverVariable(text, device, code))
        return device.empty() && code.empty() ? L"refused" : L"refused, outputs kept";
    return device + L'|' + code;
}

} // namespace

TEST(FormulaVariableName, DeviceAndCodeSplitAtTheLastPoint)
{
    EXPECT_EQ(Split(L"PLC1.LEVEL"), L"PLC1|LEVEL");
    EXPECT_EQ(Split(L"R$EVE_Pump 1.5 bar.ST"), L"R$EVE_Pump 1.5 bar|ST");
    EXPECT_EQ(Split(L"A.B.C"), L"A.B|C");
    for (wchar_t const* refused : {L"", L"PLC1", L".LEVEL", L"PLC1.", L"."})
        EXPECT_EQ(Split(refused), L"refused") << refused;
}

TEST(FormulaVariableName, AFilterStartsAtTheFirstSlash)
{
    EXPECT_EQ(SplitFiltered(L"PLC1.LEVEL"), L"PLC1|LEVEL|");
    EXPECT_EQ(SplitFiltered(L"MAINS.ENERGY/day"), L"MAINS|ENERGY|day");
    EXPECT_EQ(SplitFiltered(L"MAINS.ENERGY/month-12"), L"MAINS|ENERGY|month-12");
    EXPECT_EQ(SplitFiltered(L"Line 2.A.FLOW/x/y"), L"Line 2.A|FLOW|x/y");
    for (wchar_t const* refused : {L"MAINS.ENERGY/", L"MAINS/day", L"MAINS./day", L"/day", L".ENERGY/day", L""})
        EXPECT_EQ(SplitFiltered(refused), L"refused") << refused;
}

TEST(FormulaVariableName, SplittingWithoutCopiesKeepsAnEmptyFilterApart)
{
    ZoVariableNameParts parts;
    ASSERT_TRUE(ZoSplitVariableName(L"A.B/", parts));
    EXPECT_EQ(parts.device, L"A");
    EXPECT_EQ(parts.code, L"B");
    EXPECT_TRUE(parts.hasFilter);
    EXPECT_TRUE(parts.filter.empty());
    ASSERT_TRUE(ZoSplitVariableName(L"A.B", parts));
    EXPECT_FALSE(parts.hasFilter);
}

TEST(FormulaPeriod, UnitsWithAnOptionalCountOfPeriodsBack)
{
    struct Case {
        wchar_t const* filter;
        ZoPeriodUnit unit;
        int back;
    };
    for (Case const& c : {Case{L"hour", ZoPeriodUnit::Hour, 0}, Case{L"day", ZoPeriodUnit::Day, 0},
                          Case{L"Week-1", ZoPeriodUnit::Week, 1}, Case{L"MONTH-12", ZoPeriodUnit::Month, 12},
                          Case{L"year-9999", ZoPeriodUnit::Year, 9999}}) {
        ZoPeriod period;
        ASSERT_TRUE(ZoParsePeriod(c.filter, period)) << c.filter;
        EXPECT_EQ(period.unit, c.unit) << c.filter;
        EXPECT_EQ(period.back, c.back) << c.filter;
    }
    for (wchar_t const* refused : {L"", L"days", L"da", L"day-", L"day-0", L"day-10000", L"day-1x", L"day+1",
                                   L" day", L"day -1", L"-1", L"fortnight"}) {
        ZoPeriod period;
        EXPECT_FALSE(ZoParsePeriod(refused, period)) << refused;
    }
}
