#pragma once
// Helpers of the host editor's tests: a main window over a temporary copy of the demo
// project, files read as bytes, and a full disk.
#include "MainWindow.h"
#include "project/ProjectFiles.h"
#include "ProjectFolder.h"
#include "ProjectSaver.h"
#include "events/ZoEDlgEventsCfg.h"
#include "platform/setup/ZoEventSystem.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "support/ModalScript.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>
#include <gtest/gtest.h>

#include <cerrno>

namespace host_test {

using namespace zo::project;
using XmlNode = XmlDocument::XmlNode;

inline QString const kDemoFolder = QStringLiteral(ZO_SOURCE_DIR "/examples/demo");

inline QString FilePath(QString const& folder, ProjectDoc doc)
{
    return QDir(folder).filePath(QString::fromWCharArray(FileName(doc)));
}

inline QByteArray ReadBytes(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void WriteBytes(QString const& path, QByteArray const& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

inline void ParseFile(QString const& path, XmlDocument& doc)
{
    QByteArray const bytes = ReadBytes(path);
    ASSERT_TRUE(doc.Parse(bytes.constData(), static_cast<std::size_t>(bytes.size()))) << path.toStdString();
}

inline XmlNode* EventNamed(XmlDocument& doc, wchar_t const* name)
{
    return doc.Root()->NodeV(L"events/event?name=%s?", name);
}

// A temporary copy of the demo project and a main window (with its own recent-folders
// file) that opened it.
struct DemoWindow {
    QTemporaryDir dir, settings;
    MainWindow window{RecentFolders(settings.filePath("recent.ini"))};

    DemoWindow()
    {
        for (QString const& name : QDir(kDemoFolder).entryList(QDir::Files))
            EXPECT_TRUE(QFile::copy(QDir(kDemoFolder).filePath(name), QDir(dir.path()).filePath(name)));
        EXPECT_TRUE(window.OpenFolder(dir.path()));
    }
    QString File(ProjectDoc doc) const { return FilePath(dir.path(), doc); }
    QString Label(char const* name) const { return window.findChild<QLabel*>(name)->text(); }
};

// A step for the events list: deletes the event shown with this name (the question is
// answered by the test's answerer), then ends with the given button.
inline ModalScript::Step DeleteEventThen(QString const& name, char const* button = "okButton")
{
    return ModalScript::As<ZoEDlgEventsCfg>([name, button](ZoEDlgEventsCfg& list) {
        auto* view = list.findChild<QAbstractItemView*>("eventsList");
        QAbstractItemModel* model = view->model();
        QModelIndexList const found = model->match(model->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly);
        EXPECT_EQ(found.size(), 1) << name.toStdString();
        view->selectionModel()->select(found.value(0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        list.findChild<QPushButton*>("deleteButton")->click();
        list.setResult(QDialog::Rejected);
        list.findChild<QPushButton*>(button)->click();
        return list.result();
    });
}

// Makes every save of this process fail after its first block as a full disk does (or
// with another error number), for as long as it lives.
class SaveFault {
public:
    explicit SaveFault(int error = ENOSPC)
    {
        ProjectSaver::SetBlockWrittenHook([error] { return error; });
    }
    ~SaveFault() { ProjectSaver::SetBlockWrittenHook({}); }
    SaveFault(SaveFault const&) = delete;
    SaveFault& operator=(SaveFault const&) = delete;
};

// Base of the host tests: opening a project points the module's setup at its folder and
// sets the event feed; both are put back after each test.
class HostTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        ZoVelmoraSetup::instance().SetCfgPath(m_cfgPath);
        ZoEventSystem::instance()->SetFeedAvailable(m_feed);
    }

private:
    std::wstring m_cfgPath = ZoVelmoraSetup::instance().CfgPath();
    bool m_feed = ZoEventSystem::instance()->IsFeedAvailable();
};

} // namespace host_test
