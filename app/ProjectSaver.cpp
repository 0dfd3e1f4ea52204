#include "ProjectSaver.h"

#include "ProjectFileReader.h"
#include "platform/tools/ZoTexts.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t kBlockSize = 64 * 1024;
constexpr char kRecordHeader[] = "zoevents save";
constexpr char kRecordEnd[] = "end";
constexpr qint64 kMaxRecordBytes = 64 * 1024;

std::function<int()>& BlockWrittenHook()
{
    static std::function<int()> hook;
    return hook;
}

std::function<void(int)>& RenameHook()
{
    static std::function<void(int)> hook;
    return hook;
}

QByteArray Native(QString const& path)
{
    return QFile::encodeName(path);
}

QString InFolder(QString const& folder, QString const& name)
{
    return QDir(folder).filePath(name);
}

QString Temporary(QString const& folder, QString const& name)
{
    return InFolder(folder, name + QLatin1String(ProjectSaver::kTemporarySuffix));
}

// Writes all bytes, resuming after a signal or a partial write; false with errno set.
bool WriteAll(int fd, char const* data, std::size_t size)
{
    while (size > 0) {
        ssize_t const done = ::write(fd, data, size);
        if (done < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += done;
        size -= static_cast<std::size_t>(done);
    }
    return true;
}

// Flushes a folder's entries (the renames in it) to disk.
bool SyncFolder(QString const& folder)
{
    int const fd = ::open(Native(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    bool const synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

bool Exists(QString const& path)
{
    struct stat info {};
    return ::lstat(Native(path).constData(), &info) == 0;
}

// Whether the commit record's text is whole and names only files of the folder's own;
// the names are returned.
bool ParseRecord(QByteArray const& text, QStringList const& known, QStringList& names)
{
    QList<QByteArray> lines = text.split('\n');
    if (lines.size() < 3 || lines.front() != kRecordHeader || !lines.back().isEmpty()
        || lines[lines.size() - 2] != kRecordEnd)
        return false;
    for (qsizetype i = 1; i + 2 < lines.size(); ++i) {
        QString const name = QString::fromUtf8(lines[i]);
        if (!known.contains(name))
            return false;
        names.push_back(name);
    }
    return true;
}

} // namespace

void ProjectSaver::SetBlockWrittenHook(std::function<int()> hook)
{
    BlockWrittenHook() = std::move(hook);
}

void ProjectSaver::SetRenameHook(std::function<void(int)> hook)
{
    RenameHook() = std::move(hook);
}

ProjectSaver::ProjectSaver(QString folder)
    : m_folder(std::move(folder))
{
}

ProjectSaver::~ProjectSaver() = default;

void ProjectSaver::Add(QString const& fileName, std::string text)
{
    Add(fileName, [text = std::move(text)](Writer const& write) { return write(text); });
}

void ProjectSaver::Add(QString const& fileName, Producer producer)
{
    m_files.push_back({fileName, std::move(producer)});
}

bool ProjectSaver::Fail(QString const& path, std::wstring reason)
{
    m_failedPath = path;
    m_reason = std::move(reason);
    RemoveTemporaries();
    return false;
}

void ProjectSaver::RemoveTemporaries()
{
    for (QString const& path : m_written)
        ::unlink(Native(path).constData());
    m_written.clear();
}

bool ProjectSaver::WriteTemporary(Pending const& file)
{
    QString const target = InFolder(m_folder, file.name);
    QString const path = Temporary(m_folder, file.name);
    int const fd = ::open(Native(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (fd < 0)
        return Fail(target, SystemReason(errno));
    m_written.push_back(path);
    // The new file keeps the permissions of the one it replaces.
    struct stat old {};
    if (::stat(Native(target).constData(), &old) == 0)
        ::fchmod(fd, old.st_mode & 07777);
    int error = 0;
    bool written = false;
    // A file the editor would refuse to open is never written: the save stops as soon as
    // the text passes the limit, and every old file stays as it was.
    long long const limit = MaxProjectFileBytes();
    long long total = 0;
    bool tooLarge = false;
    try {
        written = file.producer([fd, &error, limit, &total, &tooLarge](std::string_view text) {
            total += static_cast<long long>(text.size());
            if (total > limit) {
                tooLarge = true;
                return false;
            }
            for (std::size_t done = 0; done < text.size(); done += kBlockSize) {
                std::size_t const block = std::min(kBlockSize, text.size() - done);
                if (!WriteAll(fd, text.data() + done, block)) {
                    error = errno;
                    return false;
                }
                if (BlockWrittenHook() && (error = BlockWrittenHook()()) != 0)
                    return false;
            }
            return true;
        });
    } catch (std::bad_alloc const&) {
        ::close(fd);
        return Fail(target, ZoLoadString(60066));
    }
    if (written && ::fsync(fd) != 0)
        error = errno;
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (tooLarge)
        return Fail(target, TooLargeReason(60090));
    if (!written || error != 0)
        return Fail(target, SystemReason(error != 0 ? error : EIO));
    return true;
}

bool ProjectSaver::WriteRecord()
{
    QByteArray text = QByteArray(kRecordHeader) + '\n';
    for (Pending const& file : m_files)
        text += file.name.toUtf8() + '\n';
    text += QByteArray(kRecordEnd) + '\n';
    QString const record = InFolder(m_folder, QLatin1String(kRecordName));
    QString const path = Temporary(m_folder, QLatin1String(kRecordName));
    int const fd = ::open(Native(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (fd < 0)
        return Fail(m_folder, SystemReason(errno));
    m_written.push_back(path);
    int error = 0;
    if (!WriteAll(fd, text.constData(), static_cast<std::size_t>(text.size())) || ::fsync(fd) != 0)
        error = errno;
    if (::close(fd) != 0 && error == 0)
        error = errno;
    // The rename is the moment the save counts as done.
    if (error == 0 && ::rename(Native(path).constData(), Native(record).constData()) != 0)
        error = errno;
    if (error != 0)
        return Fail(m_folder, SystemReason(error));
    m_written.pop_back();
    SyncFolder(m_folder);
    return true;
}

bool ProjectSaver::Commit()
{
    m_failedPath.clear();
    m_reason.clear();
    // All temporaries are written before the record, so that a failure while writing (a
    // full disk, a read-only folder, memory running out) changes no file at all.
    for (Pending const& file : m_files) {
        if (!WriteTemporary(file))
            return false;
    }
    if (!WriteRecord())
        return false;
    m_written.clear(); // from here on the temporaries are the save: they are never removed
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        QString const target = InFolder(m_folder, m_files[i].name);
        if (::rename(Native(Temporary(m_folder, m_files[i].name)).constData(), Native(target).constData()) != 0)
            return Fail(target, SystemReason(errno)); // the record stays: the next open finishes
        if (RenameHook())
            RenameHook()(static_cast<int>(i + 1));
    }
    SyncFolder(m_folder);
    ::unlink(Native(InFolder(m_folder, QLatin1String(kRecordName))).constData());
    m_files.clear();
    return true;
}

bool ProjectSaver::Recover(QString const& folder, QStringList const& fileNames, bool& completed,
                           std::wstring& reason)
{
    completed = false;
    QString const record = InFolder(folder, QLatin1String(kRecordName));
    ProjectFileBytes bytes;
    switch (ReadProjectFile(record, bytes, reason)) {
    case ProjectFileRead::Missing:
        // A save stopped before its record: the old files stand; its temporaries go.
        for (QString const& name : fileNames)
            ::unlink(Native(Temporary(folder, name)).constData());
        ::unlink(Native(Temporary(folder, QLatin1String(kRecordName))).constData());
        return true;
    case ProjectFileRead::Refused:
        return false;
    case ProjectFileRead::Read:
        break;
    }
    QStringList names;
    if (static_cast<qint64>(bytes.Size()) > kMaxRecordBytes
        || !ParseRecord(QByteArray(bytes.Data(), static_cast<qsizetype>(bytes.Size())), fileNames, names)) {
        reason = ZoLoadString(60069);
        return false;
    }
    // A temporary that is gone was renamed before the stop.
    for (QString const& name : names) {
        QString const temporary = Temporary(folder, name);
        if (Exists(temporary)
            && ::rename(Native(temporary).constData(), Native(InFolder(folder, name)).constData()) != 0) {
            reason = SystemReason(errno);
            return false;
        }
    }
    SyncFolder(folder);
    if (::unlink(Native(record).constData()) != 0) {
        reason = SystemReason(errno);
        return false;
    }
    completed = true;
    return true;
}
