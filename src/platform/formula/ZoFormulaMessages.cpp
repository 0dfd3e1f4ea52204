#include "ZoFormulaMessages.h"

#include "ZoFormulaFunctions.h"
#include "platform/drivers/ZoNumberText.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

namespace {

constexpr std::size_t kLongestQuote = 40;

// The characters of a span as the message quotes them: cut after 40 characters, with line
// breaks and other control characters shown as blanks.
ZoBasicString<wchar_t> Quote(std::wstring_view expression, std::uint32_t pos, std::uint32_t len)
{
    std::wstring_view piece = pos <= expression.size() ? expression.substr(pos, len) : std::wstring_view();
    bool const cut = piece.size() > kLongestQuote;
    if (cut)
        piece = piece.substr(0, kLongestQuote - 1);
    ZoBasicString<wchar_t> out;
    out.reserve(piece.size() + 1);
    for (wchar_t c : piece)
        out.push_back(c < 0x20 || c == 0x7F ? L' ' : c);
    if (cut)
        out.push_back(0x2026);
    return out;
}

ZoBasicString<wchar_t> TypeName(int type)
{
    return ZoLoadString(61150 + static_cast<unsigned>(type >= 0 && type <= 2 ? type : 0));
}

// "one argument", "3 arguments", "1 or 2 arguments", "at least one argument"...
ZoBasicString<wchar_t> ArgumentsTaken(ZoFunction const& function)
{
    if (function.maxArgs == kZoManyArgs && function.minArgs == 1)
        return ZoLoadString(61164);
    if (function.maxArgs == kZoManyArgs)
        return ZoFormat(ZoLoadString(61163).c_str(), static_cast<int>(function.minArgs));
    if (function.minArgs == function.maxArgs)
        return function.minArgs == 1 ? ZoLoadString(61160) : ZoFormat(ZoLoadString(61161).c_str(), static_cast<int>(function.minArgs));
    return ZoFormat(ZoLoadString(61162).c_str(), static_cast<int>(function.minArgs), static_cast<int>(function.maxArgs));
}

ZoBasicString<wchar_t> Values(ZoFormulaFinding const& fault)
{
    ZoBasicString<wchar_t> out = L"(";
    for (int i = 0; i < fault.valueCount && i < 3; ++i) {
        if (i > 0)
            out += L", ";
        ZoAppendNumberText(out, fault.values[i]);
    }
    out += L')';
    return out;
}

} // namespace

ZoBasicString<wchar_t> ZoFormulaCodeMessage(int code)
{
    if (code == kZoFormulaOk)
        return ZoLoadString(61000);
    if (code == kZoFormulaModule)
        return ZoLoadString(61001);
    if (code == kZoFormulaMarked)
        return ZoLoadString(61062);
    if (code >= kZoFormulaSyntax && code <= kZoFormulaDomain)
        return ZoLoadString(61000 + static_cast<unsigned>(code));
    return ZoFormat(ZoLoadString(61099).c_str(), code);
}

ZoBasicString<wchar_t> ZoFormulaMessage(ZoFormulaFinding const& fault, std::wstring_view expression)
{
    if (!fault.text)
        return ZoFormulaCodeMessage(fault.code);
    ZoBasicString<wchar_t> const format = ZoLoadString(fault.text);
    wchar_t const* const f = format.c_str();
    ZoBasicString<wchar_t> const token = Quote(expression, fault.pos, fault.len);
    ZoBasicString<wchar_t> const second = Quote(expression, fault.pos2, fault.len2);
    int const position = static_cast<int>(fault.pos) + 1;
    wchar_t const* const result = fault.result ? L"TRUE" : L"FALSE";
    switch (fault.text) {
    case kZoTextEmpty:
    case kZoTextNotOneVariable:
        return format;
    case kZoTextTooLong:
        return ZoFormat(f, static_cast<int>(kZoFormulaMaxLength));
    case kZoTextValueExpected:
    case kZoTextArgumentSeparator:
        return ZoFormat(f, position, token.c_str());
    case kZoTextUnexpectedEnd:
        return ZoFormat(f, static_cast<int>(fault.pos));
    case kZoTextUnclosedParenthesis:
    case kZoTextUnclosedText:
    case kZoTextUnclosedReference:
    case kZoTextDivisionByZero:
        return ZoFormat(f, position);
    case kZoTextTooDeep:
        return ZoFormat(f, kZoFormulaMaxDepth, position);
    case kZoTextArgumentCount:
        return ZoFormat(f, token.c_str(), position, fault.count, ArgumentsTaken(ZoFunctionAt(fault.function)).c_str());
    case kZoTextUnknownVariable:
        return ZoFormat(f, token.c_str(), second.c_str(), static_cast<int>(fault.pos2) + 1);
    case kZoTextNeedsLogical:
        return ZoFormat(f, token.c_str(), position, TypeName(fault.types[0]).c_str());
    case kZoTextBranchTypes:
        return ZoFormat(f, token.c_str(), position, TypeName(fault.types[0]).c_str(), TypeName(fault.types[1]).c_str());
    case kZoTextReadOnly:
        return ZoFormat(f, token.c_str());
    case kZoTextDomain:
        return ZoFormat(f, token.c_str(), position, Values(fault).c_str());
    case kZoTextAlwaysBetween:
        return ZoFormat(f, position, result, second.c_str(), ZoNumberText(fault.values[0]).c_str(),
                        ZoNumberText(fault.values[1]).c_str());
    case kZoTextAlwaysAtLeast:
    case kZoTextAlwaysAtMost:
        return ZoFormat(f, position, result, second.c_str(), ZoNumberText(fault.values[0]).c_str());
    default: // the token, then its position
        return ZoFormat(f, token.c_str(), position);
    }
}
