// The demo project's actions: every kind appears on the side it belongs to, each moment
// keeps the rules of its side, every reference resolves in the demo's other files, and the
// mail and SMS editors open every demo message without finding a fault or a change.
#include "actions/ZoEDlgEventActionMailCfg.h"
#include "actions/ZoEDlgEventActionSmsCfg.h"
#include "actions/ZoRecipientAddresses.h"
#include "config/XmlDocument.h"
#include "editor/ZoActionChecks.h"
#include "support/ScriptedAnswerer.h"

#include <QPushButton>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace {

std::filesystem::path const kDemo = std::filesystem::path(ZO_SOURCE_DIR) / "examples" / "demo";

void LoadDemo(XmlDocument& doc, char const* file)
{
    std::ifstream in(kDemo / file, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    ASSERT_TRUE(doc.Parse(text.str().c_str())) << file;
}

std::set<std::wstring> Keys(XmlNode const* container, wchar_t const* key)
{
    std::set<std::wstring> keys;
    for (XmlNode const* child = container ? container->FirstChild() : nullptr; child; child = child->NextSibling())
        keys.insert(child->Value(key, L""));
    return keys;
}

bool HasFile(std::wstring const& name, char const* extension)
{
    for (auto const& entry : std::filesystem::directory_iterator(kDemo)) {
        std::wstring const file = entry.path().filename().wstring();
        if (file.rfind(name + L".", 0) == 0 && entry.path().extension() == extension)
            return true;
    }
    return false;
}

class DemoActionsTest : public ::testing::Test {
protected:
    DemoActionsTest()
    {
        LoadDemo(m_events, "Events.zocfg");
        LoadDemo(m_users, "Users.zocfg");
        LoadDemo(m_devices, "Devices.zocfg");
    }
    // Calls visit(side, moment, action) for every action of every event.
    template <class Visit>
    void ForEachAction(Visit visit)
    {
        for (XmlNode* event = m_events.Root()->Child(L"events")->FirstChild(); event; event = event->NextSibling())
            for (wchar_t const* side : {L"actions", L"clientActions"})
                if (XmlNode* sideNode = event->Child(side))
                    for (XmlNode* moment = sideNode->FirstChild(); moment; moment = moment->NextSibling())
                        for (XmlNode* action = moment->FirstChild(); action; action = action->NextSibling())
                            visit(std::wstring(side), *moment, *action);
    }
    XmlDocument m_events, m_users, m_devices;
};

} // namespace

TEST_F(DemoActionsTest, EveryKindAppearsOnItsSideAndEveryMomentKeepsItsRules)
{
    std::set<std::wstring> server, client;
    ForEachAction([&](std::wstring const& side, XmlNode const& moment, XmlNode const& action) {
        (side == L"actions" ? server : client).insert(action.Tag());
    });
    EXPECT_EQ(server, (std::set<std::wstring>{L"force", L"shellExecute", L"mail", L"sms"}));
    EXPECT_EQ(client, (std::set<std::wstring>{L"shellExecute", L"screen", L"report", L"device", L"beep", L"launchWeb"}));

    for (XmlNode* event = m_events.Root()->Child(L"events")->FirstChild(); event; event = event->NextSibling())
        for (wchar_t const* side : {L"actions", L"clientActions"})
            for (XmlNode const* moment = event->Child(side)->FirstChild(); moment; moment = moment->NextSibling()) {
                int shows = 0;
                for (XmlNode const* action = moment->FirstChild(); action; action = action->NextSibling()) {
                    bool const show = action->HasTag(L"screen") || action->HasTag(L"report") || action->HasTag(L"device");
                    shows += show;
                    if (moment->HasTag(L"while"))
                        EXPECT_TRUE(std::wstring(side) == L"actions"
                                        ? action->HasTag(L"force") || action->HasTag(L"shellExecute")
                                        : !show)
                            << event->Value(L"name", L"").size();
                }
                EXPECT_LE(shows, 1) << "a client moment shows at most one screen, report or device";
            }
}

TEST_F(DemoActionsTest, EveryReferenceResolvesInTheDemosFiles)
{
    std::set<std::wstring> const users = Keys(m_users.Root()->Child(L"users"), L"id");
    std::set<std::wstring> const mailLists = Keys(m_users.Root()->Child(L"mailLists"), L"id");
    std::set<std::wstring> const phoneLists = Keys(m_users.Root()->Child(L"phoneLists"), L"id");
    std::set<std::wstring> const devices = Keys(m_devices.Root()->Child(L"catalog"), L"name");
    ASSERT_FALSE(phoneLists.empty());
    auto resolves = [](XmlNode const& action, wchar_t const* container, std::set<std::wstring> const& ids) {
        for (XmlNode const* item = action.Child(container) ? action.Child(container)->FirstChild() : nullptr; item;
             item = item->NextSibling())
            EXPECT_TRUE(ids.count(item->Value())) << std::string(item->TextUtf8());
    };
    ForEachAction([&](std::wstring const&, XmlNode const&, XmlNode const& action) {
        std::wstring const name = action.Value(L"name", L"");
        if (action.HasTag(L"mail")) {
            EXPECT_FALSE(ZoCheckMailAction(action));
            EXPECT_EQ(ZoFirstInvalidMailAddress(action.Value(L"address", L"")), L"");
            resolves(action, L"users", users);
            resolves(action, L"mailLists", mailLists);
        } else if (action.HasTag(L"sms")) {
            EXPECT_TRUE(ZoActionHasRecipient(action, L"phone", L"phoneLists"));
            EXPECT_EQ(ZoFirstInvalidPhoneNumber(action.Value(L"phone", L"")), L"");
            resolves(action, L"users", users);
            resolves(action, L"phoneLists", phoneLists);
        } else if (action.HasTag(L"device")) {
            EXPECT_TRUE(devices.count(name)) << std::string(action.ValueUtf8(L"name"));
        } else if (action.HasTag(L"screen")) {
            EXPECT_TRUE(HasFile(name, ".XSCN")) << std::string(action.ValueUtf8(L"name"));
        } else if (action.HasTag(L"report")) {
            EXPECT_TRUE(HasFile(name, ".xrpt")) << std::string(action.ValueUtf8(L"name"));
        }
    });
}

TEST_F(DemoActionsTest, TheMailAndSmsEditorsOpenEveryDemoMessageWithoutFaultOrChange)
{
    ScriptedAnswerer answers;
    int opened = 0;
    ForEachAction([&](std::wstring const&, XmlNode& moment, XmlNode& action) {
        std::unique_ptr<ZoDialog> editor;
        if (action.HasTag(L"mail"))
            editor = std::make_unique<ZoEDlgEventActionMailCfg>(nullptr, &action, &moment, &m_users);
        else if (action.HasTag(L"sms"))
            editor = std::make_unique<ZoEDlgEventActionSmsCfg>(nullptr, &action, &moment, &m_users);
        else
            return;
        ++opened;
        std::string before;
        action.CreateXmlCode(before);
        editor->EnsureInitialized();
        editor->setResult(-1);
        editor->findChild<QPushButton*>("okButton")->click();
        EXPECT_EQ(editor->result(), QDialog::Rejected) << before;
        std::string after;
        action.CreateXmlCode(after);
        EXPECT_EQ(after, before);
    });
    EXPECT_GE(opened, 10);
    EXPECT_EQ(answers.Count(), 0);
}
