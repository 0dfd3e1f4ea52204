#include "ZoVariableName.h"

bool ZoSplitVariableName(std::wstring_view text, ZoVariableNameParts& parts)
{
    parts = ZoVariableNameParts();
    std::size_t const slash = text.find(L'/');
    if (slash != std::wstring_view::npos) {
        parts.filter = text.substr(slash + 1);
        parts.hasFilter = true;
        text = text.substr(0, slash);
    }
    std::size_t const point = text.rfind(L'.');
    if (point == std::wstring_view::npos || point == 0 || point + 1 == text.size())
        return false;
    parts.device = text.substr(0, point);
    parts.code = text.substr(point + 1);
    return true;
}

bool SplitDriverVariable(std::wstring_view text, ZoBasicString<wchar_t>& device, ZoBasicString<wchar_t>& variable)
{
    std::size_t const point = text.rfind(L'.');
    if (point == std::wstring_view::npos || point == 0 || point + 1 == text.size()) {
        device.clear();
        variable.clear();
        return false;
    }
    device.assign(text.substr(0, point));
    variable.assign(text.substr(point + 1));
    return true;
}

bool SplitFilterDriverVariable(std::wstring_view text, ZoBasicString<wchar_t>& device,
                               ZoBasicString<wchar_t>& variable, ZoBasicString<wchar_t>& filter)
{
    ZoVariableNameParts parts;
    if (!ZoSplitVariableName(text, parts) || (parts.hasFilter && parts.filter.empty())) {
        device.clear();
        variable.clear();
        filter.clear();
        return false;
    }
    device.assign(parts.device);
    variable.assign(parts.code);
    filter.assign(parts.filter);
    return true;
}
