#include "ZoIds.h"

#include <cwchar>

namespace {

constexpr std::size_t kMaxIdLength = 64;

bool IsControl(wchar_t c)
{
    auto const code = static_cast<unsigned long>(c);
    return code < 0x20 || (code >= 0x7F && code <= 0x9F);
}

// A code unit that is no character on its own where wchar_t holds whole code points.
bool IsNotACharacter(wchar_t c)
{
    if constexpr (sizeof(wchar_t) >= 4) {
        auto const code = static_cast<unsigned long>(c);
        return (code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF;
    }
    return false;
}

bool IsForbidden(wchar_t c)
{
    switch (c) {
    case L'?': case L'/': case L'\\': case L'"': case L'<': case L'>': case L'&':
        return true;
    default:
        return false;
    }
}

bool IsBlank(wchar_t c)
{
    return c == L' ' || c == L'\u00A0' || c == L'\u3000';
}

} // namespace

bool IsValidId(wchar_t const* text, bool /*flag*/)
{
    if (!text || !*text)
        return false;
    std::size_t const length = std::wcslen(text);
    if (length > kMaxIdLength)
        return false;
    if (IsBlank(text[0]) || IsBlank(text[length - 1]))
        return false;
    for (std::size_t i = 0; i < length; ++i) {
        wchar_t const c = text[i];
        if (IsControl(c) || IsNotACharacter(c) || IsForbidden(c))
            return false;
    }
    return true;
}

long HtoL(wchar_t const* text, int length)
{
    if (!text)
        return 0;
    // Accumulated unsigned so that a long run of digits wraps instead of overflowing.
    unsigned long value = 0;
    for (int i = 0; i < length && text[i]; ++i) {
        wchar_t const c = text[i];
        unsigned digit;
        if (c >= L'0' && c <= L'9')
            digit = static_cast<unsigned>(c - L'0');
        else if (c >= L'A' && c <= L'F')
            digit = static_cast<unsigned>(c - L'A' + 10);
        else if (c >= L'a' && c <= L'f')
            digit = static_cast<unsigned>(c - L'a' + 10);
        else
            break;
        value = (value << 4) | digit;
    }
    return static_cast<long>(value);
}
