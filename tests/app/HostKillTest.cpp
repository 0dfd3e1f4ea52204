#include "HostTestSupport.h"
#include "XmlFileText.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <cstdio>

using namespace host_test;
using HostKill = HostTest;

namespace {

constexpr ProjectDoc kSaved[] = {ProjectDoc::Events, ProjectDoc::Devices};

QString VersionFile(QString const& folder, int version, ProjectDoc doc)
{
    return QDir(folder).filePath(QString("version%1-%2.xml").arg(version).arg(static_cast<int>(doc)));
}

} // namespace

// Run only as the child of the test below: saves two versions of the events and devices
// documents in turn, for ever, through the host's own save, and says "saved" after each.
TEST(HostKillChild, DISABLED_SavesForever)
{
    QString const folder = QString::fromLocal8Bit(qgetenv("ZO_HOST_SAVE_CHILD_FOLDER"));
    if (folder.isEmpty())
        GTEST_SKIP() << "only run by HostKill.KilledSavesLeaveTheWholeProjectOldOrNew";
    std::wstring error;
    auto project = ProjectFolder::Open(folder, error);
    ASSERT_TRUE(project);
    XmlDocument versions[2][2];
    for (int version = 0; version < 2; ++version) {
        for (int i = 0; i < 2; ++i)
            ParseFile(VersionFile(folder, version, kSaved[i]), versions[version][i]);
    }
    // Writing and renaming take most of each save, so that the kills fall in every step.
    ProjectSaver::SetBlockWrittenHook([] { QThread::usleep(500); return 0; });
    ProjectSaver::SetRenameHook([](int) { QThread::msleep(10); });
    for (int round = 0;; ++round) {
        for (int i = 0; i < 2; ++i)
            *project->Document(kSaved[i]).Root() = *versions[round % 2][i].Root();
        ASSERT_TRUE(project->Save({std::begin(kSaved), std::end(kSaved)}, error));
        std::printf("saved\n");
        std::fflush(stdout);
    }
}

// A process killed at any moment of saving a change to several files leaves the project
// wholly old or wholly new once the folder is opened again: never the events of one
// version beside the device registrations of the other.
TEST_F(HostKill, KilledSavesLeaveTheWholeProjectOldOrNew)
{
    // Two versions of a large events document (60 copies of the demo's events) and of the
    // devices document, each pair marked in every event and in the device tree.
    QTemporaryDir folder;
    XmlDocument demoEvents, demoDevices;
    ParseFile(FilePath(kDemoFolder, ProjectDoc::Events), demoEvents);
    ParseFile(FilePath(kDemoFolder, ProjectDoc::Devices), demoDevices);
    QByteArray expected[2][2];
    for (int version = 0; version < 2; ++version) {
        wchar_t const* mark = version == 0 ? L"first version" : L"second version";
        XmlDocument events;
        events.Create(kEventsRoot);
        XmlNode* list = events.Root()->NewChild(L"events", nullptr);
        XmlNode const* demoList = demoEvents.Root()->Child(L"events");
        for (int copy = 0; copy < 60; ++copy) {
            for (auto it = demoList->ChildsBegin(); it != demoList->ChildsEnd(); ++it) {
                XmlNode* event = list->NewChild(L"event", nullptr);
                *event = **it;
                event->SetValue(L"description", mark);
            }
        }
        events.Root()->NewChild(L"eventsGroups", nullptr);
        XmlDocument devices;
        devices.Create(kDevicesRoot);
        *devices.Root() = *demoDevices.Root();
        devices.Root()->Child(kDeviceGroupsTag)->SetValue(L"comment", mark);
        XmlDocument const* docs[2] = {&events, &devices};
        for (int i = 0; i < 2; ++i) {
            expected[version][i] = QByteArray::fromStdString(XmlFileText(*docs[i]));
            WriteBytes(VersionFile(folder.path(), version, kSaved[i]), expected[version][i]);
        }
    }
    for (int i = 0; i < 2; ++i)
        WriteBytes(FilePath(folder.path(), kSaved[i]), expected[1][i]);

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZO_HOST_SAVE_CHILD_FOLDER", folder.path());
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    int seen[2] = {0, 0};
    int completed = 0;
    constexpr int kKills = 30;
    for (int kill = 0; kill < kKills; ++kill) {
        QProcess child;
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(),
                    {"--gtest_filter=HostKillChild.DISABLED_SavesForever", "--gtest_also_run_disabled_tests"});
        ASSERT_TRUE(child.waitForStarted());
        // Two saves done, and the time one save takes; then the kill falls at a random
        // moment of the next two saves.
        QElapsedTimer round;
        int saves = 0;
        while (saves < 2) {
            ASSERT_TRUE(child.waitForReadyRead(60000)) << "the child stopped saving";
            while (child.canReadLine()) {
                if (child.readLine().startsWith("saved") && ++saves == 1)
                    round.start();
            }
        }
        qint64 const oneSave = std::max<qint64>(round.elapsed(), 1);
        QThread::msleep(static_cast<unsigned long>(QRandomGenerator::global()->bounded(2 * oneSave)));
        child.kill(); // SIGKILL
        ASSERT_TRUE(child.waitForFinished());

        std::wstring error;
        std::unique_ptr<ProjectFolder> reopened = ProjectFolder::Open(folder.path(), error);
        ASSERT_TRUE(reopened) << "kill " << kill << ": " << QString::fromStdWString(error).toStdString();
        completed += reopened->CompletedStoppedSave() ? 1 : 0;
        QByteArray const events = ReadBytes(FilePath(folder.path(), ProjectDoc::Events));
        QByteArray const devices = ReadBytes(FilePath(folder.path(), ProjectDoc::Devices));
        int const version = events == expected[0][0] ? 0 : 1;
        ASSERT_EQ(events, expected[version][0]) << "kill " << kill << " left a mixed events file";
        ASSERT_EQ(devices, expected[version][1]) << "kill " << kill << " left events and devices of different saves";
        ++seen[version];
        // Nothing of the stopped save is left beside the project's files.
        for (QString const& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
            EXPECT_TRUE(name == "Events.zocfg" || name == "Devices.zocfg" || name.startsWith("version"))
                << "kill " << kill << " left " << name.toStdString();
    }
    std::printf("[          ] %d kills: %d left the first version, %d the second; %d saves were completed "
                "when the folder was opened\n",
                kKills, seen[0], seen[1], completed);
}
