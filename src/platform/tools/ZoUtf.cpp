#include "ZoUtf.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Decodes one UTF-8 sequence at s[i]; on a malformed one returns U+FFFD and consumes
// exactly one byte, so that decoding always advances and never reads past the end.
char32_t DecodeOne(std::string_view s, std::size_t& i)
{
    auto const b0 = static_cast<unsigned char>(s[i]);
    if (b0 < 0x80) {
        ++i;
        return b0;
    }
    int length = 0;
    char32_t cp = 0;
    char32_t minimum = 0;
    if ((b0 & 0xE0) == 0xC0) { length = 2; cp = b0 & 0x1F; minimum = 0x80; }
    else if ((b0 & 0xF0) == 0xE0) { length = 3; cp = b0 & 0x0F; minimum = 0x800; }
    else if ((b0 & 0xF8) == 0xF0) { length = 4; cp = b0 & 0x07; minimum = 0x10000; }
    else { ++i; return kReplacement; }
    if (i + length > s.size()) { ++i; return kReplacement; }
    for (int k = 1; k < length; ++k) {
        auto const b = static_cast<unsigned char>(s[i + k]);
        if ((b & 0xC0) != 0x80) { ++i; return kReplacement; }
        cp = (cp << 6) | (b & 0x3F);
    }
    if (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) { ++i; return kReplacement; }
    i += length;
    return cp;
}

void AppendWide(std::wstring& out, char32_t cp)
{
    if constexpr (sizeof(wchar_t) >= 4) {
        out.push_back(static_cast<wchar_t>(cp));
    } else {
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(static_cast<wchar_t>(0xD800 + (cp >> 10)));
            out.push_back(static_cast<wchar_t>(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(static_cast<wchar_t>(cp));
        }
    }
}

bool IsAscii(std::string_view s)
{
    std::size_t i = 0;
    for (; i + 8 <= s.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, s.data() + i, 8);
        if (word & 0x8080808080808080ull)
            return false;
    }
    for (; i < s.size(); ++i)
        if (static_cast<unsigned char>(s[i]) >= 0x80)
            return false;
    return true;
}

} // namespace

void ZoAppendUtf8(std::string& out, char32_t cp)
{
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

void Utf16ToUtf8(ZoBasicString<char>& out, std::wstring_view in)
{
    out.clear();
    out.reserve(in.size());
    for (std::size_t i = 0; i < in.size(); ++i) {
        char32_t cp = static_cast<char32_t>(in[i]);
        if constexpr (sizeof(wchar_t) < 4) {
            cp &= 0xFFFF;
            if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < in.size()) {
                char32_t const low = static_cast<char32_t>(in[i + 1]) & 0xFFFF;
                if (low >= 0xDC00 && low <= 0xDFFF) {
                    cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
        }
        if ((cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF)
            cp = kReplacement;
        ZoAppendUtf8(out, cp);
    }
}

void Utf16ToUtf8(ZoBasicString<char>& out, ZoBasicString<wchar_t> const& in)
{
    Utf16ToUtf8(out, std::wstring_view(in));
}

std::string ZoToUtf8(std::wstring_view in)
{
    std::string out;
    Utf16ToUtf8(out, in);
    return out;
}

void ZoAppendUtf8AsWide(std::wstring& out, std::string_view utf8)
{
    if (IsAscii(utf8)) {
        std::size_t const base = out.size();
        out.resize(base + utf8.size());
        for (std::size_t i = 0; i < utf8.size(); ++i)
            out[base + i] = static_cast<wchar_t>(static_cast<unsigned char>(utf8[i]));
        return;
    }
    out.reserve(out.size() + utf8.size());
    for (std::size_t i = 0; i < utf8.size();)
        AppendWide(out, DecodeOne(utf8, i));
}

std::wstring ZoFromUtf8(std::string_view utf8)
{
    std::wstring out;
    ZoAppendUtf8AsWide(out, utf8);
    return out;
}

ZoBasicString<wchar_t>& ParseXMLText(ZoBasicString<char> const& text, ZoBasicString<wchar_t>& out)
{
    out.clear();
    ZoAppendUtf8AsWide(out, text);
    return out;
}

ZoBasicString<wchar_t>& ParseXMLText(char const* text, ZoBasicString<wchar_t>& out)
{
    out.clear();
    if (text)
        ZoAppendUtf8AsWide(out, text);
    return out;
}

bool ZoIsValidUtf8(std::string_view utf8)
{
    if (IsAscii(utf8))
        return true;
    for (std::size_t i = 0; i < utf8.size();) {
        std::size_t const start = i;
        char32_t const cp = DecodeOne(utf8, i);
        // A genuine U+FFFD takes three bytes; a replacement for a fault takes one.
        if (cp == kReplacement && i - start == 1)
            return false;
    }
    return true;
}

void ZoSanitizeUtf8(std::string& out, std::string_view utf8)
{
    out.clear();
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();)
        ZoAppendUtf8(out, DecodeOne(utf8, i));
}
