#pragma once
#include "ZoBasicString.h"
#include <QString>

// Every user-visible text is loaded by its number from the text table compiled in as a
// Qt resource (":/texts/en.tsv": one line per text, the number, a tab, the text; "\n",
// "\t" and "\\" inside a text stand for a line break, a tab and a backslash). Lines are
// kept sorted by id. The table is read once, on first use, safely from any thread.
// Returns false and sets text to "#<id>" when the table has no such text.
bool ZoLoadString(unsigned id, ZoBasicString<wchar_t>& text);
ZoBasicString<wchar_t> ZoLoadString(unsigned id);
QString ZoText(unsigned id);
// True when the table holds a text for this id (used by the test that checks every id used).
bool ZoHasString(unsigned id);
