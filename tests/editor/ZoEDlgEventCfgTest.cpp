#include "EventEditorFixture.h"
#include "support/ScriptedAnswerer.h"

#include "editor/ZoTimeTableChoiceModel.h"
#include "platform/setup/ZoEventSystem.h"
#include "platform/tools/ZoTexts.h"

#include <QAbstractItemModelTester>
#include <QLabel>

#include <functional>

namespace {

// Text fields and the key each one edits.
struct TextKey { char const* field; wchar_t const* key; };
TextKey const kTextKeys[] = {
    {"nameEdit", L"name"}, {"descriptionEdit", L"description"}, {"conditionEdit", L"condition"},
    {"stopConditionEdit", L"conditionStop"}, {"delayActivateEdit", L"delayToActivate"},
    {"delayDeactivateEdit", L"delayToDeactivate"}, {"annotationEdit", L"annotation"},
    {"deaAnnotationEdit", L"deaAnnotation"}, {"ackAnnotationEdit", L"ackAnnotation"}};
// Check boxes, the key each one edits ("enabled" edits `disabled` inversely), whether it
// is checked for kFullEvent, and what it writes once toggled.
struct CheckKey { char const* check; wchar_t const* key; bool loaded; wchar_t const* toggled; };
CheckKey const kCheckKeys[] = {
    {"notifyCheck", L"notify", true, L"F"}, {"recordCheck", L"record", true, L"F"},
    {"enabledCheck", L"disabled", true, L"T"}, {"rssActivateCheck", L"rssActivate", true, L"F"},
    {"rssDeactivateCheck", L"rssDeactivate", false, L"T"}, {"rssAcknowledgeCheck", L"rssAcknowledge", true, L"F"}};
Tags_ const kMoments = {L"activate", L"while", L"deactivate", L"acknowledge"};

} // namespace

TEST_F(EventEditorTest, NewEventGainsTheEightMomentListsAndItsKeysInWriteOrder)
{
    XmlNode* event = AddEvent("<id>{E-NEW}</id>");
    Open(event);
    EXPECT_EQ(m_dialog->windowTitle(), ZoText(32793));
    for (TextKey const& text : kTextKeys)
        EXPECT_TRUE(Edit(text.field)->text().isEmpty()) << text.field;
    for (CheckKey const& check : kCheckKeys)
        EXPECT_FALSE(Check(check.check)->isChecked()) << check.check;
    EXPECT_FALSE(Edit("stopConditionEdit")->isEnabled());
    EXPECT_EQ(TimeTables()->currentText(), ZoText(32830));
    // Missing stored booleans compare unequal with "T" and "F" alike: a new event always
    // counts as changed, from its first boolean on.
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Notify);
    EXPECT_EQ(Tags(event), (Tags_{L"id", L"actions", L"clientActions"}));
    for (wchar_t const* side : {L"actions", L"clientActions"}) {
        EXPECT_EQ(Tags(event->Node(side)), kMoments);
        for (auto it = event->Node(side)->ChildsBegin(); it != event->Node(side)->ChildsEnd(); ++it)
            EXPECT_EQ((*it)->Size(), 0);
    }

    SetText("nameEdit", "Door open");
    SetText("conditionEdit", "[BOILER.DI1]");
    Check("stopConditionCheck")->setChecked(true);
    SetText("stopConditionEdit", "![BOILER.DI1]");
    TimeTables()->setCurrentIndex(1);
    ClickOk();
    ASSERT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Tags(event), (Tags_{L"id", L"actions", L"clientActions", L"name", L"description", L"condition",
                                  L"conditionStop", L"timeTable", L"notify", L"record", L"disabled",
                                  L"delayToActivate", L"delayToDeactivate", L"annotation", L"deaAnnotation",
                                  L"ackAnnotation", L"rssActivate", L"rssDeactivate", L"rssAcknowledge"}));
    EXPECT_EQ(event->Value(L"timeTable", L""), L"{D-1}");
    // Deliberate asymmetry: the enabled box was clear because `disabled` was missing, so
    // the event is saved disabled.
    EXPECT_EQ(event->Value(L"disabled", L""), L"T");

    // Existing lists and foreign children are kept; missing moments are appended.
    event = AddEvent("<id>{E-2}</id><name>A</name><actions><deactivate><beep/></deactivate><custom/></actions>");
    Open(event);
    EXPECT_EQ(m_dialog->windowTitle(), ZoText(32794));
    EXPECT_EQ(Tags(event->Node(L"actions")), (Tags_{L"deactivate", L"custom", L"activate", L"while", L"acknowledge"}));
    EXPECT_EQ(Tags(event->Node(L"actions/deactivate")), Tags_{L"beep"});
}

TEST_F(EventEditorTest, EveryKeyLoadsAndSavesBack)
{
    XmlNode* event = AddEvent(kFullEvent);
    Open(event);
    for (TextKey const& text : kTextKeys)
        EXPECT_EQ(Edit(text.field)->text().toStdWString(), event->Value(text.key, L"")) << text.field;
    EXPECT_TRUE(Edit("stopConditionEdit")->isEnabled());
    EXPECT_EQ(TimeTables()->currentText(), "Office week");
    for (CheckKey const& check : kCheckKeys)
        EXPECT_EQ(Check(check.check)->isChecked(), check.loaded) << check.check;
    EXPECT_FALSE(m_dialog->HasChanged());
    // Confirming an unchanged event writes nothing.
    std::string const before = Xml(event);
    ClickOk();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Xml(event), before);

    // Change every field and save. Clearing the stop box removes the stop condition; every
    // text goes through a 256-character buffer, though a condition may be typed up to 512.
    // The condition is no formula: the question is answered Yes.
    ScriptedAnswerer answers;
    Open(event);
    for (TextKey const& text : kTextKeys)
        SetText(text.field, QString::fromStdWString(L"Ä " + std::wstring(text.key)));
    SetText("conditionEdit", QString(300, QLatin1Char('x')));
    EXPECT_EQ(Edit("conditionEdit")->text().size(), 300);
    Check("stopConditionCheck")->setChecked(false);
    EXPECT_FALSE(Get<QLabel>("stopConditionLabel")->isEnabled());
    for (CheckKey const& check : kCheckKeys)
        Check(check.check)->toggle();
    TimeTables()->setCurrentIndex(4); // the calendar
    ClickOk();
    ASSERT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32798});
    EXPECT_EQ(event->Value(L"id", L""), L"{E-1}");
    for (TextKey const& text : kTextKeys) {
        if (std::wstring_view(text.key) != L"condition" && std::wstring_view(text.key) != L"conditionStop") {
            EXPECT_EQ(event->Value(text.key, L""), L"Ä " + std::wstring(text.key));
        }
    }
    EXPECT_EQ(event->Value(L"condition", L""), std::wstring(256, L'x'));
    EXPECT_EQ(event->Node(L"conditionStop"), nullptr);
    for (CheckKey const& check : kCheckKeys)
        EXPECT_EQ(event->Value(check.key, L""), check.toggled) << check.check;
    EXPECT_EQ(event->Value(L"timeTable", L""), L"{C-1}");
    Open(event);
    EXPECT_EQ(TimeTables()->currentText(), "Holidays");
    EXPECT_FALSE(m_dialog->HasChanged());
}

TEST_F(EventEditorTest, ChangesAreFoundInTheirOrder)
{
    XmlNode* event = AddEvent(kFullEvent);
    // Each case makes two edits; the first reason found names the earlier one.
    auto text = [&](char const* field) { return [=, this] { SetText(field, "7"); }; };
    auto box = [&](char const* check) { return [=, this] { Check(check)->toggle(); }; };
    auto table = [&] { TimeTables()->setCurrentIndex(1); };
    struct Case { std::function<void()> first, second; ZoEventChange expected; };
    Case const cases[] = {
        {text("conditionEdit"), text("nameEdit"), ZoEventChange::Flag},
        {text("nameEdit"), text("descriptionEdit"), ZoEventChange::Name},
        {text("descriptionEdit"), table, ZoEventChange::Description},
        {table, box("notifyCheck"), ZoEventChange::TimeTable},
        {box("notifyCheck"), box("recordCheck"), ZoEventChange::Notify},
        {box("recordCheck"), box("enabledCheck"), ZoEventChange::Record},
        {box("enabledCheck"), text("annotationEdit"), ZoEventChange::Disabled},
        // A delay is a formula: like the conditions, its edit handler sets the flag.
        {text("delayActivateEdit"), text("annotationEdit"), ZoEventChange::Flag},
        {text("delayDeactivateEdit"), [] {}, ZoEventChange::Flag},
        {text("annotationEdit"), box("rssActivateCheck"), ZoEventChange::Annotation},
        {box("rssAcknowledgeCheck"), [] {}, ZoEventChange::Feed},
        {[&] { Check("stopConditionCheck")->setChecked(false); }, [] {}, ZoEventChange::Flag},
    };
    for (Case const& c : cases) {
        Open(event);
        c.second();
        c.first();
        EXPECT_EQ(m_dialog->FirstChange(), c.expected) << int(c.expected);
    }
    // Typing a value back to what is stored is no change.
    Open(event);
    SetText("nameEdit", "x");
    SetText("nameEdit", "Boiler overheat");
    EXPECT_FALSE(m_dialog->HasChanged());
}

// Deliberate: only the activation annotation is compared, and choosing no time table
// compares the event's id with itself; either is saved only together with another change.
// So a time table that no longer exists (nothing is selected) stays until then.
TEST_F(EventEditorTest, OtherAnnotationsOrNoTimeTableAloneAreNoChange)
{
    XmlNode* event = AddEvent(kFullEvent);
    Open(event);
    TimeTables()->setCurrentIndex(0);
    EXPECT_FALSE(m_dialog->HasChanged());

    event->SetValue(L"timeTable", L"{GONE}");
    std::string const before = Xml(event);
    Open(event);
    EXPECT_EQ(TimeTables()->currentIndex(), 0);
    SetText("deaAnnotationEdit", "Cooled down");
    SetText("ackAnnotationEdit", "Operator saw it");
    EXPECT_FALSE(m_dialog->HasChanged());
    ClickOk();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Xml(event), before);

    Open(event);
    SetText("deaAnnotationEdit", "Cooled down");
    SetText("descriptionEdit", "Boiler far too hot");
    ClickOk();
    EXPECT_EQ(event->Value(L"deaAnnotation", L""), L"Cooled down");
    EXPECT_EQ(event->Node(L"timeTable"), nullptr);
}

TEST_F(EventEditorTest, TimeTableListGoesDaysWeeksCalendarsAndSelectsTheLastMatch)
{
    // Containers out of document order and a foreign child; the id {X} is used twice.
    XmlDocument tables;
    ASSERT_TRUE(tables.Parse("<t><calendars><calendar><id>{X}</id><name>Cal</name></calendar></calendars>"
                             "<weeks><week><id>{W}</id><name>Week</name></week></weeks>"
                             "<days><day><id>{D2}</id><name>Day B</name></day><note/>"
                             "<day><id>{X}</id><name>Day A</name></day></days></t>"));
    XmlNode* event = AddEvent("<id>{E-1}</id><name>A</name><timeTable>{X}</timeTable>");
    Create(event, tables.Root()).EnsureInitialized();
    QComboBox* combo = TimeTables();
    QAbstractItemModelTester tester(combo->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    QStringList entries;
    for (int row = 0; row < combo->count(); ++row)
        entries << combo->itemText(row) + QString::number(combo->itemData(row, ZoTimeTableChoiceModel::KindRole).toInt());
    EXPECT_EQ(entries, (QStringList{ZoText(32830) + "0", "Day B1", "Day A1", "Week2", "Cal3"}));
    EXPECT_EQ(combo->currentText(), "Cal");

    // Without a time-tables root only "no time table" is offered.
    Create(event, nullptr).EnsureInitialized();
    EXPECT_EQ(TimeTables()->count(), 1);
}

TEST_F(EventEditorTest, FeedBoxesFollowTheEventSystemAndNotify)
{
    struct FeedRestore {
        bool was = ZoEventSystem::instance()->IsFeedAvailable();
        ~FeedRestore() { ZoEventSystem::instance()->SetFeedAvailable(was); }
    } restore;
    XmlNode* event = AddEvent(kFullEvent);
    auto visible = [&](char const* name) { return Get<QWidget>(name)->isVisible(); };
    for (bool feed : {true, false}) {
        ZoEventSystem::instance()->SetFeedAvailable(feed);
        Open(event).show();
        Tabs()->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
        EXPECT_EQ(visible("rssActivateCheck"), feed);
        EXPECT_EQ(visible("rssAcknowledgeCheck"), feed); // notify is checked
        Check("notifyCheck")->setChecked(false);
        EXPECT_FALSE(visible("rssAcknowledgeCheck"));
        EXPECT_EQ(visible("rssActivateCheck"), feed);
    }
}
