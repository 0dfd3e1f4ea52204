// The users document: loaded once, on a worker thread while the wait box shows; a missing or
// broken file gives an empty document without a message; never written.
#include "ActionsPaneFixture.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "actions/ZoUsersDocument.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/ui/ZoWaitDlg.h"
#include "support/ModalScript.h"
#include "support/XmlText.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <thread>

using namespace actions_test;

namespace {

// The wait box runs for real (exec), so that the worker meets it on screen.
ModalScript::Step ShowWaitBox()
{
    return ModalScript::As<ZoWaitDlg>([](ZoWaitDlg& wait) { return wait.exec(); });
}

class UsersDocument : public PaneTest {
protected:
    UsersDocument()
        : m_previousFolder(ZoVelmoraSetup::instance().CfgPath())
    {
        EXPECT_TRUE(m_folder.isValid());
        ZoVelmoraSetup::instance().SetCfgPath(m_folder.path().toStdWString());
    }
    ~UsersDocument() override
    {
        ZoVelmoraSetup::instance().SetCfgPath(m_previousFolder);
        ZoSetUsersFileLoader({});
    }
    void WriteUsers(QByteArray const& bytes) const
    {
        QFile file(QDir(m_folder.path()).filePath(QStringLiteral("Users.zocfg")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray ReadUsers() const
    {
        QFile file(QDir(m_folder.path()).filePath(QStringLiteral("Users.zocfg")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    std::string Load()
    {
        XmlDocument users;
        ModalScript modal(ShowWaitBox());
        ZoEnsureUsersLoaded(nullptr, &users);
        EXPECT_EQ(modal.Classes(), QStringList{"ZoWaitDlg"});
        return users.IsOK() ? Xml(users.Root()) : std::string();
    }

    std::wstring m_previousFolder;
    QTemporaryDir m_folder;
};

TEST_F(UsersDocument, TheFileIsReadAndGainsItsUsersList)
{
    QByteArray const bytes = "<usersBD><version>1</version><mailLists/></usersBD>";
    WriteUsers(bytes);
    EXPECT_EQ(Load(), "<usersBD><version>1</version><mailLists/><users/></usersBD>");
    EXPECT_EQ(ReadUsers(), bytes) << "the module never writes the users file";
}

TEST_F(UsersDocument, AMissingOrBrokenFileGivesAnEmptyDocumentWithoutAMessage)
{
    std::string const empty = "<usersBD><version>24.11.17</version><users/></usersBD>";
    EXPECT_EQ(Load(), empty);
    WriteUsers("<usersBD><users>");
    EXPECT_EQ(Load(), empty);
    WriteUsers("<project><users/></project>");
    EXPECT_EQ(Load(), empty) << "another document is no users file";
    WriteUsers(QByteArray("\xff\xfe\0<", 4));
    EXPECT_EQ(Load(), empty);
}

// The worker loads while the wait box is on screen, then closes it; the document is then
// loaded and a second mail editor does not load it again.
TEST_F(UsersDocument, LoadedOnceOnAWorkerWhileTheWaitBoxShows)
{
    int loads = 0;
    std::thread::id loader;
    bool boxShown = false;
    ZoSetUsersFileLoader([&](XmlDocument& users, std::wstring const& path) {
        ++loads;
        loader = std::this_thread::get_id();
        boxShown = ZoWaitDlg::AnyShown();
        EXPECT_EQ(QString::fromStdWString(path), QDir(m_folder.path()).filePath(QStringLiteral("Users.zocfg")));
        return users.Parse("<usersBD><users><user><name>Ann</name></user></users></usersBD>");
    });

    Open(0, 0, "");
    int editors = 0;
    XmlDocument* handed = nullptr;
    EditorRunnerGuard editorsGuard([&](unsigned, XmlNode*, XmlNode*, XmlDocument* users, ZoActionEditorFlags const&) {
        ++editors;
        handed = users;
        EXPECT_TRUE(users->IsOK()) << "loaded before the editor opens";
        return true;
    });
    {
        ModalScript modal(ModalScript::As<ZoEDlgEventActionsWizzard>([](ZoEDlgEventActionsWizzard& wizard) {
            wizard.Choose(kActionMail);
            return wizard.result();
        }));
        modal.Then(ShowWaitBox());
        m_pane->OnNew();
        EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventActionsWizzard", "ZoWaitDlg"}));
    }
    EXPECT_EQ(loads, 1);
    EXPECT_NE(loader, std::this_thread::get_id()) << "loaded on a worker thread";
    EXPECT_TRUE(boxShown) << "while the wait box was up";
    EXPECT_FALSE(ZoWaitDlg::AnyShown()) << "and closed after";
    EXPECT_EQ(handed, &m_users);
    EXPECT_EQ(Xml(m_users.Root()), "<usersBD><users><user><name>Ann</name></user></users></usersBD>");

    ModalScript again(ModalScript::As<ZoEDlgEventActionsWizzard>([](ZoEDlgEventActionsWizzard& wizard) {
        wizard.Choose(kActionSms);
        return wizard.result();
    }));
    m_pane->OnNew();
    EXPECT_EQ(again.Classes(), QStringList{"ZoEDlgEventActionsWizzard"}) << "no second wait box";
    EXPECT_EQ(loads, 1);
    EXPECT_EQ(editors, 2);
    EXPECT_EQ(m_pane->Model()->rowCount(), 2);
}

// A runner that does not show the wait box never leaves the worker waiting.
TEST_F(UsersDocument, AWaitBoxThatNeverShowsDoesNotHangTheWorker)
{
    XmlDocument users;
    ModalScript modal(ModalScript::Reject());
    ZoEnsureUsersLoaded(nullptr, &users);
    EXPECT_EQ(Xml(users.Root()), "<usersBD><version>24.11.17</version><users/></usersBD>");
}

} // namespace
