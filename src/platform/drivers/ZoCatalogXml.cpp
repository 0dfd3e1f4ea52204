#include "ZoCatalogXml.h"

#include <charconv>
#include <cmath>

namespace zo::catalog {

std::string_view Trimmed(std::string_view text)
{
    auto const blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && blank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool ReadNumber(std::string_view text, double& value)
{
    text = Trimmed(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    if (text.empty())
        return false;
    double parsed = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || !std::isfinite(parsed))
        return false;
    value = parsed;
    return true;
}

} // namespace zo::catalog
