#pragma once
#include <QString>

#include <string>

// Reads and writes sheet files. Reading refuses a file larger than the reader takes
// (ZoCsvLimits) before reading any of it (a pipe, or "-" for the standard input, is read
// up to that size); writing replaces the file only once the whole
// text is on disk. False with a reason for the user.
bool ZoReadSheetFile(QString const& path, std::string& bytes, std::wstring& error);
bool ZoWriteSheetFile(QString const& path, std::string const& bytes, std::wstring& error);
