#include "ZoVariableInfo.h"

#include "ZoNumberText.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

#include <cmath>

double ZoSampleValue(ZoVariableInfo const& variable)
{
    ZoValueInfo const& info = variable.valueInfo;
    if (variable.kind == kZoText)
        return 0;
    if ((info.flags & kZoValueNamed) && !info.values.empty() && !info.Named(0))
        return info.values.front().value;
    if (info.flags & kZoValueRange) {
        if (info.min > 0)
            return info.min;
        if (info.max < 0)
            return info.max;
    }
    return 0;
}

ZoBasicString<wchar_t> ZoDescribeValues(ZoVariableInfo const& variable)
{
    ZoValueInfo const& info = variable.valueInfo;
    ZoBasicString<wchar_t> out;
    if ((info.flags & kZoValueNamed) && !info.values.empty()) {
        for (ZoNamedValue const& named : info.values) {
            if (!out.empty())
                out += L", ";
            ZoAppendNumberText(out, named.value);
            out += L' ';
            out += named.text;
        }
        return out;
    }
    if ((info.flags & kZoValueRange) && std::isfinite(info.min) && std::isfinite(info.max)) {
        out = ZoFormat(ZoLoadString(61230).c_str(), ZoNumberText(info.min).c_str(), ZoNumberText(info.max).c_str());
    } else if (variable.kind == kZoText) {
        out = ZoLoadString(61233);
    } else {
        out = ZoLoadString((info.flags & kZoValueWhole) ? 61232 : 61231);
    }
    if (!variable.unit.empty()) {
        out += L' ';
        out += variable.unit;
    }
    return out;
}
