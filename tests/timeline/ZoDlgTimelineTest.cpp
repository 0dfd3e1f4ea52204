// The timeline window and the coverage window driven offscreen: what they show for each
// kind of reference, scrolling by keyboard and buttons, the moment's answer, choosing an
// hour and opening an event from its list; and the places that open the timeline.
#include "TimelineTestDocs.h"

#include "editor/ZoEDlgEventCfg.h"
#include "support/ModalScript.h"
#include "support/TableText.h"
#include "timeline/ZoCoverageChart.h"
#include "timeline/ZoCoverageEventsModel.h"
#include "timeline/ZoDlgTimeTableCoverage.h"
#include "timeline/ZoDlgTimeline.h"
#include "timeline/ZoTimelineChart.h"
#include "timeline/ZoTimelineRows.h"
#include "timetables/ZoDlgTimeTableSetup.h"
#include "timetables/ZoDlgTimeTableWeekly.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QHelpEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTest>
#include <QToolTip>
#include <QTreeView>

using namespace timeline_test;

namespace {

// A day as the windows name it: the short day name of the run's language and the date.
std::wstring Day(int year, int month, int day)
{
    return QLocale().toString(QDate(year, month, day), QStringLiteral("ddd yyyy-MM-dd")).toStdWString();
}
// "Timeline of <name> (<kind>)", kind 64936 a day program, 64937 a week program, 64938 a calendar.
QString Title(unsigned kind, wchar_t const* name)
{
    return Said(64900, Said(kind, name).toStdWString().c_str());
}
// The moment's answer: "Allowed." or "Not allowed." and the day's description.
QString Answered(bool allowed, QString const& day)
{
    return ZoText(allowed ? 64915 : 64916) + " " + day;
}

class TimelineDialog : public ::testing::Test {
protected:
    void SetUp() override { Load(m_doc, kTables); }

    std::unique_ptr<ZoDlgTimeline> Open(std::wstring const& reference)
    {
        auto dialog = std::make_unique<ZoDlgTimeline>(nullptr, m_doc.Root(), reference);
        dialog->EnsureInitialized();
        dialog->show();
        dialog->findChild<QDateEdit*>("startEdit")->setDate(QDate(2026, 3, 2));
        return dialog;
    }
    static QString Answer(ZoDlgTimeline& dialog, QDateTime const& at)
    {
        dialog.findChild<QDateTimeEdit*>("momentEdit")->setDateTime(at);
        return dialog.findChild<QLabel*>("answerLabel")->text();
    }
    XmlDocument m_doc;
};

TEST_F(TimelineDialog, AWeekProgramScrollsByWeekAndMonthAndAnswersTheMoment)
{
    auto const dialog = Open(L"W-lateearly");
    EXPECT_EQ(dialog->windowTitle(), Title(64937, L"lateearly"));
    EXPECT_TRUE(dialog->findChild<QDateEdit*>("startEdit")->hasFocus() || !dialog->isActiveWindow());
    ZoTimelineRows const& rows = dialog->Rows();
    EXPECT_EQ(rows.Days(), 28);
    auto* chart = dialog->findChild<ZoTimelineChart*>("timelineChart");
    auto* start = dialog->findChild<QDateEdit*>("startEdit");

    dialog->findChild<QPushButton*>("weekForwardButton")->click();
    EXPECT_EQ(start->date(), QDate(2026, 3, 9));
    QTest::keyClick(chart, Qt::Key_PageDown);
    EXPECT_EQ(start->date(), QDate(2026, 4, 9));
    QTest::keyClick(chart, Qt::Key_Up);
    EXPECT_EQ(start->date(), QDate(2026, 4, 2));
    dialog->findChild<QPushButton*>("monthBackButton")->click();
    EXPECT_EQ(rows.Start(), QDate(2026, 3, 2));

    // A year of rows makes the chart taller.
    int const fourWeeks = chart->sizeHint().height();
    dialog->findChild<QComboBox*>("spanCombo")->setCurrentIndex(4);
    EXPECT_EQ(rows.Days(), 366);
    EXPECT_GT(chart->sizeHint().height(), fourWeeks * 10);
    QCoreApplication::processEvents(); // the scroll area lays the chart out again
    EXPECT_GE(chart->height(), chart->sizeHint().height());

    QString const early = Said(64914, Day(2026, 3, 3).c_str(), L"early", L"00:00-04:00");
    EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 3), QTime(3, 0))), Answered(true, early));
    EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 3), QTime(4, 0))), Answered(false, early));
    EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 4), QTime(3, 0))),
              Answered(false, Said(64912, Day(2026, 3, 4).c_str())));
}

TEST_F(TimelineDialog, HoverShowsTheDayProgramOfTheRow)
{
    auto const dialog = Open(L"W-lateearly");
    auto* chart = dialog->findChild<ZoTimelineChart*>("timelineChart");
    // The second row: Tuesday 2026-03-03.
    QPoint const point(chart->width() / 2, chart->fontMetrics().height() * 5 / 2 + 6);
    ASSERT_EQ(chart->RowAt(point), 1);
    QHelpEvent help(QEvent::ToolTip, point, chart->mapToGlobal(point));
    QApplication::sendEvent(chart, &help);
    EXPECT_EQ(QToolTip::text(), Said(64914, Day(2026, 3, 3).c_str(), L"early", L"00:00-04:00"));
    QToolTip::hideText();
}

TEST_F(TimelineDialog, ReferencesThatAllowAlwaysOrNever)
{
    std::wstring const monday = Day(2026, 3, 2);
    struct Case {
        wchar_t const* reference;
        QString title;
        QString answer;
    } const cases[] = {
        {L"", ZoText(64901), Answered(true, Said(64910, monday.c_str()))},
        {L"{gone}", Said(64900, ZoLoadString(64934).c_str()), Answered(false, Said(64911, monday.c_str()))},
        {L"D-empty", Title(64936, L"empty"), Answered(false, Said(64913, monday.c_str(), L"empty"))},
        {L"C-leap", Title(64938, L"leap"), Answered(false, Said(64912, monday.c_str()))},
    };
    for (Case const& c : cases) {
        auto const dialog = Open(c.reference);
        EXPECT_EQ(dialog->windowTitle(), c.title);
        EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 2), QTime(12, 0))), c.answer) << c.title.toStdString();
    }
}

TEST_F(TimelineDialog, TheSetupAndTheEditorsOpenTheTimelineOfTheirTable)
{
    QStringList titles;
    auto const record = [&titles](QDialog& dialog) {
        titles << dialog.windowTitle();
        return int(QDialog::Rejected);
    };
    ModalScript modal(record);
    ZoDlgTimeTableSetup setup(nullptr, &m_doc);
    setup.EnsureInitialized();
    auto* list = setup.findChild<QTreeView*>("timeTablesList");
    auto* button = setup.findChild<QPushButton*>("timelineButton");
    list->selectionModel()->clearSelection();
    EXPECT_FALSE(button->isEnabled());
    list->selectionModel()->select(list->model()->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    ASSERT_TRUE(button->isEnabled());
    QString const name = list->model()->index(0, 0).data().toString();
    button->click();
    ASSERT_EQ(titles.size(), 1);
    std::wstring const wide = name.toStdWString();
    EXPECT_TRUE((QStringList{Title(64936, wide.c_str()), Title(64937, wide.c_str()), Title(64938, wide.c_str())})
                    .contains(titles.back()))
        << titles.back().toStdString();

    // An editor works on a copy of its container, as the setup runs it; the timeline reads
    // that copy beside the other containers.
    XmlDocument weeks(*m_doc.Root()->Child(L"weeks"));
    XmlNode* week = weeks.Root()->FirstChild();
    week->EraseTag(L"day1"); // an unsaved change: Monday without a day program
    std::wstring monday;
    modal.Then(ModalScript::As<ZoDlgTimeline>([&](ZoDlgTimeline& timeline) {
        titles << timeline.windowTitle();
        monday = timeline.Rows().Describe(timeline.Rows().DayOn(QDate(2026, 3, 2)));
        return int(QDialog::Rejected);
    }));
    ZoDlgTimeTableWeekly editor(nullptr, week, weeks.Root(), m_doc.Root()->Child(L"days"),
                                m_doc.Root()->Child(L"calendars"));
    editor.EnsureInitialized();
    editor.findChild<QPushButton*>("timelineButton")->click();
    EXPECT_EQ(titles.back(), Title(64937, L"nights"));
    EXPECT_EQ(monday, Said(64912, Day(2026, 3, 2).c_str()).toStdWString());
}

TEST_F(TimelineDialog, TheEventEditorOpensTheTimelineOfTheChosenTable)
{
    XmlDocument events;
    Load(events, "<events><event><id>{E}</id><name>Pump</name><condition>1</condition>"
                 "<timeTable>D-night</timeTable></event></events>");
    QStringList titles;
    ModalScript modal([&titles](QDialog& dialog) {
        titles << dialog.windowTitle();
        return int(QDialog::Rejected);
    });
    XmlDocument users;
    ZoEDlgEventCfg editor(nullptr, events.Root()->FirstChild(), events.Root(), nullptr, m_doc.Root(), &users);
    editor.EnsureInitialized();
    editor.findChild<QPushButton*>("timelineButton")->click();
    EXPECT_EQ(titles, QStringList{Title(64936, L"night")});
}

class CoverageDialog : public TimelineDialog {
protected:
    void SetUp() override
    {
        TimelineDialog::SetUp();
        std::string const on = "<notify>T</notify><disabled>F</disabled>";
        Load(m_events, "<eventsConfiguration><events>"
                           + Join({"<event><name>always</name>" + on + "</event>",
                                   "<event><name>office</name>" + on + "<timeTable>D-office</timeTable></event>",
                                   "<event><name>newyear</name>" + on + "<timeTable>C-newyear</timeTable></event>",
                                   "<event><name>quiet</name><notify>F</notify><disabled>F</disabled></event>"})
                           + "</events></eventsConfiguration>");
        m_dialog = std::make_unique<ZoDlgTimeTableCoverage>(nullptr, EventsElement(), m_doc.Root());
        m_dialog->EnsureInitialized();
        m_dialog->show();
        m_list = m_dialog->findChild<QTreeView*>("eventsList");
        m_tester = std::make_unique<QAbstractItemModelTester>(m_list->model(),
                                                              QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    XmlNode* EventsElement() { return m_events.Root()->Child(L"events"); }
    // "name/time table" of each row.
    std::string Rows() const
    {
        std::string out;
        for (int row = 0; row < m_list->model()->rowCount(); ++row)
            out += (out.empty() ? "" : ",") + m_list->model()->index(row, 0).data().toString().toStdString() + "/"
                + m_list->model()->index(row, 1).data().toString().toStdString();
        return out;
    }
    QString Label(char const* name) const { return m_dialog->findChild<QLabel*>(name)->text(); }
    // The time table column of an event without one.
    static std::string None() { return ZoText(64933).toStdString(); }

    XmlDocument m_events;
    std::unique_ptr<ZoDlgTimeTableCoverage> m_dialog;
    QTreeView* m_list = nullptr;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

TEST_F(CoverageDialog, ChoosingAnHourListsItsEvents)
{
    m_dialog->SetWeek(QDate(2026, 12, 30)); // a Wednesday: the week from Monday the 28th
    EXPECT_EQ(m_dialog->Week(), QDate(2026, 12, 28));
    EXPECT_EQ(m_dialog->findChild<QDateEdit*>("weekEdit")->date(), QDate(2026, 12, 28));
    EXPECT_EQ(Label("summaryLabel"), Said(64929, 3, 2, (Day(2026, 12, 28) + L" 08:00-09:00").c_str()));
    EXPECT_EQ(Label("eventsLabel"), ZoText(64935));
    EXPECT_EQ(Rows(), "");

    auto* chart = m_dialog->findChild<ZoCoverageChart*>("coverageChart");
    QTest::mouseClick(chart, Qt::LeftButton, {}, chart->CellRect(3 * 24 + 21).center()); // Thursday 21:00
    EXPECT_EQ(chart->CurrentHour(), 3 * 24 + 21);
    EXPECT_EQ(Rows(), "always/" + None() + ",newyear/newyear");
    EXPECT_EQ(Label("eventsLabel"), Said(64930, (Day(2026, 12, 31) + L" 21:00-22:00").c_str()));
    QTest::keyClick(chart, Qt::Key_Up); // Wednesday 21:00
    EXPECT_EQ(Rows(), "always/" + None());
    QTest::keyClick(chart, Qt::Key_Home); // Wednesday 00:00
    EXPECT_EQ(chart->CurrentHour(), 2 * 24);

    m_dialog->findChild<QPushButton*>("nextWeekButton")->click();
    EXPECT_EQ(m_dialog->Week(), QDate(2027, 1, 4));
    EXPECT_EQ(Rows(), "always/" + None()); // the same hour of the next week
}

TEST_F(CoverageDialog, EnterOpensTheEventAndTheListFollowsItsChange)
{
    m_dialog->SetWeek(QDate(2026, 3, 2));
    m_dialog->ChooseHour(9);
    ASSERT_EQ(Rows(), "always/" + None() + ",office/office");
    std::vector<std::uint32_t> opened;
    // The host's editor: switches the event's notification off, replacing the events as
    // the host does after the event editor's OK.
    QObject::connect(m_dialog.get(), &ZoDlgTimeTableCoverage::openRequested, [&](std::uint32_t position) {
        opened.push_back(position);
        XmlDocument copy(*EventsElement());
        std::uint32_t index = 0;
        for (XmlNode* event = copy.Root()->FirstChild(); event; event = event->NextSibling(), ++index)
            if (index == position)
                event->SetValue(L"notify", L"F");
        *EventsElement() = *copy.Root();
    });
    m_list->setFocus();
    m_list->setCurrentIndex(m_list->model()->index(1, 0));
    QTest::keyClick(m_list, Qt::Key_Return);
    EXPECT_EQ(opened, std::vector<std::uint32_t>{1});
    EXPECT_EQ(Rows(), "always/" + None());
    EXPECT_TRUE(Label("summaryLabel").startsWith(Said(64929, 2, 0, L"").section(';', 0, 0)))
        << Label("summaryLabel").toStdString();
}

} // namespace
