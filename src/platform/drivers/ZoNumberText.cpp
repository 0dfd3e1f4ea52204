#include "ZoNumberText.h"

#include <charconv>

void ZoAppendNumberText(ZoBasicString<wchar_t>& out, double value)
{
    char buffer[32];
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, value);
    for (char const* p = buffer; p != result.ptr; ++p)
        out.push_back(static_cast<wchar_t>(*p));
}

ZoBasicString<wchar_t> ZoNumberText(double value)
{
    ZoBasicString<wchar_t> out;
    ZoAppendNumberText(out, value);
    return out;
}
