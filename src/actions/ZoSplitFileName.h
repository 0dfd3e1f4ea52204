#pragma once
#include "platform/tools/ZoBasicString.h"

#include <string_view>

// Screen and report files of a project are named "<name>.<number>.XSCN" and
// "<name>.<number>.xrpt": the name the user sees and chooses (and that a `screen` or
// `report` action stores), then the screen's or report's number in the project. A file
// title is the file name without its last extension, "Pumps.2" for "Pumps.2.XSCN".
//
// SplitFileName splits a title at its last point: name "Pumps", number "2". A name may hold
// points itself ("Boiler.Room.3" is the screen "Boiler.Room", number 3); the number never
// does. False (both parts emptied) when the title has no point, or the name or the number
// is empty. The number is not checked further: it is the project's business.
bool SplitFileName(std::wstring_view title, ZoBasicString<wchar_t>& name, ZoBasicString<wchar_t>& number);
