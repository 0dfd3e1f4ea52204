#include "platform/reports/ZoCardFormule.h"

namespace {

bool IsCountChar(wchar_t c, wchar_t lowest)
{
    return c >= lowest && c <= L'0' + ZoCardFormule::kMaxCount;
}

// One part of the format: "", C, or "0" C, where C is a count character from lowest to '9'.
// Returns false when the part is anything else.
bool ParsePart(std::wstring_view part, wchar_t lowest, int& count, bool& padded)
{
    count = ZoCardFormule::kAutomatic;
    padded = false;
    if (part.empty())
        return true;
    if (part.size() == 2 && part[0] == L'0') {
        padded = true;
        part.remove_prefix(1);
    }
    if (part.size() != 1 || !IsCountChar(part[0], lowest))
        return false;
    count = part[0] - L'0';
    return true;
}

} // namespace

bool ZoCardFormule::ParseFormat(std::wstring_view text, int& digits, int& decimals, bool& padInteger,
                                bool& padDecimals)
{
    std::size_t const point = text.find(L'.');
    int readDigits = kAutomatic;
    int readDecimals = kAutomatic;
    bool readPadInteger = false;
    bool readPadDecimals = false;
    bool const ok = point != std::wstring_view::npos
                    && ParsePart(text.substr(0, point), L'1', readDigits, readPadInteger)
                    && ParsePart(text.substr(point + 1), L'0', readDecimals, readPadDecimals);
    if (!ok) {
        digits = kDefaultDigits;
        decimals = kDefaultDecimals;
        padInteger = false;
        padDecimals = false;
        return false;
    }
    digits = readDigits;
    decimals = readDecimals;
    padInteger = readPadInteger;
    padDecimals = readPadDecimals;
    return true;
}

ZoBasicString<wchar_t> ZoCardFormule::WriteFormat(int digits, int decimals, bool padInteger, bool padDecimals)
{
    ZoBasicString<wchar_t> text;
    if (digits > 0 && digits <= kMaxCount) {
        if (padInteger)
            text += L'0';
        text += wchar_t(L'0' + digits);
    }
    text += L'.';
    if (decimals >= 0 && decimals <= kMaxCount) {
        if (padDecimals)
            text += L'0';
        text += wchar_t(L'0' + decimals);
    }
    return text;
}
