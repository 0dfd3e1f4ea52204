// The users file: opening a project leaves it unloaded (the action lists load it when a
// mail or SMS editor first needs it), a broken one never keeps a project from opening, and
// nothing writes it.
#include "HostTestSupport.h"
#include "actions/ZoUsersDocument.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoWaitDlg.h"

using namespace host_test;

namespace {

class HostUsers : public HostTest {};

int DemoUsers()
{
    XmlDocument users;
    ParseFile(FilePath(kDemoFolder, ProjectDoc::Users), users);
    int count = 0;
    for (XmlNode const* user = users.Root()->Child(L"users")->FirstChild(); user; user = user->NextSibling())
        count += user->HasTag(L"user");
    return count;
}

TEST_F(HostUsers, OpeningLeavesTheUsersForTheActionListsToLoad)
{
    DemoWindow demo;
    ProjectFolder* project = demo.window.Project();
    EXPECT_FALSE(project->Users().IsOK()) << "not read at opening";
    EXPECT_TRUE(project->HasFile(ProjectDoc::Users));
    EXPECT_TRUE(demo.Label("projectDetailsLabel").contains(ZoText(60037).replace("%d", QString::number(DemoUsers()))))
        << demo.Label("projectDetailsLabel").toStdString();

    ModalScript modal(ModalScript::As<ZoWaitDlg>([](ZoWaitDlg& wait) { return wait.exec(); }));
    ZoEnsureUsersLoaded(&demo.window, &project->Users());
    ASSERT_TRUE(project->Users().IsOK());
    EXPECT_EQ(project->Users().Root()->Child(L"users")->Size(), DemoUsers()) << "the project's own file";
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Users)), ReadBytes(FilePath(kDemoFolder, ProjectDoc::Users)));
}

TEST_F(HostUsers, ABrokenUsersFileDoesNotRefuseTheProject)
{
    DemoWindow demo;
    WriteBytes(demo.File(ProjectDoc::Users), "<usersBD><users><user>");
    DemoWindow other;
    EXPECT_TRUE(other.window.OpenFolder(demo.dir.path()));
    EXPECT_TRUE(other.Label("projectDetailsLabel").contains(ZoText(60037).replace("%d", "0")));
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Users)), QByteArray("<usersBD><users><user>"));
}

} // namespace
