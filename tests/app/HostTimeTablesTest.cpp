#include "DaySlotChooserDlg.h"
#include "HostTestSupport.h"
#include "platform/tools/ZoTexts.h"
#include "support/ScriptedAnswerer.h"
#include "timetables/ZoDlgEventNewModifySlot.h"
#include "timetables/ZoDlgTimeTableSetup.h"

#include <QAction>
#include <QComboBox>
#include <QListWidget>
#include <QTest>

using namespace host_test;
using HostTimeTables = HostTest;

namespace {

// A step for the setup dialog: deletes its first row (the question answered by the test's
// answerer), then ends with the given button.
ModalScript::Step DeleteFirstTableThen(char const* button)
{
    return ModalScript::As<ZoDlgTimeTableSetup>([button](ZoDlgTimeTableSetup& setup) {
        auto* list = setup.findChild<QTreeView*>("timeTablesList");
        list->selectionModel()->select(list->model()->index(0, 0),
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        setup.findChild<QPushButton*>("deleteButton")->click();
        setup.setResult(QDialog::Rejected);
        setup.findChild<QPushButton*>(button)->click();
        return setup.result();
    });
}

int Tables(XmlDocument& timeTables)
{
    int count = 0;
    for (wchar_t const* kind : {L"days", L"weeks", L"calendars"})
        count += timeTables.Root()->Child(kind)->Size();
    return count;
}

} // namespace

// Events > Time tables: OK saves the time tables; Cancel after a change asks, Yes puts the
// document back as it was, No keeps and saves it.
TEST_F(HostTimeTables, SetupDialogSavesOrAsksBeforeDiscarding)
{
    DemoWindow demo;
    EXPECT_TRUE(demo.window.findChild<QAction*>("timeTablesAction")->isEnabled());
    QByteArray const before = ReadBytes(demo.File(ProjectDoc::TimeTables));
    int const tables = Tables(demo.window.Project()->TimeTables());
    {
        ScriptedAnswerer answers; // the delete question and "discard?" are answered Yes
        ModalScript modal(DeleteFirstTableThen("cancelButton"));
        demo.window.OnTimeTables();
        EXPECT_EQ(answers.Ids().back(), 60079u);
        EXPECT_EQ(Tables(demo.window.Project()->TimeTables()), tables);
        EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::TimeTables)), before);
    }
    {
        ScriptedAnswerer answers{ZoAnswer::Yes, ZoAnswer::No};
        ModalScript modal(DeleteFirstTableThen("cancelButton"));
        demo.window.OnTimeTables();
        EXPECT_EQ(Tables(demo.window.Project()->TimeTables()), tables - 1);
    }
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::TimeTables), saved);
    EXPECT_EQ(Tables(saved), tables - 1);
    {
        ScriptedAnswerer answers;
        ModalScript modal(DeleteFirstTableThen("okButton"));
        demo.window.OnTimeTables();
        EXPECT_EQ(answers.Count(), 1); // only the delete question
    }
    ParseFile(demo.File(ProjectDoc::TimeTables), saved);
    EXPECT_EQ(Tables(saved), tables - 2);
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
}

// Events > Time slot: a day program and a slot are chosen (Enter on the list chooses), the
// slot editor runs, and the day's slots are written back and saved.
TEST_F(HostTimeTables, TimeSlotEntryEditsASlotOfTheChosenDay)
{
    DemoWindow demo;
    XmlNode* days = demo.window.Project()->TimeTables().Root()->Child(L"days");
    XmlNode* firstDay = *days->ChildsBegin();
    ModalScript modal(ModalScript::As<DaySlotChooserDlg>([](DaySlotChooserDlg& chooser) {
        auto* list = chooser.findChild<QListWidget*>("slotsList");
        EXPECT_EQ(list->item(0)->text(), ZoText(60077));
        EXPECT_GT(list->count(), 1);
        list->setCurrentRow(0); // a new slot
        QTest::keyClick(list, Qt::Key_Return);
        return chooser.result();
    }));
    modal.Then(ModalScript::As<ZoDlgEventNewModifySlot>([](ZoDlgEventNewModifySlot& editor) {
        return ModalScript::ClickOk(editor);
    }));
    demo.window.OnTimeSlot();
    EXPECT_EQ(modal.Classes(), (QStringList{"DaySlotChooserDlg", "ZoDlgEventNewModifySlot"}));
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::TimeTables), saved);
    std::string live, written;
    firstDay->CreateXmlCode(live);
    (*saved.Root()->Child(L"days")->ChildsBegin())->CreateXmlCode(written);
    EXPECT_EQ(written, live);

    // Cancelled, nothing is written; without day programs the entry only says so.
    QByteArray const bytes = ReadBytes(demo.File(ProjectDoc::TimeTables));
    ModalScript cancel(ModalScript::Reject());
    demo.window.OnTimeSlot();
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::TimeTables)), bytes);
    while (days->Size() > 0)
        days->RemoveChild(*days->ChildsBegin());
    ScriptedAnswerer answers;
    demo.window.OnTimeSlot();
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{60078});
}
