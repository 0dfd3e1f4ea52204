// The number format of report cards and annotations: the text written for every format and
// read back, the texts refused, and how a value is shown in each format.
#include "platform/reports/ZoCardFormule.h"
#include "platform/reports/ZoEditTemplateWnd.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

struct Format {
    int digits = -2;
    int decimals = -2;
    bool padInteger = true;
    bool padDecimals = true;
    bool operator==(Format const&) const = default;
};

std::ostream& operator<<(std::ostream& out, Format const& f)
{
    return out << f.digits << '/' << f.decimals << '/' << f.padInteger << f.padDecimals;
}

Format Parsed(std::wstring const& text, bool* accepted = nullptr)
{
    Format f;
    bool const ok = ZoCardFormule::ParseFormat(text, f.digits, f.decimals, f.padInteger, f.padDecimals);
    if (accepted)
        *accepted = ok;
    return f;
}

Format const kDefaults{-1, 3, false, false};

std::string Shown(double value, int digits, int decimals, bool thousands = false, bool padInteger = false,
                  bool padDecimals = false)
{
    std::wstring out = L"old";
    ZoEditTemplateWnd::FormatDouble(out, value, digits, decimals, thousands, padInteger, padDecimals);
    return std::string(out.begin(), out.end()); // the tests use ASCII results only
}

} // namespace

TEST(NumberFormatText, EveryWritableFormatReadsBackAsWritten)
{
    int formats = 0;
    for (int digits = -1; digits <= 9; ++digits)
        for (int decimals = -1; decimals <= 9; ++decimals)
            for (bool padInteger : {false, true})
                for (bool padDecimals : {false, true}) {
                    std::wstring const text = ZoCardFormule::WriteFormat(digits, decimals, padInteger, padDecimals);
                    // An automatic count (and digits 0, which the format cannot hold) has
                    // no padding to keep.
                    Format expected{digits > 0 ? digits : -1, decimals, digits > 0 && padInteger,
                                    decimals >= 0 && padDecimals};
                    bool accepted = false;
                    EXPECT_EQ(Parsed(text, &accepted), expected) << std::string(text.begin(), text.end());
                    EXPECT_TRUE(accepted);
                    EXPECT_EQ(ZoCardFormule::WriteFormat(expected.digits, expected.decimals, expected.padInteger,
                                                         expected.padDecimals),
                              text);
                    ++formats;
                }
    EXPECT_EQ(formats, 11 * 11 * 4);
}

TEST(NumberFormatText, WrittenTexts)
{
    EXPECT_EQ(ZoCardFormule::WriteFormat(-1, 3, false, false), L".3"); // the defaults
    EXPECT_EQ(ZoCardFormule::WriteFormat(5, 2, true, true), L"05.02");
    EXPECT_EQ(ZoCardFormule::WriteFormat(4, 0, false, true), L"4.00");
    EXPECT_EQ(ZoCardFormule::WriteFormat(-1, -1, true, true), L".");
    // Counts that one character cannot hold are written as automatic.
    EXPECT_EQ(ZoCardFormule::WriteFormat(12, 10, true, true), L".");
    EXPECT_EQ(Parsed(L"."), (Format{-1, -1, false, false}));
}

TEST(NumberFormatText, AnythingElseGivesTheDefaults)
{
    for (std::wstring const text :
         {L"", L"3", L"0.3", L"00.3", L"10.3", L"5..2", L".3.", L"a.3", L".a", L".003", L"005.2", L"5.2 ", L" .3",
          L"\uFF15.2", L"-1.3", L".-1", L".10", L"0", L"..", L"0005.02"}) {
        bool accepted = true;
        EXPECT_EQ(Parsed(text, &accepted), kDefaults) << text.size();
        EXPECT_FALSE(accepted);
    }
    // Every text of up to four characters from the format's alphabet and some others:
    // nothing crashes, and whatever is accepted is exactly what the writer writes.
    std::wstring const alphabet = L"0159.x-\u00E9";
    int accepted = 0;
    for (std::size_t length = 0; length <= 4; ++length) {
        std::size_t combinations = 1;
        for (std::size_t i = 0; i < length; ++i)
            combinations *= alphabet.size();
        for (std::size_t n = 0; n < combinations; ++n) {
            std::wstring text;
            for (std::size_t i = 0, rest = n; i < length; ++i, rest /= alphabet.size())
                text += alphabet[rest % alphabet.size()];
            bool ok = false;
            Format const f = Parsed(text, &ok);
            if (ok) {
                ++accepted;
                EXPECT_EQ(ZoCardFormule::WriteFormat(f.digits, f.decimals, f.padInteger, f.padDecimals), text);
            } else {
                EXPECT_EQ(f, kDefaults);
            }
        }
    }
    EXPECT_GT(accepted, 0);
}

TEST(NumberFormatValue, DecimalsRoundHalfAwayFromZeroAndPadOnRequest)
{
    EXPECT_EQ(Shown(2.345, -1, 2), "2.35");   // the decimal text rounds, not its binary neighbour
    EXPECT_EQ(Shown(-2.345, -1, 2), "-2.35");
    EXPECT_EQ(Shown(0.5, -1, 0), "1");
    EXPECT_EQ(Shown(-0.5, -1, 0), "-1");
    EXPECT_EQ(Shown(9.9996, -1, 3), "10");
    EXPECT_EQ(Shown(9.9996, -1, 3, false, false, true), "10.000");
    EXPECT_EQ(Shown(1.5, -1, 3), "1.5");
    EXPECT_EQ(Shown(1.5, -1, 3, false, false, true), "1.500");
    EXPECT_EQ(Shown(2, -1, 3), "2");
    EXPECT_EQ(Shown(-0.0004, -1, 3), "0"); // no sign on a value that rounds to zero
    EXPECT_EQ(Shown(-0.0, -1, 2, false, false, true), "0.00");
    // Automatic decimals: what the value needs, at most nine.
    EXPECT_EQ(Shown(0.1, -1, -1), "0.1");
    EXPECT_EQ(Shown(1.0 / 3, -1, -1), "0.333333333");
    EXPECT_EQ(Shown(42, -1, -1, false, false, true), "42");
    EXPECT_EQ(Shown(1e-12, -1, -1), "0");
}

TEST(NumberFormatValue, IntegerDigitsAndThousands)
{
    EXPECT_EQ(Shown(42.5, 5, 1, false, true, false), "00042.5");
    EXPECT_EQ(Shown(-42, 5, 0, false, true, false), "-00042");
    EXPECT_EQ(Shown(42, 5, 0), "   42"); // an unpadded width lines numbers up with blanks
    EXPECT_EQ(Shown(123456, 3, 0, false, true), "123456"); // a width never cuts a number
    EXPECT_EQ(Shown(1234567.891, -1, 2, true), "1,234,567.89");
    EXPECT_EQ(Shown(-1234.5, -1, 1, true), "-1,234.5");
    EXPECT_EQ(Shown(999.9996, -1, 3, true), "1,000");
    EXPECT_EQ(Shown(42, 5, 0, true, true), "00,042");
    EXPECT_EQ(Shown(42, 5, 0, true, false), "    42"); // "00,042" is six wide
    EXPECT_EQ(Shown(1e20, -1, 0, true), "100,000,000,000,000,000,000");
    // Counts outside what the format can hold behave as automatic.
    EXPECT_EQ(Shown(42.25, 0, 12), "42.25");
}

// The table of docs/annotations.md, read through the format texts.
TEST(NumberFormatValue, TheDocumentedExamples)
{
    auto const shown = [](std::wstring const& format, double value) {
        Format f;
        EXPECT_TRUE(ZoCardFormule::ParseFormat(format, f.digits, f.decimals, f.padInteger, f.padDecimals));
        return Shown(value, f.digits, f.decimals, false, f.padInteger, f.padDecimals);
    };
    EXPECT_EQ(shown(L".3", 1234.5) + "|" + shown(L".3", 2), "1234.5|2");
    EXPECT_EQ(shown(L".03", 1234.5) + "|" + shown(L".03", 2), "1234.500|2.000");
    EXPECT_EQ(shown(L"05.02", 1234.5) + "|" + shown(L"05.02", 2), "01234.50|00002.00");
    EXPECT_EQ(shown(L"5.0", 1234.5) + "|" + shown(L"5.0", 2), " 1235|    2");
    EXPECT_EQ(shown(L".", 1234.5) + "|" + shown(L".", 2), "1234.5|2");
    EXPECT_EQ(shown(L"3.", 123456), "123456");
}

TEST(NumberFormatValue, NotANumberAndInfinities)
{
    EXPECT_EQ(Shown(std::numeric_limits<double>::quiet_NaN(), 5, 2, true, true, true), "NaN");
    std::wstring out;
    ZoEditTemplateWnd::FormatDouble(out, std::numeric_limits<double>::infinity(), -1, 3, false, false, false);
    EXPECT_EQ(out, L"\u221E");
    ZoEditTemplateWnd::FormatDouble(out, -std::numeric_limits<double>::infinity(), -1, 3, false, false, false);
    EXPECT_EQ(out, L"-\u221E");
    EXPECT_EQ(Shown(std::numeric_limits<double>::max(), -1, 2).size(), 309u);
    EXPECT_EQ(Shown(std::numeric_limits<double>::denorm_min(), -1, 9, false, false, true), "0.000000000");
}
