// The year calendar, the day bar and the fast selection as the user works them: clicks and
// drags paint dates, the keyboard walks across months and years, "all" and "none" set masks.
#include "platform/calendar/CDlgFastSelection.h"
#include "platform/calendar/ZoCalendar.h"
#include "platform/calendar/ZoDayCtrl.h"
#include "platform/ui/ZoMnemonics.h"
#include "timetables/TimeTableTestDocs.h"
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace timetables_test;

namespace {

struct ShownCalendar {
    ShownCalendar()
    {
        calendar.resize(calendar.sizeHint());
        calendar.SetYear(2025);
        calendar.show();
    }
    QPoint At(int month, int day) const { return calendar.DateRect(ZoDateTime(2025, month, day)).center(); }
    ZoCalendar calendar;
};

std::string Painted(ZoCalendar const& calendar)
{
    std::string out;
    for (auto const& [serial, paint] : calendar.Dates().BySerial()) {
        ZoDateTime const date = ZoDateTime::FromSerial(serial);
        out += (out.empty() ? "" : ",") + std::to_string(date.Month()) + "/" + std::to_string(date.Day()) + "="
            + ZoToUtf8(paint.id);
    }
    return out;
}

} // namespace

TEST(ZoCalendar, ClicksAndDragsPaintWithTheSelectionTypeAndWhiteErases)
{
    ShownCalendar shown;
    ZoCalendar& calendar = shown.calendar;
    calendar.SetSelType(0x00FF00, L"Work");
    EXPECT_EQ(calendar.DateAt(shown.At(3, 14)), ZoDateTime(2025, 3, 14));

    QTest::mouseClick(&calendar, Qt::LeftButton, {}, shown.At(1, 6));
    // A drag from 13 to 15 January paints every date it passes over.
    QTest::mousePress(&calendar, Qt::LeftButton, {}, shown.At(1, 13));
    QTest::mouseMove(&calendar, shown.At(1, 14));
    QTest::mouseMove(&calendar, shown.At(1, 15));
    QTest::mouseRelease(&calendar, Qt::LeftButton, {}, shown.At(1, 15));
    QTest::mouseMove(&calendar, shown.At(1, 16)); // no button held: nothing
    EXPECT_EQ(Painted(calendar), "1/6=Work,1/13=Work,1/14=Work,1/15=Work");
    EXPECT_EQ(calendar.GetIdDay(ZoDateTime(2025, 1, 14)), L"Work");
    EXPECT_EQ(calendar.Dates().At(ZoDateTime(2025, 1, 14))->colour, 0x00FF00u);

    calendar.SetSelType(0xFFFFFF, L"");
    QTest::mouseClick(&calendar, Qt::LeftButton, {}, shown.At(1, 14));
    EXPECT_EQ(Painted(calendar), "1/6=Work,1/13=Work,1/15=Work");
    ZoDateTime first, last;
    calendar.GetFirstSelectedDay(first);
    calendar.GetLastSelectedDay(last);
    EXPECT_EQ(first, ZoDateTime(2025, 1, 6));
    EXPECT_EQ(last, ZoDateTime(2025, 1, 15));

    // A click between the grids paints nothing.
    QTest::mouseClick(&calendar, Qt::LeftButton, {}, QPoint(1, 1));
    EXPECT_EQ(calendar.Dates().Size(), 3u);
}

TEST(ZoCalendar, KeyboardWalksDatesAcrossTheYearAndPaints)
{
    ShownCalendar shown;
    ZoCalendar& calendar = shown.calendar;
    calendar.setFocus();
    calendar.SetSelType(0x0000FF, L"Holiday");
    calendar.SetFocusDate(ZoDateTime(2025, 12, 30));
    QTest::keyClick(&calendar, Qt::Key_Space);
    QTest::keyClick(&calendar, Qt::Key_Right, Qt::ShiftModifier); // 31 December, painted
    QTest::keyClick(&calendar, Qt::Key_Right);                    // 1 January: the next year shows
    EXPECT_EQ(calendar.GetYear(), 2026);
    EXPECT_EQ(calendar.FocusDate(), ZoDateTime(2026, 1, 1));
    QTest::keyClick(&calendar, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(calendar.FocusDate(), ZoDateTime(2026, 1, 8));
    QTest::keyClick(&calendar, Qt::Key_PageDown);
    QTest::keyClick(&calendar, Qt::Key_End);
    EXPECT_EQ(calendar.FocusDate(), ZoDateTime(2026, 2, 28));
    QTest::keyClick(&calendar, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(calendar.GetYear(), 2025);
    EXPECT_EQ(calendar.FocusDate(), ZoDateTime(2025, 2, 28));

    ZoDateTime first, last;
    calendar.GetFirstSelectedDay(first);
    calendar.GetLastSelectedDay(last);
    EXPECT_EQ(first, ZoDateTime(2025, 12, 30));
    EXPECT_EQ(last, ZoDateTime(2026, 1, 8));
    EXPECT_EQ(calendar.Dates().Size(), 3u);

    // The arrows beside the year show another year; painted dates are kept.
    calendar.findChild<QToolButton*>("nextYearButton")->click();
    EXPECT_EQ(calendar.GetYear(), 2026);
    EXPECT_EQ(calendar.GetIdDay(ZoDateTime(2026, 1, 8)), L"Holiday");
}

TEST(ZoDayCtrl, ShowsTheMergedSlotsOfADayInItsColour)
{
    XmlDocument doc;
    Load(doc, Day("Work", "00FF00", Join({Slot("09:00", "12:00"), Slot("08:00", "10:00"), Slot("bad", "10:00")})));
    ZoDayCtrl picture;
    picture.resize(300, 40);
    picture.Setup(doc.Root());
    EXPECT_TRUE(picture.HasDay());
    ASSERT_EQ(picture.Slots().size(), 1u);
    EXPECT_EQ(picture.Slots()[0], (DaySlot{480, 720}));
    EXPECT_EQ(picture.ColourWord(), 0x00FF00u);
    EXPECT_EQ(picture.toolTip(), QStringLiteral("08:00\u201312:00"));
    EXPECT_FALSE(picture.grab().isNull());
    picture.Setup(nullptr);
    EXPECT_FALSE(picture.HasDay());
    EXPECT_TRUE(picture.Slots().empty());
}

TEST(CDlgFastSelection, AllAndNoneSetTheMasksAndOkNeedsAChoice)
{
    CDlgFastSelection dialog(nullptr, {{"Work", 0x00FF00}, {"Holiday", 0x0000FF}}, 1);
    dialog.EnsureInitialized();
    auto* ok = dialog.findChild<QPushButton*>("okButton");
    EXPECT_EQ(dialog.findChild<QComboBox*>("dayProgramCombo")->currentText(), "Holiday");

    dialog.findChild<QPushButton*>("noMonthsButton")->click();
    EXPECT_FALSE(ok->isEnabled()); // no month
    dialog.findChild<QCheckBox*>("monthCheck0")->setChecked(true);
    dialog.findChild<QPushButton*>("noWeekdaysButton")->click();
    EXPECT_FALSE(ok->isEnabled()); // no weekday
    dialog.findChild<QCheckBox*>("weekdayCheck6")->setChecked(true);
    ASSERT_TRUE(ok->isEnabled());
    ok->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.Row(), 1);
    EXPECT_EQ(dialog.MonthMask(), 1u);
    EXPECT_EQ(dialog.WeekdayMask(), 64u);

    dialog.findChild<QPushButton*>("allMonthsButton")->click();
    dialog.findChild<QPushButton*>("allWeekdaysButton")->click();
    ok->click();
    EXPECT_EQ(dialog.MonthMask(), 0xFFFu);
    EXPECT_EQ(dialog.WeekdayMask(), 0x7Fu);

    // Without any day program there is nothing to paint with.
    CDlgFastSelection empty(nullptr, {});
    empty.EnsureInitialized();
    EXPECT_FALSE(empty.findChild<QPushButton*>("okButton")->isEnabled());
}

TEST(ZoMnemonics, EachTextGetsAFreeLetterPreferringWordStarts)
{
    ZoMnemonics mnemonics;
    EXPECT_EQ(mnemonics.Apply("OK"), "&OK");
    EXPECT_EQ(mnemonics.Apply("Cancel"), "&Cancel");
    EXPECT_EQ(mnemonics.Apply("Choose colour..."), "C&hoose colour..."); // c and o are taken
    EXPECT_EQ(mnemonics.Apply("Save & close"), "&Save && close");
    EXPECT_EQ(mnemonics.Apply("Sc"), "Sc"); // nothing left
}

TEST(ZoMnemonics, TheLetterACaptionShowsCanBeReservedElsewhere)
{
    EXPECT_EQ(ZoMnemonics::ShownLetter("Save && &close"), QChar('c')); // "&&" is a plain "&"
    EXPECT_TRUE(ZoMnemonics::ShownLetter("Save && close").isNull());
    EXPECT_TRUE(ZoMnemonics::ShownLetter("Trailing &").isNull());
    ZoMnemonics mnemonics;
    mnemonics.ReserveShown("&General");
    mnemonics.ReserveShown("Plain");
    EXPECT_EQ(mnemonics.Apply("Gauge"), "G&auge");
    EXPECT_EQ(mnemonics.Apply("Pump"), "&Pump");
}
