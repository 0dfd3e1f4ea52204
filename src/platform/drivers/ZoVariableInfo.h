#pragma once
#include "ZoValueInfo.h"
#include "ZoVariableType.h"
#include "platform/tools/ZoBasicString.h"

#include <string_view>

// One variable of a device, as the device catalog describes it. The texts live in the
// catalog that holds the variable.
struct ZoVariableInfo {
    std::wstring_view code;
    std::wstring_view description;
    std::wstring_view unit;
    ZoVariableKind kind = kZoAnalog;
    bool writable = false;
    ZoValueInfo valueInfo;

    ZoTypeSet Type() const { return ZoTypeOf(kind); }
};

// The value a variable takes when a formula is checked in the editor, where no plant is
// connected: the variable's rest value. 0 (FALSE for a digital), moved into the declared
// range when 0 lies outside it (the nearer bound), or the first named value of a variable
// whose named values do not include 0. Texts take the empty text (not a number: 0 here).
double ZoSampleValue(ZoVariableInfo const& variable);

// A short text about the values the variable takes, for labels and tooltips: its named
// values ("0 Stopped, 1 Running"), else its range and unit ("0 to 100 %"), else its kind.
ZoBasicString<wchar_t> ZoDescribeValues(ZoVariableInfo const& variable);
