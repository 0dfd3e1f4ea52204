#pragma once
#include <QStringList>

#include <cstdio>

inline constexpr char const* kExportUsage = "usage: zoevents export FOLDER [-o FILE]";
inline constexpr char const* kImportUsage =
    "usage: zoevents import [--dry-run] [--delete-missing] [--create-groups] FOLDER FILE";

// `zoevents export FOLDER [-o FILE]`: writes the events sheet of the project (docs/spreadsheet.md)
// to FILE, or to out. Returns 0, or 2 when the folder cannot be read or the file written.
int RunExportCommand(QStringList const& arguments, std::FILE* out, std::FILE* err);

// `zoevents import [--dry-run] [--delete-missing] [--create-groups] FOLDER FILE`: prints what
// the sheet changes (the counts, each change, the refused rows, the check's findings on the
// imported events) and, unless --dry-run, applies it and saves the project. Returns 0, 1
// when a row is refused (nothing is changed), 2 when the folder or the file cannot be read
// or the project cannot be saved.
int RunImportCommand(QStringList const& arguments, std::FILE* out, std::FILE* err);
