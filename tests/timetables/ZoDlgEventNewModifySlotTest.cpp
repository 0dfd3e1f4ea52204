// The time-slot editor driven as the user drives it: typed hours and minutes, the hour-24
// rule, clamping when leaving a field, and drags over the quarter grid in both directions.
#include "timetables/SlotGrid.h"
#include "timetables/SlotGridCtrl.h"
#include "timetables/ZoDlgEventNewModifySlot.h"
#include "timetables/TimeTableTestDocs.h"
#include "support/ScriptedAnswerer.h"
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

using namespace timetables_test;

namespace {

struct SlotEditor {
    explicit SlotEditor(std::string const& from = "08:00", std::string const& to = "10:00")
    {
        Load(doc, "<main>" + Slot(from, to) + "</main>");
        dialog = std::make_unique<ZoDlgEventNewModifySlot>(nullptr, doc.Root()->FirstChild(), 0x00FF00, 0x0000FF);
        dialog->EnsureInitialized();
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        grid = dialog->findChild<SlotGridCtrl*>("slotGrid");
    }
    QSpinBox* Spin(char const* name) const { return dialog->findChild<QSpinBox*>(name); }
    // "HH:MM-HH:MM" of the four fields, with "*" after a disabled minute field.
    std::string Fields() const
    {
        auto const two = [](int value) { return (value < 10 ? "0" : "") + std::to_string(value); };
        auto const time = [&](char const* hour, char const* minute) {
            return two(Spin(hour)->value()) + ":" + two(Spin(minute)->value()) + (Spin(minute)->isEnabled() ? "" : "*");
        };
        return time("fromHourSpin", "fromMinuteSpin") + "-" + time("toHourSpin", "toMinuteSpin");
    }
    // Types into a field and leaves it for the next one.
    void Type(char const* field, QString const& text, char const* next)
    {
        QSpinBox* spin = Spin(field);
        spin->setFocus();
        spin->selectAll();
        QTest::keyClicks(spin, text);
        Spin(next)->setFocus();
    }
    void Drag(int fromMinute, std::initializer_list<int> overMinutes)
    {
        QTest::mousePress(grid, Qt::LeftButton, {}, grid->QuarterCenter(fromMinute));
        int last = fromMinute;
        for (int minute : overMinutes)
            QTest::mouseMove(grid, grid->QuarterCenter(last = minute));
        QTest::mouseRelease(grid, Qt::LeftButton, {}, grid->QuarterCenter(last));
    }
    int ClickOk()
    {
        dialog->setResult(-1);
        dialog->findChild<QPushButton*>("okButton")->click();
        return dialog->result();
    }

    XmlDocument doc;
    std::unique_ptr<ZoDlgEventNewModifySlot> dialog;
    SlotGridCtrl* grid = nullptr;
};

} // namespace

TEST(SlotEditor, OpensFromTheSlotTextsWithTheHour24Rule)
{
    EXPECT_EQ(SlotEditor("08:30", "24:15").Fields(), "08:30-24:00*");
    EXPECT_EQ(SlotEditor("", "9").Fields(), "00:00-00:00"); // shorter than two characters
    EXPECT_EQ(SlotEditor("7:45", "30:00").Fields(), "07:45-24:00*"); // the first two characters; 30 is out of range
    EXPECT_EQ(ParseSlotFieldTime(L"8:30").hour, 8);
    EXPECT_EQ(ParseSlotFieldTime(L"24:30").minute, 0);
}

TEST(SlotEditor, TypedHoursAboveTheRangeBecome24AndDisableTheMinute)
{
    SlotEditor editor("08:15", "10:45");
    editor.Type("toHourSpin", "30", "fromHourSpin");
    EXPECT_EQ(editor.Fields(), "08:15-24:00*");
    // Back below 24 the minute field is enabled again, with its full range.
    editor.Type("toHourSpin", "23", "toMinuteSpin");
    editor.Type("toMinuteSpin", "75", "fromHourSpin"); // above 59: the range's maximum
    EXPECT_EQ(editor.Fields(), "08:15-23:59");
    editor.Spin("fromHourSpin")->stepBy(20); // a spin step stops at 24
    EXPECT_EQ(editor.Fields(), "24:00*-23:59");
    EXPECT_FALSE(editor.dialog->TimeSlotChanged());
}

TEST(SlotEditor, OkRefusesAStartAfterTheEndAndWritesTheFields)
{
    SlotEditor editor("10:00", "09:00");
    ScriptedAnswerer messages;
    EXPECT_EQ(editor.ClickOk(), -1);
    EXPECT_EQ(messages.Ids(), (std::vector<unsigned>{469}));
    EXPECT_EQ(SlotTexts(editor.doc.Root()), "10:00-09:00"); // nothing written

    editor.Type("toHourSpin", "10", "fromHourSpin"); // equal times are accepted
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(SlotTexts(editor.doc.Root()), "10:00-10:00");
    EXPECT_EQ(messages.Count(), 1);
}

TEST(SlotEditor, DraggingRightwardsSelectsFromThePressedQuarterToTheCurrentOne)
{
    SlotEditor editor("00:00", "00:00");
    editor.Drag(10 * 60, {10 * 60 + 30, 11 * 60 + 45});
    EXPECT_TRUE(editor.dialog->TimeSlotChanged());
    EXPECT_FALSE(editor.grid->IsDragging());
    EXPECT_EQ(editor.Fields(), "10:00-12:00");
    // A plain click selects its one quarter.
    editor.Drag(15 * 60 + 15, {});
    EXPECT_EQ(editor.Fields(), "15:15-15:30");
    // Dragging to the last quarter reaches the end of the day.
    editor.Drag(22 * 60, {23 * 60 + 45});
    EXPECT_EQ(editor.Fields(), "22:00-24:00*");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(SlotTexts(editor.doc.Root()), "22:00-24:00");
}

TEST(SlotEditor, DraggingLeftwardsCoversThePressedAndTheCurrentQuarter)
{
    SlotEditor editor;
    editor.Drag(10 * 60 + 45, {10 * 60, 9 * 60});
    EXPECT_EQ(editor.Fields(), "09:00-11:00");
    // Within one hour column: from the lower quarter up to the upper one.
    editor.Drag(14 * 60 + 45, {14 * 60 + 15});
    EXPECT_EQ(editor.Fields(), "14:15-15:00");
}

TEST(SlotEditor, APressOutsideTheGridStartsNoDrag)
{
    SlotEditor editor("08:00", "10:00");
    QRect const area = editor.grid->GridArea();
    QTest::mousePress(editor.grid, Qt::LeftButton, {}, QPoint(area.left() - 4, area.center().y()));
    QTest::mouseMove(editor.grid, editor.grid->QuarterCenter(12 * 60));
    QTest::mouseRelease(editor.grid, Qt::LeftButton, {}, editor.grid->QuarterCenter(12 * 60));
    EXPECT_FALSE(editor.dialog->TimeSlotChanged());
    EXPECT_EQ(editor.Fields(), "08:00-10:00");
    // The bounds themselves belong to the grid: its right edge is the last hour.
    QTest::mousePress(editor.grid, Qt::LeftButton, {}, QPoint(area.left() + area.width(), area.top()));
    QTest::mouseRelease(editor.grid, Qt::LeftButton, {}, QPoint(area.left() + area.width(), area.top()));
    EXPECT_EQ(editor.Fields(), "23:00-23:15");
}

TEST(SlotGrid, GetMinuteClampsOnlyAtTheHighEnd)
{
    QRect const area(100, 50, 480, 80); // 20 pixels an hour, 20 a quarter
    EXPECT_EQ(slot_grid::MinuteAt(area, {100, 50}), 0);
    EXPECT_EQ(slot_grid::MinuteAt(area, {139, 69}), 60);       // hour 1, quarter 0
    EXPECT_EQ(slot_grid::MinuteAt(area, {140, 110}), 2 * 60 + 45);
    EXPECT_EQ(slot_grid::MinuteAt(area, {580, 130}), 23 * 60 + 45); // clamped to the last pixel
    EXPECT_EQ(slot_grid::MinuteAt(area, {95, 50}), 0);   // x' = -5 truncates toward zero
    EXPECT_EQ(slot_grid::DragRange(600, 615).from, 600);
    EXPECT_EQ(slot_grid::DragRange(645, 555).from, 540); // leftwards: end - 15 ...
    EXPECT_EQ(slot_grid::DragRange(645, 555).to, 660);   // ... to press + 15
    QRect const control(0, 0, 300, 100);
    EXPECT_EQ(slot_grid::Area(control), QRect(8, 31, 283, 60));
}
