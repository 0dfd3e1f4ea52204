// Every rule of the project check with a project that triggers it and one that does not.
// The clean project must have no error and no warning at all, so that each case also
// proves the rules around it stay quiet.
#include "CheckTestProject.h"

using namespace check_test;

namespace {

struct RuleCase {
    char const* rule;
    std::string faulty;
    std::string clean;
    std::string faultyTimeTables = kTimeTables;
};

std::string Case(std::string const& fields)
{
    return Event("{E-CASE}", "Case", fields);
}

std::string Force(std::string const& variable, std::string const& value)
{
    return "<actions><activate><force><id>{F1}</id><variable>" + variable + "</variable><value>" + value +
           "</value></force></activate></actions>";
}

std::string ClientAction(std::string const& action)
{
    return "<clientActions><activate>" + action + "</activate></clientActions>";
}

std::string ServerAction(std::string const& action)
{
    return "<actions><activate>" + action + "</activate></actions>";
}

std::string const kStop = "<conditionStop>[PLC1.LEVEL] &lt; 80</conditionStop>";

std::vector<RuleCase> const kCases = {
    {"unknown-variable", Case("<condition>[PLC1.XX] = 1</condition>"), Case("")},
    {"unknown-device", Case("<condition>[PLC9.RUN] = 1</condition>"), Case("")},
    {"unknown-event", Case("<condition>[R$EVE_Gone.ST] = 1</condition>"),
     Case("<condition>[R$EVE_Other.ST] = 1</condition>")},
    {"formula-syntax", Case("<condition>[PLC1.RUN] = </condition>"), Case("")},
    {"formula-type", Case("<condition>[PLC1.LEVEL] + 1</condition>"), Case("")},
    {"no-condition", Case("<condition></condition>"), Case("")},
    {"unknown-variable", Case("<conditionStop>[PLC1.XX] = 0</conditionStop>"),
     Case("<conditionStop>[PLC1.RUN] = 0</conditionStop>")},
    {"formula-type", Case("<delayToActivate>[PLC1.RUN] = 1</delayToActivate>"),
     Case("<delayToActivate>[PLC1.LEVEL] / 10</delayToActivate>")},
    {"unknown-variable",
     Case("<arguments><argument><id>{A1}</id><value>[PLC1.XX]</value></argument></arguments>"),
     Case("<arguments><argument><id>{A1}</id><value>[PLC1.LEVEL]</value></argument></arguments>")},
    {"force-action", Case(Force("[PLC1.LEVEL]", "1")), Case(Force("[PLC1.SETPOINT]", "50"))},
    {"force-action", Case(Force("[PLC1.SETPOINT]", "500")), Case(Force("[PLC1.SETPOINT]", "50"))},
    {"duplicate-name", Event("{E-CASE}", "Other", ""), Case("")},
    {"duplicate-id", Event("{E-OTHER}", "Case", ""), Case("")},
    {"duplicate-id",
     Case(Force("[PLC1.SETPOINT]", "1") + ClientAction("<beep><id>{F1}</id></beep>")),
     Case(Force("[PLC1.SETPOINT]", "1") + ClientAction("<beep><id>{B1}</id></beep>"))},
    {"invalid-name", Event("{E-CASE}", "Bad/Name", ""), Case("")},
    {"missing-screen", Case(ClientAction("<screen><id>{S1}</id><name>Nowhere</name></screen>")),
     Case(ClientAction("<screen><id>{S1}</id><name>Overview</name></screen>"))},
    {"missing-report", Case(ClientAction("<report><id>{S1}</id><name>Weekly</name></report>")),
     Case(ClientAction("<report><id>{S1}</id><name>Daily</name></report>"))},
    {"screen-action", Case(ClientAction("<screen><id>{S1}</id></screen>")),
     Case(ClientAction("<screen><id>{S1}</id><name>Overview</name></screen>"))},
    {"unknown-device-action", Case(ClientAction("<device><id>{S1}</id><name>PLC9</name></device>")),
     Case(ClientAction("<device><id>{S1}</id><name>PLC1</name></device>"))},
    {"mail-action", Case(ServerAction("<mail><id>{M}</id><message>Hi</message></mail>")),
     Case(ServerAction("<mail><id>{M}</id><message>Hi</message><users><user>{U1}</user></users></mail>"))},
    {"unknown-recipient",
     Case(ServerAction("<mail><id>{M}</id><message>Hi</message><mailLists><mailList>{M9}</mailList></mailLists></mail>")),
     Case(ServerAction("<mail><id>{M}</id><message>Hi</message><mailLists><mailList>{M1}</mailList></mailLists></mail>"))},
    {"bad-recipient", Case(ServerAction("<mail><id>{M}</id><message>Hi</message><address>nobody</address></mail>")),
     Case(ServerAction("<mail><id>{M}</id><message>Hi</message><address>ops@plant.example</address></mail>"))},
    {"sms-action", Case(ServerAction("<sms><id>{M}</id><message>Hi</message></sms>")),
     Case(ServerAction("<sms><id>{M}</id><message>Hi</message><phoneLists><phoneList>{P1}</phoneList></phoneLists></sms>"))},
    {"unknown-recipient", Case(ServerAction("<sms><id>{M}</id><message>Hi</message><users><user>{U9}</user></users></sms>")),
     Case(ServerAction("<sms><id>{M}</id><message>Hi</message><phone>+41 79 123 45 67</phone></sms>"))},
    {"marked-comparison", Case("<condition>[PLC1.LEVEL] = 50</condition>" + kStop),
     Case("<condition>[PLC1.LEVEL] &gt; 90</condition>" + kStop)},
    {"constant-condition", Case("<condition>1</condition>"), Case("")},
    {"constant-condition", Case("<condition>2 &gt; 3</condition>"), Case("")},
    {"unknown-time-table", Case("<timeTable>{T-NONE}</timeTable>"), Case("<timeTable>{T-WEEK}</timeTable>")},
    {"unknown-group", Case("<eventsGroups><eventsGroup>{G9}</eventsGroup></eventsGroups>"),
     Case("<eventsGroups><eventsGroup>{G1}</eventsGroup></eventsGroups>")},
    {"annotation-placeholder", Case("<annotation>Level %a1</annotation>"),
     Case("<annotation>Level %a1 %% %n</annotation><arguments><argument><id>{A1}</id><value>1</value></argument>"
          "</arguments>")},
    {"annotation-placeholder", Case("<deaAnnotation>In %g2</deaAnnotation><eventsGroups><eventsGroup>{G1}"
                                    "</eventsGroup></eventsGroups>"),
     Case("<deaAnnotation>In %g1</deaAnnotation><eventsGroups><eventsGroup>{G1}</eventsGroup></eventsGroups>")},
    {"annotation-placeholder", Case("<ackAnnotation>Stops when %s</ackAnnotation>"),
     Case("<ackAnnotation>Stops when %s</ackAnnotation><conditionStop>[PLC1.RUN] = 0</conditionStop>")},
    {"chattering", Case("<condition>[PLC1.LEVEL] &gt; 90</condition><delayToActivate>0</delayToActivate>"),
     Case("<condition>[PLC1.LEVEL] &gt; 90</condition><delayToActivate>0</delayToActivate>" + kStop)},
    {"no-deadband", Case("<condition>[PLC1.LEVEL] &gt; 90</condition>"),
     Case("<condition>[PLC1.LEVEL] &gt; 90</condition>" + kStop)},
    {"no-deadband",
     Case("<condition>[PLC1.LEVEL] &gt; 90</condition><conditionStop>[PLC1.LEVEL] &lt;= 90</conditionStop>"),
     Case("<condition>[PLC1.LEVEL] &gt; 90</condition>" + kStop)},
    {"never-clears",
     Case("<condition>[PLC1.LEVEL] &gt; 90</condition><conditionStop>[PLC1.LEVEL] &gt; 95</conditionStop>"),
     Case("<condition>[PLC1.LEVEL] &gt; 90</condition>" + kStop)},
    {"likely-duplicate", Case("<notify>T</notify><condition>([PLC1.RUN]==0)</condition>"),
     Case("<notify>T</notify><condition>[PLC1.RUN] = 1</condition>")},
    {"never-fires", Case("<timeTable>{T-CLOSED}</timeTable>"), Case("<timeTable>{T-DAY}</timeTable>"),
     R"(<timeTables><days><day><id>{T-DAY}</id><name>Work</name><slot><from>08:00</from><to>17:00</to></slot></day>
        <day><id>{T-CLOSED}</id><name>Closed</name></day></days></timeTables>)"},
    {"time-table-never", Case(""), Case(""),
     R"(<timeTables><calendars><calendar><id>{T-CAL}</id><name>Old</name><year><year>2020</year>
        <month1><day1>{T-DAY}</day1></month1></year></calendar></calendars>
        <days><day><id>{T-DAY}</id><name>Work</name><slot><from>08:00</from><to>17:00</to></slot></day></days></timeTables>)"},
    {"unknown-day-program", Case(""), Case(""),
     R"(<timeTables><weeks><week><id>{T-W}</id><name>W</name><day1>{T-NONE}</day1><day2>{T-DAY}</day2></week></weeks>
        <days><day><id>{T-DAY}</id><name>Work</name><slot><from>08:00</from><to>17:00</to></slot></day></days></timeTables>)"},
    {"duplicate-name", Case(""), Case(""),
     R"(<timeTables><weeks><week><id>{T-W}</id><name>Work</name><day1>{T-DAY}</day1></week></weeks>
        <days><day><id>{T-DAY}</id><name>Work</name><slot><from>08:00</from><to>17:00</to></slot></day></days></timeTables>)"},
};

class RuleTable : public CheckProject, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(RuleTable, TriggersOnTheFaultyProjectAndStaysQuietOnTheCleanOne)
{
    RuleCase const& c = kCases[GetParam()];
    std::set<std::string> const faulty = Rules(Check(c.faulty, c.faultyTimeTables));
    EXPECT_TRUE(faulty.contains(c.rule)) << c.rule << " not found in " << c.faulty;
    std::vector<ZoFinding> const clean = Check(c.clean);
    for (ZoFinding const& finding : clean)
        EXPECT_EQ(finding.severity, ZoSeverity::Note)
            << c.rule << ": the clean project has " << finding.rule << ": "
            << QString::fromStdWString(finding.message).toStdString();
}

INSTANTIATE_TEST_SUITE_P(CheckRules, RuleTable, ::testing::Range<std::size_t>(0, kCases.size()),
                         [](auto const& info) {
                             std::string name = kCases[info.param].rule;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name + "_" + std::to_string(info.param);
                         });

// Registrations are rules over two documents: the tests give them explicitly.
TEST_F(CheckProject, RegistrationsOfEventsAsDevices)
{
    std::string const both = "<device><id>{E-OTHER}</id><type>R$EVE</type></device>"
                             "<device><id>{E-CASE}</id><type>R$EVE</type></device>";
    EXPECT_TRUE(Rules(Check(Case(""), kTimeTables, &both)).empty());

    std::string const missing = "<device><id>{E-OTHER}</id><type>R$EVE</type></device>";
    EXPECT_EQ(Rules(Check(Case(""), kTimeTables, &missing)), std::set<std::string>{"not-registered"});

    std::string const twice = both + "<device><id>{E-CASE}</id><type>R$EVE</type></device>";
    EXPECT_EQ(Rules(Check(Case(""), kTimeTables, &twice)), std::set<std::string>{"registered-twice"});

    std::string const orphan = both + "<device><id>{E-GONE}</id><type>R$EVE</type></device>"
                                      "<device><id>{PUMP}</id><type>MODBUS</type></device>";
    std::vector<ZoFinding> const findings = Check(Case(""), kTimeTables, &orphan);
    ASSERT_EQ(Rules(findings), std::set<std::string>{"orphan-registration"});
    EXPECT_EQ(findings.front().file, zo::project::ProjectDoc::Devices);
    EXPECT_EQ(findings.front().path, (std::vector<std::uint32_t>{0, 0, 2}));
}

} // namespace
