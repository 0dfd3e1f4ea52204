// Stamping a template over devices: the placeholders of every text kind, the preview's
// names and skipped devices, and what one stamp adds to the documents.
#include "TemplatesTestProject.h"

#include "templates/TemplatePlaceholders.h"

#include <set>

using namespace templates_test;
using namespace zo::templates;

namespace {

TEST(TemplatePlaceholders, FillInReplacesBothPlaceholdersAndLeavesOtherBraces)
{
    DeviceTexts const pump{"PUMP1", "Intake {device} pump"};
    struct Case {
        std::string text;
        std::string expected;
    };
    Case const cases[] = {
        {"", ""},
        {"no placeholder", "no placeholder"},
        {"{device}", "PUMP1"},
        {"{device}{device}", "PUMP1PUMP1"},
        {"[{device}.RUNNING] = 1", "[PUMP1.RUNNING] = 1"},
        // The description's own braces are not read again.
        {"{description}!", "Intake {device} pump!"},
        {"{Device} {devic} {} {{device}}", "{Device} {devic} {} {PUMP1}"},
        {"{GUID-1234}", "{GUID-1234}"},
        {"tail {", "tail {"},
        {"é {device} ü", "é PUMP1 ü"},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(FilledIn(c.text, pump), c.expected) << c.text;
        EXPECT_EQ(HasPlaceholder(c.text), c.text.find("{device}") != std::string::npos ||
                                              c.text.find("{description}") != std::string::npos) << c.text;
    }
}

TEST_F(TemplatesProject, EveryTextKindOfAStampedEventIsFilledIn)
{
    std::vector<XmlDocument::XmlNode*> made = Stamp({L"PUMP2"});
    ASSERT_EQ(made.size(), 1u);
    XmlDocument::XmlNode const* event = made.front();
    struct Case {
        wchar_t const* path;
        std::string expected;
    };
    Case const cases[] = {
        {L"name", "PUMP2 fault"},
        {L"description", "Booster pump (PUMP2) tripped"},
        {L"condition", "[PUMP2.FAULT] = 1 AND [PUMP2.RUNNING] = 0"},
        {L"conditionStop", "[PUMP2.FAULT] = 0"},
        {L"delayToActivate", "[PUMP2.CURRENT] / 10"},
        {L"delayToDeactivate", "5"},
        {L"annotation", "PUMP2: %a1 A"},
        {L"deaAnnotation", "Booster pump back"},
        {L"ackAnnotation", "Ack PUMP2"},
        {L"arguments/argument/value", "[PUMP2.CURRENT]"},
        {L"arguments/argument/format", ".1"},
        {L"actions/activate/force/variable", "[PUMP2.START_CMD]"},
        {L"actions/activate/force/value", "[PUMP2.RUNNING] * 0"},
        {L"actions/activate/mail/message", "Booster pump PUMP2 fault"},
        {L"actions/deactivate/shellExecute/command", "/bin/log-PUMP2"},
        {L"actions/deactivate/shellExecute/parameter", "--device \"Booster pump\""},
        {L"clientActions/activate/screen/name", "PUMP2"},
        {L"notify", "T"},
    };
    for (Case const& c : cases)
        EXPECT_EQ(Text(event, c.path), c.expected) << ZoToUtf8(c.path);
}

TEST_F(TemplatesProject, AStampedEventHasNewIdsIsRegisteredLinkedAndJoinsTheGroup)
{
    std::vector<XmlDocument::XmlNode*> made = Stamp({L"PUMP2"}, L"{G1}");
    ASSERT_EQ(made.size(), 1u);
    XmlDocument::XmlNode const* event = made.front();
    std::set<std::string> ids{"{T1}", "{A1}", "{F1}", "{M1}", "{X1}", "{S1}"};
    for (wchar_t const* path : {L"id", L"arguments/argument/id", L"actions/activate/force/id",
                                L"actions/activate/mail/id", L"actions/deactivate/shellExecute/id",
                                L"clientActions/activate/screen/id"}) {
        std::string const id = Text(event, path);
        EXPECT_EQ(id.size(), 38u) << id;
        EXPECT_TRUE(ids.insert(id).second) << "id used twice: " << id;
    }
    EXPECT_EQ(Text(event, L"eventsGroups/eventsGroup"), "{G1}");
    XmlDocument::XmlNode const* device = DeviceGroups()->Node(L"devices/device");
    ASSERT_TRUE(device);
    EXPECT_EQ(device->ValueUtf8(L"id"), Text(event, L"id"));
    EXPECT_EQ(device->ValueUtf8(L"type"), "R$EVE");
    std::vector<StampLink> const links = StampLinks(Root());
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].eventId, Text(event, L"id"));
    EXPECT_EQ(links[0].templateId, "{T1}");
    EXPECT_EQ(links[0].device, "PUMP2");
    // The template itself is untouched.
    EXPECT_EQ(Text(Template(), L"name"), "{device} fault");
    EXPECT_EQ(Text(Template(), L"id"), "{T1}");
}

TEST_F(TemplatesProject, ThePreviewNamesClashesSkipsLackingDevicesAndStampsOncePerDevice)
{
    TemplateStamper stamper(Root());
    stamper.Preview(Template(), Devices({L"PUMP1", L"METER", L"PUMP2", L"PUMP2"}));
    std::vector<std::string> rows;
    for (StampRow const& row : stamper.Rows()) {
        std::string line = ZoToUtf8(row.name) + " | " + ZoToUtf8(row.condition);
        if (row.skip == StampSkip::MissingVariables) {
            line = ZoToUtf8(row.device->Name()) + " lacks";
            for (auto const& code : row.missing)
                line += " " + ZoToUtf8(code);
        } else if (row.skip == StampSkip::AlreadyStamped) {
            line = ZoToUtf8(row.device->Name()) + " already";
        }
        rows.push_back(line);
    }
    EXPECT_EQ(rows, (std::vector<std::string>{
                        "PUMP1 fault_1 | [PUMP1.FAULT] = 1 AND [PUMP1.RUNNING] = 0", // "PUMP1 fault" is taken
                        "METER lacks FAULT START_CMD",
                        "PUMP2 fault | [PUMP2.FAULT] = 1 AND [PUMP2.RUNNING] = 0",
                        "PUMP2 already",
                    }));
    EXPECT_EQ(stamper.EventCount(), 2);
    EXPECT_EQ(stamper.Apply(DeviceGroups()).size(), 2u);

    // A second stamp over the same devices makes nothing: they are stamped already.
    TemplateStamper again(Root());
    again.Preview(Template(), Devices({L"PUMP1", L"PUMP2"}));
    EXPECT_EQ(again.EventCount(), 0);
}

TEST_F(TemplatesProject, ATemplateWithoutPlaceholderInItsNameGetsTheUsualSuffixes)
{
    XmlDocument::XmlNode* pumpFault = Template();
    pumpFault->SetValue(L"name", L"Pump fault");
    TemplateStamper stamper(Root());
    stamper.Preview(pumpFault, Devices({L"PUMP1", L"PUMP2"}));
    ASSERT_EQ(stamper.Rows().size(), 2u);
    EXPECT_EQ(stamper.Rows()[0].name, L"Pump fault");
    EXPECT_EQ(stamper.Rows()[1].name, L"Pump fault_1");
}

TEST_F(TemplatesProject, UsedVariablesAreTheDeviceCodesOfEveryText)
{
    std::vector<std::wstring> const codes = UsedVariables(*Template());
    EXPECT_EQ(codes, (std::vector<std::wstring>{L"FAULT", L"RUNNING", L"CURRENT", L"START_CMD"}));
}

TEST_F(TemplatesProject, ALinkWhoseEventWasDeletedIsDroppedAtTheNextStamp)
{
    std::vector<XmlDocument::XmlNode*> made = Stamp({L"PUMP2"});
    ASSERT_EQ(made.size(), 1u);
    Root()->Child(L"events")->RemoveChild(made.front());
    EXPECT_EQ(StampLinks(Root()).size(), 1u);
    // The device may be stamped again once its event is gone.
    EXPECT_EQ(Stamp({L"PUMP2"}).size(), 1u);
    EXPECT_EQ(StampLinks(Root()).size(), 1u);
}

TEST_F(TemplatesProject, GroupsAreFoundByNameOrId)
{
    EXPECT_EQ(FindGroupId(Root(), L"Pumps"), L"{G1}");
    EXPECT_EQ(FindGroupId(Root(), L"pumps"), L"{G1}");
    EXPECT_EQ(FindGroupId(Root(), L"{G1}"), L"{G1}");
    EXPECT_EQ(FindGroupId(Root(), L"Valves"), L"");
}

} // namespace
