// The calendar editor driven offscreen: reading painted dates, painting with the chosen day
// program, the fast selection's masks, and the month walk that writes whole months on OK.
#include "timetables/ZoDlgTimeTableYearly.h"
#include "platform/calendar/CDlgFastSelection.h"
#include "platform/calendar/ZoCalendar.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"
#include "timetables/CalendarPainting.h"
#include "timetables/TimeTableTestDocs.h"
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

using namespace timetables_test;

namespace {

std::string const kDays = Join({Day("Work", "00FF00"), Day("Holiday", "0000FF"), Day("Late", "FF0000")});

struct CalendarEditor {
    explicit CalendarEditor(std::string const& calendarExtra = {})
    {
        Load(live, TimeTables(kDays, Week("Office"), Calendar("Feasts", calendarExtra) + Calendar("Other")));
        copy = std::make_unique<XmlDocument>(*live.Root()->Child(L"calendars"));
        element = copy->Root()->FirstChild();
        dialog = std::make_unique<ZoDlgTimeTableYearly>(nullptr, element, copy->Root(), live.Root()->Child(L"days"),
                                                        live.Root()->Child(L"weeks"));
        dialog->EnsureInitialized();
        dialog->show();
        calendar = dialog->findChild<ZoCalendar*>("calendar");
        list = dialog->findChild<QTreeView*>("dayProgramsList");
    }
    void Choose(int row) const
    {
        if (row < 0)
            list->selectionModel()->clearSelection();
        else
            list->selectionModel()->select(list->model()->index(row, 0), QItemSelectionModel::ClearAndSelect);
    }
    void Paint(int year, int month, int day) const { calendar->Select(ZoDateTime(year, month, day)); }
    void Click(int year, int month, int day) const
    {
        calendar->SetYear(year);
        QTest::mouseClick(calendar, Qt::LeftButton, {}, calendar->DateRect(ZoDateTime(year, month, day)).center());
    }
    int ClickOk()
    {
        dialog->setResult(-1);
        dialog->findChild<QPushButton*>("okButton")->click();
        return dialog->result();
    }
    // "year:month:day=id" of every day entry the element holds, joined by ",".
    std::string Entries() const
    {
        std::string out;
        for (XmlNode const* year = element->FirstChild(); year; year = year->NextSibling()) {
            if (!year->HasTag(L"year"))
                continue;
            std::string const y = ZoToUtf8(year->Value(L"year", L""));
            out += (out.empty() ? "" : ",") + y + "[";
            std::string months;
            for (XmlNode const* month = year->FirstChild(); month; month = month->NextSibling()) {
                if (!month->Tag().starts_with(L"month"))
                    continue;
                months += (months.empty() ? "" : " ") + ZoToUtf8(month->Tag().substr(5)) + ":";
                for (XmlNode const* day = month->FirstChild(); day; day = day->NextSibling())
                    months += ZoToUtf8(day->Tag().substr(3)) + "=" + ZoToUtf8(day->Value()).substr(2, 1) + ";";
            }
            out += months + "]";
        }
        return out;
    }

    XmlDocument live;
    std::unique_ptr<XmlDocument> copy;
    XmlNode* element = nullptr;
    std::unique_ptr<ZoDlgTimeTableYearly> dialog;
    ZoCalendar* calendar = nullptr;
    QTreeView* list = nullptr;
};

} // namespace

TEST(CalendarEditor, OpensWithThePaintedDatesOfTheElement)
{
    CalendarEditor editor("<year><year>2025</year><month12><day25>D-Holiday</day25><day26>D-Gone</day26>"
                          "<day31>D-Work</day31></month12><month2><day30>D-Work</day30></month2></year>"
                          "<year><year>x</year><month1><day1>D-Work</day1></month1></year>");
    ZoDateTime first, last;
    editor.calendar->GetFirstSelectedDay(first);
    editor.calendar->GetLastSelectedDay(last);
    EXPECT_EQ(first, ZoDateTime(2025, 12, 25));
    EXPECT_EQ(last, ZoDateTime(2025, 12, 31));
    EXPECT_EQ(editor.calendar->GetIdDay(first), L"Holiday"); // the name, not the id
    EXPECT_EQ(editor.calendar->Dates().Size(), 2u);          // dangling ids and 30 February are skipped
    EXPECT_EQ(editor.calendar->GetYear(), 2025);
    // Painting starts as erasing: no day program is chosen.
    EXPECT_EQ(editor.dialog->findChild<QLabel*>("selectionLabel")->text(), ZoText(457));
    EXPECT_TRUE(editor.calendar->SelId().empty());
    EXPECT_EQ(editor.calendar->SelColour(), 0xFFFFFFu);
}

TEST(CalendarEditor, ChoosingADayProgramSetsTheSelectionTypeAndClicksPaint)
{
    CalendarEditor editor;
    editor.Choose(1);
    EXPECT_EQ(editor.calendar->SelId(), L"Holiday");
    EXPECT_EQ(editor.calendar->SelColour(), 0x0000FFu);
    EXPECT_FALSE(editor.dialog->findChild<QLabel*>("colourBox")->isHidden());
    editor.Click(2025, 5, 1);
    EXPECT_EQ(editor.calendar->GetIdDay(ZoDateTime(2025, 5, 1)), L"Holiday");
    editor.Choose(-1);
    EXPECT_TRUE(editor.dialog->findChild<QLabel*>("colourBox")->isHidden());
    editor.Click(2025, 5, 1); // erases
    EXPECT_EQ(editor.calendar->Dates().Size(), 0u);
}

TEST(CalendarEditor, NothingPaintedWritesNoYear)
{
    CalendarEditor editor("<year><year>2024</year><month1><day1>D-Gone</day1></month1></year>");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(Xml(editor.element), "<calendar><id>C-Feasts</id><name>Feasts</name></calendar>");
}

TEST(CalendarEditor, TheMonthWalkCrossesTheYearEndAndWritesOnlyPaintedDates)
{
    CalendarEditor editor;
    editor.Choose(1);
    editor.Paint(2024, 12, 25);
    editor.Choose(0);
    editor.Paint(2025, 1, 1);
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(editor.Entries(), "2024[12:25=H;],2025[1:1=W;]");
}

TEST(CalendarEditor, ACursorOnThe31stStillReachesEveryMonth)
{
    // The cursor keeps its day of the month; SetDate takes 28 February for 31 February, so
    // no month is skipped. Months between the painted ones are walked but get no element.
    CalendarEditor editor;
    editor.Choose(0);
    editor.Paint(2025, 1, 31);
    editor.Paint(2025, 2, 10);
    editor.Paint(2025, 4, 2);
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(editor.Entries(), "2025[1:31=W; 2:10=W; 4:2=W;]");
}

TEST(CalendarEditor, ANameThatMatchesNoDayProgramIsNotWritten)
{
    CalendarEditor editor;
    ZoCalendarDates dates;
    dates.Select(ZoDateTime(2025, 3, 3), 0x00FF00, L"Work");
    dates.Select(ZoDateTime(2025, 3, 4), 0x123456, L"Nobody");
    editor.calendar->SetDates(dates);
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
    EXPECT_EQ(editor.Entries(), "2025[3:3=W;]");
}

TEST(CalendarEditor, FastSelectionPaintsTheMaskedDatesOfTheShownYear)
{
    CalendarEditor editor;
    editor.calendar->SetYear(2025);
    ModalScript modal(ModalScript::As<CDlgFastSelection>([](CDlgFastSelection& fast) {
        fast.SetMasks(1, 64); // January, Sundays
        return ModalScript::ClickOk(fast);
    }));
    editor.Choose(2);
    editor.dialog->findChild<QPushButton*>("fastSelectionButton")->click();
    EXPECT_EQ(editor.calendar->Dates().Size(), 4u); // 5, 12, 19 and 26 January 2025
    EXPECT_EQ(editor.calendar->GetIdDay(ZoDateTime(2025, 1, 5)), L"Late");
    EXPECT_EQ(editor.calendar->GetIdDay(ZoDateTime(2025, 1, 26)), L"Late");
    EXPECT_EQ(editor.calendar->SelId(), L"Late"); // set back from the list

    std::vector<ZoDateTime> const mondays = MaskedDates(2024, 0b10, 0b1); // February 2024, Mondays
    ASSERT_EQ(mondays.size(), 4u);
    EXPECT_EQ(mondays.front(), ZoDateTime(2024, 2, 5));
    EXPECT_EQ(MaskedDates(2024, 0xFFF, 0x7F).size(), 366u);
    EXPECT_EQ(MaskedDates(2025, 0xFFF, 0x7F).size(), 365u);
}

TEST(CalendarEditor, NameCheckLooksAtEachKindsOwnContainer)
{
    CalendarEditor editor;
    ScriptedAnswerer messages;
    auto* name = editor.dialog->findChild<QLineEdit*>("nameEdit");
    for (char const* taken : {"Other", "Work", "Office", "bad?"}) {
        name->setText(taken);
        EXPECT_EQ(editor.ClickOk(), -1) << taken;
    }
    EXPECT_EQ(messages.Ids(), (std::vector<unsigned>{32779, 32779, 32779, 32764}));
    name->setText("Feasts 2025");
    EXPECT_EQ(editor.ClickOk(), QDialog::Accepted);
}
