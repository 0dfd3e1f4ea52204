#pragma once
#include <QString>

#include <cstddef>
#include <memory>
#include <string>

// Reads one document of a project folder whole. Only a regular file is read (a symbolic
// link to one is followed): a folder, a pipe or a device under a document's name is
// refused, so that opening a project never waits on a pipe or reads an endless device.
// A file larger than kMaxProjectFileBytes is refused before anything is read.
inline constexpr long long kMaxProjectFileBytes = 1024LL * 1024 * 1024;

struct ProjectFileBytes {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
};

enum class ProjectFileRead { Read, Missing, Refused };

// Missing only when nothing at all stands under that name; anything else that keeps the
// file from being read (no permission to look into the folder, a link to nothing, a
// file too large, memory running out) is Refused with a reason for the user.
ProjectFileRead ReadProjectFile(QString const& path, ProjectFileBytes& bytes, std::wstring& reason);

// The system's reason for an error number, as a text for the user ("No space left on
// device").
std::wstring SystemReason(int error);
