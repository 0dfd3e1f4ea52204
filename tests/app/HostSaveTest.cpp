#include "EventChooserDlg.h"
#include "HostTestSupport.h"
#include "events/EventsListModel.h"
#include "ProjectSaver.h"
#include "XmlFileText.h"
#include "editor/ZoEDlgEventCfg.h"
#include "platform/tools/ZoUtf.h"
#include "support/ScriptedAnswerer.h"
#include "support/TableText.h"

#include <QLineEdit>

using namespace host_test;
using HostSave = HostTest;

namespace {

std::string TreeText(XmlDocument const& doc)
{
    std::string text;
    doc.Root()->CreateXmlCode(text);
    return text;
}

// Whether the id appears anywhere under the device groups element (ids are GUIDs).
bool IsRegistered(XmlNode const* deviceGroups, std::wstring const& id)
{
    std::string xml;
    deviceGroups->CreateXmlCode(xml);
    return xml.find(ZoToUtf8(id)) != std::string::npos;
}

} // namespace

// The list deletes in the live tree at once: Cancel asks, then puts the documents back as
// they were (the very same elements); OK saves the events and the device groups (never the
// users file).
TEST_F(HostSave, EventsListAcceptedSavesEventsAndDevices)
{
    DemoWindow demo;
    QByteArray const eventsBytes = ReadBytes(demo.File(ProjectDoc::Events));
    QByteArray const devicesBytes = ReadBytes(demo.File(ProjectDoc::Devices));
    std::string const eventsTree = TreeText(demo.window.Project()->Events());
    std::string const devicesTree = TreeText(demo.window.Project()->Devices());
    XmlNode* const heavyRain = EventNamed(demo.window.Project()->Events(), L"Heavy rain");
    std::wstring const id = heavyRain->Value(L"id", L"");
    ScriptedAnswerer answers; // the delete question and "discard?" are answered Yes
    ModalScript modal(DeleteEventThen("Heavy rain", "cancelButton"));
    demo.window.OnEventsList();
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32792, 60057}));
    EXPECT_EQ(EventNamed(demo.window.Project()->Events(), L"Heavy rain"), heavyRain);
    EXPECT_EQ(TreeText(demo.window.Project()->Events()), eventsTree);
    EXPECT_EQ(TreeText(demo.window.Project()->Devices()), devicesTree);
    EXPECT_TRUE(IsRegistered(demo.window.Project()->DeviceGroups(), id));
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), eventsBytes);
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Devices)), devicesBytes);

    modal.Then(DeleteEventThen("Heavy rain"));
    demo.window.OnEventsList();
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventsCfg", "ZoEDlgEventsCfg"}));
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    XmlDocument events, devices;
    ParseFile(demo.File(ProjectDoc::Events), events);
    EXPECT_FALSE(EventNamed(events, L"Heavy rain"));
    EXPECT_TRUE(EventNamed(events, L"Intrusion alarm"));
    ParseFile(demo.File(ProjectDoc::Devices), devices);
    EXPECT_FALSE(IsRegistered(devices.Root()->Child(kDeviceGroupsTag), id));
    EXPECT_EQ(demo.Label("eventsCountLabel"), "23");
    EXPECT_EQ(demo.Label("eventDevicesCountLabel"), "23");
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Users)), ReadBytes(FilePath(kDemoFolder, ProjectDoc::Users)));
}

// Cancelled with nothing changed, the list asks nothing; a change the user keeps ("No" to
// discarding) is saved like an OK.
TEST_F(HostSave, CancelledListKeepsConfirmedChangesOnRequest)
{
    DemoWindow demo;
    {
        ScriptedAnswerer answers;
        ModalScript modal(ModalScript::Reject());
        demo.window.OnEventsList();
        EXPECT_TRUE(answers.Ids().empty());
    }
    ScriptedAnswerer answers{ZoAnswer::Yes, ZoAnswer::No};
    ModalScript modal(DeleteEventThen("Heavy rain", "cancelButton"));
    demo.window.OnEventsList();
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32792, 60057}));
    EXPECT_FALSE(EventNamed(demo.window.Project()->Events(), L"Heavy rain"));
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    XmlDocument events;
    ParseFile(demo.File(ProjectDoc::Events), events);
    EXPECT_FALSE(EventNamed(events, L"Heavy rain"));
    EXPECT_EQ(demo.Label("eventsCountLabel"), "23");
}

// The events list keeps its rows from one opening to the next: what changed in between (a
// delete the user discarded, an event renamed outside the list) shows as a fresh list shows it.
TEST_F(HostSave, TheNextListShowsWhatChangedSinceTheLast)
{
    DemoWindow demo;
    auto nextListRows = [&demo] {
        std::string rows;
        ModalScript modal(ModalScript::As<ZoEDlgEventsCfg>([&rows](ZoEDlgEventsCfg& list) {
            QAbstractItemModel const* model = list.findChild<QAbstractItemView*>("eventsList")->model();
            for (int row = 0; row < model->rowCount(); ++row)
                rows += model->index(row, 0).data().toString().toStdString() + ",";
            return int(QDialog::Rejected);
        }));
        demo.window.OnEventsList();
        return rows;
    };
    std::string const before = nextListRows();
    {
        ScriptedAnswerer answers{ZoAnswer::Yes, ZoAnswer::Yes}; // delete it, then discard that
        ModalScript modal(DeleteEventThen("Heavy rain", "cancelButton"));
        demo.window.OnEventsList();
    }
    EXPECT_EQ(nextListRows(), before);

    XmlNode* events = demo.window.Project()->Events().Root()->Child(L"events");
    XmlDocument copy(*events);
    copy.Root()->NodeV(L"event?name=%s?", L"Heavy rain")->SetValue(L"name", L"AAA first");
    *events = *copy.Root();
    std::string const kept = nextListRows();
    EXPECT_EQ(kept.rfind("AAA first,", 0), 0u) << kept;
    EventsListModel::DropKept();
    EXPECT_EQ(nextListRows(), kept);
}

// Edit > Event: a filtered chooser, then the editor; only the events file is written.
TEST_F(HostSave, EditEventSavesTheEditedEvent)
{
    DemoWindow demo;
    QByteArray const devicesBytes = ReadBytes(demo.File(ProjectDoc::Devices));
    ScriptedAnswerer answers; // formula warnings, if any, are accepted
    ModalScript modal(ModalScript::As<EventChooserDlg>([](EventChooserDlg& chooser) {
        chooser.findChild<QLineEdit*>("filterEdit")->setText("pump 2 f");
        EXPECT_EQ(chooser.findChild<QAbstractItemView*>("eventsList")->model()->rowCount(), 1);
        return ModalScript::ClickOk(chooser);
    }));
    modal.Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        EXPECT_EQ(editor.findChild<QLineEdit*>("nameEdit")->text(), "Pump 2 fault");
        editor.findChild<QLineEdit*>("descriptionEdit")->setText("Drive of pump 2 trips.");
        return ModalScript::ClickOk(editor);
    }));
    demo.window.OnEditEvent();
    EXPECT_EQ(modal.Classes(), (QStringList{"EventChooserDlg", "ZoEDlgEventCfg"}));
    XmlDocument events;
    ParseFile(demo.File(ProjectDoc::Events), events);
    EXPECT_EQ(EventNamed(events, L"Pump 2 fault")->Value(L"description", L""), L"Drive of pump 2 trips.");
    EXPECT_EQ(EventNamed(events, L"Pump 1 fault")->Value(L"description", L""), L"Drive of pump 1 reports a fault.");
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Devices)), devicesBytes);
}

TEST_F(HostSave, SaverAndFileText)
{
    // The second file cannot be written (a folder stands where its temporary goes): the
    // first keeps its old content although it was written without fault, and no stray
    // file is left.
    QTemporaryDir folder;
    QString const first = QDir(folder.path()).filePath("First.zocfg");
    WriteBytes(first, "<old/>");
    ASSERT_TRUE(QDir(folder.path()).mkdir("Second.zocfg.zonew"));
    ProjectSaver saver(folder.path());
    saver.Add("First.zocfg", "<new/>");
    saver.Add("Second.zocfg", "<second/>");
    EXPECT_FALSE(saver.Commit());
    EXPECT_EQ(saver.FailedPath(), QDir(folder.path()).filePath("Second.zocfg"));
    EXPECT_EQ(saver.Reason(), L"is a directory");
    EXPECT_EQ(ReadBytes(first), "<old/>");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"First.zocfg"});

    // Files are indented, and read back as the same tree, also with texts of blanks and
    // text beside children.
    XmlDocument plain, tricky;
    ASSERT_TRUE(plain.Parse("<a><b>x &lt; y</b><c/><d><e>1</e></d></a>"));
    EXPECT_NE(XmlFileText(plain).find("\n  <b>x &lt; y</b>\n"), std::string::npos) << XmlFileText(plain);
    tricky.Create(L"a");
    tricky.Root()->SetValue(L"blanks", L"  ");
    tricky.Root()->NewChild(L"mixed", nullptr)->SetValue(L" lead");
    tricky.Root()->Child(L"mixed")->NewChild(L"child", nullptr);
    for (XmlDocument const* doc : {&plain, &tricky}) {
        XmlDocument back;
        ASSERT_TRUE(back.Parse(XmlFileText(*doc).c_str()));
        EXPECT_EQ(TreeText(back), TreeText(*doc));
    }
}

// A save that fails (here a full disk) keeps the old files byte-identical, tells the user,
// and keeps the change for File > Save.
TEST_F(HostSave, FailedSaveKeepsOldFilesAndTellsTheUser)
{
    DemoWindow demo;
    QByteArray const events = ReadBytes(demo.File(ProjectDoc::Events));
    QByteArray const devices = ReadBytes(demo.File(ProjectDoc::Devices));
    ScriptedAnswerer answers;
    {
        SaveFault fullDisk;
        ModalScript modal(DeleteEventThen("Heavy rain"));
        demo.window.OnEventsList();
        ASSERT_EQ(answers.Ids(), (std::vector<unsigned>{32792, 60046}));
        EXPECT_TRUE(QString::fromStdWString(answers.LastText())
                        .contains(Said(60046, demo.File(ProjectDoc::Events).toStdWString().c_str(),
                                       ZoLoadString(60082).c_str())))
            << answers.LastText();
        EXPECT_EQ(answers.Last().icon, ZoMsgIcon::Error);

        // Closing offers to save; when that save fails too, the window stays open.
        demo.window.show();
        EXPECT_FALSE(demo.window.close());
        EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32792, 60046, 60048, 60046}));
        EXPECT_TRUE(demo.window.isVisible());
    }
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), events);
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Devices)), devices);
    EXPECT_EQ(QDir(demo.dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 8);
    EXPECT_TRUE(demo.window.HasUnsavedChanges());

    // Once the fault is gone, File > Save writes both documents.
    demo.window.OnSave();
    EXPECT_EQ(answers.Count(), 4);
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::Events), saved);
    EXPECT_EQ(TreeText(saved), TreeText(demo.window.Project()->Events()));
    EXPECT_NE(ReadBytes(demo.File(ProjectDoc::Devices)), devices);
}
