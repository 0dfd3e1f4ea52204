#include "ZoFormulaFunctions.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

enum Index : unsigned {
    kAbs, kSqrt, kRound, kFloor, kCeil, kMin, kMax, kAvg, kLimit, kIf, kBit, kBitAnd, kBetween, kOutside,
    kExp, kLn, kLog10, kCount
};

constexpr std::array<ZoFunction, kCount> kFunctions{{
    {L"abs", 1, 1, ZoFunctionKind::Numeric, true},
    {L"sqrt", 1, 1, ZoFunctionKind::Numeric, true},
    {L"round", 1, 2, ZoFunctionKind::Numeric, false},
    {L"floor", 1, 1, ZoFunctionKind::Numeric, false},
    {L"ceil", 1, 1, ZoFunctionKind::Numeric, false},
    {L"min", 1, kZoManyArgs, ZoFunctionKind::Numeric, true},
    {L"max", 1, kZoManyArgs, ZoFunctionKind::Numeric, true},
    {L"avg", 1, kZoManyArgs, ZoFunctionKind::Numeric, true},
    {L"limit", 3, 3, ZoFunctionKind::Numeric, true},
    {L"if", 3, 3, ZoFunctionKind::If, true},
    {L"bit", 2, 2, ZoFunctionKind::Test, false},
    {L"bitand", 2, 2, ZoFunctionKind::Numeric, false},
    {L"between", 3, 3, ZoFunctionKind::Test, false},
    {L"outside", 3, 3, ZoFunctionKind::Test, false},
    {L"exp", 1, 1, ZoFunctionKind::Numeric, true},
    {L"ln", 1, 1, ZoFunctionKind::Numeric, true},
    {L"log10", 1, 1, ZoFunctionKind::Numeric, true},
}};

bool SameName(std::wstring_view typed, std::wstring_view name)
{
    if (typed.size() != name.size())
        return false;
    for (std::size_t i = 0; i < typed.size(); ++i) {
        wchar_t c = typed[i];
        if (c >= L'A' && c <= L'Z')
            c = static_cast<wchar_t>(c - L'A' + L'a');
        if (c != name[i])
            return false;
    }
    return true;
}

// The whole part of x as an unsigned 64-bit word (two's complement for negatives); false
// when x is not a finite number within the 64-bit range.
bool Word(double x, std::uint64_t& word)
{
    if (!std::isfinite(x) || x <= -9223372036854775808.0 || x >= 18446744073709551616.0)
        return false;
    double const whole = std::trunc(x);
    word = whole < 0 ? static_cast<std::uint64_t>(static_cast<std::int64_t>(whole)) : static_cast<std::uint64_t>(whole);
    return true;
}

double Round(double x, double decimals)
{
    if (!std::isfinite(decimals) || decimals < 0 || decimals > 15 || std::trunc(decimals) != decimals)
        return std::numeric_limits<double>::quiet_NaN();
    double const scale = std::pow(10.0, decimals);
    double const scaled = x * scale;
    if (!std::isfinite(scaled))
        return x;
    return std::round(scaled) / scale; // halves away from zero
}

} // namespace

int ZoFindFunction(std::wstring_view name)
{
    for (unsigned i = 0; i < kFunctions.size(); ++i)
        if (SameName(name, kFunctions[i].name))
            return static_cast<int>(i);
    return -1;
}

ZoFunction const& ZoFunctionAt(unsigned index)
{
    return kFunctions[index < kCount ? index : 0];
}

double ZoCallFunction(unsigned index, std::span<double const> a)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    switch (index) {
    case kAbs: return std::fabs(a[0]);
    case kSqrt: return a[0] < 0 ? nan : std::sqrt(a[0]);
    case kRound: return Round(a[0], a.size() > 1 ? a[1] : 0);
    case kFloor: return std::floor(a[0]);
    case kCeil: return std::ceil(a[0]);
    case kMin:
    case kMax: {
        double best = a[0];
        for (double x : a.subspan(1))
            best = index == kMin ? std::fmin(best, x) : std::fmax(best, x);
        return best;
    }
    case kAvg: {
        double sum = 0;
        for (double x : a)
            sum += x;
        return sum / static_cast<double>(a.size());
    }
    case kLimit: return a[1] > a[2] ? nan : std::fmin(std::fmax(a[0], a[1]), a[2]);
    case kIf: return a[0] != 0 ? a[1] : a[2];
    case kBit: {
        std::uint64_t word = 0;
        if (!Word(a[0], word) || !std::isfinite(a[1]) || a[1] < 0 || a[1] > 63 || std::trunc(a[1]) != a[1])
            return nan;
        return static_cast<double>((word >> static_cast<unsigned>(a[1])) & 1u);
    }
    case kBitAnd: {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        if (!Word(a[0], x) || !Word(a[1], y))
            return nan;
        return static_cast<double>(x & y);
    }
    case kBetween: return a[0] >= a[1] && a[0] <= a[2] ? 1 : 0;
    case kOutside: return a[0] < a[1] || a[0] > a[2] ? 1 : 0;
    case kExp: return std::exp(a[0]);
    case kLn: return a[0] <= 0 ? nan : std::log(a[0]);
    case kLog10: return a[0] <= 0 ? nan : std::log10(a[0]);
    default: return nan;
    }
}
