#pragma once
#include "check/ZoProjectChecker.h"

#include <cstdio>
#include <string>

inline constexpr char const* kCheckUsage =
    "usage: zoevents check [--format text|json] [--warnings-as-errors] [--from YYYY-MM-DD] FOLDER";

class ProjectFolder;

// Loads the users file as the mail and SMS editors read it; a missing or broken file counts
// as no users.
void ZoCliLoadUsers(ProjectFolder& project);
// Writes text and a line end.
void WriteLine(std::FILE* file, std::string const& text);
// A message of the library (several lines joined by "\n") on one line, UTF-8.
std::string ZoCliText(std::wstring const& text);
// "2 errors, 1 warning, 0 notes".
std::string ZoCliCounts(ZoCheckCounts const& counts);
