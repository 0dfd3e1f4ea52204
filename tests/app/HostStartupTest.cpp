#include "DisplayCheck.h"
#include "RecentFolders.h"
#include "platform/tools/ZoTexts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <map>

namespace {

bool HasDisplay(std::map<std::string, QByteArray> const& environment)
{
    return HostHasDisplay([&](char const* name) {
        auto const found = environment.find(name);
        return found == environment.end() ? QByteArray() : found->second;
    });
}

} // namespace

TEST(HostStartup, DisplayIsFoundFromTheEnvironment)
{
    EXPECT_FALSE(HasDisplay({}));
    EXPECT_TRUE(HasDisplay({{"DISPLAY", ":0"}}));
    EXPECT_TRUE(HasDisplay({{"WAYLAND_DISPLAY", "wayland-0"}}));
    EXPECT_TRUE(HasDisplay({{"QT_QPA_PLATFORM", "offscreen"}}));
    EXPECT_TRUE(HasDisplay({{"QT_QPA_PLATFORM", "vnc:size=800x600"}}));
    // A platform that needs a display server it has not got.
    EXPECT_FALSE(HasDisplay({{"QT_QPA_PLATFORM", "xcb"}}));
    EXPECT_FALSE(HasDisplay({{"QT_QPA_PLATFORM", "xcb"}, {"WAYLAND_DISPLAY", "wayland-0"}}));
    EXPECT_TRUE(HasDisplay({{"QT_QPA_PLATFORM", "xcb:dpi=96"}, {"DISPLAY", ":1"}}));
    EXPECT_FALSE(HasDisplay({{"QT_QPA_PLATFORM", "wayland"}, {"DISPLAY", ":1"}}));
    EXPECT_TRUE(HasDisplay({{"QT_QPA_PLATFORM", "wayland;xcb"}, {"DISPLAY", ":1"}}));
}

// The program itself, started without any display: one clear line and exit code 2.
TEST(HostStartup, EditorWithoutDisplaySaysSo)
{
    QString const editor = QDir(QCoreApplication::applicationDirPath()).filePath("../app/zoevents-editor");
    if (!QFileInfo(editor).isExecutable())
        GTEST_SKIP() << "the editor is not built beside the tests";
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (char const* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
    process.setProcessEnvironment(environment);
    process.start(editor, {QStringLiteral(ZO_SOURCE_DIR "/examples/demo")});
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 2);
    QString const error = QString::fromUtf8(process.readAllStandardError());
    EXPECT_EQ(error, ZoText(60050) + "\n");
    EXPECT_TRUE(error.contains("display"));
}

TEST(HostStartup, RecentFoldersKeepTheLastEightNewestFirst)
{
    QTemporaryDir settings;
    RecentFolders recent(settings.filePath("recent.ini"));
    for (int i = 0; i < 10; ++i)
        recent.Add(QStringLiteral("/plants/p%1").arg(i));
    recent.Add("/plants/p5/");
    QStringList const folders = RecentFolders(settings.filePath("recent.ini")).Folders();
    EXPECT_EQ(folders, (QStringList{"/plants/p5", "/plants/p9", "/plants/p8", "/plants/p7", "/plants/p6",
                                    "/plants/p4", "/plants/p3", "/plants/p2"}));
    recent.Remove("/plants/p9");
    EXPECT_FALSE(recent.Folders().contains("/plants/p9"));
    recent.Clear();
    EXPECT_TRUE(recent.Folders().isEmpty());
}
