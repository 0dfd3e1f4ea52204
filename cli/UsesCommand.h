#pragma once
#include <QStringList>

#include <cstdio>

inline constexpr char const* kUsesUsage = "usage: zoevents uses [--format text|json] FOLDER REFERENCE\n"
                                          "  REFERENCE: [DEVICE.CODE], DEVICE, device:NAME, event:NAME, timetable:NAME,\n"
                                          "  group:NAME, screen:NAME, report:NAME, user:NAME, maillist:NAME, phonelist:NAME";

// `zoevents uses FOLDER REFERENCE`: every place of the project that uses the reference, one
// a line ("Events.zocfg:12: note: event "X": condition, column 3: FORMULA (use)"), or one
// JSON object. Returns 0 when it is used, 1 when it is not, 2 when the folder cannot be
// read, the reference names nothing or the command line is wrong.
int RunUsesCommand(QStringList const& arguments, std::FILE* out, std::FILE* err);
