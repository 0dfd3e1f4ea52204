#include "ProjectFileReader.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <QFile>

#include <cerrno>
#include <cwctype>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

// Closes a file descriptor when it goes out of scope.
class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    int get() const { return m_fd; }

private:
    int m_fd;
};

ProjectFileRead Refuse(std::wstring& reason, std::wstring text)
{
    reason = std::move(text);
    return ProjectFileRead::Refused;
}

ProjectFileRead ReadOpen(int fd, ProjectFileBytes& bytes, std::wstring& reason)
{
    struct stat info {};
    if (::fstat(fd, &info) != 0)
        return Refuse(reason, SystemReason(errno));
    if (!S_ISREG(info.st_mode))
        return Refuse(reason, ZoLoadString(60058));
    if (info.st_size > kMaxProjectFileBytes)
        return Refuse(reason, ZoFormat(ZoLoadString(60059).c_str(),
                                       std::to_wstring(kMaxProjectFileBytes >> 20).c_str()));
    // The size can change while the file is read: read what is there, and never more than
    // the limit (one byte past it tells that the file grew beyond it).
    std::size_t const expected = static_cast<std::size_t>(info.st_size);
    std::size_t capacity = expected + 1;
    auto data = std::make_unique_for_overwrite<char[]>(capacity);
    std::size_t size = 0;
    while (true) {
        if (size == capacity) {
            if (capacity > static_cast<std::size_t>(kMaxProjectFileBytes))
                return Refuse(reason, ZoFormat(ZoLoadString(60059).c_str(),
                                               std::to_wstring(kMaxProjectFileBytes >> 20).c_str()));
            std::size_t const grown = capacity * 2;
            auto larger = std::make_unique_for_overwrite<char[]>(grown);
            std::copy(data.get(), data.get() + size, larger.get());
            data = std::move(larger);
            capacity = grown;
        }
        ssize_t const got = ::read(fd, data.get() + size, capacity - size);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return Refuse(reason, SystemReason(errno));
        }
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    bytes.data = std::move(data);
    bytes.size = size;
    return ProjectFileRead::Read;
}

} // namespace

std::wstring SystemReason(int error)
{
    // Lower case, since the reason follows a colon in the messages ("...: no space left on device").
    std::wstring reason = ZoFromUtf8(std::generic_category().message(error));
    if (!reason.empty())
        reason[0] = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(reason[0])));
    return reason;
}

ProjectFileRead ReadProjectFile(QString const& path, ProjectFileBytes& bytes, std::wstring& reason)
{
    QByteArray const name = QFile::encodeName(path);
    struct stat link {};
    if (::lstat(name.constData(), &link) != 0) {
        if (errno == ENOENT)
            return ProjectFileRead::Missing;
        // Most often a folder the user may not look into: not the same as no file.
        return Refuse(reason, SystemReason(errno));
    }
    // Not blocking: a pipe opens at once (and is then refused) instead of waiting for a
    // writer; regular files ignore the flag.
    Descriptor file(::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (file.get() < 0) {
        int const error = errno;
        if (error == ENOENT && S_ISLNK(link.st_mode)) {
            QString const target = QFile::symLinkTarget(path);
            return Refuse(reason, ZoFormat(ZoLoadString(60065).c_str(), target.toStdWString().c_str()));
        }
        return Refuse(reason, SystemReason(error));
    }
    try {
        return ReadOpen(file.get(), bytes, reason);
    } catch (std::bad_alloc const&) {
        bytes = {};
        return Refuse(reason, ZoLoadString(60066));
    }
}
