#include "EventEditorFixture.h"

#include "platform/tools/ZoTexts.h"
#include "support/ScriptedAnswerer.h"

#include <QApplication>

class EventValidationTest : public EventEditorTest {
protected:
    // Opens the editor, shown (so that focus can be checked) on the Advanced tab, sets the
    // fields' texts, presses OK and returns the ids of the messages shown.
    std::vector<unsigned> OkWith(std::initializer_list<std::pair<char const*, QString>> texts)
    {
        Open(m_event).show();
        m_opened = Xml(m_event);
        QApplication::setActiveWindow(m_dialog.get());
        Tabs()->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
        for (auto const& [field, text] : texts)
            SetText(field, text);
        ScriptedAnswerer answers;
        ClickOk();
        return answers.Ids();
    }
    // The dialog stays open on the General tab with the field focused and all its text
    // selected, and nothing is written.
    void ExpectRefusedAt(char const* field)
    {
        EXPECT_EQ(m_dialog->result(), QDialog::Rejected);
        EXPECT_EQ(Tabs()->currentIndex(), ZoEDlgEventCfg::TabGeneral);
        EXPECT_EQ(m_dialog->focusWidget(), Edit(field));
        EXPECT_EQ(Edit(field)->selectedText(), Edit(field)->text());
        EXPECT_EQ(Xml(m_event), m_opened);
    }

    XmlNode* m_event = AddEvent(kFullEvent);
    std::string m_opened;
};

TEST_F(EventValidationTest, NameMustBeGivenValidAndUnique)
{
    using Ids = std::vector<unsigned>;
    for (auto const& [name, message] : {std::pair{"", 32797}, {"Boiler/overheat", 32764}, {" Boiler", 32764},
                                        {"Pump fault", 32796}}) {
        EXPECT_EQ(OkWith({{"nameEdit", name}}), Ids{unsigned(message)}) << name;
        ExpectRefusedAt("nameEdit");
    }
    // Its own stored name passes, and a name differing only in case is another name.
    EXPECT_EQ(OkWith({{"nameEdit", "Boiler overheat"}}), Ids{});
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(OkWith({{"nameEdit", "pump fault"}}), Ids{});
    EXPECT_EQ(m_event->Value(L"name", L""), L"pump fault");
}

TEST_F(EventValidationTest, ConditionMustBeGivenAndEmptyDelaysBecomeZero)
{
    // The name is checked first: one message at a time. Delays are filled before the
    // condition is checked.
    EXPECT_EQ(OkWith({{"conditionEdit", ""}, {"delayActivateEdit", ""}, {"nameEdit", ""}}), std::vector<unsigned>{32797});
    EXPECT_TRUE(Edit("delayActivateEdit")->text().isEmpty());
    ExpectRefusedAt("nameEdit");
    EXPECT_EQ(OkWith({{"conditionEdit", ""}, {"delayActivateEdit", ""}}), std::vector<unsigned>{32813});
    EXPECT_EQ(Edit("delayActivateEdit")->text(), "0");
    ExpectRefusedAt("conditionEdit");

    EXPECT_TRUE(OkWith({{"delayActivateEdit", ""}, {"delayDeactivateEdit", ""}}).empty());
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(m_event->Value(L"delayToActivate", L""), L"0");
    EXPECT_EQ(m_event->Value(L"delayToDeactivate", L""), L"0");
}

TEST_F(EventValidationTest, NonZeroFocusCodeSelectsATabAndNeitherValidatesNorWrites)
{
    struct Place { int code, tab, moment; };
    for (Place place : {Place{1, 0, -1}, Place{2, 1, -1}, Place{3, 2, 0}, Place{6, 2, 3}, Place{7, 3, 0},
                        Place{10, 3, 3}}) {
        Create(m_event).m_focusCode = place.code;
        m_dialog->EnsureInitialized();
        EXPECT_EQ(Tabs()->currentIndex(), place.tab) << place.code;
        if (place.moment >= 0) {
            char const* moments = place.tab == 2 ? "actionsMomentTabs" : "clientActionsMomentTabs";
            EXPECT_EQ(Get<QTabWidget>(moments)->currentIndex(), place.moment) << place.code;
        }
    }

    // An empty name would be refused, but nothing is validated or written.
    std::string const before = Xml(m_event);
    ScriptedAnswerer answers;
    Create(m_event).m_focusCode = 4;
    m_dialog->m_skipCheck = true;
    m_dialog->EnsureInitialized();
    EXPECT_EQ(Get<QPushButton>("okButton")->text(), ZoText(34893));
    SetText("nameEdit", "");
    SetText("descriptionEdit", "changed");
    ClickOk();
    EXPECT_EQ(answers.Count(), 0);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Xml(m_event), before);
}
