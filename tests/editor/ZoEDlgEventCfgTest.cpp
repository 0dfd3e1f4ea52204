#include "EventEditorFixture.h"

#include "platform/setup/ZoEventSystem.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"

#include <QLabel>

namespace {

using Tags_ = std::vector<std::wstring>;
Tags_ const kMoments = {L"activate", L"while", L"deactivate", L"acknowledge"};

char const* const kFullEvent =
    "<id>{E-1}</id><name>Boiler overheat</name><description>Boiler too hot</description>"
    "<condition>T1 &gt; 90</condition><conditionStop>T1 &lt; 80</conditionStop>"
    "<timeTable>{W-1}</timeTable><notify>T</notify><record>T</record><disabled>F</disabled>"
    "<delayToActivate>5</delayToActivate><delayToDeactivate>10</delayToDeactivate>"
    "<annotation>Boiler %a1</annotation><deaAnnotation>Boiler ok</deaAnnotation>"
    "<ackAnnotation>Seen</ackAnnotation><rssActivate>T</rssActivate>"
    "<rssDeactivate>F</rssDeactivate><rssAcknowledge>T</rssAcknowledge>";

// Text fields and the key each one edits.
struct TextKey { char const* field; wchar_t const* key; };
TextKey const kTextKeys[] = {
    {"nameEdit", L"name"}, {"descriptionEdit", L"description"}, {"conditionEdit", L"condition"},
    {"stopConditionEdit", L"conditionStop"}, {"delayActivateEdit", L"delayToActivate"},
    {"delayDeactivateEdit", L"delayToDeactivate"}, {"annotationEdit", L"annotation"},
    {"deaAnnotationEdit", L"deaAnnotation"}, {"ackAnnotationEdit", L"ackAnnotation"}};
// Check boxes and the key each one edits ("enabled" edits `disabled` inversely).
char const* const kChecks[] = {"notifyCheck", "recordCheck", "enabledCheck", "rssActivateCheck",
                               "rssDeactivateCheck", "rssAcknowledgeCheck"};
wchar_t const* const kCheckKeys[] = {L"notify", L"record", L"disabled", L"rssActivate",
                                     L"rssDeactivate", L"rssAcknowledge"};

} // namespace

TEST_F(EventEditorTest, NewEventOpensClearAndGainsTheEightActionLists)
{
    XmlNode* event = AddEvent("<id>{E-NEW}</id>");
    OpenInitialized(event);

    EXPECT_EQ(m_dialog->windowTitle(), ZoText(32793));
    for (TextKey const& text : kTextKeys)
        EXPECT_TRUE(Edit(text.field)->text().isEmpty()) << text.field;
    // A missing `disabled` opens with "enabled" clear, like every other missing boolean.
    for (char const* check : kChecks)
        EXPECT_FALSE(Check(check)->isChecked()) << check;
    EXPECT_FALSE(Check("stopConditionCheck")->isChecked());
    EXPECT_FALSE(Edit("stopConditionEdit")->isEnabled());
    EXPECT_FALSE(Get<QLabel>("stopConditionLabel")->isEnabled());
    EXPECT_EQ(TimeTables()->currentText(), ZoText(32830));
    EXPECT_EQ(Tabs()->currentIndex(), ZoEDlgEventCfg::TabGeneral);
    // Missing stored booleans compare unequal with "T" and "F" alike: a new event always
    // counts as changed, from its first boolean on.
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Notify);

    EXPECT_EQ(Tags(event), (Tags_{L"id", L"actions", L"clientActions"}));
    for (wchar_t const* side : {L"actions", L"clientActions"}) {
        EXPECT_EQ(Tags(event->Node(side)), kMoments);
        for (auto it = event->Node(side)->ChildsBegin(); it != event->Node(side)->ChildsEnd(); ++it)
            EXPECT_EQ((*it)->Size(), 0);
    }

    // Existing lists and foreign children are kept; missing moments are appended.
    event = AddEvent("<id>{E-2}</id><name>A</name><actions><deactivate><beep/></deactivate>"
                     "<custom/></actions>");
    OpenInitialized(event);
    EXPECT_EQ(m_dialog->windowTitle(), ZoText(32794));
    EXPECT_EQ(Tags(event->Node(L"actions")),
              (Tags_{L"deactivate", L"custom", L"activate", L"while", L"acknowledge"}));
    EXPECT_EQ(Tags(event->Node(L"actions/deactivate")), Tags_{L"beep"});
}

TEST_F(EventEditorTest, EveryKeyLoadsAndSavesBack)
{
    XmlNode* event = AddEvent(kFullEvent);
    OpenInitialized(event);
    for (TextKey const& text : kTextKeys)
        EXPECT_EQ(Edit(text.field)->text().toStdWString(), event->Value(text.key, L"")) << text.field;
    EXPECT_TRUE(Check("stopConditionCheck")->isChecked());
    EXPECT_TRUE(Edit("stopConditionEdit")->isEnabled());
    EXPECT_EQ(TimeTables()->currentText(), "Office week");
    bool const stored[] = {true, true, true, true, false, true};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(Check(kChecks[i])->isChecked(), stored[i]) << kChecks[i];
    EXPECT_FALSE(m_dialog->HasChanged());

    // Confirming an unchanged event writes nothing.
    std::string const before = Xml(event);
    ClickOk();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Xml(event), before);

    // Change every field and save: each key holds the new value, and a new editor shows it.
    OpenInitialized(event);
    for (TextKey const& text : kTextKeys)
        SetText(text.field, QString::fromStdWString(L"Ä " + std::wstring(text.key)));
    for (char const* check : kChecks)
        Check(check)->toggle();
    TimeTables()->setCurrentIndex(4); // the calendar
    ClickOk();
    ASSERT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(event->Value(L"id", L""), L"{E-1}");
    for (TextKey const& text : kTextKeys)
        EXPECT_EQ(event->Value(text.key, L""), L"Ä " + std::wstring(text.key));
    wchar_t const* const written[] = {L"F", L"F", L"T", L"F", L"T", L"F"};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(event->Value(kCheckKeys[i], L""), written[i]) << kChecks[i];
    EXPECT_EQ(event->Value(L"timeTable", L""), L"{C-1}");

    OpenInitialized(event);
    EXPECT_EQ(TimeTables()->currentText(), "Holidays");
    EXPECT_FALSE(Check("enabledCheck")->isChecked());
    EXPECT_FALSE(m_dialog->HasChanged());
}

TEST_F(EventEditorTest, NewKeysAreAppendedInTheWriteOrder)
{
    XmlNode* event = AddEvent("<id>{E-NEW}</id>");
    OpenInitialized(event);
    SetText("nameEdit", "Door open");
    SetText("conditionEdit", "DI1");
    Check("stopConditionCheck")->setChecked(true);
    SetText("stopConditionEdit", "!DI1");
    TimeTables()->setCurrentIndex(1);
    ClickOk();
    ASSERT_EQ(m_dialog->result(), QDialog::Accepted);

    EXPECT_EQ(Tags(event),
              (Tags_{L"id", L"actions", L"clientActions", L"name", L"description", L"condition",
                     L"conditionStop", L"timeTable", L"notify", L"record", L"disabled",
                     L"delayToActivate", L"delayToDeactivate", L"annotation", L"deaAnnotation",
                     L"ackAnnotation", L"rssActivate", L"rssDeactivate", L"rssAcknowledge"}));
    EXPECT_EQ(event->Value(L"timeTable", L""), L"{D-1}");
    EXPECT_EQ(event->Value(L"delayToActivate", L""), L"0");
    // The enabled box was clear because `disabled` was missing, so the event is saved
    // disabled: this asymmetry is deliberate.
    EXPECT_EQ(event->Value(L"disabled", L""), L"T");
}

TEST_F(EventEditorTest, StopConditionSwitchAndTheSavingCut)
{
    XmlNode* event = AddEvent(kFullEvent);
    OpenInitialized(event);
    Check("stopConditionCheck")->setChecked(false);
    EXPECT_FALSE(Edit("stopConditionEdit")->isEnabled());
    EXPECT_FALSE(Get<QLabel>("stopConditionLabel")->isEnabled());
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Flag); // a change by itself
    ClickOk();
    EXPECT_EQ(event->Node(L"conditionStop"), nullptr);
    EXPECT_EQ(event->Value(L"condition", L""), L"T1 > 90");

    // Every field goes through a 256-character buffer on saving, though a condition may be
    // typed up to 512 (kept as it stands).
    OpenInitialized(event);
    Check("stopConditionCheck")->setChecked(true);
    SetText("stopConditionEdit", "T1 < 85");
    SetText("conditionEdit", QString(300, QLatin1Char('x')));
    EXPECT_EQ(Edit("conditionEdit")->text().size(), 300);
    ClickOk();
    EXPECT_EQ(event->Value(L"conditionStop", L""), L"T1 < 85");
    EXPECT_EQ(event->Value(L"condition", L""), std::wstring(256, L'x'));
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
        {box("enabledCheck"), text("delayActivateEdit"), ZoEventChange::Disabled},
        {text("delayActivateEdit"), text("delayDeactivateEdit"), ZoEventChange::DelayToActivate},
        {text("delayDeactivateEdit"), text("annotationEdit"), ZoEventChange::DelayToDeactivate},
        {text("annotationEdit"), box("rssActivateCheck"), ZoEventChange::Annotation},
        {box("rssAcknowledgeCheck"), [] {}, ZoEventChange::Feed},
    };
    for (Case const& c : cases) {
        OpenInitialized(event);
        c.second();
        c.first();
        EXPECT_EQ(m_dialog->FirstChange(), c.expected) << int(c.expected);
    }
    // Typing a value back to what is stored is no change.
    OpenInitialized(event);
    SetText("nameEdit", "x");
    SetText("nameEdit", "Boiler overheat");
    EXPECT_FALSE(m_dialog->HasChanged());
}

// Deliberate: only the activation annotation is compared, and choosing no time table
// compares the event's id with itself; either is saved only together with another change.
TEST_F(EventEditorTest, OtherAnnotationsOrNoTimeTableAloneAreNoChange)
{
    XmlNode* event = AddEvent(kFullEvent);
    OpenInitialized(event);
    SetText("deaAnnotationEdit", "Cooled down");
    SetText("ackAnnotationEdit", "Operator saw it");
    TimeTables()->setCurrentIndex(0);
    EXPECT_FALSE(m_dialog->HasChanged());
    ClickOk();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(event->Value(L"deaAnnotation", L""), L"Boiler ok");
    EXPECT_EQ(event->Value(L"timeTable", L""), L"{W-1}");

    OpenInitialized(event);
    SetText("deaAnnotationEdit", "Cooled down");
    TimeTables()->setCurrentIndex(0);
    SetText("descriptionEdit", "Boiler far too hot");
    ClickOk();
    EXPECT_EQ(event->Value(L"deaAnnotation", L""), L"Cooled down");
    EXPECT_EQ(event->Node(L"timeTable"), nullptr);
}

TEST_F(EventEditorTest, NonZeroFocusCodeSelectsATabAndNeitherValidatesNorWrites)
{
    XmlNode* event = AddEvent(kFullEvent);
    struct Place { int code, tab, moment; };
    for (Place place : {Place{1, 0, -1}, Place{2, 1, -1}, Place{3, 2, 0}, Place{6, 2, 3},
                        Place{7, 3, 0}, Place{10, 3, 3}}) {
        Open(event);
        m_dialog->m_focusCode = place.code;
        m_dialog->EnsureInitialized();
        EXPECT_EQ(Tabs()->currentIndex(), place.tab) << place.code;
        char const* moments = place.tab == 2 ? "actionsMomentTabs" : "clientActionsMomentTabs";
        if (place.moment >= 0) {
            EXPECT_EQ(Get<QTabWidget>(moments)->currentIndex(), place.moment) << place.code;
        }
    }

    // An empty name would be refused, but nothing is validated or written.
    std::string const before = Xml(event);
    ScriptedAnswerer answers;
    Open(event);
    m_dialog->m_focusCode = 4;
    m_dialog->m_skipCheck = true;
    m_dialog->EnsureInitialized();
    EXPECT_EQ(Get<QPushButton>("okButton")->text(), ZoText(34893));
    SetText("nameEdit", "");
    SetText("descriptionEdit", "changed");
    ClickOk();
    EXPECT_EQ(answers.Count(), 0);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Xml(event), before);

    // The skip flag without a focus code keeps OK's text.
    Open(event);
    m_dialog->m_skipCheck = true;
    m_dialog->EnsureInitialized();
    EXPECT_EQ(Get<QPushButton>("okButton")->text(), ZoText(311));
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
        OpenInitialized(event);
        m_dialog->show();
        Tabs()->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
        EXPECT_EQ(visible("feedGroup"), feed);
        EXPECT_EQ(visible("rssActivateCheck"), feed);
        EXPECT_EQ(visible("rssDeactivateCheck"), feed);
        EXPECT_EQ(visible("rssAcknowledgeCheck"), feed); // notify is checked
        Check("notifyCheck")->setChecked(false);
        EXPECT_FALSE(visible("rssAcknowledgeCheck"));
        EXPECT_EQ(visible("rssActivateCheck"), feed);
        Check("notifyCheck")->setChecked(true);
        EXPECT_EQ(visible("rssAcknowledgeCheck"), feed);
        EXPECT_TRUE(visible("annotationEdit"));
        m_dialog->hide();
    }
}

TEST_F(EventEditorTest, RunsModallyThroughTheModalRunner)
{
    XmlNode* event = AddEvent("<id>{E-NEW}</id>");
    Open(event);
    ModalScript modal(ModalScript::As<ZoEDlgEventCfg>([this](ZoEDlgEventCfg& editor) {
        EXPECT_EQ(editor.windowTitle(), ZoText(32793)); // initialised before it runs
        SetText("nameEdit", "Alarm");
        SetText("conditionEdit", "1");
        return ModalScript::ClickOk(editor);
    }));
    EXPECT_EQ(m_dialog->DoModal(), QDialog::Accepted);
    EXPECT_EQ(modal.Classes(), QStringList{"ZoEDlgEventCfg"});
    EXPECT_EQ(event->Value(L"name", L""), L"Alarm");
}
