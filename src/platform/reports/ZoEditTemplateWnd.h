#pragma once
#include "platform/tools/ZoBasicString.h"

// Formats the numbers of report cards and annotations (the format of ZoCardFormule).
class ZoEditTemplateWnd {
public:
    // value written with:
    //  - digits: -1 automatic (as many integer digits as the value has), or 1 to 9: the
    //    width of the integer part, filled with zeros when padInteger, otherwise with
    //    blanks before the sign, so that numbers line up. A value with more integer digits
    //    is written whole: a width never cuts a number.
    //  - decimals: -1 automatic (as many as the value needs, at most 9), or 0 to 9, the
    //    value rounded half away from zero to that many; without padDecimals trailing
    //    zeros are dropped (and the point with them), with it they are kept.
    //  - thousands: the integer digits in groups of three separated by ",". The decimal
    //    point is ".".
    // A negative value shows "-" unless it rounds to zero. Not a number: "NaN"; infinities:
    // "∞" and "-∞". Rounding works on the shortest decimal text that reads back as the
    // value, so 2.345 with 2 decimals gives "2.35" as the user expects.
    static void FormatDouble(ZoBasicString<wchar_t>& out, double value, int digits, int decimals, bool thousands,
                             bool padInteger, bool padDecimals);
};
