#pragma once
#include <bitset>
#include <string_view>

// A variable's value type as the driver library's type set of 34 bits. A catalog variable
// has exactly one of the bits below; a mask (a chooser's, a wizard's) may hold several, and
// a variable matches a mask when its set shares a bit with it.
//
//   bit 0  digital   two states, 0 and 1; a logical value in formulas
//   bit 1  integer   a whole number: modes, status words, counts
//   bit 2  analog    a real measurement: pressure, level, temperature
//   bit 3  text      free text
//   bit 4  counter   a totalizer that only grows: energy, volume, running hours
//   bit 5  duration  a time span in seconds
//   bits 6 to 33     reserved for other kinds of value; the catalog never sets them
using ZoTypeSet = std::bitset<34>;

enum ZoVariableKind : unsigned {
    kZoDigital = 0,
    kZoInteger = 1,
    kZoAnalog = 2,
    kZoText = 3,
    kZoCounter = 4,
    kZoDuration = 5,
};

inline ZoTypeSet ZoTypeOf(ZoVariableKind kind)
{
    return ZoTypeSet().set(kind);
}

// Every kind the catalog knows (bits 0 to 5).
inline ZoTypeSet ZoAllTypes()
{
    return ZoTypeSet(0x3F);
}

// The kind written in the catalog's `type` key ("digital", "integer", "analog", "text",
// "counter", "duration"; ASCII case ignored); false for anything else.
bool ZoParseVariableKind(std::string_view text, ZoVariableKind& kind);

// Kinds whose values are numbers in formulas (all but digital and text).
inline bool ZoIsNumericKind(ZoVariableKind kind)
{
    return kind != kZoDigital && kind != kZoText;
}

// Kinds of real measurements, which are seldom exactly equal to anything.
inline bool ZoIsRealKind(ZoVariableKind kind)
{
    return kind == kZoAnalog || kind == kZoCounter;
}
