#pragma once
#include "config/XmlDocument.h"
#include <QColor>
#include <string>

// Colours of day programs are platform colour words: red in the least significant byte,
// then green, then blue (0x0000FF is red, 0xFF0000 blue). They are written as six upper-case
// hexadecimal digits ("%06X" of the word) and read back with HtoL.
inline QColor ZoColorFromWord(unsigned word)
{
    return QColor(int(word & 0xFF), int((word >> 8) & 0xFF), int((word >> 16) & 0xFF));
}

inline unsigned ZoWordFromColor(QColor const& color)
{
    return unsigned(color.red()) | (unsigned(color.green()) << 8) | (unsigned(color.blue()) << 16);
}

// The "color" of a day program as a colour word (24 bits); white when it has none.
unsigned ZoDayColourWord(XmlDocument::XmlNode const* day);
// "%06X" of the word's 24 bits.
std::wstring ZoColourWordText(unsigned word);
