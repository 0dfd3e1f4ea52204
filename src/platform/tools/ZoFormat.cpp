#include "ZoFormat.h"

#include <cwchar>

namespace {

void AppendNumber(std::wstring& out, unsigned long long value, bool negative, unsigned base,
                  bool upper, int width, bool zeroPad, bool leftAlign)
{
    wchar_t digits[32];
    int count = 0;
    wchar_t const* table = upper ? L"0123456789ABCDEF" : L"0123456789abcdef";
    do {
        digits[count++] = table[value % base];
        value /= base;
    } while (value != 0 && count < 32);
    int const length = count + (negative ? 1 : 0);
    int const padding = width > length ? width - length : 0;
    if (!leftAlign && !zeroPad)
        out.append(static_cast<std::size_t>(padding), L' ');
    if (negative)
        out.push_back(L'-');
    if (!leftAlign && zeroPad)
        out.append(static_cast<std::size_t>(padding), L'0');
    while (count > 0)
        out.push_back(digits[--count]);
    if (leftAlign)
        out.append(static_cast<std::size_t>(padding), L' ');
}

} // namespace

ZoBasicString<wchar_t> ZoVFormat(wchar_t const* format, va_list args, int maxChars)
{
    std::wstring out;
    if (!format)
        return out;
    out.reserve(std::wcslen(format) + 32);
    for (wchar_t const* p = format; *p; ++p) {
        if (*p != L'%') {
            // The text up to the next conversion, in one piece.
            wchar_t const* const run = p;
            while (p[1] && p[1] != L'%')
                ++p;
            out.append(run, static_cast<std::size_t>(p - run) + 1);
            continue;
        }
        wchar_t const* const start = p;
        ++p;
        bool zeroPad = false;
        bool leftAlign = false;
        for (; *p == L'0' || *p == L'-'; ++p)
            (*p == L'0' ? zeroPad : leftAlign) = true;
        int width = 0;
        for (; *p >= L'0' && *p <= L'9'; ++p)
            width = width < 1000 ? width * 10 + (*p - L'0') : width;
        while (*p == L'l' || *p == L'h')
            ++p;
        switch (*p) {
        case L'%':
            out.push_back(L'%');
            break;
        case L's': {
            wchar_t const* text = va_arg(args, wchar_t const*);
            std::size_t const length = text ? std::wcslen(text) : 0;
            if (!leftAlign && width > static_cast<int>(length))
                out.append(static_cast<std::size_t>(width) - length, L' ');
            if (text)
                out.append(text, length);
            if (leftAlign && width > static_cast<int>(length))
                out.append(static_cast<std::size_t>(width) - length, L' ');
            break;
        }
        case L'd':
        case L'i': {
            long long const value = va_arg(args, int);
            unsigned long long const magnitude = value < 0 ? 0ull - static_cast<unsigned long long>(value)
                                                           : static_cast<unsigned long long>(value);
            AppendNumber(out, magnitude, value < 0, 10, false, width, zeroPad, leftAlign);
            break;
        }
        case L'u':
            AppendNumber(out, va_arg(args, unsigned), false, 10, false, width, zeroPad, leftAlign);
            break;
        case L'x':
        case L'X':
            AppendNumber(out, va_arg(args, unsigned), false, 16, *p == L'X', width, zeroPad, leftAlign);
            break;
        case L'c':
            out.push_back(static_cast<wchar_t>(va_arg(args, int)));
            break;
        default:
            // Not a conversion we know: keep the text as it stands.
            out.append(start, static_cast<std::size_t>(p - start) + (*p ? 1 : 0));
            if (!*p)
                --p;
            break;
        }
    }
    if (maxChars > 0 && out.size() > static_cast<std::size_t>(maxChars))
        out.resize(static_cast<std::size_t>(maxChars));
    return out;
}

ZoBasicString<wchar_t> ZoFormat(wchar_t const* format, ...)
{
    va_list args;
    va_start(args, format);
    std::wstring out = ZoVFormat(format, args);
    va_end(args);
    return out;
}

ZoBasicString<wchar_t> ZoFormatN(int maxChars, wchar_t const* format, ...)
{
    va_list args;
    va_start(args, format);
    std::wstring out = ZoVFormat(format, args, maxChars);
    va_end(args);
    return out;
}
