// Edit > Undo and Redo in the host editor: every kind of change (the events list, the event
// editor, groups, time tables, a time slot, an import, a rename of both files) is one step
// named in the menu; undoing and redoing puts the files back byte for byte, and the history
// ends with the folder.
#include "ChangeHistory.h"
#include "DaySlotChooserDlg.h"
#include "HostTestSupport.h"
#include "RenameDlg.h"
#include "SheetImportDlg.h"
#include "UsesWindow.h"
#include "editor/ZoEDlgEventCfg.h"
#include "groups/ZoEDlgEventGroupsCfg.h"
#include "platform/ui/ZoWaitDlg.h"
#include "spreadsheet/EventsExport.h"
#include "templatedialogs/ZoDlgUpdateFromTemplates.h"
#include "support/ScriptedAnswerer.h"
#include "support/TableText.h"
#include "timetables/ZoDlgEventNewModifySlot.h"
#include "timetables/ZoDlgTimeTableSetup.h"

#include <QAction>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

using namespace host_test;
using HostUndo = HostTest;

namespace {

// The three files the dialogs write, as bytes.
struct Files {
    QByteArray events, timeTables, devices;
    bool operator==(Files const&) const = default;
};

Files Read(DemoWindow const& demo)
{
    return {ReadBytes(demo.File(ProjectDoc::Events)), ReadBytes(demo.File(ProjectDoc::TimeTables)),
            ReadBytes(demo.File(ProjectDoc::Devices))};
}

QAction* Action(DemoWindow& demo, char const* name)
{
    return demo.window.findChild<QAction*>(name);
}

// The changes made one after the other: each runs the real dialogs through the window.
// "&Undo <step>" and "&Redo <step>" as the menu shows them.
std::string UndoText(QString const& step)
{
    return Said(65101, step.toStdWString().c_str()).toStdString();
}
std::string RedoText(QString const& step)
{
    return Said(65103, step.toStdWString().c_str()).toStdString();
}

struct Change {
    QString name; // the step's name, as the menu shows it in "&Undo <name>"
    std::function<void(DemoWindow&)> make;
};

void Groups(DemoWindow& demo)
{
    ModalScript modal(ModalScript::As<ZoEDlgEventGroupsCfg>([](ZoEDlgEventGroupsCfg& dialog) {
        dialog.SelectGroup(QStringLiteral("Pumps"));
        dialog.findChild<QPushButton*>("deleteButton")->click();
        return ModalScript::ClickOk(dialog);
    }));
    Action(demo, "eventGroupsAction")->trigger();
}

void TimeTables(DemoWindow& demo)
{
    ModalScript modal(ModalScript::As<ZoDlgTimeTableSetup>([](ZoDlgTimeTableSetup& setup) {
        auto* list = setup.findChild<QTreeView*>("timeTablesList");
        list->selectionModel()->select(list->model()->index(0, 0),
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        setup.findChild<QPushButton*>("deleteButton")->click();
        return ModalScript::ClickOk(setup);
    }));
    Action(demo, "timeTablesAction")->trigger();
}

void TimeSlot(DemoWindow& demo)
{
    ModalScript modal(ModalScript::As<DaySlotChooserDlg>([](DaySlotChooserDlg& chooser) {
        auto* list = chooser.findChild<QListWidget*>("slotsList");
        list->setCurrentRow(list->count() - 1);
        QTest::keyClick(list, Qt::Key_Return);
        return chooser.result();
    }));
    modal.Then(ModalScript::As<ZoDlgEventNewModifySlot>([](ZoDlgEventNewModifySlot& editor) {
        QList<QAbstractSpinBox*> const fields = editor.findChildren<QAbstractSpinBox*>();
        EXPECT_FALSE(fields.isEmpty());
        for (QAbstractSpinBox* field : fields)
            field->stepDown();
        return ModalScript::ClickOk(editor);
    }));
    Action(demo, "timeSlotAction")->trigger();
}

// Through the where-used window, as a user opens an event from its uses.
void EditEvent(DemoWindow& demo)
{
    demo.window.OnWhereUsed("[PUMP1.START_CMD]");
    ModalScript modal(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        editor.findChild<QLineEdit*>("delayActivateEdit")->setText("17");
        return ModalScript::ClickOk(editor);
    }));
    QTest::keyClick(demo.window.Uses()->List(), Qt::Key_Return);
    demo.window.Uses()->close();
}

void Import(DemoWindow& demo)
{
    std::string sheet;
    ZoExportEvents(demo.window.Project()->Events().Root(), demo.window.Project()->TimeTables().Root(), sheet);
    std::string const name = ",Tank dry-run risk,";
    ASSERT_NE(sheet.find(name), std::string::npos);
    sheet.replace(sheet.find(name), name.size(), ",Reservoir dry-run risk,");
    QString const path = demo.dir.filePath("edited.csv");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(sheet.data(), static_cast<qint64>(sheet.size()));
    file.close();
    ModalScript modal(ModalScript::As<QFileDialog>([path](QFileDialog& dialog) {
        dialog.selectFile(path);
        static_cast<QDialog&>(dialog).accept();
        return int(QDialog::Accepted);
    }));
    if (!demo.window.Project()->Users().Root())
        modal.Then(ModalScript::As<ZoWaitDlg>([](ZoWaitDlg& wait) { return wait.exec(); }));
    modal.Then(ModalScript::As<SheetImportDlg>([](SheetImportDlg& dialog) { return ModalScript::ClickOk(dialog); }));
    Action(demo, "importSheetAction")->trigger();
}

void Rename(DemoWindow& demo)
{
    ModalScript modal(ModalScript::As<RenameDlg>([](RenameDlg& dialog) {
        dialog.findChild<QLineEdit*>("oldNameEdit")->setText("PUMP1");
        dialog.findChild<QLineEdit*>("newNameEdit")->setText("P-101");
        EXPECT_EQ(ModalScript::ClickOk(dialog), QDialog::Rejected); // the preview
        return ModalScript::ClickOk(dialog);
    }));
    Action(demo, "renameAction")->trigger();
}

// After the rename, PUMP1's stamped event names the old device in its plain texts: the
// update from its template brings them to the new name.
void UpdateFromTemplates(DemoWindow& demo)
{
    ModalScript modal(ModalScript::As<ZoDlgUpdateFromTemplates>([](ZoDlgUpdateFromTemplates& dialog) {
        auto* list = dialog.findChild<QAbstractItemView*>("driftList");
        EXPECT_EQ(list->model()->rowCount(), 1);
        list->model()->setData(list->model()->index(0, 0), Qt::Checked, Qt::CheckStateRole);
        return ModalScript::ClickOk(dialog);
    }));
    Action(demo, "updateFromTemplatesAction")->trigger();
}

} // namespace

TEST_F(HostUndo, EveryKindOfChangeUndoesAndRedoesToTheSameBytes)
{
    ScriptedAnswerer answers; // the delete questions are answered Yes
    DemoWindow demo;
    QAction* undo = Action(demo, "undoAction");
    QAction* redo = Action(demo, "redoAction");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(redo->isEnabled());
    EXPECT_EQ(undo->text(), ZoText(65100));
    EXPECT_EQ(undo->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Z));
    EXPECT_EQ(redo->shortcuts(), (QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z),
                                                      QKeySequence(Qt::CTRL | Qt::Key_Y)}));

    std::vector<Change> const changes{
        {ZoText(65105), [](DemoWindow& d) {
             ModalScript modal(DeleteEventThen(QStringLiteral("Tank overflow")));
             d.window.OnEventsList();
         }},
        {Said(65106, L"Tank high level"), EditEvent},
        {ZoText(65107), Groups},
        {ZoText(65108), TimeTables},
        {ZoText(65109), TimeSlot},
        {Said(65110, L"edited.csv"), Import},
        {Said(65111, L"PUMP1", L"P-101"), Rename},
        {ZoText(65114), UpdateFromTemplates},
    };
    std::vector<Files> states{Read(demo)};
    for (Change const& change : changes) {
        change.make(demo);
        Files const now = Read(demo);
        EXPECT_NE(now, states.back()) << change.name.toStdString();
        states.push_back(now);
        EXPECT_EQ(undo->text().toStdString(), UndoText(change.name));
        EXPECT_FALSE(redo->isEnabled());
    }
    // The rename touched both files; its undo puts both back.
    EXPECT_NE(states[states.size() - 2].devices, states[states.size() - 3].devices);

    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = changes.size(); i-- > 0;) {
            EXPECT_EQ(undo->text().toStdString(), UndoText(changes[i].name));
            undo->trigger();
            EXPECT_TRUE(Read(demo) == states[i]) << "undo " << changes[i].name.toStdString();
            EXPECT_EQ(redo->text().toStdString(), RedoText(changes[i].name));
        }
        EXPECT_FALSE(undo->isEnabled());
        for (std::size_t i = 0; i < changes.size(); ++i) {
            redo->trigger();
            EXPECT_TRUE(Read(demo) == states[i + 1]) << "redo " << changes[i].name.toStdString();
        }
        EXPECT_FALSE(redo->isEnabled());
    }
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    // Formulas resolve in the catalog as the documents are: the renamed device is found
    // again after the undo (of the update, then of the rename).
    auto uses = [&] {
        demo.window.OnWhereUsed("[PUMP1.START_CMD]");
        return demo.window.Uses()->List()->model()->rowCount();
    };
    EXPECT_EQ(uses(), 0);
    undo->trigger();
    undo->trigger();
    EXPECT_EQ(uses(), 3); // the fourth was in the event deleted first
    demo.window.Uses()->close();

    // A new change drops what was undone; opening the folder again ends the history.
    undo->trigger();
    TimeTables(demo);
    EXPECT_FALSE(redo->isEnabled());
    EXPECT_EQ(undo->text().toStdString(), UndoText(ZoText(65108)));
    ASSERT_TRUE(demo.window.OpenFolder(demo.dir.path()));
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(redo->isEnabled());
}

// A cancelled dialog leaves no step, and a dialog whose OK changed nothing none either.
TEST_F(HostUndo, CancelledOrUnchangedDialogsLeaveNoStep)
{
    ScriptedAnswerer answers; // "discard?" is answered Yes
    DemoWindow demo;
    {
        ModalScript modal(DeleteEventThen(QStringLiteral("Tank overflow"), "cancelButton"));
        demo.window.OnEventsList();
    }
    {
        ModalScript modal(ModalScript::As<ZoEDlgEventGroupsCfg>(
            [](ZoEDlgEventGroupsCfg& dialog) { return ModalScript::ClickOk(dialog); }));
        demo.window.OnEventGroups();
    }
    EXPECT_FALSE(Action(demo, "undoAction")->isEnabled());
    EXPECT_FALSE(demo.window.History()->CanUndo());
}

// An undo whose save fails (a full disk) is told, keeps the undone documents unsaved and
// File > Save writes them as they were before the change.
TEST_F(HostUndo, AnUndoWhoseSaveFailsIsToldAndSavedLater)
{
    DemoWindow demo;
    Files const before = Read(demo);
    {
        ScriptedAnswerer answers;
        Groups(demo);
    }
    Files const changed = Read(demo);
    ASSERT_NE(changed, before);
    {
        ScriptedAnswerer answers;
        SaveFault fullDisk;
        Action(demo, "undoAction")->trigger();
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{60046});
        EXPECT_TRUE(demo.window.HasUnsavedChanges());
        EXPECT_TRUE(Read(demo) == changed);
        EXPECT_EQ(Action(demo, "redoAction")->text().toStdString(), RedoText(ZoText(65107)));
    }
    Action(demo, "saveAction")->trigger();
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    EXPECT_TRUE(Read(demo) == before);
}
