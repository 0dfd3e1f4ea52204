#pragma once
#include <QStringList>

#include <cstdio>

// `zoevents check [--format text|json] [--warnings-as-errors] [--from DATE] FOLDER`: checks
// the project folder and writes its findings to out; failures go to err. Returns the exit
// status: 0 clean, 1 errors (or warnings with --warnings-as-errors), 2 the folder cannot
// be read or the command line is wrong.
int RunCheckCommand(QStringList const& arguments, std::FILE* out, std::FILE* err);
