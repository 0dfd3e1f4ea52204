#pragma once
// Helpers of the host editor's tests: the demo project copied into a temporary folder,
// files read as bytes, and ways to make a save fail.
#include "ProjectFiles.h"
#include "platform/setup/ZoEventSystem.h"
#include "platform/setup/ZoVelmoraSetup.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host_test {

inline QString DemoFolder()
{
    return QStringLiteral(ZO_SOURCE_DIR "/examples/demo");
}

inline QString FilePath(QString const& folder, zo::project::ProjectDoc doc)
{
    return QDir(folder).filePath(QString::fromWCharArray(zo::project::FileName(doc)));
}

inline QByteArray ReadBytes(QString const& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

inline void WriteBytes(QString const& path, QByteArray const& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

// A temporary copy of the demo project (removed with the object).
class DemoCopy {
public:
    DemoCopy()
    {
        EXPECT_TRUE(m_dir.isValid());
        QDir const demo(DemoFolder());
        for (QString const& name : demo.entryList(QDir::Files))
            EXPECT_TRUE(QFile::copy(demo.filePath(name), QDir(Path()).filePath(name))) << name.toStdString();
    }
    QString Path() const { return m_dir.path(); }
    QString File(zo::project::ProjectDoc doc) const { return FilePath(Path(), doc); }

private:
    QTemporaryDir m_dir;
};

// Makes every file write of this process fail beyond `bytes` bytes, as a full disk does,
// for as long as it lives. Works for every user, also root (which a read-only folder
// does not stop).
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN); // else the process is killed
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FileSizeLimit(FileSizeLimit const&) = delete;
    FileSizeLimit& operator=(FileSizeLimit const&) = delete;

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

// Makes a folder read-only for as long as it lives. Root writes anyway: check Effective().
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(QString path)
        : m_path(std::move(path))
    {
        ::chmod(QFile::encodeName(m_path).constData(), 0555);
    }
    ~ReadOnlyFolder() { ::chmod(QFile::encodeName(m_path).constData(), 0755); }
    ReadOnlyFolder(ReadOnlyFolder const&) = delete;
    ReadOnlyFolder& operator=(ReadOnlyFolder const&) = delete;
    static bool Effective() { return ::geteuid() != 0; }

private:
    QString m_path;
};

// Base of the host tests: opening a project points the module's setup at its folder and
// sets the event feed; both are put back after each test.
class HostTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_cfgPath = ZoVelmoraSetup::instance().CfgPath();
        m_feed = ZoEventSystem::instance()->IsFeedAvailable();
    }
    void TearDown() override
    {
        ZoVelmoraSetup::instance().SetCfgPath(m_cfgPath);
        ZoEventSystem::instance()->SetFeedAvailable(m_feed);
    }

private:
    std::wstring m_cfgPath;
    bool m_feed = true;
};

} // namespace host_test
