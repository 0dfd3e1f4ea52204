#include "actions/ZoSplitFileName.h"

bool SplitFileName(std::wstring_view title, ZoBasicString<wchar_t>& name, ZoBasicString<wchar_t>& number)
{
    name.clear();
    number.clear();
    std::size_t const point = title.rfind(L'.');
    if (point == std::wstring_view::npos || point == 0 || point + 1 == title.size())
        return false;
    name.assign(title.substr(0, point));
    number.assign(title.substr(point + 1));
    return true;
}
