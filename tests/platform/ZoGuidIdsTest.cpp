// Identifiers: GUID texts, the name rule of IsValidId and hexadecimal colour words (HtoL).
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoIds.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

TEST(Guid, TextIsABracedUpperCaseVersion4Uuid)
{
    std::wregex const form(L"\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}");
    for (int i = 0; i < 200; ++i) {
        std::wstring const text = ZoNewGuidText();
        ASSERT_EQ(text.size(), 38u);
        EXPECT_TRUE(std::regex_match(text, form)) << std::string(text.begin(), text.end());
    }

    // guidtow writes the bytes in order and cuts to the buffer, always terminated.
    ZoGuid uuid{};
    for (int i = 0; i < 16; ++i)
        uuid.bytes[i] = static_cast<std::uint8_t>(i * 17);
    wchar_t buffer[256];
    EXPECT_EQ(std::wstring(guidtow(uuid, buffer, 256)), L"{00112233-4455-6677-8899-AABBCCDDEEFF}");
    wchar_t small[6] = {L'x', L'x', L'x', L'x', L'x', L'x'};
    EXPECT_EQ(std::wstring(guidtow(uuid, small, 5)), L"{001");
    EXPECT_EQ(small[5], L'x') << "nothing is written past the given size";
    wchar_t one[1] = {L'x'};
    EXPECT_EQ(guidtow(uuid, one, 1)[0], L'\0');
    EXPECT_EQ(guidtow(uuid, nullptr, 10), nullptr);
    EXPECT_FALSE(NewGUID(nullptr));
}

TEST(Guid, IdsAreUniqueAcrossThreads)
{
    std::vector<std::vector<std::wstring>> made(4);
    std::vector<std::thread> threads;
    for (auto& list : made)
        threads.emplace_back([&list] {
            for (int i = 0; i < 2000; ++i)
                list.push_back(ZoNewGuidText());
        });
    for (auto& thread : threads)
        thread.join();
    std::set<std::wstring> all;
    for (auto const& list : made)
        all.insert(list.begin(), list.end());
    EXPECT_EQ(all.size(), 8000u);
}

TEST(Ids, ValidNames)
{
    for (wchar_t const* name : {L"Pump", L"P", L"Pump 1", L"Pump_1-a.b", L"Bomba-ñ", L"Überlauf",
                                L"泵站", L"a:b;c(d)[e]{f}#g%h'i*j+k=l@m!n,o|p~q^r$s"})
        EXPECT_TRUE(IsValidId(name, true)) << std::wstring(name).size();

    std::wstring const longest(64, L'x');
    EXPECT_TRUE(IsValidId(longest.c_str(), true));
    EXPECT_TRUE(IsValidId(longest.c_str(), false)) << "the flag does not change the rule";
}

TEST(Ids, InvalidNames)
{
    EXPECT_FALSE(IsValidId(nullptr, true));
    EXPECT_FALSE(IsValidId(L"", true));
    std::wstring const tooLong(65, L'x');
    EXPECT_FALSE(IsValidId(tooLong.c_str(), true));

    // Characters that would break a node path or XML text.
    for (wchar_t const* name : {L"a?b", L"a/b", L"a\\b", L"a\"b", L"a<b", L"a>b", L"a&b"})
        EXPECT_FALSE(IsValidId(name, true));
    // Control characters anywhere.
    for (wchar_t const* name : {L"a\tb", L"a\nb", L"\rab", L"ab\x7F", L"a\x85" L"b", L"a\x1F"})
        EXPECT_FALSE(IsValidId(name, true));
    // Blanks at either end; inside they are fine.
    for (wchar_t const* name : {L" Pump", L"Pump ", L" ", L"\u00A0Pump", L"Pump\u3000"})
        EXPECT_FALSE(IsValidId(name, true));
    EXPECT_TRUE(IsValidId(L"Pump\u00A0one", true));
    if constexpr (sizeof(wchar_t) == 4) {
        wchar_t const surrogate[] = {L'a', static_cast<wchar_t>(0xD800), 0};
        wchar_t const beyond[] = {L'a', static_cast<wchar_t>(0x110000), 0};
        EXPECT_FALSE(IsValidId(surrogate, true));
        EXPECT_FALSE(IsValidId(beyond, true));
    }
}

TEST(Ids, HexadecimalColourWords)
{
    EXPECT_EQ(HtoL(L"FFFFFF", 6), 0xFFFFFF);
    EXPECT_EQ(HtoL(L"00FF00", 6), 0x00FF00);
    EXPECT_EQ(HtoL(L"0000ff", 6), 0x0000FF);
    EXPECT_EQ(HtoL(L"aBcDeF", 6), 0xABCDEF);
    // Only the first `length` characters count; a shorter text ends earlier.
    EXPECT_EQ(HtoL(L"FF00FF", 2), 0xFF);
    EXPECT_EQ(HtoL(L"1A", 8), 0x1A);
    // Stops at the first character that is not a hex digit.
    EXPECT_EQ(HtoL(L"12G4", 4), 0x12);
    EXPECT_EQ(HtoL(L"0x10", 4), 0);
    EXPECT_EQ(HtoL(L"-1", 2), 0);
    EXPECT_EQ(HtoL(L"", 6), 0);
    EXPECT_EQ(HtoL(L"FF", 0), 0);
    EXPECT_EQ(HtoL(L"FF", -3), 0);
    EXPECT_EQ(HtoL(nullptr, 6), 0);
    // More digits than a long holds keep the low bits, without undefined behaviour.
    EXPECT_EQ(HtoL(L"123456789ABCDEF012", 18) & 0xFFFF, 0xF012);
}
