// How long an SMS is once encoded: the single-message and part limits of both alphabets,
// the characters that cost two, and what forceBreakMessage does to a long text.
#include "actions/ZoSmsLength.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Repeat(wchar_t c, int count)
{
    return std::wstring(static_cast<std::size_t>(count), c);
}

// An emoji beyond the basic plane, whatever the width of wchar_t.
std::wstring Emoji()
{
    if constexpr (sizeof(wchar_t) == 2)
        return std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)};
    else
        return std::wstring{wchar_t(0x1F600)};
}

// "encoding characters/units messages×perMessage [cut sent]".
std::string Describe(ZoSmsLength const& l)
{
    std::string out = l.encoding == ZoSmsEncoding::Gsm7 ? "gsm " : "ucs ";
    out += std::to_string(l.characters) + "/" + std::to_string(l.units) + " " + std::to_string(l.messages) + "x"
        + std::to_string(l.perMessage);
    if (l.cut)
        out += " cut " + std::to_string(l.sentCharacters);
    return out;
}

std::string Measure(std::wstring const& text, bool forceBreak)
{
    return Describe(ZoMeasureSms(text, forceBreak));
}

} // namespace

TEST(ZoSmsLength, GsmTextFitsOneMessageUpTo160AndSplitsInto153s)
{
    EXPECT_EQ(Measure(L"", true), "gsm 0/0 0x160");
    EXPECT_EQ(Measure(Repeat(L'a', 160), true), "gsm 160/160 1x160");
    EXPECT_EQ(Measure(Repeat(L'a', 161), true), "gsm 161/161 2x153");
    EXPECT_EQ(Measure(Repeat(L'a', 306), true), "gsm 306/306 2x153");
    EXPECT_EQ(Measure(Repeat(L'a', 307), true), "gsm 307/307 3x153");
}

TEST(ZoSmsLength, WithoutForceBreakALongTextIsOneMessageCutAfterTheFirst160)
{
    EXPECT_EQ(Measure(Repeat(L'a', 160), false), "gsm 160/160 1x160");
    EXPECT_EQ(Measure(Repeat(L'a', 161), false), "gsm 161/161 1x160 cut 160");
    EXPECT_EQ(Measure(Repeat(L'a', 500), false), "gsm 500/500 1x160 cut 160");
}

TEST(ZoSmsLength, OneCharacterOutsideTheGsmAlphabetSwitchesTheWholeTextToUcs2)
{
    EXPECT_EQ(Measure(Repeat(L'a', 69) + L"\u0142", true), "ucs 70/70 1x70");
    EXPECT_EQ(Measure(Repeat(L'a', 70) + L"\u0142", true), "ucs 71/71 2x67");
    EXPECT_EQ(Measure(Repeat(L'a', 70) + L"\u0142", false), "ucs 71/71 1x70 cut 70");
    EXPECT_EQ(Measure(Repeat(L'a', 134), true), "gsm 134/134 1x160");
    EXPECT_EQ(Measure(Repeat(L'a', 133) + L"\u0142", true), "ucs 134/134 2x67");
    EXPECT_EQ(Measure(Repeat(L'a', 134) + L"\u0142", true), "ucs 135/135 3x67");
}

TEST(ZoSmsLength, GsmAlphabetHoldsItsAccentsAndGreekButNotEveryLatinLetter)
{
    // In the alphabet: é, Ä, ñ, Δ, £, newline; not in it: ç (only Ç is), the backtick, á.
    EXPECT_EQ(ZoMeasureSms(L"\u00E9\u00C4\u00F1\u0394\u00A3\u00C7\n", true).encoding, ZoSmsEncoding::Gsm7);
    for (std::wstring text : {L"\u00E7", L"`", L"\u00E1"})
        EXPECT_EQ(ZoMeasureSms(text, true).encoding, ZoSmsEncoding::Ucs2) << int(text[0]);
    EXPECT_EQ(ZoGsm7Septets(U'a'), 1);
    EXPECT_EQ(ZoGsm7Septets(U'\u20AC'), 2);
    EXPECT_EQ(ZoGsm7Septets(U'\u00E7'), 0);
}

TEST(ZoSmsLength, ExtensionCharactersTakeTwoSeptetsAndAreNeverSplitBetweenParts)
{
    EXPECT_EQ(Measure(Repeat(L'\u20AC', 80), false), "gsm 80/160 1x160");
    EXPECT_EQ(Measure(Repeat(L'\u20AC', 81), false), "gsm 81/162 1x160 cut 80");
    EXPECT_EQ(Measure(L"{[]}", true), "gsm 4/8 1x160");
    // 152 + 2 + 152 = 306 septets would fill two parts exactly, but the euro sign does not
    // fit whole at the end of the first: it opens the second, which then overflows.
    EXPECT_EQ(Measure(Repeat(L'a', 152) + L"\u20AC" + Repeat(L'a', 152), true), "gsm 305/306 3x153");
    EXPECT_EQ(Measure(Repeat(L'a', 159) + L"\u20AC", false), "gsm 160/161 1x160 cut 159");
}

TEST(ZoSmsLength, CharactersBeyondTheBasicPlaneCountTwoUnitsAndStayWhole)
{
    EXPECT_EQ(Measure(Emoji(), true), "ucs 1/2 1x70");
    EXPECT_EQ(Measure(Repeat(L'a', 66) + Emoji() + Repeat(L'a', 66), true), "ucs 133/134 3x67");
    EXPECT_EQ(Measure(Repeat(L'a', 69) + Emoji(), false), "ucs 70/71 1x70 cut 69");
}
