#include "actions/ZoSplitFileName.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Split(std::wstring const& title)
{
    std::wstring name = L"stale", number = L"stale";
    bool const ok = SplitFileName(title, name, number);
    std::string out = ok ? "" : "refused ";
    for (wchar_t c : name + L"|" + number)
        out += static_cast<char>(c);
    return out;
}

} // namespace

TEST(SplitFileName, NameBeforeTheLastPointNumberAfterIt)
{
    EXPECT_EQ(Split(L"Pumps.2"), "Pumps|2");
    EXPECT_EQ(Split(L"DailyOperations.1"), "DailyOperations|1");
    EXPECT_EQ(Split(L"Boiler.Room.3"), "Boiler.Room|3");
    EXPECT_EQ(Split(L"Main screen.10"), "Main screen|10");
}

TEST(SplitFileName, TitlesWithoutBothPartsAreRefusedAndLeaveNothing)
{
    EXPECT_EQ(Split(L"Pumps"), "refused |");
    EXPECT_EQ(Split(L".2"), "refused |");
    EXPECT_EQ(Split(L"Pumps."), "refused |");
    EXPECT_EQ(Split(L""), "refused |");
}
