#pragma once
#include "spreadsheet/SheetColumns.h"

#include <string>
#include <string_view>
#include <vector>

// Reading one cell of the events sheet that differs from what the export wrote: the value
// in the form the export writes it, or why it is refused.
struct ZoSheetValue {
    std::string text;               // as the export would write it
    std::wstring fault;             // empty when the cell is read
    std::string timeTableId;        // the time table's id (time table)
    std::vector<std::string> items; // group names (groups); value, format pairs (arguments)
};

// Texts longer than the event editor keeps are refused, never cut; an empty delay reads
// "0" as in the editor; booleans read T, F, TRUE, FALSE, 1, 0, YES, NO in any case; list
// items are separated by "|" and trimmed; an argument is written aN=formula:format, N its
// number from 1, the format after the last ":". Groups are only split here: whether they
// exist is the caller's question.
ZoSheetValue ZoReadSheetValue(ZoSheetColumn column, std::string_view cell, ZoSheetNames const& names);

// Blanks (spaces and tabs) at both ends removed.
std::string_view ZoTrimBlanks(std::string_view text);
// ASCII letters compared without regard to case.
bool ZoEqualsNoCase(std::string_view a, std::string_view b);
