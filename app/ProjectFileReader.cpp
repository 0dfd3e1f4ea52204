#include "ProjectFileReader.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cwctype>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>
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
    long long const limit = MaxProjectFileBytes();
    if (info.st_size > limit)
        return Refuse(reason, TooLargeReason(60059));
    // The size can change while the file is read: read what is there, and never more than
    // the limit (one byte past it tells that the file grew beyond it).
    std::size_t const expected = static_cast<std::size_t>(info.st_size);
    bytes.Reserve(expected + 1);
    std::size_t size = 0;
    while (true) {
        if (size == bytes.Capacity()) {
            if (bytes.Capacity() > static_cast<std::size_t>(limit))
                return Refuse(reason, TooLargeReason(60059));
            bytes.Reserve(bytes.Capacity() * 2);
        }
        ssize_t const got = ::read(fd, bytes.Data() + size, bytes.Capacity() - size);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return Refuse(reason, SystemReason(errno));
        }
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
        bytes.SetSize(size);
    }
    if (size > static_cast<std::size_t>(limit))
        return Refuse(reason, TooLargeReason(60059));
    return ProjectFileRead::Read;
}

std::size_t PageSize()
{
    static std::size_t const size = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return size;
}

long long& LimitOverride()
{
    static long long bytes = 0;
    return bytes;
}

long long ComputerLimit()
{
    constexpr long long kMegabyte = 1024LL * 1024;
    constexpr long long kFloor = 1024 * kMegabyte;
    long long const pages = ::sysconf(_SC_PHYS_PAGES);
    long long const pageSize = ::sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0)
        return kFloor;
    long long const quarter = pages / 4 * pageSize / kMegabyte * kMegabyte;
    return std::max(kFloor, quarter);
}

} // namespace

long long MaxProjectFileBytes()
{
    static long long const computer = ComputerLimit();
    return LimitOverride() > 0 ? LimitOverride() : computer;
}

void SetMaxProjectFileBytes(long long bytes)
{
    LimitOverride() = bytes;
}

std::wstring TooLargeReason(unsigned textId)
{
    return ZoFormat(ZoLoadString(textId).c_str(), std::to_wstring(MaxProjectFileBytes() >> 20).c_str());
}

ProjectFileBytes::~ProjectFileBytes()
{
    if (m_data)
        ::munmap(m_data, m_capacity);
}

ProjectFileBytes::ProjectFileBytes(ProjectFileBytes&& other) noexcept
    : m_data(std::exchange(other.m_data, nullptr))
    , m_size(std::exchange(other.m_size, 0))
    , m_capacity(std::exchange(other.m_capacity, 0))
{
}

ProjectFileBytes& ProjectFileBytes::operator=(ProjectFileBytes&& other) noexcept
{
    if (this != &other) {
        if (m_data)
            ::munmap(m_data, m_capacity);
        m_data = std::exchange(other.m_data, nullptr);
        m_size = std::exchange(other.m_size, 0);
        m_capacity = std::exchange(other.m_capacity, 0);
    }
    return *this;
}

void ProjectFileBytes::Reserve(std::size_t capacity)
{
    // Mapped memory of its own, in whole pages, so that pages read can be handed back.
    std::size_t const page = PageSize();
    capacity = (std::max<std::size_t>(capacity, 1) + page - 1) / page * page;
    if (capacity <= m_capacity)
        return;
    void* memory = m_data ? ::mremap(m_data, m_capacity, capacity, MREMAP_MAYMOVE)
                          : ::mmap(nullptr, capacity, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    m_data = static_cast<char*>(memory);
    m_capacity = capacity;
#ifdef MADV_HUGEPAGE
    // A large file is read into huge pages where the system offers them on request: one
    // page fault for 2 MB instead of 512.
    ::madvise(m_data, m_capacity, MADV_HUGEPAGE);
#endif
}

void ProjectFileBytes::ReleaseBefore(std::size_t offset)
{
    std::size_t const pages = std::min(offset, m_size) / PageSize() * PageSize();
    if (m_data && pages > 0)
        ::madvise(m_data, pages, MADV_DONTNEED);
}

std::wstring SystemReason(int error)
{
    // The reasons a user meets with project files are worded in the table, in the editor's
    // language; the system words the rare others. Lower case, since the reason follows a
    // colon in the messages ("...: no space left on the disk").
    static constexpr std::pair<int, unsigned> kWorded[] = {
        {EACCES, 60081}, {EPERM, 60081},  {ENOSPC, 60082},       {EDQUOT, 60083}, {EROFS, 60084},
        {ENOENT, 60085}, {EIO, 60086},    {ENAMETOOLONG, 60087}, {EMFILE, 60088}, {ENFILE, 60088},
        {ENOTDIR, 60089}, {ENOMEM, 60066},
    };
    for (auto const& [code, text] : kWorded)
        if (code == error)
            return ZoLoadString(text);
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
