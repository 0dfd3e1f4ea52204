#include "EventChooserDlg.h"
#include "HostTestSupport.h"
#include "MainWindow.h"
#include "ProjectFolder.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/ZoEDlgEventsCfg.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>

using namespace host_test;
using namespace zo::project;
using XmlNode = XmlDocument::XmlNode;
using HostEditing = host_test::HostTest;

namespace {

// A window over a fresh copy of the demo, with its own recent-folders file.
struct DemoWindow {
    DemoCopy copy;
    QTemporaryDir settings;
    MainWindow window{RecentFolders(settings.filePath("recent.ini"))};
    QByteArray eventsBytes;
    QByteArray devicesBytes;

    DemoWindow()
    {
        EXPECT_TRUE(window.OpenFolder(copy.Path()));
        eventsBytes = ReadBytes(copy.File(ProjectDoc::Events));
        devicesBytes = ReadBytes(copy.File(ProjectDoc::Devices));
    }
    QString Label(char const* name) const { return window.findChild<QLabel*>(name)->text(); }
    QAction* Action(char const* name) const { return window.findChild<QAction*>(name); }
};

XmlNode* EventNamed(XmlDocument& doc, wchar_t const* name)
{
    return doc.Root()->NodeV(L"events/event?name=%s?", name);
}

bool IsRegistered(XmlNode const* deviceGroups, std::wstring const& id)
{
    std::vector<XmlNode const*> pending{deviceGroups};
    while (!pending.empty()) {
        XmlNode const* group = pending.back();
        pending.pop_back();
        if (group->Child(L"devices") && group->Child(L"devices")->NodeV(L"device?id=%s?", id.c_str()))
            return true;
        if (XmlNode const* groups = group->Child(L"groups")) {
            for (auto it = groups->ChildsBegin(); it != groups->ChildsEnd(); ++it)
                pending.push_back(*it);
        }
    }
    return false;
}

void ParseFile(QString const& path, XmlDocument& doc)
{
    QByteArray const bytes = ReadBytes(path);
    ASSERT_TRUE(doc.Parse(bytes.constData(), static_cast<std::size_t>(bytes.size()))) << path.toStdString();
}

// A step for the events list: deletes the event shown with this name, then ends with
// the given button.
ModalScript::Step DeleteEventThen(QString const& name, char const* button)
{
    return ModalScript::As<ZoEDlgEventsCfg>([name, button](ZoEDlgEventsCfg& list) {
        auto* view = list.findChild<QTreeView*>("eventsList");
        QAbstractItemModel* model = view->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 0).data().toString() == name)
                view->selectionModel()->select(model->index(row, 0), QItemSelectionModel::ClearAndSelect
                                                                       | QItemSelectionModel::Rows);
        }
        list.findChild<QPushButton*>("deleteButton")->click();
        list.setResult(QDialog::Rejected);
        list.findChild<QPushButton*>(button)->click();
        return list.result();
    });
}

} // namespace

TEST_F(HostEditing, EventsListAcceptedSavesEventsAndDevices)
{
    DemoWindow demo;
    std::wstring const id = EventNamed(demo.window.Project()->Events(), L"Heavy rain")->Value(L"id", L"");
    ScriptedAnswerer answers; // the delete question is answered Yes
    ModalScript modal(DeleteEventThen("Heavy rain", "okButton"));
    demo.window.OnEventsList();

    EXPECT_EQ(modal.Classes(), QStringList{"ZoEDlgEventsCfg"});
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32792}));
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    XmlDocument events;
    ParseFile(demo.copy.File(ProjectDoc::Events), events);
    EXPECT_FALSE(EventNamed(events, L"Heavy rain"));
    EXPECT_TRUE(EventNamed(events, L"Intrusion alarm"));
    XmlDocument devices;
    ParseFile(demo.copy.File(ProjectDoc::Devices), devices);
    EXPECT_FALSE(IsRegistered(devices.Root()->Child(kDeviceGroupsTag), id));
    EXPECT_EQ(demo.Label("eventsCountLabel"), "21");
    EXPECT_EQ(demo.Label("eventDevicesCountLabel"), "21");
    // The users file and the project settings are never written.
    EXPECT_EQ(ReadBytes(demo.copy.File(ProjectDoc::Users)), ReadBytes(FilePath(DemoFolder(), ProjectDoc::Users)));
}

// The list deletes in the live tree at once; Cancel means the user wants none of it.
TEST_F(HostEditing, EventsListCancelledPutsTheDocumentsBack)
{
    DemoWindow demo;
    ScriptedAnswerer answers;
    ModalScript modal(DeleteEventThen("Mains failure", "cancelButton"));
    demo.window.OnEventsList();

    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32792}));
    ProjectFolder* project = demo.window.Project();
    XmlNode* event = EventNamed(project->Events(), L"Mains failure");
    ASSERT_TRUE(event);
    EXPECT_TRUE(IsRegistered(project->DeviceGroups(), event->Value(L"id", L"")));
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    EXPECT_EQ(ReadBytes(demo.copy.File(ProjectDoc::Events)), demo.eventsBytes);
    EXPECT_EQ(ReadBytes(demo.copy.File(ProjectDoc::Devices)), demo.devicesBytes);
    EXPECT_EQ(demo.Label("eventsCountLabel"), "22");
}

TEST_F(HostEditing, EditEventSavesTheEditedEventOnly)
{
    DemoWindow demo;
    ScriptedAnswerer answers; // formula warnings, if any, are accepted
    ModalScript modal;
    modal.Then(ModalScript::As<EventChooserDlg>([](EventChooserDlg& chooser) {
             // The filter narrows the list; the first match is selected.
             chooser.findChild<QLineEdit*>("filterEdit")->setText("pump 2 f");
             EXPECT_EQ(chooser.findChild<QTreeView*>("eventsList")->model()->rowCount(), 1);
             return ModalScript::ClickOk(chooser);
         }))
        .Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
            EXPECT_EQ(editor.findChild<QLineEdit*>("nameEdit")->text(), "Pump 2 fault");
            editor.findChild<QLineEdit*>("descriptionEdit")->setText("Drive of pump 2 trips.");
            return ModalScript::ClickOk(editor);
        }));
    demo.window.OnEditEvent();

    EXPECT_EQ(modal.Classes(), (QStringList{"EventChooserDlg", "ZoEDlgEventCfg"}));
    XmlDocument events;
    ParseFile(demo.copy.File(ProjectDoc::Events), events);
    ASSERT_TRUE(EventNamed(events, L"Pump 2 fault"));
    EXPECT_EQ(EventNamed(events, L"Pump 2 fault")->Value(L"description", L""), L"Drive of pump 2 trips.");
    EXPECT_EQ(EventNamed(events, L"Pump 1 fault")->Value(L"description", L""), L"Drive of pump 1 reports a fault.");
    EXPECT_EQ(ReadBytes(demo.copy.File(ProjectDoc::Devices)), demo.devicesBytes);

    // Cancelled, in the chooser or in the editor: nothing is written.
    QByteArray const saved = ReadBytes(demo.copy.File(ProjectDoc::Events));
    ModalScript cancelled;
    cancelled.Then(ModalScript::Reject());
    demo.window.OnEditEvent();
    cancelled.Then(ModalScript::Accept()).Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        editor.findChild<QLineEdit*>("descriptionEdit")->setText("Not kept");
        editor.reject();
        return int(QDialog::Rejected);
    }));
    demo.window.OnEditEvent();
    EXPECT_EQ(cancelled.Classes(), (QStringList{"EventChooserDlg", "EventChooserDlg", "ZoEDlgEventCfg"}));
    EXPECT_EQ(ReadBytes(demo.copy.File(ProjectDoc::Events)), saved);
    EXPECT_EQ(EventNamed(demo.window.Project()->Events(), L"Pump 2 fault")->Value(L"description", L""),
              L"Drive of pump 2 trips.");
}

TEST_F(HostEditing, MenusOfferWhatTheProjectAllows)
{
    QTemporaryDir settings;
    MainWindow window(RecentFolders(settings.filePath("recent.ini")));
    auto enabled = [&](char const* name) { return window.findChild<QAction*>(name)->isEnabled(); };
    EXPECT_FALSE(enabled("eventsAction"));
    EXPECT_FALSE(enabled("editEventAction"));
    EXPECT_FALSE(enabled("saveAction"));
    EXPECT_TRUE(enabled("openFolderAction"));
    ASSERT_TRUE(window.OpenFolder(DemoFolder()));
    EXPECT_TRUE(enabled("eventsAction"));
    EXPECT_TRUE(enabled("editEventAction"));
    EXPECT_FALSE(enabled("saveAction"));
    // The dialogs of later versions are listed, disabled.
    for (char const* later : {"eventGroupsAction", "timeTablesAction", "timeSlotAction", "eventVariablesAction"}) {
        ASSERT_TRUE(window.findChild<QAction*>(later)) << later;
        EXPECT_FALSE(enabled(later)) << later;
    }
}
