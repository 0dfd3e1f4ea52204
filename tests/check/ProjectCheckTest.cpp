// The project check beyond its rules: where findings point (lines, fields), the words of a
// finding, checking one event again, and the time-table resolution the rules rest on.
#include "CheckTestProject.h"

#include "check/ZoCheckLines.h"
#include "check/ZoCheckReport.h"
#include "timeline/ZoTimeline.h"
#include "timetables/ZoTimeTableResolution.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace check_test;

namespace {

std::string Utf8(std::wstring const& text)
{
    return QString::fromStdWString(text).toStdString();
}

TEST_F(CheckProject, AFormulaFaultNamesTheEventTheFieldTheColumnAndTheEvaluatorsSentence)
{
    std::vector<ZoFinding> findings = Check(Event("{E-CASE}", "Pump 1 fault", "<condition>1 = [PLC1.XX]</condition>"));
    ASSERT_EQ(Rules(findings), std::set<std::string>{"unknown-variable"});
    ZoFinding const& finding = findings.front();
    EXPECT_EQ(finding.path, (std::vector<std::uint32_t>{0, 1}));
    EXPECT_EQ(finding.field, ZoCheckField::Condition);
    EXPECT_EQ(finding.column, 6); // the device's name
    std::string const text =
        "Events.zocfg: error: event \"Pump 1 fault\": condition, column 6: " + Utf8(finding.message) + " (unknown-variable)";
    EXPECT_EQ(ZoFindingLine(finding), text);
    EXPECT_NE(finding.message.find(L"XX"), std::wstring::npos);
}

TEST_F(CheckProject, AnActionFindingNamesItsListMomentAndPosition)
{
    std::vector<ZoFinding> findings = Check(Event(
        "{E-CASE}", "Case",
        "<clientActions><deactivate><beep><id>{B}</id></beep><screen><id>{S}</id><name>Gone</name></screen>"
        "</deactivate></clientActions>"));
    ASSERT_EQ(Rules(findings), std::set<std::string>{"missing-screen"});
    EXPECT_EQ(Utf8(ZoFieldText(findings.front())), "Client actions, Deactivation, action 2");
}

// "1" passes without the evaluator, which still holds the formula checked before it.
TEST_F(CheckProject, AConstantAfterAMarkedFormulaIsNotMarked)
{
    std::vector<ZoFinding> const findings =
        Check(Event("{E1}", "Exact", "<condition>[PLC1.LEVEL] = 50</condition><conditionStop>[PLC1.LEVEL] &lt; 40"
                                     "</conditionStop>") +
              Event("{E2}", "Always", "<condition>1</condition>"));
    std::vector<std::string> rules;
    for (ZoFinding const& finding : findings)
        if (finding.severity != ZoSeverity::Note)
            rules.push_back(Utf8(finding.name) + ": " + std::string(finding.rule));
    EXPECT_EQ(rules, (std::vector<std::string>{"Exact: marked-comparison", "Always: constant-condition"}));
}

TEST(CheckLines, TheLineOfEachElementAFindingIsAbout)
{
    std::string const text = "<?xml version=\"1.0\"?>\n<root>\n  <events>\n    <event>\n      <name>A</name>\n"
                             "    </event>\n    <event><name>B</name></event>\n  </events>\n</root>\n";
    std::vector<ZoFinding> findings(3);
    findings[0].path = {0, 1};
    findings[1].path = {0, 0, 0};
    findings[2].path = {0, 5}; // not in the text
    ZoFindLines(findings, zo::project::ProjectDoc::Events, text.data(), text.size());
    EXPECT_EQ(findings[0].line, 7);
    EXPECT_EQ(findings[1].line, 5);
    EXPECT_EQ(findings[2].line, 0);
}

TEST_F(CheckProject, CheckingOneEventAgainSeesItsEditAndItsNewName)
{
    std::vector<ZoFinding> findings = Check(Event("{E-CASE}", "Case", "<condition>[PLC1.XX] = 1</condition>"));
    ASSERT_EQ(Rules(findings), std::set<std::string>{"unknown-variable"});
    XmlDocument::XmlNode* event = m_events.Root()->Child(L"events")->FirstChild()->NextSibling();
    event->SetValue(L"condition", L"[PLC1.RUN] = 1");
    EXPECT_TRUE(m_checker->CheckEvent(1).empty());
    event->SetValue(L"name", L"Other");
    EXPECT_EQ(Rules(m_checker->CheckEvent(1)), std::set<std::string>{"duplicate-name"});
    event->SetValue(L"name", L"Renamed");
    EXPECT_TRUE(m_checker->CheckEvent(1).empty());
    EXPECT_TRUE(m_checker->CheckEvent(7).empty()); // no such event
    // The project's first SMS action, of an element the check had never met, is checked too.
    event->NewChild(L"actions")->NewChild(L"activate")->NewChild(L"sms")->SetValue(L"message", L"Trip");
    EXPECT_EQ(Rules(m_checker->CheckEvent(1)), std::set<std::string>{"sms-action"});
}

TEST_F(CheckProject, TheFloodBoundCountsNotifyingEventsAllowedAtOneMoment)
{
    std::vector<ZoFinding> findings = Check(
        Event("{E1}", "Weekdays", "<notify>T</notify><timeTable>{T-WEEK}</timeTable>") +
        Event("{E2}", "Office", "<notify>T</notify><timeTable>{T-DAY}</timeTable><condition>[PLC1.LEVEL] &gt; 3"
                                "</condition><conditionStop>[PLC1.LEVEL] &lt; 1</conditionStop>") +
        Event("{E3}", "Off", "<notify>F</notify><condition>[PLC1.LEVEL] &gt; 5</condition>"
                             "<conditionStop>[PLC1.LEVEL] &lt; 1</conditionStop>"));
    ASSERT_EQ(findings.size(), 1u) << findings.front().rule;
    EXPECT_EQ(findings[0].rule, "flood-bound");
    // Other (always) + Office (every day 08:00-17:00) + Weekdays (Mondays and Tuesdays then).
    EXPECT_EQ(Utf8(findings[0].message),
              "Up to 3 notifying events can be active at the same moment (Mon 2026-01-05 08:00).");
}

TEST_F(CheckProject, JsonHoldsTheCountsAndEveryField)
{
    std::vector<ZoFinding> findings = Check(Event("{E-CASE}", "Case", "<annotation>%a3</annotation>"));
    std::string const json = ZoFindingsJson(L"/p", findings);
    // Written in pieces: it parses, with or without findings, and the folder is escaped.
    QJsonParseError error;
    QJsonObject const object = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << json;
    EXPECT_EQ(object["errors"].toInt(), 0);
    EXPECT_EQ(object["warnings"].toInt(), 1);
    EXPECT_EQ(object["findings"].toArray().size(), 2); // and the project's flood bound
    EXPECT_EQ(object["findings"][0]["rule"].toString(), "annotation-placeholder");
    EXPECT_EQ(object["findings"][0]["field"].toString(), "annotation");
    QJsonObject const none = QJsonDocument::fromJson(QByteArray::fromStdString(ZoFindingsJson(L"C:\\\"p\"", {}))).object();
    EXPECT_EQ(none["folder"].toString(), "C:\\\"p\"");
    EXPECT_TRUE(none["findings"].isArray() && none["findings"].toArray().isEmpty());
    EXPECT_EQ(none["errors"].toInt(), 0);
}

TEST(TimeTableResolution, TheDayProgramOfADateByKind)
{
    XmlDocument doc;
    ASSERT_TRUE(doc.Parse(R"(<timeTables><days>
        <day><id>{D}</id><name>D</name><slot><from>08:00</from><to>12:00</to></slot><slot><from>11:00</from><to>13:00</to></slot></day>
        <day><id>{N}</id><name>N</name></day></days>
        <weeks><week><id>{W}</id><day1>{D}</day1><day7>{N}</day7></week></weeks>
        <calendars><calendar><id>{C}</id><year><year>2026</year><month3><day2>{D}</day2></month3></year></calendar></calendars>
        </timeTables>)"));
    ZoTimeTableResolution const tables(doc.Root());
    QDate const monday(2026, 3, 2);
    EXPECT_EQ(tables.KindOf(L"{W}"), ZoTimeTableResolution::Kind::Week);
    EXPECT_EQ(tables.KindOf(L"{X}"), ZoTimeTableResolution::Kind::None);
    EXPECT_EQ(tables.SlotsOn(L"{D}", monday), (std::vector<DaySlot>{{480, 780}}));
    EXPECT_EQ(tables.SlotsOn(L"{W}", monday).size(), 1u);
    EXPECT_TRUE(tables.SlotsOn(L"{W}", monday.addDays(1)).empty()); // Tuesday: no entry
    EXPECT_TRUE(tables.SlotsOn(L"{W}", monday.addDays(6)).empty()); // Sunday: a program without slots
    EXPECT_EQ(tables.SlotsOn(L"{C}", monday).size(), 1u);
    EXPECT_TRUE(tables.SlotsOn(L"{C}", monday.addDays(1)).empty());
    EXPECT_EQ(ZoAllowedIntervals(tables, L"{W}", monday, monday.addDays(13)).size(), 2u);
    EXPECT_FALSE(tables.AllowsAny(L"{C}", QDate(2027, 1, 1), QDate(2027, 12, 31)));
    EXPECT_FALSE(tables.AllowsAny(L"{N}", monday, monday.addDays(400)));
}

} // namespace
