#include "HostTestSupport.h"
#include "groups/ZoDlgSelect.h"
#include "groups/ZoEDlgEventGroupsCfg.h"
#include "support/ScriptedAnswerer.h"

#include <QAction>

using namespace host_test;
using HostGroups = HostTest;

namespace {

// A step for the groups dialog: selects the group shown with this name, deletes it (the
// question answered by the test's answerer), then ends with the given button.
ModalScript::Step DeleteGroupThen(QString const& name, char const* button)
{
    return ModalScript::As<ZoEDlgEventGroupsCfg>([name, button](ZoEDlgEventGroupsCfg& dialog) {
        dialog.SelectGroup(name);
        dialog.findChild<QPushButton*>("deleteButton")->click();
        dialog.setResult(QDialog::Rejected);
        dialog.findChild<QPushButton*>(button)->click();
        return dialog.result();
    });
}

int Groups(XmlDocument& events)
{
    return events.Root()->Child(L"eventsGroups")->Size();
}

std::string Xml(XmlDocument& doc)
{
    std::string xml;
    doc.Root()->CreateXmlCode(xml);
    return xml;
}

} // namespace

// Events > Event groups: OK saves the events document; Cancel after a change asks, Yes
// puts the document back as it was (memberships included), No keeps and saves it.
TEST_F(HostGroups, GroupsDialogSavesOrAsksBeforeDiscarding)
{
    DemoWindow demo;
    EXPECT_TRUE(demo.window.findChild<QAction*>("eventGroupsAction")->isEnabled());
    XmlDocument& events = demo.window.Project()->Events();
    QByteArray const file = ReadBytes(demo.File(ProjectDoc::Events));
    std::string const before = Xml(events);
    int const groups = Groups(events);
    {
        ScriptedAnswerer answers; // the delete question and "discard?" are answered Yes
        ModalScript modal(DeleteGroupThen(QStringLiteral("Pumps"), "cancelButton"));
        demo.window.OnEventGroups();
        EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32788, 63001}));
        EXPECT_EQ(Xml(events), before);
        EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), file);
    }
    {
        ScriptedAnswerer answers{ZoAnswer::Yes, ZoAnswer::No};
        ModalScript modal(DeleteGroupThen(QStringLiteral("Pumps"), "cancelButton"));
        demo.window.OnEventGroups();
        EXPECT_EQ(Groups(events), groups - 1);
    }
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::Events), saved);
    EXPECT_EQ(Groups(saved), groups - 1);
    EXPECT_EQ(Xml(saved), Xml(events));
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
}

// A member added and confirmed with OK is saved without a question; a dialog closed with
// nothing changed writes nothing.
TEST_F(HostGroups, AddedMemberIsSavedOnOk)
{
    DemoWindow demo;
    QByteArray const file = ReadBytes(demo.File(ProjectDoc::Events));
    {
        ScriptedAnswerer answers;
        ModalScript modal(ModalScript::As<ZoEDlgEventGroupsCfg>([](ZoEDlgEventGroupsCfg& dialog) {
            return ModalScript::ClickOk(dialog);
        }));
        demo.window.OnEventGroups();
        EXPECT_EQ(answers.Count(), 0);
        EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), file);
    }
    ScriptedAnswerer answers;
    ModalScript modal(ModalScript::As<ZoEDlgEventGroupsCfg>([](ZoEDlgEventGroupsCfg& dialog) {
        dialog.SelectGroup(QStringLiteral("Security"));
        dialog.findChild<QPushButton*>("addMemberButton")->click();
        return ModalScript::ClickOk(dialog);
    }));
    modal.Then(ModalScript::As<ZoDlgSelect>([](ZoDlgSelect& select) {
        auto* list = select.findChild<QTreeView*>("selectList");
        QModelIndexList const found = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole,
                                                           QStringLiteral("Heavy rain"), 1, Qt::MatchExactly);
        EXPECT_EQ(found.size(), 1);
        list->selectionModel()->select(found.value(0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        return ModalScript::ClickOk(select);
    }));
    demo.window.OnEventGroups();
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventGroupsCfg", "ZoDlgSelect"}));
    EXPECT_EQ(answers.Count(), 0);
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::Events), saved);
    XmlNode const* security = saved.Root()->NodeV(L"eventsGroups/eventsGroup?name=%s?", L"Security");
    ASSERT_TRUE(security);
    XmlNode const* rain = EventNamed(saved, L"Heavy rain");
    ASSERT_TRUE(rain && rain->Child(L"eventsGroups"));
    std::wstring last;
    for (XmlNode const* membership = rain->Child(L"eventsGroups")->FirstChild(); membership;
         membership = membership->NextSibling())
        last = membership->Value();
    EXPECT_EQ(last, security->Value(L"id", L""));
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
}
