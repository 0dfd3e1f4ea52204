#pragma once
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QSaveFile;

// Saves a set of project files so that each file on disk is always either its old or its
// new content, never a mix: every file is written in full to a temporary file beside it
// and flushed to disk, and only when all of them were written are they renamed over the
// old files, one after the other. A failure before the renames leaves every old file
// byte-identical; the temporary files are removed.
class ProjectSaver {
public:
    ProjectSaver();
    ~ProjectSaver();
    ProjectSaver(ProjectSaver const&) = delete;
    ProjectSaver& operator=(ProjectSaver const&) = delete;

    // Writes a file's text through the function it is given, block by block.
    using Writer = std::function<bool(std::string_view block)>;
    using Producer = std::function<bool(Writer const& write)>;

    void Add(QString const& path, std::string text);
    // A file whose text is made while it is written (a large project is never held whole
    // as text); the producer hands each block to write and stops when write fails.
    void Add(QString const& path, Producer producer);
    // Writes and renames all files added; false on the first failure.
    bool Commit();

    // Test seam: called after each block of a file has been written (blocks of 64 KiB),
    // so that a test can stretch the time a save takes and interrupt it anywhere.
    static void SetBlockWrittenHook(std::function<void()> hook);

    // After a failed Commit: the file that could not be written and the system's reason.
    QString const& FailedPath() const { return m_failedPath; }
    QString const& Reason() const { return m_reason; }

private:
    struct Pending {
        QString path;
        Producer producer;
    };
    bool Fail(QString const& path, QString const& reason);

    std::vector<Pending> m_files;
    QString m_failedPath;
    QString m_reason;
};
