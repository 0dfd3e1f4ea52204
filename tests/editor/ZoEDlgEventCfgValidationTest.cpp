#include "EventEditorFixture.h"

#include "support/ScriptedAnswerer.h"

#include <QApplication>

namespace {

char const* const kValidEvent =
    "<id>{E-1}</id><name>Tank low</name><condition>L1 &lt; 10</condition>"
    "<notify>F</notify><record>F</record><disabled>F</disabled>"
    "<delayToActivate>0</delayToActivate><delayToDeactivate>0</delayToDeactivate>"
    "<rssActivate>F</rssActivate><rssDeactivate>F</rssDeactivate>"
    "<rssAcknowledge>F</rssAcknowledge>";

} // namespace

class EventValidationTest : public EventEditorTest {
protected:
    // Opens the editor, shown (so that focus can be checked) on the Advanced tab, makes the
    // edits, presses OK and returns the ids of the messages shown.
    template <class Edits>
    std::vector<unsigned> OkAfter(Edits&& edits)
    {
        OpenInitialized(m_event);
        m_opened = Xml(m_event);
        m_dialog->show();
        QApplication::setActiveWindow(m_dialog.get());
        Tabs()->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
        edits();
        ScriptedAnswerer answers;
        ClickOk();
        return answers.Ids();
    }
    std::vector<unsigned> OkWith(char const* field, QString const& text)
    {
        return OkAfter([&] { SetText(field, text); });
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
        m_dialog->hide();
    }

    XmlNode* m_event = AddEvent(kValidEvent);
    std::string m_opened;
};

TEST_F(EventValidationTest, NameMustBeGivenValidAndUnique)
{
    EXPECT_EQ(OkWith("nameEdit", ""), std::vector<unsigned>{32797});
    ExpectRefusedAt("nameEdit");

    EXPECT_EQ(OkWith("nameEdit", "Tank/low"), std::vector<unsigned>{32764});
    ExpectRefusedAt("nameEdit");
    EXPECT_EQ(OkWith("nameEdit", " Tank"), std::vector<unsigned>{32764});
    ExpectRefusedAt("nameEdit");

    EXPECT_EQ(OkWith("nameEdit", "Pump fault"), std::vector<unsigned>{32796});
    ExpectRefusedAt("nameEdit");

    // Its own stored name passes, and a name differing only in case is another name.
    EXPECT_TRUE(OkWith("nameEdit", "Tank low").empty());
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_TRUE(OkWith("nameEdit", "pump fault").empty());
    EXPECT_EQ(m_event->Value(L"name", L""), L"pump fault");
}

TEST_F(EventValidationTest, ConditionMustBeGivenAndEmptyDelaysBecomeZero)
{
    EXPECT_EQ(OkWith("conditionEdit", ""), std::vector<unsigned>{32813});
    ExpectRefusedAt("conditionEdit");

    // The name is checked first: one message at a time. Delays are filled before the
    // condition is checked.
    EXPECT_EQ(OkAfter([&] {
                  SetText("conditionEdit", "");
                  SetText("delayActivateEdit", "");
                  SetText("nameEdit", "");
              }),
              std::vector<unsigned>{32797});
    EXPECT_TRUE(Edit("delayActivateEdit")->text().isEmpty());
    ExpectRefusedAt("nameEdit");
    EXPECT_EQ(OkAfter([&] {
                  SetText("conditionEdit", "");
                  SetText("delayActivateEdit", "");
              }),
              std::vector<unsigned>{32813});
    EXPECT_EQ(Edit("delayActivateEdit")->text(), "0");
    ExpectRefusedAt("conditionEdit");

    EXPECT_TRUE(OkAfter([&] {
                    SetText("delayActivateEdit", "");
                    SetText("delayDeactivateEdit", "");
                    SetText("descriptionEdit", "low level");
                }).empty());
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(m_event->Value(L"delayToActivate", L""), L"0");
    EXPECT_EQ(m_event->Value(L"delayToDeactivate", L""), L"0");
    EXPECT_EQ(m_event->Value(L"description", L""), L"low level");
    m_dialog->hide();
}
