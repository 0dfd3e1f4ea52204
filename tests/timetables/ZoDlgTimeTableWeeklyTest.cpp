// The week program editor driven offscreen: the choosers and the pictures agree with the
// element at once, dangling entries go on opening, and OK ends with OK even unchanged.
#include "timetables/ZoDlgTimeTableWeekly.h"
#include "platform/calendar/ZoDayCtrl.h"
#include "platform/tools/ZoTexts.h"
#include "support/ScriptedAnswerer.h"
#include "timetables/TimeTableTestDocs.h"
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using namespace timetables_test;

namespace {

struct WeekEditor {
    explicit WeekEditor(std::string const& weekExtra, std::string const& calendars = {})
    {
        Load(live, TimeTables(Join({Day("Work", "00FF00", Slot("08:00", "17:00")), Day("Rest", "0000FF")}),
                              Week("Office", weekExtra) + Week("Shift"), calendars));
        copy = std::make_unique<XmlDocument>(*live.Root()->Child(L"weeks"));
        element = copy->Root()->FirstChild();
        dialog = std::make_unique<ZoDlgTimeTableWeekly>(nullptr, element, copy->Root(), live.Root()->Child(L"days"),
                                                        live.Root()->Child(L"calendars"));
        dialog->EnsureInitialized();
        dialog->show();
    }
    QComboBox* Chooser(int day) const { return dialog->findChild<QComboBox*>(QStringLiteral("dayCombo%1").arg(day)); }
    // The chosen entry of each day, joined by ",".
    std::string Choices() const
    {
        std::string out;
        for (int day = 0; day < 7; ++day)
            out += (day ? "," : "") + Chooser(day)->currentText().toStdString();
        return out;
    }
    int ClickOk()
    {
        dialog->setResult(-1);
        dialog->findChild<QPushButton*>("okButton")->click();
        return dialog->result();
    }

    XmlDocument live;
    std::unique_ptr<XmlDocument> copy;
    XmlNode* element = nullptr;
    std::unique_ptr<ZoDlgTimeTableWeekly> dialog;
};

} // namespace

TEST(WeekEditor, OpensOnTheEntriesAndDropsDanglingOnesAtOnce)
{
    WeekEditor editor("<day1>D-Work</day1><day3>D-Deleted</day3><day6>D-Rest</day6><day7></day7>");
    std::string const n = ZoText(32044).toStdString();
    EXPECT_EQ(editor.Choices(), "Work," + n + "," + n + "," + n + "," + n + ",Rest," + n);
    // Opening applied every day: the dangling and the empty entries are gone from the copy.
    EXPECT_EQ(Xml(editor.element), "<week><id>W-Office</id><name>Office</name><day1>D-Work</day1><day6>D-Rest</day6></week>");
    auto* monday = editor.dialog->findChild<ZoDayCtrl*>("dayPicture0");
    ASSERT_EQ(monday->Slots().size(), 1u);
    EXPECT_EQ(monday->ColourWord(), 0x00FF00u);
    EXPECT_FALSE(editor.dialog->findChild<ZoDayCtrl*>("dayPicture2")->HasDay());
}

TEST(WeekEditor, ChoosingNoDayProgramRemovesTheEntry)
{
    WeekEditor editor("<day1>D-Work</day1>");
    editor.Chooser(0)->setCurrentIndex(0);
    editor.Chooser(4)->setCurrentIndex(2); // Rest on Friday
    EXPECT_EQ(Xml(editor.element), "<week><id>W-Office</id><name>Office</name><day5>D-Rest</day5></week>");
    EXPECT_EQ(editor.dialog->findChild<ZoDayCtrl*>("dayPicture4")->ColourWord(), 0x0000FFu);
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
}

TEST(WeekEditor, OkEndsWithOkUnchangedAndChecksTheName)
{
    WeekEditor editor("", Calendar("Holidays"));
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted); // unlike the day editor
    ScriptedAnswerer messages;
    auto* name = editor.dialog->findChild<QLineEdit*>("nameEdit");
    for (char const* taken : {"Shift", "Work", "Holidays", ""}) {
        name->setText(taken);
        EXPECT_EQ(editor.ClickOk(), -1) << taken;
    }
    EXPECT_EQ(messages.Ids(), (std::vector<unsigned>{32779, 32779, 32779, 32780}));
    name->setText("Plant");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(editor.element->Value(L"name", L""), L"Plant");
}
