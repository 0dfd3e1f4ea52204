#pragma once
#include <QStringList>

#include <cstdio>

inline constexpr char const* kRenameUsage =
    "usage: zoevents rename FOLDER (--device OLD NEW | --variable DEVICE.OLD NEW | --event OLD NEW) [--dry-run]";

// `zoevents rename`: renames a device, a variable's code or an event and every reference
// to it, prints the preview (one change a line: place, before -> after, count) and saves
// the files it touched together, unless --dry-run. Returns 0 when renamed (or previewed),
// 1 when the rename is refused (the message on err), 2 when the folder cannot be read or
// saved or the command line is wrong.
int RunRenameCommand(QStringList const& arguments, std::FILE* out, std::FILE* err);
