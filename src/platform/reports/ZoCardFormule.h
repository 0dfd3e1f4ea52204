#pragma once
#include "platform/tools/ZoBasicString.h"

#include <string_view>

// The display format of a number in a report card or an annotation, as text:
//
//   [ ["0"] D ] "." [ ["0"] d ]
//
// D is the count of integer digits (1 to 9), present only when the count is fixed, with a
// "0" before it when the integer part is padded with zeros; d is the count of decimals
// (0 to 9), present only when it is fixed, with a "0" before it when the decimals are
// padded with zeros. Automatic integer digits and 3 unpadded decimals: ".3"; 5 padded
// integer digits and 2 padded decimals: "05.02"; automatic both: ".".
//
// Counts above 9 cannot be written (one character each); a padding of an automatic count
// has no meaning and is not written.
class ZoCardFormule {
public:
    static constexpr int kAutomatic = -1;
    static constexpr int kMaxCount = 9;
    // What a missing or unreadable format means: automatic integer digits, 3 decimals,
    // no padding.
    static constexpr int kDefaultDigits = kAutomatic;
    static constexpr int kDefaultDecimals = 3;

    // Reads a format as WriteFormat writes it. Anything else (including the empty text)
    // sets the defaults and returns false. Never reads past the text.
    static bool ParseFormat(std::wstring_view text, int& digits, int& decimals, bool& padInteger,
                            bool& padDecimals);
    // The format text; a count outside 1..9 (digits) or 0..9 (decimals) is written as
    // automatic, and the padding of an automatic count is dropped.
    static ZoBasicString<wchar_t> WriteFormat(int digits, int decimals, bool padInteger, bool padDecimals);
};
