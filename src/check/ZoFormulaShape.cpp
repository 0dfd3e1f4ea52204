#include "check/ZoFormulaShape.h"

#include <charconv>
#include <cmath>
#include <cwctype>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Whether the parentheses at both ends enclose the whole text.
template <class Char>
bool WrappedWhole(std::basic_string_view<Char> text)
{
    if (text.size() < 2 || text.front() != L'(' || text.back() != L')')
        return false;
    int depth = 0;
    bool inText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        Char const c = text[i];
        if (c == '"')
            inText = !inText;
        if (inText)
            continue;
        if (c == '(')
            ++depth;
        else if (c == ')' && --depth == 0 && i + 1 < text.size())
            return false;
    }
    return true;
}

std::wstring_view Unwrapped(std::wstring_view text)
{
    while (WrappedWhole<wchar_t>(text))
        text = text.substr(1, text.size() - 2);
    return text;
}

struct Comparison {
    std::size_t pos = std::wstring_view::npos;
    std::size_t length = 0;
};

// The one comparison operator at depth 0 outside texts and references; npos when there is
// none or more than one, or when AND/OR stand at depth 0.
Comparison FindComparison(std::wstring_view text)
{
    Comparison found;
    int depth = 0;
    int count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        wchar_t const c = text[i];
        if (c == L'"') {
            std::size_t const end = text.find(L'"', i + 1);
            i = end == std::wstring_view::npos ? text.size() : end;
            continue;
        }
        if (c == L'[') {
            std::size_t const end = text.find(L']', i + 1);
            i = end == std::wstring_view::npos ? text.size() : end;
            continue;
        }
        if (c == L'(')
            ++depth;
        else if (c == L')')
            --depth;
        if (depth != 0)
            continue;
        if (text.substr(i, 3) == L"AND" || text.substr(i, 2) == L"OR")
            return {};
        if (c == L'<' || c == L'>' || c == L'=') {
            std::size_t length = 1;
            if (i + 1 < text.size() && (text[i + 1] == L'=' || (c == L'<' && text[i + 1] == L'>')))
                length = 2;
            found = {i, length};
            ++count;
            i += length - 1;
        }
    }
    return count == 1 ? found : Comparison{};
}

bool ReadNumber(std::wstring_view text, double& value)
{
    if (text.empty() || text.size() > 64)
        return false;
    // Plain decimals ("80", "-2.5"), what thresholds nearly always are, without the C
    // library's locale-aware reading; a reference ("[PUMP1.FLOW]") is no number at once.
    char ascii[64];
    bool plain = true;
    for (std::size_t i = 0; i < text.size() && plain; ++i) {
        wchar_t const c = text[i];
        plain = (c >= L'0' && c <= L'9') || c == L'.' || (c == L'-' && i == 0);
        ascii[i] = static_cast<char>(c);
    }
    if (plain) {
        auto const [end, error] = std::from_chars(ascii, ascii + text.size(), value);
        return error == std::errc() && end == ascii + text.size() && std::isfinite(value);
    }
    if (text.front() == L'[' || text.front() == L'"')
        return false;
    std::wstring const copy(text);
    wchar_t* end = nullptr;
    value = std::wcstod(copy.c_str(), &end);
    return end == copy.c_str() + copy.size() && std::isfinite(value);
}

// value OP number, as an interval; OP already turned to read with the value on the left.
ZoThreshold Interval(std::wstring value, std::wstring_view op, double number)
{
    ZoThreshold t;
    t.value = std::move(value);
    t.low = -kInfinity;
    t.high = kInfinity;
    if (op == L">") {
        t.low = number;
    } else if (op == L">=") {
        t.low = number;
        t.lowOpen = false;
    } else if (op == L"<") {
        t.high = number;
    } else if (op == L"<=") {
        t.high = number;
        t.highOpen = false;
    } else if (op == L"=") {
        t.low = t.high = number;
        t.lowOpen = t.highOpen = false;
    } else { // "<>"
        t.low = t.high = number;
        t.lowOpen = t.highOpen = false;
        t.negated = true;
    }
    return t;
}

// Each comparison operator, read with its operands swapped, and negated.
struct OperatorForms {
    std::wstring_view op;
    std::wstring_view mirrored;
    std::wstring_view negated;
};
constexpr OperatorForms kOperatorForms[] = {{L">", L"<", L"<="},  {L"<", L">", L">="}, {L">=", L"<=", L"<"},
                                            {L"<=", L">=", L">"}, {L"=", L"=", L"<>"}, {L"<>", L"<>", L"="}};

OperatorForms const& FormsOf(std::wstring_view op)
{
    for (OperatorForms const& forms : kOperatorForms)
        if (forms.op == op)
            return forms;
    return kOperatorForms[4]; // "=" (FindComparison finds no other)
}

} // namespace

namespace {

// The normal form of either width of text: every step looks at ASCII characters only
// (blanks, quotes, brackets, operators, letters), so UTF-8 text needs no conversion.
template <class Char>
std::basic_string<Char> Normalised(std::basic_string_view<Char> formula)
{
    auto const ascii = [](char const* text) {
        std::basic_string<Char> out;
        for (; *text; ++text)
            out += static_cast<Char>(*text);
        return out;
    };
    static std::basic_string<Char> const kAnd = ascii("AND"), kOr = ascii("OR"), kNot = ascii("NOT"),
                                         kDiffers = ascii("<>");
    std::basic_string<Char> out;
    out.reserve(formula.size());
    for (std::size_t i = 0; i < formula.size(); ++i) {
        Char const c = formula[i];
        if (c == '"' || c == '[') {
            // Texts and variable references are kept as written.
            Char const close = c == '"' ? Char('"') : Char(']');
            std::size_t const end = formula.find(close, i + 1);
            std::size_t const stop = end == std::basic_string_view<Char>::npos ? formula.size() : end + 1;
            out.append(formula.substr(i, stop - i));
            i = stop - 1;
            continue;
        }
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n')
            continue;
        Char const next = i + 1 < formula.size() ? formula[i + 1] : Char(0);
        if (c == '&' && next == '&') {
            out += kAnd;
            ++i;
        } else if (c == '|' && next == '|') {
            out += kOr;
            ++i;
        } else if (c == '=' && next == '=') {
            out += Char('=');
            ++i;
        } else if (c == '!' && next == '=') {
            out += kDiffers;
            ++i;
        } else if (c == '!') {
            out += kNot;
        } else {
            out += c >= 'a' && c <= 'z' ? static_cast<Char>(c - 'a' + 'A') : c;
        }
    }
    std::basic_string_view<Char> whole = out;
    while (whole.size() >= 2 && whole.front() == '(' && whole.back() == ')' && WrappedWhole(whole))
        whole = whole.substr(1, whole.size() - 2);
    return std::basic_string<Char>(whole);
}

} // namespace

std::wstring ZoNormalisedFormula(std::wstring_view formula)
{
    return Normalised(formula);
}

std::string ZoNormalisedFormula(std::string_view formula)
{
    return Normalised(formula);
}

std::optional<ZoThreshold> ZoReadThreshold(std::wstring_view formula)
{
    std::wstring const normal = ZoNormalisedFormula(formula);
    std::wstring_view text = normal;
    bool negate = false;
    while (text.starts_with(L"NOT")) {
        negate = !negate;
        text = Unwrapped(text.substr(3));
    }
    Comparison const cmp = FindComparison(text);
    if (cmp.pos == std::wstring_view::npos)
        return std::nullopt;
    std::wstring_view const left = Unwrapped(text.substr(0, cmp.pos));
    std::wstring_view const right = Unwrapped(text.substr(cmp.pos + cmp.length));
    std::wstring_view op = text.substr(cmp.pos, cmp.length);
    double number = 0;
    std::wstring_view value;
    if (ReadNumber(right, number)) {
        value = left;
    } else if (ReadNumber(left, number)) {
        value = right;
        op = FormsOf(op).mirrored;
    } else {
        return std::nullopt;
    }
    if (double unused = 0; value.empty() || ReadNumber(value, unused))
        return std::nullopt;
    if (negate)
        op = FormsOf(op).negated;
    return Interval(std::wstring(value), op, number);
}

bool ZoThresholdWithin(ZoThreshold const& inner, ZoThreshold const& outer)
{
    if (inner.value != outer.value)
        return false;
    if (inner.negated || outer.negated)
        return inner.negated && outer.negated && inner.low == outer.low;
    bool const lowOk = inner.low > outer.low || (inner.low == outer.low && (!outer.lowOpen || inner.lowOpen));
    bool const highOk = inner.high < outer.high || (inner.high == outer.high && (!outer.highOpen || inner.highOpen));
    return lowOk && highOk;
}

bool ZoThresholdsComplement(ZoThreshold const& a, ZoThreshold const& b)
{
    if (a.value != b.value)
        return false;
    if (a.negated || b.negated)
        return a.negated != b.negated && a.low == b.low && a.low == a.high && b.low == b.high;
    // Two half-lines that meet at one bound, that bound in exactly one of them.
    if (a.low == -kInfinity && b.high == kInfinity)
        return a.high == b.low && a.highOpen != b.lowOpen;
    if (b.low == -kInfinity && a.high == kInfinity)
        return b.high == a.low && b.highOpen != a.lowOpen;
    return false;
}
