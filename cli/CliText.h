#pragma once
#include "check/ZoProjectChecker.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

#include <QString>

#include <cstdio>
#include <string>

inline constexpr char const* kCheckUsage =
    "usage: zoevents check [--format text|json] [--warnings-as-errors] [--from YYYY-MM-DD] FOLDER";

// Writes text and a line end.
void WriteLine(std::FILE* file, std::string const& text);
// A message of the library (several lines joined by "\n") on one line, UTF-8.
std::string ZoCliText(std::wstring const& text);
// A text of the table in the language chosen, filled in as ZoFormat does (%s takes a
// wchar_t const*, %d an int).
template <class... Args>
QString ZoCliMessage(unsigned id, Args... args)
{
    return QString::fromStdWString(ZoFormat(ZoLoadString(id).c_str(), args...));
}
// "2 errors, 1 warning, 0 notes".
std::string ZoCliCounts(ZoCheckCounts const& counts);
