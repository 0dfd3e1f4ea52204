// Identifiers: GUID texts, the name rule of IsValidId and hexadecimal colour words (HtoL).
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoIds.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

TEST(Guid, TextIsAUniqueBracedUpperCaseVersion4Uuid)
{
    std::wregex const form(L"\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}");
    std::set<std::wstring> made;
    for (int i = 0; i < 500; ++i) {
        std::wstring const text = ZoNewGuidText();
        EXPECT_TRUE(std::regex_match(text, form)) << std::string(text.begin(), text.end());
        made.insert(text);
    }
    EXPECT_EQ(made.size(), 500u);

    // guidtow writes the bytes in order.
    ZoGuid uuid{};
    for (int i = 0; i < 16; ++i)
        uuid.bytes[i] = static_cast<std::uint8_t>(i * 17);
    wchar_t buffer[40];
    EXPECT_EQ(std::wstring(guidtow(uuid, buffer, 40)), L"{00112233-4455-6677-8899-AABBCCDDEEFF}");
}

TEST(Ids, NameRule)
{
    for (wchar_t const* name : {L"P", L"Pump 1", L"Pump_1-a.b", L"Überlauf", L"泵站", L"Pump\u00A0one",
                                L"a:b;c(d)[e]{f}#g%h'i*j+k=l@m!n,o|p~q^r$s"})
        EXPECT_TRUE(IsValidId(name, true)) << "valid #" << std::wstring(name).size();
    std::wstring const longest(64, L'x');
    EXPECT_TRUE(IsValidId(longest.c_str(), false));
    EXPECT_FALSE(IsValidId((longest + L"x").c_str(), true));
    EXPECT_FALSE(IsValidId(nullptr, true));

    // Empty; characters that would break a node path or XML text; control characters;
    // blanks at either end; surrogates and values beyond Unicode.
    wchar_t const surrogate[] = {L'a', static_cast<wchar_t>(0xD800), 0};
    wchar_t const beyond[] = {L'a', static_cast<wchar_t>(0x110000), 0};
    for (wchar_t const* name : {L"", L"a?b", L"a/b", L"a\\b", L"a\"b", L"a<b", L"a>b", L"a&b", L"a\tb",
                                L"\rab", L"ab\x7F", L"a\x85" L"b", L" Pump", L"Pump ", L"\u00A0Pump",
                                L"Pump\u3000", surrogate, beyond})
        EXPECT_FALSE(IsValidId(name, true)) << "invalid #" << std::wstring(name).size();
}

TEST(Ids, HexadecimalColourWords)
{
    EXPECT_EQ(HtoL(L"00FF00", 6), 0x00FF00);
    EXPECT_EQ(HtoL(L"aBcDeF", 6), 0xABCDEF);
    EXPECT_EQ(HtoL(L"FF00FF", 2), 0xFF) << "only the first `length` characters count";
    EXPECT_EQ(HtoL(L"1A", 8), 0x1A) << "a shorter text ends earlier";
    EXPECT_EQ(HtoL(L"12G4", 4), 0x12) << "stops at the first non-digit";
    for (wchar_t const* zero : {L"0x10", L"-1", L""})
        EXPECT_EQ(HtoL(zero, 4), 0);
    EXPECT_EQ(HtoL(L"FF", 0), 0);
    EXPECT_EQ(HtoL(nullptr, 6), 0);
    EXPECT_EQ(HtoL(L"123456789ABCDEF012", 18) & 0xFFFF, 0xF012) << "overflow keeps the low bits";
}
