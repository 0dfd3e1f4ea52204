#pragma once
#include "platform/tools/ZoBasicString.h"

#include <string_view>

// Variable names as formulas write them, without the brackets: "DEVICE.CODE", optionally
// followed by a period filter, "DEVICE.CODE/FILTER" (see ZoPeriod.h). The device name may
// itself hold points (events pseudo-devices carry the event's name), a code does not: the
// name splits at its last point before the filter. The filter starts at the first "/",
// a character that no device name holds.

struct ZoVariableNameParts {
    std::wstring_view device;
    std::wstring_view code;
    std::wstring_view filter; // without its "/"
    bool hasFilter = false;   // a "/" is present (the filter may still be empty)
};

// Splits without copying; false when there is no point or the device or the code is empty.
bool ZoSplitVariableName(std::wstring_view text, ZoVariableNameParts& parts);

// "DEVICE.CODE" into its two parts; false (parts emptied) when the text is not of that form.
// A text with a filter is not of that form: its filter would end up in the code.
bool SplitDriverVariable(std::wstring_view text, ZoBasicString<wchar_t>& device, ZoBasicString<wchar_t>& variable);
// "DEVICE.CODE" or "DEVICE.CODE/FILTER" into its parts; the filter is empty when there is
// none. False (parts emptied) when the text is not of that form or its "/" has no filter.
bool SplitFilterDriverVariable(std::wstring_view text, ZoBasicString<wchar_t>& device,
                               ZoBasicString<wchar_t>& variable, ZoBasicString<wchar_t>& filter);
