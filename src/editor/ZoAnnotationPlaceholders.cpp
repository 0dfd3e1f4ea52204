#include "editor/ZoAnnotationPlaceholders.h"

#include "platform/tools/ZoFormat.h"

#include <algorithm>

namespace {

struct Placeholder {
    wchar_t const* text;
    unsigned label;
};

constexpr Placeholder kPlaceholders[ZoAnnotationChoiceCount] = {
    {L"%n", 32817}, {L"%c", 32818}, {L"%s", 33137}, {L"%b", 32819}, {L"%e", 32820},
    {L"%d", 32821}, {L"%t", 32822}, {L"%g", 32823}, {L"%a", 32824}, {L"%%", 32825},
};

bool IsChoice(int choice)
{
    return choice >= 0 && choice < ZoAnnotationChoiceCount;
}

} // namespace

ZoBasicString<wchar_t> ZoPlaceholderText(int choice)
{
    return IsChoice(choice) ? kPlaceholders[choice].text : L"";
}

unsigned ZoPlaceholderLabel(int choice)
{
    return IsChoice(choice) ? kPlaceholders[choice].label : 0;
}

ZoBasicString<wchar_t> ZoNumberedPlaceholder(wchar_t letter, int number)
{
    wchar_t const format[] = {L'%', L'%', letter, L'%', L'd', 0};
    return ZoFormat(format, number);
}

int ZoInsertPlaceholder(std::wstring& text, int selStart, int selEnd, std::wstring const& placeholder)
{
    std::size_t const start = std::min(text.size(), std::size_t(std::max(selStart, 0)));
    std::size_t const end = std::max(start, std::min(text.size(), std::size_t(std::max(selEnd, 0))));
    text.replace(start, end - start, placeholder);
    return int(placeholder.size());
}
