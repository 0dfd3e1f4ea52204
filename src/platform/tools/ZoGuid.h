#pragma once
#include "ZoBasicString.h"
#include <cstdint>

struct ZoGuid {
    std::uint8_t bytes[16];
};

// A new random (version 4) identifier.
bool NewGUID(ZoGuid* uuid);
// Writes "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" (upper case) into buffer, cut to size - 1
// characters and always terminated; returns buffer.
wchar_t* guidtow(ZoGuid const& uuid, wchar_t* buffer, int size);
// Both at once: the text of a fresh identifier.
ZoBasicString<wchar_t> ZoNewGuidText();
