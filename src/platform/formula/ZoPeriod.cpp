#include "ZoPeriod.h"

#include <array>
#include <utility>

bool ZoParsePeriod(std::wstring_view filter, ZoPeriod& period)
{
    static constexpr std::array<std::pair<std::wstring_view, ZoPeriodUnit>, 5> kUnits{{
        {L"hour", ZoPeriodUnit::Hour}, {L"day", ZoPeriodUnit::Day}, {L"week", ZoPeriodUnit::Week},
        {L"month", ZoPeriodUnit::Month}, {L"year", ZoPeriodUnit::Year},
    }};
    std::size_t const dash = filter.find(L'-');
    std::wstring_view const word = filter.substr(0, dash);
    bool found = false;
    for (auto const& [name, unit] : kUnits) {
        if (word.size() != name.size())
            continue;
        bool same = true;
        for (std::size_t i = 0; i < word.size() && same; ++i) {
            wchar_t c = word[i];
            if (c >= L'A' && c <= L'Z')
                c = static_cast<wchar_t>(c - L'A' + L'a');
            same = c == name[i];
        }
        if (same) {
            period.unit = unit;
            found = true;
            break;
        }
    }
    if (!found)
        return false;
    period.back = 0;
    if (dash == std::wstring_view::npos)
        return true;
    std::wstring_view const digits = filter.substr(dash + 1);
    if (digits.empty() || digits.size() > 4)
        return false;
    int back = 0;
    for (wchar_t c : digits) {
        if (c < L'0' || c > L'9')
            return false;
        back = back * 10 + (c - L'0');
    }
    if (back == 0)
        return false;
    period.back = back;
    return true;
}
