#pragma once
#include <string>
#include <string_view>

// Case of single wide characters, the same on every system and in every locale.
//
// ToUpper maps one character to one character (the simple upper-case mapping of Unicode),
// so an upper-cased text has exactly as many characters as the original and a position in
// one is the same position in the other. Characters whose upper case is more than one
// character ("ß") and lone surrogates are kept as they are. Where wchar_t holds UTF-16
// units, a character outside the basic plane is two units and is kept as it is.
struct ZoWideChar {
    static wchar_t ToUpper(wchar_t c);
    // Upper-cases every character in place.
    static void ToUpper(std::wstring& text);
    // out = text upper-cased (out is overwritten; its capacity is reused).
    static void ToUpper(std::wstring_view text, std::wstring& out);
};
