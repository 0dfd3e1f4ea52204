#include "platform/tools/ZoWideChar.h"

#include <gtest/gtest.h>

TEST(ZoWideChar, UpperCasesOneCharacterForOneInEveryLocale)
{
    EXPECT_EQ(ZoWideChar::ToUpper(L'a'), L'A');
    EXPECT_EQ(ZoWideChar::ToUpper(L'['), L'[');
    EXPECT_EQ(ZoWideChar::ToUpper(L'\u00e9'), L'\u00c9');  // é
    EXPECT_EQ(ZoWideChar::ToUpper(L'\u03c9'), L'\u03a9');  // ω
    // No single upper-case character: kept, so positions stay the same.
    EXPECT_EQ(ZoWideChar::ToUpper(L'\u00df'), L'\u00df');  // ß
    EXPECT_EQ(ZoWideChar::ToUpper(static_cast<wchar_t>(0xD800)), static_cast<wchar_t>(0xD800));
    std::wstring text = L"Zona t\u00e9cnica \u00df";
    ZoWideChar::ToUpper(text);
    EXPECT_EQ(text, L"ZONA T\u00c9CNICA \u00df");
}
