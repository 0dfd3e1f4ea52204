#pragma once
#include <QString>

#include <cstddef>
#include <memory>
#include <string>

// Reads one document of a project folder whole. Only a regular file is read (a symbolic
// link to one is followed): a folder, a pipe or a device under a document's name is
// refused, so that opening a project never waits on a pipe or reads an endless device.
// A file larger than MaxProjectFileBytes() is refused before anything is read.

// The largest project file the editor opens on this computer. An open document takes
// about three times its file in memory, so the limit is a quarter of the memory, in whole
// megabytes, and never less than 1 GiB. The saver refuses to write a file over it: the
// editor never writes a project that it would then refuse to open.
long long MaxProjectFileBytes();
// Test seam: a limit in place of the computer's; 0 gives the computer's back.
void SetMaxProjectFileBytes(long long bytes);
// The reason a file over the limit is refused ("it is larger than 6144 MB, ..."); the
// saver's refusal names the same limit.
std::wstring TooLargeReason(unsigned textId);

// The bytes of a file, in memory of their own: a reader that is done with a part of them
// (the parser, as it goes) hands that part back, so that reading a large project never
// holds the whole file beside the whole tree.
class ProjectFileBytes {
public:
    ProjectFileBytes() = default;
    ~ProjectFileBytes();
    ProjectFileBytes(ProjectFileBytes&& other) noexcept;
    ProjectFileBytes& operator=(ProjectFileBytes&& other) noexcept;

    char* Data() const { return m_data; }
    std::size_t Size() const { return m_size; }
    // Room for at least `capacity` bytes, the first Size() kept; throws std::bad_alloc.
    void Reserve(std::size_t capacity);
    void SetSize(std::size_t size) { m_size = size; }
    std::size_t Capacity() const { return m_capacity; }
    // The memory of the whole pages before `offset` goes back to the system; those bytes
    // must not be read again.
    void ReleaseBefore(std::size_t offset);

private:
    char* m_data = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

enum class ProjectFileRead { Read, Missing, Refused };

// Missing only when nothing at all stands under that name; anything else that keeps the
// file from being read (no permission to look into the folder, a link to nothing, a
// file too large, memory running out) is Refused with a reason for the user.
ProjectFileRead ReadProjectFile(QString const& path, ProjectFileBytes& bytes, std::wstring& reason);

// The system's reason for an error number, as a text for the user ("No space left on
// device").
std::wstring SystemReason(int error);
