#include "ZoValueInfo.h"

#include <cmath>

ZoNamedValue const* ZoValueInfo::Named(double value) const
{
    for (ZoNamedValue const& named : values)
        if (named.value == value)
            return &named;
    return nullptr;
}

bool ZoValueInfo::Accepts(double value) const
{
    if (flags & kZoValueNoCheck)
        return true;
    if (std::isnan(value))
        return false;
    if ((flags & kZoValueRange) && (value < min || value > max))
        return false;
    if ((flags & kZoValueWhole) && std::trunc(value) != value)
        return false;
    if ((flags & kZoValueNamed) && values.size() == 2 && !Named(value))
        return false;
    return true;
}
