#pragma once
#include "ZoBasicString.h"
#include <cstdarg>

// printf-style formatting of wide texts, independent of the C library's wide printf
// (which reads %s as a narrow string on some systems). Conversions:
//   %s, %ls  a wchar_t const* (null prints nothing)
//   %d, %i   an int           %u  an unsigned int
//   %X, %x   an unsigned int in hexadecimal; a flag "0" and a width are honoured ("%06X", "%02d")
//   %%       a percent sign
// Anything else is copied as it stands. The result is cut at maxChars characters when
// maxChars is positive (messages are built in buffers of a fixed size).
ZoBasicString<wchar_t> ZoVFormat(wchar_t const* format, va_list args, int maxChars = 0);
ZoBasicString<wchar_t> ZoFormat(wchar_t const* format, ...);
// Same, cut at maxChars characters.
ZoBasicString<wchar_t> ZoFormatN(int maxChars, wchar_t const* format, ...);
