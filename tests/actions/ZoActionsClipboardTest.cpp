// The actions clipboard: its text, which pasted actions a moment keeps, new ids, the rule of
// the last wrapper, and foreign bytes.
#include "ActionsPaneFixture.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoActionsClipboard.h"
#include "platform/ui/ZoClipboard.h"
#include "support/XmlText.h"

#include <QAction>
#include <QMenu>
#include <QTest>

using namespace actions_test;

namespace {

class ActionsClipboard : public ::testing::Test {
protected:
    ActionsClipboard() { EXPECT_TRUE(m_target.Parse("<activate><note/></activate>")); }

    ZoActionsPaste Paste(std::string const& text, unsigned mask)
    {
        m_appended.clear();
        return ZoPasteActionsText(text, *m_target.Root(), mask, &m_appended);
    }
    std::string Target() const { return Xml(m_target.Root()); }

    XmlDocument m_target;
    std::vector<XmlNode*> m_appended;
};

TEST_F(ActionsClipboard, CopyWrapsEachActionWhole)
{
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse("<m><beep><id>{B}</id></beep><mail><id>{M}</id><users><user>u</user></users></mail></m>"));
    XmlNode const* beep = doc.Root()->Child(L"beep");
    XmlNode const* mail = doc.Root()->Child(L"mail");
    EXPECT_EQ(ZoBuildActionsClipboardText({mail, nullptr, beep}),
              "<actionClipboard><action><mail><id>{M}</id><users><user>u</user></users></mail></action>"
              "<action><beep><id>{B}</id></beep></action></actionClipboard>");
    EXPECT_TRUE(ZoIsActionsClipboardText(ZoBuildActionsClipboardText({beep})));
    EXPECT_EQ(ZoBuildActionsClipboardText({}), "<actionClipboard></actionClipboard>");
}

TEST_F(ActionsClipboard, PastedActionsGetNewIdsAndKeepTheirContent)
{
    ZoActionsPaste const result = Paste(
        "<actionClipboard><action><force><id>{F}</id><variable>[A]</variable><value>1</value></force></action>"
        "<action><sms><id>{S}</id><message>m</message><forceBreakMessage>T</forceBreakMessage></sms></action>"
        "</actionClipboard>",
        kServerActionsMask);
    EXPECT_EQ(result.pasted, 2);
    EXPECT_TRUE(result.lastYielded);
    ASSERT_EQ(m_appended.size(), 2u);
    std::wstring const forceId = m_appended[0]->Value(L"id", L"");
    EXPECT_NE(forceId, L"{F}");
    EXPECT_EQ(forceId.size(), 38u);
    EXPECT_NE(m_appended[1]->Value(L"id", L""), forceId);
    EXPECT_EQ(m_appended[1]->Value(L"forceBreakMessage", L""), L"T");
    EXPECT_EQ(Xml(m_appended[0]), "<force><id>" + QString::fromStdWString(forceId).toStdString()
                                      + "</id><variable>[A]</variable><value>1</value></force>");
}

TEST_F(ActionsClipboard, AServerClipboardIntoAClientListKeepsOnlyCommands)
{
    std::string const server =
        "<actionClipboard><action><force><id>{1}</id></force></action>"
        "<action><shellExecute><id>{2}</id><command>c</command></shellExecute></action>"
        "<action><mail><id>{3}</id></mail></action><action><sms><id>{4}</id></sms></action>"
        "<action><shellExecute><id>{5}</id><command>d</command></shellExecute></action></actionClipboard>";
    ZoActionsPaste const result = Paste(server, kClientActionsMask);
    EXPECT_EQ(result.pasted, 2);
    EXPECT_TRUE(result.lastYielded);
    EXPECT_EQ(Target().find("force"), std::string::npos);
    EXPECT_EQ(m_appended[0]->Value(L"command", L""), L"c");
    EXPECT_EQ(m_appended[1]->Value(L"command", L""), L"d");
}

TEST_F(ActionsClipboard, AWrapperPastesOnlyItsLastAllowedAction)
{
    Paste("<actionClipboard><action><beep><id>{1}</id></beep><shellExecute><id>{2}</id><command>a</command>"
          "</shellExecute><beep><id>{3}</id></beep><force><id>{4}</id></force></action></actionClipboard>",
          kClientActionsMask);
    ASSERT_EQ(m_appended.size(), 1u);
    EXPECT_EQ(m_appended[0]->Tag(), L"beep") << "the last allowed one; the force after it is not allowed here";
    EXPECT_NE(m_appended[0]->Value(L"id", L""), L"{3}");
}

TEST_F(ActionsClipboard, ADeviceIsDroppedWhereTheMomentIsNotAllowedOne)
{
    XmlDocument moment;
    ASSERT_TRUE(moment.Parse("<activate><screen><id>{S}</id><name>Overview</name></screen></activate>"));
    unsigned const mask = ZoAllowedActionKinds(moment.Root(), 0, true);
    ZoActionsPaste const result = ZoPasteActionsText(
        "<actionClipboard><action><device><id>{D}</id><name>BOILER</name></device></action></actionClipboard>",
        *moment.Root(), mask);
    EXPECT_EQ(result.pasted, 0);
    EXPECT_FALSE(result.lastYielded);
    EXPECT_EQ(Xml(moment.Root()), "<activate><screen><id>{S}</id><name>Overview</name></screen></activate>");
}

// The list is marked changed and refilled only after a last wrapper that gave an action;
// what earlier wrappers gave stays in the tree all the same. Kept deliberately as it is.
TEST_F(ActionsClipboard, ALastWrapperThatGivesNothingStillLeavesEarlierActions)
{
    ZoActionsPaste const result = Paste(
        "<actionClipboard><action><shellExecute><id>{1}</id><command>a</command></shellExecute></action>"
        "<action><force><id>{2}</id></force></action></actionClipboard>",
        kClientActionsMask);
    EXPECT_EQ(result.pasted, 1);
    EXPECT_FALSE(result.lastYielded);
    EXPECT_NE(Target().find("<command>a</command>"), std::string::npos);
}

TEST_F(ActionsClipboard, ForeignTextPastesNothing)
{
    std::string const before = Target();
    char const nulFirst[] = "\0<actionClipboard><action><beep/></action></actionClipboard>";
    for (std::string const& text :
         {std::string(), std::string("not xml"), std::string("<eventsClipboard><action><beep/></action></eventsClipboard>"),
          std::string("<actionClipboard><action><beep/>"), std::string("<actionClipboard><beep/><other><beep/></other>"
                                                                         "</actionClipboard>"),
          std::string(nulFirst, sizeof nulFirst - 1)}) {
        ZoActionsPaste const result = Paste(text, kClientActionsMask);
        EXPECT_EQ(result.pasted, 0) << text;
        EXPECT_FALSE(result.lastYielded) << text;
    }
    EXPECT_EQ(Target(), before);
}

class ActionsPaste : public PaneTest {};

// Through the pane: the deliberate rule above leaves the rows and the changed flag as they
// were, while the tree already holds the pasted action.
TEST_F(ActionsPaste, ThePaneShowsNothingWhenTheLastWrapperGaveNothing)
{
    Open(1, 0, "<beep><id>{B}</id></beep>");
    std::string const text = "<actionClipboard><action><shellExecute><id>{1}</id><command>a</command></shellExecute>"
                             "</action><action><mail><id>{2}</id></mail></action></actionClipboard>";
    PutToClipboard(text.c_str(), text.size() + 1, 1);
    QTest::keySequence(m_list, QKeySequence::Paste);
    EXPECT_EQ(Children(), "beep shellExecute");
    EXPECT_EQ(Rows(), "Beep:");
    EXPECT_FALSE(m_pane->IsModified());

    std::string const good = "<actionClipboard><action><mail/></action><action><beep><id>{X}</id></beep></action>"
                             "</actionClipboard>";
    PutToClipboard(good.c_str(), good.size() + 1, 1);
    m_pane->PasteFromClipboard();
    EXPECT_EQ(Rows(), ByKind({"Beep:", "Beep:", "Command:a "}));
    EXPECT_TRUE(m_pane->IsModified());
}

TEST_F(ActionsPaste, CopyAndPasteThroughTheKeysAndTheMenu)
{
    Open(0, 0, "<force><id>{F}</id><variable>[A]</variable><value>1</value></force>");
    Select({0});
    QTest::keySequence(m_list, QKeySequence::Copy);
    std::string buffer;
    ASSERT_GT(GetFromClipboard(buffer, 1), 0);
    EXPECT_EQ(std::string(buffer.c_str()), "<actionClipboard><action><force><id>{F}</id><variable>[A]</variable>"
                                           "<value>1</value></force></action></actionClipboard>");
    std::unique_ptr<QMenu> const menu = m_pane->CreateContextMenu();
    ASSERT_NE(menu, nullptr);
    QStringList names;
    for (QAction const* action : menu->actions())
        names << action->objectName();
    EXPECT_EQ(names, (QStringList{"copyAction", "pasteAction"}));
    menu->actions().at(1)->trigger();
    EXPECT_EQ(Rows(), "Force:[A] = (1)|Force:[A] = (1)");
}

} // namespace
