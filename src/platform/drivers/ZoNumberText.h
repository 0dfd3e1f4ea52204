#pragma once
#include "platform/tools/ZoBasicString.h"

// The shortest text that reads back as the same double ("2.5", "1e+21", "-0.1"); "inf",
// "-inf" and "nan" for the special values. Independent of the C locale.
void ZoAppendNumberText(ZoBasicString<wchar_t>& out, double value);
ZoBasicString<wchar_t> ZoNumberText(double value);
