#pragma once
#include <string_view>

// How long an SMS text is once encoded, and how many messages it takes.
//
// A text made only of characters of the GSM 7-bit alphabet is sent in that alphabet: 160
// septets fit in a single message, 153 in each part of a split one. The characters of the
// alphabet's extension table ( ^ { } \ [ ~ ] | and the euro sign, and the form feed) take
// two septets each. Any other character switches the whole text to UCS-2: 70 units in a
// single message, 67 in each part; a character beyond the basic plane takes two units.
// A character that takes two septets or two units is never split between two parts.
//
// forceBreakMessage decides what happens to a text longer than a single message: set, it
// is sent as several messages (parts the phone joins again); clear, only the first
// single message is sent and the rest of the text is cut.

enum class ZoSmsEncoding { Gsm7, Ucs2 };

struct ZoSmsLength {
    ZoSmsEncoding encoding = ZoSmsEncoding::Gsm7;
    int characters = 0;  // characters of the text (code points)
    int units = 0;       // septets (GSM 7-bit) or 16-bit units (UCS-2) of the whole text
    int messages = 0;    // messages sent: 0 for an empty text, 1 when cut
    int perMessage = 0;  // units that fit in one of them: 160/70 single, 153/67 a part
    int sentCharacters = 0; // characters that are sent (all of them unless cut)
    bool cut = false;    // the text is longer than a single message and forceBreak is clear
};

// Whether a character (a code point) belongs to the GSM 7-bit alphabet, and how many
// septets it takes there (1, 2 for the extension table, 0 when it is not in it).
int ZoGsm7Septets(char32_t codePoint);

// Measures a text as typed (UTF-16 or UTF-32 wide text: both are read by code point).
ZoSmsLength ZoMeasureSms(std::wstring_view text, bool forceBreak);
