#pragma once
#include "platform/tools/ZoBasicString.h"

#include <string_view>
#include <vector>

// Free recipients of mail and SMS actions, as typed: several entries separated by ";"
// (a "," separates as well, since people paste address lists either way). Blanks around
// an entry and empty entries are ignored.
std::vector<ZoBasicString<wchar_t>> ZoSplitRecipients(std::wstring_view text);
// The entries joined by "; ": the form in which an action stores its free recipients, so
// that two texts naming the same entries in the same order compare equal.
ZoBasicString<wchar_t> ZoJoinRecipients(std::vector<ZoBasicString<wchar_t>> const& entries);

// A plausible mail address: local-part "@" domain, with
//  - exactly one "@", a local part of 1..64 characters and a domain of 1..253;
//  - no blank, no control character and none of ( ) < > [ ] \ , ; : " anywhere;
//  - no "." at the start or end of either part and no ".." in it;
//  - a domain of at least two labels ("example.org"), each label letters, digits and "-"
//    (any non-ASCII letter too), not starting or ending with "-".
// Deliverability is not checked: the mail server decides that.
bool ZoIsPlausibleMailAddress(std::wstring_view address);

// A phone number in international format: an optional "+" first, then digits and blanks
// only, holding 3 to 15 digits (the longest international number has 15). Other
// separators ("-", "/", brackets) are refused so that the gateway gets plain digits.
bool ZoIsValidPhoneNumber(std::wstring_view number);

// The first entry of a recipients text that fails the check, or an empty string when all
// pass (an empty text passes: it has no entry).
ZoBasicString<wchar_t> ZoFirstInvalidMailAddress(std::wstring_view text);
ZoBasicString<wchar_t> ZoFirstInvalidPhoneNumber(std::wstring_view text);
