#include "ZoWideChar.h"

#include <QChar>

wchar_t ZoWideChar::ToUpper(wchar_t c)
{
    if (c < 0x80)
        return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c;
    auto const code = static_cast<char32_t>(c);
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return c;
    return static_cast<wchar_t>(QChar::toUpper(code));
}

void ZoWideChar::ToUpper(std::wstring& text)
{
    for (wchar_t& c : text)
        c = ToUpper(c);
}

void ZoWideChar::ToUpper(std::wstring_view text, std::wstring& out)
{
    out.assign(text);
    ToUpper(out);
}
