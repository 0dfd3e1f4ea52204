#include "HostTestSupport.h"
#include "support/ScriptedAnswerer.h"

#include <set>

using namespace host_test;
using HostProject = HostTest;

TEST_F(HostProject, DemoOpensWithItsCountsAndConsistentReferences)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    EXPECT_EQ(answers.Count(), 0);
    EXPECT_EQ(demo.Label("projectNameLabel"), "Riverside Pumping Station");
    EXPECT_EQ(demo.Label("eventsCountLabel"), "24");
    EXPECT_EQ(demo.Label("eventGroupsCountLabel"), "5");
    EXPECT_EQ(demo.Label("timeTablesCountLabel"), "7");
    EXPECT_EQ(demo.Label("eventDevicesCountLabel"), "24");
    EXPECT_TRUE(demo.window.windowTitle().startsWith("Riverside Pumping Station"));
    // The module's services see the open project.
    EXPECT_EQ(QString::fromStdWString(ZoVelmoraSetup::instance().CfgPath()), demo.window.Project()->Folder());

    // The demo is what a newcomer sees first: every event's time table exists, and every
    // event is registered exactly once as an event device, some in nested groups.
    ProjectFolder* project = demo.window.Project();
    XmlNode* tables = project->TimeTables().Root();
    std::multiset<std::wstring> eventIds, registered;
    XmlNode* events = project->Events().Root()->Child(L"events");
    for (auto it = events->ChildsBegin(); it != events->ChildsEnd(); ++it) {
        eventIds.insert((*it)->Value(L"id", L""));
        std::wstring const table = (*it)->Value(L"timeTable", L"");
        wchar_t const* const t = table.c_str();
        EXPECT_TRUE(table.empty() || tables->NodeV(L"days/day?id=%s?", t) || tables->NodeV(L"weeks/week?id=%s?", t)
                    || tables->NodeV(L"calendars/calendar?id=%s?", t));
    }
    std::vector<XmlNode*> pending{project->DeviceGroups()};
    while (!pending.empty()) {
        XmlNode* group = pending.back();
        pending.pop_back();
        for (auto it = group->Child(L"devices")->ChildsBegin(); it != group->Child(L"devices")->ChildsEnd(); ++it) {
            if ((*it)->Value(L"type", L"") == kEventDeviceType)
                registered.insert((*it)->Value(L"id", L""));
        }
        for (auto it = group->Child(L"groups")->ChildsBegin(); it != group->Child(L"groups")->ChildsEnd(); ++it)
            pending.push_back(*it);
    }
    EXPECT_EQ(std::set<std::wstring>(eventIds.begin(), eventIds.end()).size(), 24u);
    EXPECT_EQ(registered, eventIds);
}

// An empty folder is a new project, after a question; nothing is written by opening it.
// Project.zocfg, when present, gives the name and the event feed.
TEST_F(HostProject, NewProjectAndProjectSettings)
{
    QTemporaryDir folder, settings;
    MainWindow window(RecentFolders(settings.filePath("recent.ini")));
    ScriptedAnswerer answers{ZoAnswer::No};
    EXPECT_FALSE(window.OpenFolder(folder.path()));
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{60049}));
    EXPECT_EQ(window.Project(), nullptr);
    EXPECT_TRUE(window.OpenFolder(folder.path())); // answered Yes
    EXPECT_EQ(window.findChild<QLabel*>("eventsCountLabel")->text(), "0");
    EXPECT_EQ(window.Project()->DisplayName(), QDir(folder.path()).dirName());
    EXPECT_TRUE(ZoEventSystem::instance()->IsFeedAvailable());
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());

    WriteBytes(FilePath(folder.path(), ProjectDoc::Project),
               "<project><name>North Substation</name><eventFeed>F</eventFeed></project>");
    ASSERT_TRUE(window.OpenFolder(folder.path()));
    EXPECT_EQ(window.Project()->DisplayName(), "North Substation");
    EXPECT_FALSE(ZoEventSystem::instance()->IsFeedAvailable());
}

// A document that cannot be used refuses the whole folder, names the file and the
// parser's reason, keeps the project that was open and never touches the file.
TEST_F(HostProject, BadDocumentIsRefusedAndLeftAsItIs)
{
    DemoWindow demo, copy;
    ProjectFolder* open = demo.window.Project();
    QByteArray const events = ReadBytes(copy.File(ProjectDoc::Events));
    QByteArray const broken = events.left(events.size() / 2); // cut in the middle of an element
    WriteBytes(copy.File(ProjectDoc::Events), broken);
    XmlDocument probe;
    ASSERT_FALSE(probe.Parse(broken.constData(), static_cast<std::size_t>(broken.size())));

    ScriptedAnswerer answers;
    EXPECT_FALSE(demo.window.OpenFolder(copy.dir.path()));
    ASSERT_EQ(answers.Ids(), (std::vector<unsigned>{60040}));
    EXPECT_EQ(answers.Last().icon, ZoMsgIcon::Error);
    QString text = QString::fromStdWString(answers.LastText());
    // The reason is the reader's, in the language of the texts (ProjectFolderMessages).
    EXPECT_TRUE(text.contains("Events.zocfg") && text.contains(QString::number(probe.ErrorOffset())))
        << text.toStdString();
    EXPECT_EQ(ReadBytes(copy.File(ProjectDoc::Events)), broken);
    EXPECT_EQ(demo.window.Project(), open);

    // Well-formed, but another document: refused by its root element.
    WriteBytes(copy.File(ProjectDoc::Events), events);
    QByteArray const devices = ReadBytes(copy.File(ProjectDoc::Devices));
    WriteBytes(copy.File(ProjectDoc::TimeTables), devices);
    EXPECT_FALSE(demo.window.OpenFolder(copy.dir.path()));
    text = QString::fromStdWString(answers.LastText());
    EXPECT_TRUE(text.contains("TimeTables.zocfg") && text.contains("<deviceTree>") && text.contains("<timeTables>"))
        << text.toStdString();
    EXPECT_EQ(ReadBytes(copy.File(ProjectDoc::TimeTables)), devices);
    EXPECT_EQ(demo.window.Project(), open);
}
