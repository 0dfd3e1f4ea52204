#include "platform/reports/ZoEditTemplateWnd.h"

#include "platform/reports/ZoCardFormule.h"

#include <charconv>
#include <cmath>
#include <string>

namespace {

// The magnitude of a finite value as decimal digits: integer part (no leading zeros, "0"
// when it is zero) and fraction (every digit the shortest form holds).
struct Decimal {
    std::string integer;
    std::string fraction;
};

Decimal ToDecimal(double magnitude)
{
    // The shortest fixed form of a double needs at most 309 integer digits plus the
    // fraction of the smallest subnormal (about 1075 digits).
    char buffer[1100];
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::fixed);
    std::string const text(buffer, result.ec == std::errc() ? result.ptr : buffer);
    Decimal decimal;
    std::size_t const point = text.find('.');
    decimal.integer = text.substr(0, point);
    if (point != std::string::npos)
        decimal.fraction = text.substr(point + 1);
    if (decimal.integer.empty())
        decimal.integer = "0";
    return decimal;
}

// Adds one unit at the last digit of the integer part, carrying.
void IncrementInteger(std::string& integer)
{
    for (std::size_t i = integer.size(); i-- > 0;) {
        if (integer[i] != '9') {
            ++integer[i];
            return;
        }
        integer[i] = '0';
    }
    integer.insert(integer.begin(), '1');
}

// Rounds to `decimals` fraction digits, half away from zero (the magnitude rounds up).
void Round(Decimal& decimal, int decimals)
{
    std::size_t const keep = std::size_t(decimals);
    if (decimal.fraction.size() <= keep) {
        decimal.fraction.append(keep - decimal.fraction.size(), '0');
        return;
    }
    bool const up = decimal.fraction[keep] >= '5';
    decimal.fraction.resize(keep);
    if (!up)
        return;
    for (std::size_t i = keep; i-- > 0;) {
        if (decimal.fraction[i] != '9') {
            ++decimal.fraction[i];
            return;
        }
        decimal.fraction[i] = '0';
    }
    IncrementInteger(decimal.integer);
}

bool IsZero(Decimal const& decimal)
{
    return decimal.integer.find_first_not_of('0') == std::string::npos
        && decimal.fraction.find_first_not_of('0') == std::string::npos;
}

std::string Grouped(std::string const& digits)
{
    std::string grouped;
    grouped.reserve(digits.size() + digits.size() / 3);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += ',';
        grouped += digits[i];
    }
    return grouped;
}

} // namespace

void ZoEditTemplateWnd::FormatDouble(ZoBasicString<wchar_t>& out, double value, int digits, int decimals,
                                     bool thousands, bool padInteger, bool padDecimals)
{
    if (std::isnan(value)) {
        out = L"NaN";
        return;
    }
    if (std::isinf(value)) {
        out = value < 0 ? L"-\u221E" : L"\u221E";
        return;
    }
    bool const fixedDigits = digits > 0 && digits <= ZoCardFormule::kMaxCount;
    bool const fixedDecimals = decimals >= 0 && decimals <= ZoCardFormule::kMaxCount;

    Decimal decimal = ToDecimal(std::fabs(value));
    Round(decimal, fixedDecimals ? decimals : ZoCardFormule::kMaxCount);
    if (!fixedDecimals || !padDecimals) {
        std::size_t const last = decimal.fraction.find_last_not_of('0');
        decimal.fraction.resize(last == std::string::npos ? 0 : last + 1);
    }
    bool const negative = std::signbit(value) && !IsZero(decimal);

    std::string integer = decimal.integer;
    if (fixedDigits && padInteger && integer.size() < std::size_t(digits))
        integer.insert(0, std::size_t(digits) - integer.size(), '0');
    if (thousands)
        integer = Grouped(integer);

    std::string text;
    if (fixedDigits && !padInteger) {
        // The width the integer part takes with `digits` digits, separators included.
        std::size_t const width = std::size_t(digits) + (thousands ? std::size_t(digits - 1) / 3 : 0);
        if (integer.size() < width)
            text.append(width - integer.size(), ' ');
    }
    if (negative)
        text += '-';
    text += integer;
    if (!decimal.fraction.empty()) {
        text += '.';
        text += decimal.fraction;
    }
    out.assign(text.begin(), text.end());
}
