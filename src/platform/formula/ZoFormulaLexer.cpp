#include "ZoFormulaLexer.h"

#include "ZoFormulaCodes.h"

#include <charconv>
#include <cmath>

namespace {

bool IsBlank(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == 0xA0 || c == 0x3000 || c == 0xFEFF;
}

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

bool IsLetter(wchar_t c)
{
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_';
}

bool IsHexDigit(wchar_t c)
{
    return IsDigit(c) || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F');
}

bool SameWord(std::wstring_view word, std::wstring_view upper)
{
    if (word.size() != upper.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        wchar_t c = word[i];
        if (c >= L'a' && c <= L'z')
            c = static_cast<wchar_t>(c - L'a' + L'A');
        if (c != upper[i])
            return false;
    }
    return true;
}

// A token of `kind` over the text from start up to end.
ZoToken MakeToken(ZoTok kind, std::uint32_t start, std::uint32_t end)
{
    ZoToken token;
    token.kind = kind;
    token.pos = start;
    token.len = end - start;
    return token;
}

} // namespace

bool ZoFormulaLexer::IsWordChar(std::size_t i) const
{
    return i < m_text.size() && (IsLetter(m_text[i]) || IsDigit(m_text[i]));
}

ZoToken ZoFormulaLexer::Bad(std::uint32_t start, std::uint32_t end, unsigned text)
{
    m_pos = end;
    ZoToken token = MakeToken(ZoTok::Bad, start, end);
    token.badText = text;
    return token;
}

ZoToken ZoFormulaLexer::Next()
{
    std::size_t const size = m_text.size();
    while (m_pos < size && IsBlank(m_text[m_pos]))
        ++m_pos;
    std::uint32_t const start = m_pos;
    ZoToken token;
    token.pos = start;
    if (m_pos >= size)
        return token;
    wchar_t const c = m_text[m_pos];
    wchar_t const next = m_pos + 1 < size ? m_text[m_pos + 1] : 0;
    auto simple = [&](ZoTok kind, std::uint32_t length) {
        m_pos += length;
        token.kind = kind;
        token.len = length;
        return token;
    };
    if (IsDigit(c) || (c == L'.' && IsDigit(next)))
        return NumberToken(start);
    if (IsLetter(c))
        return WordToken(start);
    switch (c) {
    case L'"': return QuotedToken(start);
    case L'[': return BracketToken(start);
    case L'@': return ModuleToken(start);
    case L'(': return simple(ZoTok::Open, 1);
    case L')': return simple(ZoTok::Close, 1);
    case L',': return simple(ZoTok::Comma, 1);
    case L'+': return simple(ZoTok::Plus, 1);
    case L'-': return simple(ZoTok::Minus, 1);
    case L'*': return simple(ZoTok::Star, 1);
    case L'/': return simple(ZoTok::Slash, 1);
    case L'%': return simple(ZoTok::Percent, 1);
    case L'^': return simple(ZoTok::Caret, 1);
    case L'=': return next == L'=' ? simple(ZoTok::Equal, 2) : simple(ZoTok::Equal, 1);
    case L'!': return next == L'=' ? simple(ZoTok::NotEqual, 2) : simple(ZoTok::Not, 1);
    case L'<':
        if (next == L'=')
            return simple(ZoTok::LessEqual, 2);
        return next == L'>' ? simple(ZoTok::NotEqual, 2) : simple(ZoTok::Less, 1);
    case L'>': return next == L'=' ? simple(ZoTok::GreaterEqual, 2) : simple(ZoTok::Greater, 1);
    case L'&': return next == L'&' ? simple(ZoTok::And, 2) : Bad(start, start + 1, kZoTextSingleAndOr);
    case L'|': return next == L'|' ? simple(ZoTok::Or, 2) : Bad(start, start + 1, kZoTextSingleAndOr);
    default: break;
    }
    // One character, or a surrogate pair where wchar_t is UTF-16.
    std::uint32_t end = start + 1;
    if (c >= 0xD800 && c <= 0xDBFF && end < size && m_text[end] >= 0xDC00 && m_text[end] <= 0xDFFF)
        ++end;
    return Bad(start, end, kZoTextUnexpectedCharacter);
}

ZoToken ZoFormulaLexer::NumberToken(std::uint32_t start)
{
    std::size_t const size = m_text.size();
    std::size_t i = start;
    bool hex = false;
    if (m_text[i] == L'0' && i + 1 < size && (m_text[i + 1] == L'x' || m_text[i + 1] == L'X') && i + 2 < size &&
        IsHexDigit(m_text[i + 2])) {
        hex = true;
        i += 2;
        while (i < size && IsHexDigit(m_text[i]))
            ++i;
    } else {
        while (i < size && IsDigit(m_text[i]))
            ++i;
        if (i < size && m_text[i] == L'.') {
            ++i;
            while (i < size && IsDigit(m_text[i]))
                ++i;
        }
        if (i < size && (m_text[i] == L'e' || m_text[i] == L'E')) {
            std::size_t j = i + 1;
            if (j < size && (m_text[j] == L'+' || m_text[j] == L'-'))
                ++j;
            if (j < size && IsDigit(m_text[j])) {
                i = j;
                while (i < size && IsDigit(m_text[i]))
                    ++i;
            }
        }
    }
    // A number runs into a name or another point: "12abc", "1.2.3", "0x1G".
    if (IsWordChar(i) || (i < size && m_text[i] == L'.')) {
        while (IsWordChar(i) || (i < size && m_text[i] == L'.'))
            ++i;
        return Bad(start, static_cast<std::uint32_t>(i), kZoTextMalformedNumber);
    }
    std::uint32_t const end = static_cast<std::uint32_t>(i);
    char digits[80];
    std::size_t const length = end - start - (hex ? 2 : 0);
    if (length >= sizeof digits)
        return Bad(start, end, kZoTextMalformedNumber);
    for (std::size_t k = 0; k < length; ++k)
        digits[k] = static_cast<char>(m_text[start + (hex ? 2 : 0) + k]);
    double value = 0;
    if (hex) {
        unsigned long long whole = 0;
        auto const result = std::from_chars(digits, digits + length, whole, 16);
        if (result.ec != std::errc())
            return Bad(start, end, kZoTextMalformedNumber);
        value = static_cast<double>(whole);
    } else {
        auto const result = std::from_chars(digits, digits + length, value);
        if (result.ec != std::errc() || result.ptr != digits + length || !std::isfinite(value))
            return Bad(start, end, kZoTextMalformedNumber);
    }
    m_pos = end;
    ZoToken token = MakeToken(ZoTok::Number, start, end);
    token.number = value;
    return token;
}

ZoToken ZoFormulaLexer::QuotedToken(std::uint32_t start)
{
    std::size_t i = start + 1;
    while (i < m_text.size()) {
        if (m_text[i] == L'"') {
            if (i + 1 < m_text.size() && m_text[i + 1] == L'"') {
                i += 2; // "" stands for one quote
                continue;
            }
            m_pos = static_cast<std::uint32_t>(i + 1);
            return MakeToken(ZoTok::Text, start, m_pos);
        }
        ++i;
    }
    return Bad(start, static_cast<std::uint32_t>(m_text.size()), kZoTextUnclosedText);
}

ZoToken ZoFormulaLexer::BracketToken(std::uint32_t start)
{
    std::size_t i = start + 1;
    while (i < m_text.size() && m_text[i] != L']' && m_text[i] != L'\n' && m_text[i] != L'\r')
        ++i;
    if (i >= m_text.size() || m_text[i] != L']')
        return Bad(start, static_cast<std::uint32_t>(i), kZoTextUnclosedReference);
    m_pos = static_cast<std::uint32_t>(i + 1);
    return MakeToken(ZoTok::Variable, start, m_pos);
}

ZoToken ZoFormulaLexer::ModuleToken(std::uint32_t start)
{
    // @Name or @Name.Name..., each name a letter or "_" followed by letters, digits or "_".
    std::size_t i = start + 1;
    bool valid = true;
    for (;;) {
        if (i < m_text.size() && IsLetter(m_text[i])) {
            while (IsWordChar(i))
                ++i;
        } else {
            valid = false;
        }
        if (!valid || i >= m_text.size() || m_text[i] != L'.')
            break;
        ++i;
    }
    if (!valid) {
        while (IsWordChar(i) || (i < m_text.size() && m_text[i] == L'.'))
            ++i;
        return Bad(start, static_cast<std::uint32_t>(i), kZoTextMalformedModule);
    }
    m_pos = static_cast<std::uint32_t>(i);
    return MakeToken(ZoTok::Module, start, m_pos);
}

ZoToken ZoFormulaLexer::WordToken(std::uint32_t start)
{
    std::size_t i = start;
    while (IsWordChar(i))
        ++i;
    m_pos = static_cast<std::uint32_t>(i);
    ZoToken token;
    token.pos = start;
    token.len = m_pos - start;
    std::wstring_view const word = m_text.substr(start, token.len);
    if (SameWord(word, L"AND"))
        token.kind = ZoTok::And;
    else if (SameWord(word, L"OR"))
        token.kind = ZoTok::Or;
    else if (SameWord(word, L"NOT"))
        token.kind = ZoTok::Not;
    else if (SameWord(word, L"TRUE"))
        token.kind = ZoTok::True;
    else if (SameWord(word, L"FALSE"))
        token.kind = ZoTok::False;
    else
        token.kind = ZoTok::Name;
    return token;
}
