// The timeline window and the coverage window driven offscreen: what they show for each
// kind of reference, scrolling by keyboard and buttons, the moment's answer, choosing an
// hour and opening an event from its list; and the places that open the timeline.
#include "TimelineTestDocs.h"

#include "editor/ZoEDlgEventCfg.h"
#include "support/ModalScript.h"
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
#include <QPushButton>
#include <QTest>
#include <QToolTip>
#include <QTreeView>

using namespace timeline_test;

namespace {

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
    EXPECT_EQ(dialog->windowTitle(), "Timeline of lateearly (week program)");
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

    EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 3), QTime(3, 0))), "Allowed. Tue 2026-03-03: early, 00:00-04:00");
    EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 3), QTime(4, 0))), "Not allowed. Tue 2026-03-03: early, 00:00-04:00");
    EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 4), QTime(3, 0))),
              "Not allowed. Wed 2026-03-04: no day program, not allowed");
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
    EXPECT_EQ(QToolTip::text(), "Tue 2026-03-03: early, 00:00-04:00");
    QToolTip::hideText();
}

TEST_F(TimelineDialog, ReferencesThatAllowAlwaysOrNever)
{
    struct Case {
        wchar_t const* reference;
        char const* title;
        char const* answer;
    } const cases[] = {
        {L"", "Timeline without a time table", "Allowed. Mon 2026-03-02: no time table, allowed all day"},
        {L"{gone}", "Timeline of (deleted)", "Not allowed. Mon 2026-03-02: the time table was deleted, never allowed"},
        {L"D-empty", "Timeline of empty (day program)", "Not allowed. Mon 2026-03-02: empty, no time slot"},
        {L"C-leap", "Timeline of leap (calendar)", "Not allowed. Mon 2026-03-02: no day program, not allowed"},
    };
    for (Case const& c : cases) {
        auto const dialog = Open(c.reference);
        EXPECT_EQ(dialog->windowTitle(), c.title);
        EXPECT_EQ(Answer(*dialog, QDateTime(QDate(2026, 3, 2), QTime(12, 0))), c.answer) << c.title;
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
    EXPECT_TRUE(titles.back().startsWith("Timeline of " + name + " (")) << titles.back().toStdString();

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
    EXPECT_EQ(titles.back(), "Timeline of nights (week program)");
    EXPECT_EQ(monday, L"Mon 2026-03-02: no day program, not allowed");
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
    EXPECT_EQ(titles, QStringList{"Timeline of night (day program)"});
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
    EXPECT_EQ(Label("summaryLabel"),
              "3 notifying events; at most 2 allowed in one hour (Mon 2026-12-28 08:00-09:00).");
    EXPECT_EQ(Label("eventsLabel"), "Click an hour to list the events allowed in it.");
    EXPECT_EQ(Rows(), "");

    auto* chart = m_dialog->findChild<ZoCoverageChart*>("coverageChart");
    QTest::mouseClick(chart, Qt::LeftButton, {}, chart->CellRect(3 * 24 + 21).center()); // Thursday 21:00
    EXPECT_EQ(chart->CurrentHour(), 3 * 24 + 21);
    EXPECT_EQ(Rows(), "always/(none),newyear/newyear");
    EXPECT_EQ(Label("eventsLabel"), "&Events allowed Thu 2026-12-31 21:00-22:00:");
    QTest::keyClick(chart, Qt::Key_Up); // Wednesday 21:00
    EXPECT_EQ(Rows(), "always/(none)");
    QTest::keyClick(chart, Qt::Key_Home); // Wednesday 00:00
    EXPECT_EQ(chart->CurrentHour(), 2 * 24);

    m_dialog->findChild<QPushButton*>("nextWeekButton")->click();
    EXPECT_EQ(m_dialog->Week(), QDate(2027, 1, 4));
    EXPECT_EQ(Rows(), "always/(none)"); // the same hour of the next week
}

TEST_F(CoverageDialog, EnterOpensTheEventAndTheListFollowsItsChange)
{
    m_dialog->SetWeek(QDate(2026, 3, 2));
    m_dialog->ChooseHour(9);
    ASSERT_EQ(Rows(), "always/(none),office/office");
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
    EXPECT_EQ(Rows(), "always/(none)");
    EXPECT_EQ(Label("summaryLabel").left(20), "2 notifying events; ");
}

} // namespace
