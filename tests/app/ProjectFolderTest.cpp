#include "HostTestSupport.h"
#include "MainWindow.h"
#include "ProjectFolder.h"
#include "ProjectSummary.h"
#include "platform/setup/ZoEventSystem.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "support/ScriptedAnswerer.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <set>

using namespace host_test;
using namespace zo::project;
using XmlNode = XmlDocument::XmlNode;
using HostProjectFolder = host_test::HostTest;

namespace {

std::unique_ptr<ProjectFolder> OpenOrFail(QString const& folder)
{
    std::wstring error;
    auto project = ProjectFolder::Open(folder, error);
    EXPECT_TRUE(project) << QString::fromStdWString(error).toStdString();
    return project;
}

QString LabelText(MainWindow const& window, char const* name)
{
    auto* label = window.findChild<QLabel*>(QString::fromLatin1(name));
    return label ? label->text() : QStringLiteral("<no %1>").arg(QLatin1String(name));
}

QString MessageText(ScriptedAnswerer const& answers)
{
    return QString::fromStdWString(answers.LastText());
}

} // namespace

TEST_F(HostProjectFolder, DemoOpensWithItsCountsInTheWindow)
{
    QTemporaryDir settings;
    ScriptedAnswerer answers;
    MainWindow window(RecentFolders(settings.filePath("recent.ini")));
    ASSERT_TRUE(window.OpenFolder(DemoFolder()));
    EXPECT_EQ(answers.Count(), 0);

    EXPECT_EQ(LabelText(window, "projectNameLabel"), "Riverside Pumping Station");
    EXPECT_EQ(LabelText(window, "eventsCountLabel"), "22");
    EXPECT_EQ(LabelText(window, "eventGroupsCountLabel"), "5");
    EXPECT_EQ(LabelText(window, "timeTablesCountLabel"), "7");
    EXPECT_EQ(LabelText(window, "eventDevicesCountLabel"), "22");
    QString const details = LabelText(window, "projectDetailsLabel");
    EXPECT_TRUE(details.contains("6") && details.contains("2") && details.contains("5")) << details.toStdString();
    EXPECT_TRUE(window.windowTitle().startsWith("Riverside Pumping Station"));

    // The module's services see the open project.
    EXPECT_EQ(QString::fromStdWString(ZoVelmoraSetup::instance().CfgPath()), window.Project()->Folder());
    EXPECT_TRUE(ZoEventSystem::instance()->IsFeedAvailable());
    // And the folder is remembered.
    EXPECT_EQ(RecentFolders(settings.filePath("recent.ini")).Folders().value(0), QDir::cleanPath(DemoFolder()));
}

// The demo is what a newcomer sees first: every reference in it must hold.
TEST_F(HostProjectFolder, DemoReferencesAreConsistent)
{
    auto project = OpenOrFail(DemoFolder());
    ASSERT_TRUE(project);
    ProjectSummary const summary = SummarizeProject(*project);
    EXPECT_EQ(summary.catalogDevices, 6);
    EXPECT_EQ(summary.screens, 2);
    EXPECT_EQ(summary.reports, 1);
    EXPECT_EQ(summary.users, 5);

    QRegularExpression const guid(QStringLiteral(
        "^\\{[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\}$"));
    auto isGuid = [&](std::wstring const& text) {
        return guid.match(QString::fromStdWString(text)).hasMatch();
    };
    XmlNode* root = project->Events().Root();
    std::set<std::wstring> groupIds;
    for (auto it = root->Child(L"eventsGroups")->ChildsBegin(); it != root->Child(L"eventsGroups")->ChildsEnd(); ++it)
        groupIds.insert((*it)->Value(L"id", L""));
    XmlNode* tables = project->TimeTables().Root();

    std::multiset<std::wstring> eventIds;
    int disabled = 0;
    for (auto it = root->Child(L"events")->ChildsBegin(); it != root->Child(L"events")->ChildsEnd(); ++it) {
        XmlNode* event = *it;
        std::wstring const id = event->Value(L"id", L"");
        std::string const name = QString::fromStdWString(event->Value(L"name", L"")).toStdString();
        EXPECT_TRUE(isGuid(id)) << name;
        eventIds.insert(id);
        disabled += event->Value(L"disabled", L"") == L"T" ? 1 : 0;
        for (auto g = event->Child(L"eventsGroups")->ChildsBegin(); g != event->Child(L"eventsGroups")->ChildsEnd(); ++g)
            EXPECT_EQ(groupIds.count((*g)->Value()), 1u) << name;
        std::wstring const table = event->Value(L"timeTable", L"");
        if (!table.empty()) {
            EXPECT_TRUE(tables->NodeV(L"days/day?id=%s?", table.c_str()) || tables->NodeV(L"weeks/week?id=%s?", table.c_str())
                        || tables->NodeV(L"calendars/calendar?id=%s?", table.c_str())) << name;
        }
        for (wchar_t const* side : {L"actions", L"clientActions"}) {
            for (wchar_t const* moment : {L"activate", L"while", L"deactivate", L"acknowledge"})
                EXPECT_TRUE(event->NodeV(L"%s/%s", side, moment)) << name;
        }
    }
    EXPECT_EQ(eventIds.size(), 22u);
    EXPECT_GE(disabled, 2);

    // Every event is registered exactly once as an R$EVE device, some in nested groups.
    std::multiset<std::wstring> registered;
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
    EXPECT_EQ(registered, eventIds);
}

TEST_F(HostProjectFolder, MissingDocumentsStartEmptyAndAreNotWritten)
{
    QTemporaryDir folder;
    auto project = OpenOrFail(folder.path());
    ASSERT_TRUE(project);
    EXPECT_TRUE(project->IsNew());
    EXPECT_TRUE(project->Events().Node(L"events"));
    EXPECT_TRUE(project->Events().Node(L"eventsGroups"));
    EXPECT_TRUE(project->TimeTables().Node(L"calendars"));
    ASSERT_TRUE(project->DeviceGroups());
    EXPECT_TRUE(project->DeviceGroups()->Child(L"devices"));
    EXPECT_TRUE(project->Users().Node(L"users"));
    EXPECT_EQ(project->Users().Root()->Tag(), L"usersBD");
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());

    // The window asks before it starts a project in a folder that holds none.
    QTemporaryDir settings;
    MainWindow window(RecentFolders(settings.filePath("recent.ini")));
    ScriptedAnswerer answers{ZoAnswer::No};
    EXPECT_FALSE(window.OpenFolder(folder.path()));
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{60049}));
    EXPECT_EQ(window.Project(), nullptr);
    answers.Then(ZoAnswer::Yes);
    EXPECT_TRUE(window.OpenFolder(folder.path()));
    EXPECT_EQ(LabelText(window, "eventsCountLabel"), "0");
}

// A document that cannot be used refuses the whole folder, names the file and the
// parser's reason, keeps the project that was open and never touches the file.
TEST_F(HostProjectFolder, BadDocumentIsRefusedAndLeftAsItIs)
{
    QTemporaryDir settings;
    MainWindow window(RecentFolders(settings.filePath("recent.ini")));
    ASSERT_TRUE(window.OpenFolder(DemoFolder()));
    ProjectFolder* demo = window.Project();

    DemoCopy copy;
    QByteArray const events = ReadBytes(copy.File(ProjectDoc::Events));
    QByteArray const broken = events.left(events.size() / 2); // cut in the middle of an element
    WriteBytes(copy.File(ProjectDoc::Events), broken);
    XmlDocument probe;
    ASSERT_FALSE(probe.Parse(broken.constData(), static_cast<std::size_t>(broken.size())));

    {
        ScriptedAnswerer answers;
        EXPECT_FALSE(window.OpenFolder(copy.Path()));
        ASSERT_EQ(answers.Ids(), (std::vector<unsigned>{60040}));
        QString const text = MessageText(answers);
        EXPECT_TRUE(text.contains("Events.zocfg")) << text.toStdString();
        EXPECT_TRUE(text.contains(QString::fromStdString(probe.ErrorText()))) << text.toStdString();
        EXPECT_TRUE(text.contains(QString::number(probe.ErrorOffset()))) << text.toStdString();
        EXPECT_EQ(answers.Last().icon, ZoMsgIcon::Error);
    }
    EXPECT_EQ(ReadBytes(copy.File(ProjectDoc::Events)), broken);
    EXPECT_EQ(window.Project(), demo);

    // Well-formed, but another document: refused by its root element.
    WriteBytes(copy.File(ProjectDoc::Events), events);
    QByteArray const devices = ReadBytes(copy.File(ProjectDoc::Devices));
    WriteBytes(copy.File(ProjectDoc::TimeTables), devices);
    {
        ScriptedAnswerer answers;
        EXPECT_FALSE(window.OpenFolder(copy.Path()));
        QString const text = MessageText(answers);
        EXPECT_TRUE(text.contains("TimeTables.zocfg") && text.contains("<deviceTree>") && text.contains("<timeTables>"))
            << text.toStdString();
    }
    EXPECT_EQ(ReadBytes(copy.File(ProjectDoc::TimeTables)), devices);

    // Unreadable: the users file is a folder.
    WriteBytes(copy.File(ProjectDoc::TimeTables), ReadBytes(FilePath(DemoFolder(), ProjectDoc::TimeTables)));
    ASSERT_TRUE(QFile::remove(copy.File(ProjectDoc::Users)));
    ASSERT_TRUE(QDir().mkdir(copy.File(ProjectDoc::Users)));
    {
        ScriptedAnswerer answers;
        EXPECT_FALSE(window.OpenFolder(copy.Path()));
        EXPECT_TRUE(MessageText(answers).contains("Users.zocfg")) << MessageText(answers).toStdString();
    }
    EXPECT_TRUE(QFileInfo(copy.File(ProjectDoc::Users)).isDir());

    // A folder that does not exist is dropped from the recent folders.
    QString const gone = copy.Path() + "/gone";
    RecentFolders(settings.filePath("recent.ini")).Add(gone);
    {
        ScriptedAnswerer answers;
        EXPECT_FALSE(window.OpenFolder(gone));
        EXPECT_TRUE(MessageText(answers).contains("gone"));
    }
    EXPECT_FALSE(RecentFolders(settings.filePath("recent.ini")).Folders().contains(gone));
    EXPECT_EQ(window.Project(), demo);
}

TEST_F(HostProjectFolder, ProjectSettingsGiveNameAndFeed)
{
    QTemporaryDir folder;
    WriteBytes(QDir(folder.path()).filePath("Project.zocfg"),
               "<project><name>North Substation</name><eventFeed>F</eventFeed></project>");
    WriteBytes(QDir(folder.path()).filePath("Events.zocfg"), "<eventsConfiguration/>");
    QTemporaryDir settings;
    MainWindow window(RecentFolders(settings.filePath("recent.ini")));
    ScriptedAnswerer answers;
    ASSERT_TRUE(window.OpenFolder(folder.path()));
    EXPECT_EQ(window.Project()->DisplayName(), "North Substation");
    EXPECT_FALSE(ZoEventSystem::instance()->IsFeedAvailable());
    // Without settings: the folder's name, and the feed is available.
    QString const plant = QDir(folder.path()).filePath("Plant 7");
    ASSERT_TRUE(QDir().mkdir(plant));
    auto bare = OpenOrFail(plant);
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->DisplayName(), "Plant 7");
    EXPECT_TRUE(bare->FeedAvailable());
}
