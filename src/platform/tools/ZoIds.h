#pragma once

// Whether a user-typed name may serve as an element name (events, groups, time tables).
// A valid name is not empty, has at most 64 characters, no control character, none of
// ? / \ " < > &, and no blank at its start or end. The flag is kept for the callers'
// signature; the rule is the same either way.
//   - characters are wchar_t units, so the limit of 64 counts code points where wchar_t is
//     4 bytes and UTF-16 units where it is 2;
//   - control characters are U+0000..U+001F and U+007F..U+009F; where wchar_t is 4 bytes,
//     surrogate code points and values above U+10FFFF are refused as well;
//   - blanks are the space, the no-break space (U+00A0) and the ideographic space (U+3000);
//     blanks inside the name are allowed.
// The forbidden characters are those that would break a node path ("?", "/") or read
// badly in XML text and file names.
bool IsValidId(wchar_t const* text, bool flag);

// Value of the hexadecimal number in the first `length` characters of text (fewer when
// the text is shorter); stops at the first character that is not a hex digit. Upper and
// lower case digits are both read; no sign and no "0x" prefix; a null text or a length
// below 1 gives 0; more digits than a long holds keep only the low bits.
long HtoL(wchar_t const* text, int length);
