#pragma once
#include "ZoBasicString.h"
#include <string_view>

// UTF-8 form of a wide string. Unpaired surrogates become U+FFFD.
void Utf16ToUtf8(ZoBasicString<char>& out, ZoBasicString<wchar_t> const& in);
void Utf16ToUtf8(ZoBasicString<char>& out, std::wstring_view in);
std::string ZoToUtf8(std::wstring_view in);
// Appends one character's UTF-8 bytes (any value up to U+10FFFF is written as it is).
void ZoAppendUtf8(std::string& out, char32_t c);

// Wide string from UTF-8 text; malformed sequences become U+FFFD, never an error.
ZoBasicString<wchar_t>& ParseXMLText(ZoBasicString<char> const& text, ZoBasicString<wchar_t>& out);
ZoBasicString<wchar_t>& ParseXMLText(char const* text, ZoBasicString<wchar_t>& out);
void ZoAppendUtf8AsWide(std::wstring& out, std::string_view utf8);
std::wstring ZoFromUtf8(std::string_view utf8);

// True when the bytes are well-formed UTF-8 (no overlongs, no surrogates, at most U+10FFFF).
bool ZoIsValidUtf8(std::string_view utf8);
// Copies the bytes, replacing every malformed sequence by U+FFFD.
void ZoSanitizeUtf8(std::string& out, std::string_view utf8);
