// Keeping stamped events in step: what counts as drift, field by field, and the update of
// the events chosen.
#include "TemplatesTestProject.h"

#include "events/EventsClipboard.h"
#include "templates/TemplateDrift.h"

using namespace templates_test;
using namespace zo::templates;

namespace {

std::vector<std::string> Lines(std::vector<FieldDifference> const& differences)
{
    std::vector<std::string> lines;
    for (FieldDifference const& difference : differences)
        lines.push_back(ZoToUtf8(difference.field) + ": " + ZoToUtf8(difference.expected) + " / " +
                        ZoToUtf8(difference.actual));
    return lines;
}

class TemplateDrift : public TemplatesProject {
protected:
    void SetUp() override
    {
        TemplatesProject::SetUp();
        m_made = Stamp({L"PUMP1", L"PUMP2"}, L"{G1}");
        ASSERT_EQ(m_made.size(), 2u);
    }
    DriftReport Drift() { return FindDrift(Root(), m_catalog); }
    std::vector<XmlDocument::XmlNode*> m_made;
};

TEST_F(TemplateDrift, FreshlyStampedEventsDoNotDriftEvenWithASuffixedNameAndAGroup)
{
    EXPECT_EQ(Text(m_made[0], L"name"), "PUMP1 fault_1");
    DriftReport const report = Drift();
    EXPECT_EQ(report.stamped, 2);
    EXPECT_TRUE(report.drifted.empty()) << Lines(report.drifted.front().differences).front();
}

TEST_F(TemplateDrift, AChangedTemplateIsReportedFieldByFieldForEveryEvent)
{
    Template()->SetValue(L"condition", L"[{device}.FAULT] = 1");
    Template()->Node(L"actions/activate/mail")->SetValue(L"message", L"{device} stopped");
    DriftReport const report = Drift();
    ASSERT_EQ(report.drifted.size(), 2u);
    EXPECT_EQ(report.drifted[1].device, L"PUMP2");
    EXPECT_EQ(Lines(report.drifted[1].differences),
              (std::vector<std::string>{
                  "condition: [PUMP2.FAULT] = 1 / [PUMP2.FAULT] = 1 AND [PUMP2.RUNNING] = 0",
                  "actions/activate/mail/message: PUMP2 stopped / Booster pump PUMP2 fault"}));
}

TEST_F(TemplateDrift, HandEditsKeysAddedOrRemovedAndListsOfOtherKindsAreDrift)
{
    XmlDocument::XmlNode* event = m_made[1];
    event->SetValue(L"name", L"Booster trip");
    event->SetValue(L"delayToDeactivate", L"9");
    event->EraseTag(L"conditionStop");
    event->SetValue(L"record", L"T");
    XmlDocument::XmlNode* activate = event->Node(L"actions/activate");
    activate->NewChild(L"beep")->SetValue(L"id", L"{B1}");
    // Memberships and ids are the event's own.
    event->Child(L"eventsGroups")->NewChild(L"eventsGroup")->SetValue(L"{G2}");
    event->Node(L"arguments/argument")->SetValue(L"id", L"{NEW}");
    DriftReport const report = Drift();
    ASSERT_EQ(report.drifted.size(), 1u);
    EXPECT_EQ(report.drifted[0].event, event);
    EXPECT_EQ(Lines(report.drifted[0].differences),
              (std::vector<std::string>{"name: PUMP2 fault / Booster trip",
                                        "conditionStop: [PUMP2.FAULT] = 0 / ",
                                        "delayToDeactivate: 5 / 9",
                                        "actions/activate: force, mail / force, mail, beep",
                                        "record:  / T"}));
}

TEST_F(TemplateDrift, UpdateMakesOnlyTheChosenEventsWhatTheTemplateGivesAndKeepsTheirIdentity)
{
    Template()->SetValue(L"condition", L"[{device}.FAULT] = 1");
    XmlDocument::XmlNode* edited = m_made[0];
    edited->SetValue(L"description", L"changed by hand");
    edited->Node(L"actions/activate")->NewChild(L"beep")->SetValue(L"id", L"{B1}");
    std::string const id = Text(edited, L"id");
    std::string const forceId = Text(edited, L"actions/activate/force/id");
    std::string const otherBefore = Text(m_made[1], L"condition");

    DriftReport report = Drift();
    ASSERT_EQ(report.drifted.size(), 2u);
    std::vector<DriftedEvent> chosen{report.drifted[0]};
    EXPECT_EQ(UpdateFromTemplates(Root(), m_catalog, chosen), 1);

    EXPECT_EQ(Text(edited, L"condition"), "[PUMP1.FAULT] = 1");
    EXPECT_EQ(Text(edited, L"description"), "Intake pump (PUMP1) tripped");
    EXPECT_EQ(Text(edited, L"id"), id);
    EXPECT_EQ(Text(edited, L"name"), "PUMP1 fault_1");
    EXPECT_EQ(Text(edited, L"eventsGroups/eventsGroup"), "{G1}");
    EXPECT_EQ(Text(edited, L"actions/activate/beep"), "<none>");
    // The list was rebuilt: its actions got new ids.
    EXPECT_NE(Text(edited, L"actions/activate/force/id"), forceId);
    // The event not chosen is left as it was.
    EXPECT_EQ(Text(m_made[1], L"condition"), otherBefore);

    report = Drift();
    ASSERT_EQ(report.drifted.size(), 1u);
    EXPECT_EQ(report.drifted[0].event, m_made[1]);
}

TEST_F(TemplateDrift, ARenamedTemplateRenamesTheUpdatedEventUniquely)
{
    ASSERT_TRUE(Template());
    Template()->SetValue(L"name", L"{device} trip");
    m_events.Root()->Child(L"events")->NewChild(L"event")->SetValue(L"name", L"PUMP2 trip");
    DriftReport report = Drift();
    ASSERT_EQ(report.drifted.size(), 2u);
    EXPECT_EQ(UpdateFromTemplates(Root(), m_catalog, report.drifted), 2);
    EXPECT_EQ(Text(m_made[0], L"name"), "PUMP1 trip");
    EXPECT_EQ(Text(m_made[1], L"name"), "PUMP2 trip_1");
    EXPECT_TRUE(Drift().drifted.empty());
}

TEST_F(TemplateDrift, EventsWhoseDeviceLeftTheCatalogOrWhoseTemplateWasDeletedAreNotCompared)
{
    ZoDeviceCatalog fewer;
    XmlDocument devices;
    ASSERT_TRUE(devices.Parse("<deviceTree><catalog><driver><name>PUMP1</name><variable><code>FAULT</code>"
                              "</variable></driver></catalog></deviceTree>"));
    fewer.LoadDevices(devices.Root());
    DriftReport report = FindDrift(Root(), fewer);
    EXPECT_EQ(report.stamped, 1);
    ASSERT_EQ(report.withoutDevice.size(), 1u);
    EXPECT_EQ(report.withoutDevice[0], m_made[1]);

    Root()->Child(kTemplatesTag)->RemoveChild(Template());
    report = Drift();
    EXPECT_EQ(report.stamped, 0);
    EXPECT_TRUE(report.drifted.empty());
}

} // namespace

namespace {

// The link follows the event's id: it survives writing and reading the document, and a
// pasted copy (a new id) is an event of its own.
TEST_F(TemplateDrift, TheLinkSurvivesTheFileAndAPastedCopyStandsAlone)
{
    std::string text;
    Root()->CreateXmlCode(text);
    XmlDocument reread;
    ASSERT_TRUE(reread.Parse(text.c_str()));
    Template()->SetValue(L"delayToDeactivate", L"7");
    FindTemplate(reread.Root(), L"{device} fault")->SetValue(L"delayToDeactivate", L"7");
    EXPECT_EQ(FindDrift(reread.Root(), m_catalog).drifted.size(), 2u);

    std::vector<std::wstring> names;
    for (XmlDocument::XmlNode* event = Root()->Child(L"events")->FirstChild(); event; event = event->NextSibling())
        names.push_back(event->Value(L"name", L""));
    std::vector<XmlDocument::XmlNode*> pasted;
    ASSERT_TRUE(PasteEventsText(BuildEventsClipboardText({m_made[1]}), m_events, DeviceGroups(), EventNameSet(names),
                                &pasted));
    ASSERT_EQ(pasted.size(), 1u);
    DriftReport const report = Drift();
    EXPECT_EQ(report.stamped, 2);
    for (DriftedEvent const& drifted : report.drifted)
        EXPECT_NE(drifted.event, pasted.front());
    EXPECT_EQ(StampLinks(Root()).size(), 2u);
}

} // namespace
