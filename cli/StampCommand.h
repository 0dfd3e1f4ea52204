#pragma once
#include <QStringList>

#include <cstdio>

inline constexpr char const* kStampUsage =
    "usage: zoevents stamp FOLDER TEMPLATE --devices PATTERN [--group NAME] [--dry-run]";

// `zoevents stamp FOLDER TEMPLATE --devices PATTERN [--group NAME] [--dry-run]`: stamps the
// template (its name or id) over the catalog's devices whose name matches the pattern
// (`*` and `?`, without regard to case), writes one line per device to out (the event
// made, or why the device is skipped) and saves the events and the device tree together
// unless it is a dry run. Returns the exit status: 0 events were (or would be) made, 1 no
// device matched or every one was skipped, 2 the folder cannot be read or saved, the
// template or the group is not in it, or the command line is wrong.
int RunStampCommand(QStringList const& arguments, std::FILE* out, std::FILE* err);
