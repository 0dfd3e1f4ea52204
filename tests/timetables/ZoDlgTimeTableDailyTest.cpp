// The day program editor driven offscreen: slots added, modified and deleted through the
// slot editor merge and split by the minute map; the name check with its deliberate lookup
// asymmetry; the colour question; OK without a change ends with Cancel.
#include "timetables/ZoDlgTimeTableDaily.h"
#include "timetables/DaySlotEditing.h"
#include "timetables/ZoDlgEventNewModifySlot.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"
#include "timetables/TimeTableTestDocs.h"
#include <QColorDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTreeView>

using namespace timetables_test;

namespace {

struct DayEditor {
    explicit DayEditor(std::string const& days, std::string const& weeks = {}, std::string const& calendars = {},
                       wchar_t const* name = L"Work")
    {
        Load(live, TimeTables(days, weeks, calendars));
        copy = std::make_unique<XmlDocument>(*live.Root()->Child(L"days"));
        element = copy->Root()->NodeV(L"/day?name=%s?", name);
        dialog = std::make_unique<ZoDlgTimeTableDaily>(nullptr, element, copy->Root(), live.Root()->Child(L"weeks"),
                                                       live.Root()->Child(L"calendars"));
        dialog->EnsureInitialized();
        dialog->show();
        list = dialog->findChild<QTreeView*>("slotsList");
    }
    std::string Rows() const
    {
        std::string out;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            out += (out.empty() ? "" : ",") + list->model()->index(row, 0).data().toString().toStdString() + "-"
                + list->model()->index(row, 1).data().toString().toStdString();
        return out;
    }
    void Select(std::initializer_list<int> rows) const
    {
        list->selectionModel()->clearSelection();
        for (int row : rows)
            list->selectionModel()->select(list->model()->index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    void SetName(QString const& name) const { dialog->findChild<QLineEdit*>("nameEdit")->setText(name); }
    int ClickOk()
    {
        dialog->setResult(-1);
        dialog->findChild<QPushButton*>("okButton")->click();
        return dialog->result();
    }

    XmlDocument live;
    std::unique_ptr<XmlDocument> copy;
    XmlNode* element = nullptr;
    std::unique_ptr<ZoDlgTimeTableDaily> dialog;
    QTreeView* list = nullptr;
};

// A slot editor step that sets the four fields and presses OK (or Cancel).
ModalScript::Step SlotFields(int fromHour, int fromMinute, int toHour, int toMinute, bool ok = true,
                             std::string* shown = nullptr)
{
    return ModalScript::As<ZoDlgEventNewModifySlot>([=](ZoDlgEventNewModifySlot& editor) {
        auto spin = [&](char const* name) { return editor.findChild<QSpinBox*>(name); };
        if (shown)
            *shown = std::to_string(editor.FromMinutes()) + "-" + std::to_string(editor.ToMinutes());
        spin("fromHourSpin")->setValue(fromHour);
        spin("fromMinuteSpin")->setValue(fromMinute);
        spin("toHourSpin")->setValue(toHour);
        spin("toMinuteSpin")->setValue(toMinute);
        if (!ok) {
            editor.reject();
            return int(QDialog::Rejected);
        }
        return ModalScript::ClickOk(editor);
    });
}

} // namespace

TEST(DayEditor, OpensWithOverlappingSlotsMergedAndAddMerges)
{
    DayEditor editor(Day("Work", "00FF00", Join({Slot("09:00", "12:00"), Slot("14:00", "15:00"), Slot("11:00", "12:30"),
                                                 Slot("26:00", "27:00")})));
    EXPECT_EQ(editor.Rows(), "09:00-12:30,14:00-15:00");
    EXPECT_EQ(editor.dialog->windowTitle(), ZoText(32777));

    ModalScript modal(SlotFields(8, 0, 10, 0));
    modal.Then(SlotFields(12, 30, 14, 0)).Then(SlotFields(20, 0, 21, 0, false));
    editor.dialog->findChild<QPushButton*>("addSlotButton")->click();
    EXPECT_EQ(editor.Rows(), "08:00-12:30,14:00-15:00");
    QTest::keyClick(editor.list, Qt::Key_Insert); // touching both: one slot
    EXPECT_EQ(editor.Rows(), "08:00-15:00");
    editor.dialog->OnAddSlot(); // cancelled
    EXPECT_EQ(editor.Rows(), "08:00-15:00");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(SlotTexts(editor.element), "08:00-15:00");
}

TEST(DayEditor, ModifyReplacesTheRangeAndDeleteRemovesMergedSlotsWhole)
{
    DayEditor editor(Day("Work", "00FF00", Join({Slot("08:00", "10:00"), Slot("09:00", "12:00"), Slot("18:00", "19:00"),
                                                 Slot("00:00", "00:00")})));
    EXPECT_EQ(editor.Rows(), "08:00-12:00,18:00-19:00"); // an empty slot vanishes
    editor.Select({0});
    std::string shown;
    ModalScript modal(SlotFields(9, 0, 10, 30, true, &shown));
    QTest::keyClick(editor.list, Qt::Key_Return);
    EXPECT_EQ(shown, "480-720"); // the editor opened on the row's range
    EXPECT_EQ(editor.Rows(), "09:00-10:30,18:00-19:00");

    editor.Select({0, 1});
    QTest::keyClick(editor.list, Qt::Key_Delete);
    EXPECT_EQ(editor.Rows(), "");
    // A slot over the whole day lists as 00:00-24:00.
    modal.Then(SlotFields(0, 0, 24, 0));
    editor.dialog->OnAddSlot();
    EXPECT_EQ(editor.Rows(), "00:00-24:00");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Xml(editor.element), "<day><id>D-Work</id><name>Work</name><color>00FF00</color>"
                                   + Slot("00:00", "24:00") + "</day>");
}

TEST(DayEditor, OkWithoutAChangeEndsWithCancelAndWritesNothing)
{
    DayEditor editor(Day("Work", "00FF00", Join({Slot("09:00", "12:00"), Slot("08:00", "10:00")})));
    std::string const before = Xml(editor.element);
    EXPECT_EQ(editor.ClickOk(), QDialog::Rejected);
    EXPECT_EQ(Xml(editor.element), before); // the overlapping slots stay as they were
}

TEST(DayEditor, NameCheckRefusesEmptyAndInvalidNamesAndSelectsThem)
{
    DayEditor editor(Day("Work", "00FF00"));
    ScriptedAnswerer messages;
    auto* name = editor.dialog->findChild<QLineEdit*>("nameEdit");
    editor.SetName("");
    EXPECT_EQ(editor.ClickOk(), -1);
    editor.SetName("a/b");
    EXPECT_EQ(editor.ClickOk(), -1);
    EXPECT_EQ(name->selectedText(), "a/b");
    EXPECT_EQ(messages.Ids(), (std::vector<unsigned>{32780, 32764}));
}

TEST(DayEditor, NameCheckRefusesOwnAndWeekNames)
{
    DayEditor editor(Join({Day("Work", "00FF00"), Day("Rest", "0000FF")}), Week("Office"), Calendar("Holidays"));
    ScriptedAnswerer messages;
    editor.SetName("Rest");
    EXPECT_EQ(editor.ClickOk(), -1);
    editor.SetName("Office");
    EXPECT_EQ(editor.ClickOk(), -1);
    EXPECT_EQ(messages.Ids(), (std::vector<unsigned>{32779, 32779}));
    EXPECT_EQ(editor.element->Value(L"name", L""), L"Work");
}

TEST(DayEditor, ADayProgramMayShareItsNameWithACalendarAsItAlwaysCould)
{
    // Both other-kind lookups start from the weeks container, so a calendar's name is never
    // found there. Kept as it is.
    DayEditor editor(Day("Work", "00FF00"), Week("Office"), Calendar("Holidays"));
    editor.SetName("Holidays");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(editor.element->Value(L"name", L""), L"Holidays");
}

TEST(DayEditor, ASharedColourAsksAndNoKeepsTheEditorOpen)
{
    DayEditor editor(Join({Day("Work", "00FF00"), Day("Rest", "0000FF")}));
    editor.dialog->SetColour(0x0000FF);
    ScriptedAnswerer answers{ZoAnswer::No, ZoAnswer::Yes};
    EXPECT_EQ(editor.ClickOk(), -1);
    EXPECT_EQ(editor.element->Value(L"color", L""), L"00FF00");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32781, 32781}));
    EXPECT_EQ(editor.element->Value(L"color", L""), L"0000FF");
}

TEST(DayEditor, TheColourIsChosenWithTheColourDialogAndWrittenAsAWord)
{
    DayEditor editor(Day("Work", "00FF00"));
    ModalScript modal(ModalScript::As<QColorDialog>([](QColorDialog& chooser) {
        chooser.setCurrentColor(QColor(0x12, 0x34, 0x56)); // red in the low byte of the word
        chooser.accept();
        return int(QDialog::Accepted);
    }));
    editor.dialog->findChild<QPushButton*>("colourButton")->click();
    EXPECT_EQ(editor.dialog->Colour(), 0x563412u);
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(editor.element->Value(L"color", L""), L"563412");
}

TEST(DayEditor, CancelAfterAChangeAsksBeforeThrowingItAway)
{
    DayEditor editor(Day("Work", "00FF00", Slot("08:00", "09:00")));
    editor.dialog->reject(); // nothing changed: no question
    EXPECT_EQ(editor.dialog->result(), QDialog::Rejected);
    editor.Select({0});
    editor.dialog->OnDeleteSlots();
    ScriptedAnswerer answers{ZoAnswer::No, ZoAnswer::Yes};
    editor.dialog->setResult(-1);
    editor.dialog->findChild<QPushButton*>("cancelButton")->click();
    EXPECT_EQ(editor.dialog->result(), -1);
    editor.dialog->findChild<QPushButton*>("cancelButton")->click();
    EXPECT_EQ(editor.dialog->result(), QDialog::Rejected);
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{61530, 61530}));
    EXPECT_EQ(SlotTexts(editor.element), "08:00-09:00");
}

TEST(DayEditor, TheHostsSlotEntryRewritesTheDayMerged)
{
    XmlDocument doc;
    Load(doc, Day("Work", "00FF00", Join({Slot("08:00", "10:00"), Slot("09:00", "12:00"), Slot("14:00", "15:00")})));
    std::string shown;
    ModalScript modal(SlotFields(13, 0, 14, 30, true, &shown));
    EXPECT_TRUE(EditDaySlot(nullptr, doc.Root(), 1)); // 14:00-15:00 becomes 13:00-14:30
    EXPECT_EQ(shown, "840-900");
    EXPECT_EQ(SlotTexts(doc.Root()), "08:00-12:00,13:00-14:30");
    modal.Then(SlotFields(12, 0, 13, 0)); // a new slot, touching both
    EXPECT_TRUE(EditDaySlot(nullptr, doc.Root(), -1));
    EXPECT_EQ(SlotTexts(doc.Root()), "08:00-14:30");
    modal.Then(ModalScript::Reject());
    EXPECT_FALSE(EditDaySlot(nullptr, doc.Root(), 0));
    EXPECT_EQ(SlotTexts(doc.Root()), "08:00-14:30");
}
