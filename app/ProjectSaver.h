#pragma once
#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Saves a set of files of one project folder so that, whenever the process stops, the
// folder holds either all old or all new files, never a mix:
//  1. every file is written in full to a temporary file beside it ("Events.zocfg.zonew")
//     and flushed to disk;
//  2. a small commit record (".zoevents-save") naming the files is written, flushed, and
//     put in place by a rename: from then on the save counts as done;
//  3. each temporary file is renamed over its file, and the record is removed.
// A failure or a stop before step 2 leaves every old file byte-identical (the temporaries
// are removed then, or by the next open); a stop during step 3 is finished by the next
// open of the folder (Recover), which renames what is left.
// A file longer than the largest the editor opens (MaxProjectFileBytes) is never written:
// its save fails in step 1 with a reason that names the limit.
class ProjectSaver {
public:
    // The files of one project folder.
    explicit ProjectSaver(QString folder);
    ~ProjectSaver();
    ProjectSaver(ProjectSaver const&) = delete;
    ProjectSaver& operator=(ProjectSaver const&) = delete;

    // Writes a file's text through the function it is given, block by block.
    using Writer = std::function<bool(std::string_view block)>;
    using Producer = std::function<bool(Writer const& write)>;

    // A file of the folder, by its name.
    void Add(QString const& fileName, std::string text);
    // A file whose text is made while it is written (a large project is never held whole
    // as text); the producer hands each block to write and stops when write fails.
    void Add(QString const& fileName, Producer producer);
    // Writes and renames all files added; false on the first failure. Running out of
    // memory while a text is made is such a failure.
    bool Commit();

    // After a failed Commit: the file (or the folder) that could not be written and the
    // reason, for the user.
    QString const& FailedPath() const { return m_failedPath; }
    std::wstring const& Reason() const { return m_reason; }

    // Brings a folder back to a whole state after a save that was stopped: finishes the
    // renames of a save that had reached its commit record (completed is then true), or
    // removes the temporary files of one that had not. Only files of these names are
    // touched. False with the reason when the folder cannot be brought to a whole state
    // (it is then left as it is).
    static bool Recover(QString const& folder, QStringList const& fileNames, bool& completed,
                        std::wstring& reason);

    static constexpr char kRecordName[] = ".zoevents-save";
    static constexpr char kTemporarySuffix[] = ".zonew";

    // Test seam: called after each block of a file has been written (blocks of 64 KiB),
    // so that a test can stretch the time a save takes and interrupt it anywhere. It
    // returns 0, or an error number that the write then fails with (ENOSPC for a full
    // disk); it may throw std::bad_alloc.
    static void SetBlockWrittenHook(std::function<int()> hook);
    // Test seam: called between the renames of step 3 with the number of files renamed.
    static void SetRenameHook(std::function<void(int renamed)> hook);

private:
    struct Pending {
        QString name;
        Producer producer;
    };
    bool WriteTemporary(Pending const& file);
    bool WriteRecord();
    bool Fail(QString const& path, std::wstring reason);
    void RemoveTemporaries();

    QString m_folder;
    std::vector<Pending> m_files;
    std::vector<QString> m_written; // temporaries on disk, to remove on failure
    QString m_failedPath;
    std::wstring m_reason;
};
