#pragma once
#include "platform/tools/ZoBasicString.h"
#include <cstddef>

// The host's private clipboard: selector 1 is the MIME type "application/x-zoevents-1",
// also offered as plain text so that other programs can read it.
// data holds `length` bytes (the callers count the terminating NUL, which is not stored).
bool PutToClipboard(char const* data, std::size_t length, int selector);
// Fills buffer with the clipboard's bytes of that selector (the private format, or plain
// text when the private one is absent), followed by a NUL, and returns the number of bytes
// including that NUL; less than 1 when the clipboard holds nothing usable. The buffer then
// holds the bytes and the NUL (buffer.size() is the result), or nothing. Other selectors
// map to "application/x-zoevents-<selector>" alike.
int GetFromClipboard(ZoBasicString<char>& buffer, int selector);
