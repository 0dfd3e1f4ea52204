#include "ProjectSaver.h"

#include <QSaveFile>

namespace {

constexpr std::size_t kBlockSize = 64 * 1024;

std::function<void()>& BlockWrittenHook()
{
    static std::function<void()> hook;
    return hook;
}

} // namespace

void ProjectSaver::SetBlockWrittenHook(std::function<void()> hook)
{
    BlockWrittenHook() = std::move(hook);
}

ProjectSaver::ProjectSaver() = default;
ProjectSaver::~ProjectSaver() = default;

void ProjectSaver::Add(QString const& path, std::string text)
{
    Add(path, [text = std::move(text)](Writer const& write) { return write(text); });
}

void ProjectSaver::Add(QString const& path, Producer producer)
{
    m_files.push_back({path, std::move(producer)});
}

bool ProjectSaver::Fail(QString const& path, QString const& reason)
{
    m_failedPath = path;
    m_reason = reason;
    return false;
}

bool ProjectSaver::Commit()
{
    m_failedPath.clear();
    m_reason.clear();
    // All temporaries are written before the first rename, so that a failure while
    // writing (a full disk, a read-only folder) changes no file at all.
    std::vector<std::unique_ptr<QSaveFile>> open;
    open.reserve(m_files.size());
    for (Pending const& file : m_files) {
        auto saveFile = std::make_unique<QSaveFile>(file.path);
        // Never fall back to writing over the old file in place.
        saveFile->setDirectWriteFallback(false);
        if (!saveFile->open(QIODevice::WriteOnly))
            return Fail(file.path, saveFile->errorString());
        QSaveFile& out = *saveFile;
        bool const written = file.producer([&out](std::string_view text) {
            for (std::size_t done = 0; done < text.size(); done += kBlockSize) {
                qint64 const block = std::min<qint64>(kBlockSize, qint64(text.size() - done));
                if (out.write(text.data() + done, block) != block || !out.flush())
                    return false;
                if (BlockWrittenHook())
                    BlockWrittenHook()();
            }
            return true;
        });
        if (!written)
            return Fail(file.path, saveFile->errorString());
        open.push_back(std::move(saveFile));
    }
    for (std::size_t i = 0; i < open.size(); ++i) {
        // commit() flushes, syncs to disk and renames; on failure it removes the temporary.
        if (!open[i]->commit())
            return Fail(m_files[i].path, open[i]->errorString());
    }
    m_files.clear();
    return true;
}
