#include "actions/ZoRecipientAddresses.h"

#include <cwctype>

namespace {

bool IsBlank(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n';
}

bool IsSeparator(wchar_t c)
{
    return c == L';' || c == L',';
}

bool IsAsciiDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

bool IsAsciiLetter(wchar_t c)
{
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

// Characters that never stand in an address as people type it (quoted local parts and
// address literals are legal but unheard of in alarm mail).
bool IsForbiddenInAddress(wchar_t c)
{
    if (c < 0x20 || c == 0x7F || IsBlank(c))
        return true;
    return std::wstring_view(L"()<>[]\\,;:\"").find(c) != std::wstring_view::npos;
}

bool HasDotProblem(std::wstring_view part)
{
    return part.empty() || part.front() == L'.' || part.back() == L'.' || part.find(L"..") != std::wstring_view::npos;
}

bool IsValidDomainLabel(std::wstring_view label)
{
    if (label.empty() || label.size() > 63 || label.front() == L'-' || label.back() == L'-')
        return false;
    for (wchar_t c : label) {
        bool const nonAscii = static_cast<unsigned long>(c) > 0x7F;
        if (!IsAsciiLetter(c) && !IsAsciiDigit(c) && c != L'-' && !nonAscii)
            return false;
    }
    return true;
}

template <class Check>
ZoBasicString<wchar_t> FirstFailing(std::wstring_view text, Check check)
{
    for (ZoBasicString<wchar_t> const& entry : ZoSplitRecipients(text))
        if (!check(entry))
            return entry;
    return {};
}

} // namespace

std::vector<ZoBasicString<wchar_t>> ZoSplitRecipients(std::wstring_view text)
{
    std::vector<ZoBasicString<wchar_t>> entries;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = start;
        while (end < text.size() && !IsSeparator(text[end]))
            ++end;
        std::size_t first = start;
        std::size_t last = end;
        while (first < last && IsBlank(text[first]))
            ++first;
        while (last > first && IsBlank(text[last - 1]))
            --last;
        if (last > first)
            entries.emplace_back(text.substr(first, last - first));
        start = end + 1;
    }
    return entries;
}

ZoBasicString<wchar_t> ZoJoinRecipients(std::vector<ZoBasicString<wchar_t>> const& entries)
{
    ZoBasicString<wchar_t> joined;
    for (ZoBasicString<wchar_t> const& entry : entries) {
        if (!joined.empty())
            joined += L"; ";
        joined += entry;
    }
    return joined;
}

bool ZoIsPlausibleMailAddress(std::wstring_view address)
{
    std::size_t const at = address.find(L'@');
    if (at == std::wstring_view::npos || address.find(L'@', at + 1) != std::wstring_view::npos)
        return false;
    for (wchar_t c : address)
        if (IsForbiddenInAddress(c))
            return false;
    std::wstring_view const local = address.substr(0, at);
    std::wstring_view const domain = address.substr(at + 1);
    if (local.size() > 64 || domain.size() > 253 || HasDotProblem(local) || HasDotProblem(domain))
        return false;
    int labels = 0;
    std::size_t start = 0;
    while (start <= domain.size()) {
        std::size_t end = domain.find(L'.', start);
        if (end == std::wstring_view::npos)
            end = domain.size();
        if (!IsValidDomainLabel(domain.substr(start, end - start)))
            return false;
        ++labels;
        start = end + 1;
    }
    return labels >= 2;
}

bool ZoIsValidPhoneNumber(std::wstring_view number)
{
    std::size_t i = 0;
    if (!number.empty() && number.front() == L'+')
        i = 1;
    int digits = 0;
    for (; i < number.size(); ++i) {
        wchar_t const c = number[i];
        if (IsAsciiDigit(c))
            ++digits;
        else if (c != L' ')
            return false;
    }
    return digits >= 3 && digits <= 15;
}

ZoBasicString<wchar_t> ZoFirstInvalidMailAddress(std::wstring_view text)
{
    return FirstFailing(text, [](std::wstring_view entry) { return ZoIsPlausibleMailAddress(entry); });
}

ZoBasicString<wchar_t> ZoFirstInvalidPhoneNumber(std::wstring_view text)
{
    return FirstFailing(text, [](std::wstring_view entry) { return ZoIsValidPhoneNumber(entry); });
}
