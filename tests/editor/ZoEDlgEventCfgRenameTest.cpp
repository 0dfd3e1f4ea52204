// A new name in the event editor, when other events refer to the event: the question with
// the number of references, and what Yes and No leave in the other events.
#include "EventEditorFixture.h"

#include "support/ScriptedAnswerer.h"
#include "support/TableText.h"

namespace {

class EventEditorRename : public EventEditorTest {
protected:
    void SetUp() override
    {
        m_boiler = AddEvent(kFullEvent);
        m_watch = AddEvent("<id>{E-W}</id><name>Watch</name><condition>[R$EVE_Boiler overheat.ST] = 1 OR "
                           "[R$EVE_Boiler overheat.CACT] &gt; 3 OR \"[R$EVE_Boiler overheat.ST]\" = \"\"</condition>");
    }

    XmlNode* m_boiler = nullptr;
    XmlNode* m_watch = nullptr;
};

TEST_F(EventEditorRename, YesUpdatesTheOtherEventsReferencesWithTheEditorsOk)
{
    ScriptedAnswerer answers{ZoAnswer::Yes};
    Open(m_boiler);
    SetText("nameEdit", "Boiler hot");
    ClickOk();
    ASSERT_EQ(m_dialog->result(), QDialog::Accepted);
    ASSERT_EQ(answers.Ids(), std::vector<unsigned>{64730});
    EXPECT_EQ(QString::fromStdWString(answers.LastText()), Said(64730, L"Boiler overheat", 2, L"Boiler hot"));
    EXPECT_EQ(m_watch->Value(L"condition", L""), L"[R$EVE_Boiler hot.ST] = 1 OR [R$EVE_Boiler hot.CACT] > 3 OR "
                                                 L"\"[R$EVE_Boiler overheat.ST]\" = \"\"");
    EXPECT_EQ(m_boiler->Value(L"name", L""), L"Boiler hot");
}

TEST_F(EventEditorRename, NoKeepsThemAndAnUnreferencedEventIsRenamedWithoutAQuestion)
{
    {
        ScriptedAnswerer answers{ZoAnswer::No};
        Open(m_boiler);
        SetText("nameEdit", "Boiler hot");
        ClickOk();
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{64730});
        EXPECT_EQ(m_boiler->Value(L"name", L""), L"Boiler hot");
        EXPECT_NE(m_watch->Value(L"condition", L"").find(L"[R$EVE_Boiler overheat.ST] = 1"), std::wstring::npos);
    }
    // Nothing refers to "Boiler hot".
    ScriptedAnswerer answers;
    Open(m_boiler);
    SetText("nameEdit", "Boiler cold");
    ClickOk();
    EXPECT_EQ(answers.Count(), 0);
    EXPECT_EQ(m_boiler->Value(L"name", L""), L"Boiler cold");
}

} // namespace
