#pragma once
#include <QStringList>

#include <cstdio>

inline constexpr char const* kWhenUsage =
    "usage: zoevents when [--format text|json] [--from YYYY-MM-DD] [--to YYYY-MM-DD] FOLDER EVENT\n"
    "       zoevents when [--format text|json] --at \"YYYY-MM-DD HH:MM\" FOLDER";

// `zoevents when FOLDER EVENT`: the intervals in which the event's time table lets it fire
// (from today for four weeks unless --from/--to say otherwise); `zoevents when FOLDER --at
// MOMENT`: the enabled events allowed to fire at that minute. Writes to out, failures to
// err. Returns the exit status: 0 something is allowed, 1 nothing is, 2 the folder or the
// event cannot be found or the command line is wrong.
int RunWhenCommand(QStringList const& arguments, std::FILE* out, std::FILE* err);
