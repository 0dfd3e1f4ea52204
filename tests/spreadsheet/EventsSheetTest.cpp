// Exporting the events and importing the sheet back: round trips, edits as a script or a
// spreadsheet program makes them, and the rows that are refused.
#include "SheetTestSupport.h"

#include "spreadsheet/CsvReader.h"
#include "spreadsheet/SheetColumns.h"
#include "spreadsheet/SheetFile.h"

#include <QRegularExpression>

using namespace sheet_test;

namespace {

// The sheet's text with one cell of one event's row replaced (cells unquoted, no quotes
// inside): how a script edits it.
std::string Replace(std::string sheet, std::string const& from, std::string const& to)
{
    std::size_t const at = sheet.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos)
        sheet.replace(at, from.size(), to);
    return sheet;
}

std::string Header()
{
    std::string header;
    for (std::string_view name : kZoSheetHeaders)
        header += (header.empty() ? "" : ",") + std::string(name);
    return header + "\r\n";
}

TEST_F(DemoSheet, ExportThenImportChangesNothingAndExportsTheSameBytes)
{
    std::string const sheet = Export();
    ASSERT_EQ(sheet.substr(0, 3), "\xEF\xBB\xBF");
    EXPECT_EQ(sheet.substr(3, Header().size()), Header());
    ZoImportPlan const plan = Plan(sheet, {true, false});
    EXPECT_EQ(Report(plan), "0 added, 0 modified, 24 unchanged, 0 deleted.\n");
    EXPECT_FALSE(plan.ChangesAnything());

    // As a spreadsheet program saves it back: semicolons, every cell quoted, LF, no mark.
    std::string resaved;
    ZoCsvTable table;
    ASSERT_TRUE(table.Read(sheet));
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        for (std::size_t cell = 0; cell < table.CellCount(row); ++cell) {
            std::string text(table.Cell(row, cell));
            for (std::size_t at = 0; (at = text.find('"', at)) != std::string::npos; at += 2)
                text.insert(at, "\"");
            resaved += (cell ? ";\"" : "\"") + text + "\"";
        }
        resaved += "\n";
    }
    EXPECT_EQ(Report(Plan(resaved)), "0 added, 0 modified, 24 unchanged.\n");
}

TEST_F(DemoSheet, AnEditedSheetImportsToTheExpectedTree)
{
    std::string sheet = Export();
    sheet = Replace(sheet, ",Tank overflow,", ",Reservoir overflow,");
    sheet = Replace(sheet, "[PUMP1.FAULT] == 1,,2,0,", "[PUMP1.FAULT] == 1,[PUMP1.FAULT] == 0,2,0,");
    // Booleans as spreadsheet programs may write them back read as they were.
    sheet = Replace(sheet, "Pump 1 fault,Drive of pump 1 reports a fault.,T,T,T", "Pump 1 fault,Drive of pump 1 reports a fault.,TRUE,yes,1");
    sheet = Replace(sheet, "a1=[PLC1.TANK_LEVEL]:.1,F,F,F,activate: mail", "a1=[PLC1.TANK_LEVEL]:.2 | a2=[PLC1.TANK_LEVEL]*2:,F,F,F,ignored");
    sheet += ",New alarm,\"Two, \"\"quoted\"\"\nlines\",yes,1,0,[PLC1.TANK_LEVEL] > 50,,,,Working hours,Pumps | Reservoir,,,,,,,,\r\n";
    XmlNode const* lowLevel = Event(L"Tank low level");
    std::wstring const argumentId = lowLevel->Value(L"arguments/argument/id", L"");

    ZoImportPlan plan = Plan(sheet);
    ASSERT_FALSE(plan.Refused()) << Report(plan);
    ZoCheckImport(plan, Target());
    EXPECT_EQ(Report(plan), "1 added, 3 modified, 21 unchanged.\n"
                            "Line 3: event \"Reservoir overflow\": name: \"Tank overflow\" → \"Reservoir overflow\"\n"
                            "Line 4: event \"Tank low level\": arguments: \"a1=[PLC1.TANK_LEVEL]:.1\" → "
                            "\"a1=[PLC1.TANK_LEVEL]:.2 | a2=[PLC1.TANK_LEVEL]*2:\"\n"
                            "Line 6: event \"Pump 1 fault\": conditionStop: \"\" → \"[PUMP1.FAULT] == 0\"\n"
                            "Line 26: new event \"New alarm\"\n"
                            "Line 26: warning: event \"New alarm\": condition: Chattering risk: the condition compares "
                            "[PLC1.TANK_LEVEL] with no activation delay and no stop condition. (chattering)\n");
    std::size_t const actions = Export().find("activate: mail | client activate: screen");
    EXPECT_NE(actions, std::string::npos); // checking left the documents as they were

    ZoApplyImport(plan, Target());
    EXPECT_EQ(Event(L"Tank overflow"), nullptr);
    ASSERT_NE(Event(L"Reservoir overflow"), nullptr);
    EXPECT_EQ(Event(L"Pump 1 fault")->Value(L"conditionStop", L""), L"[PUMP1.FAULT] == 0");
    // Arguments keep their ids by number; the actions the sheet only summarises are kept.
    EXPECT_EQ(lowLevel->Value(L"arguments/argument/id", L""), argumentId);
    EXPECT_EQ(lowLevel->Node(L"arguments")->Size(), 2);
    EXPECT_NE(lowLevel->Node(L"actions/activate/mail"), nullptr);

    XmlNode const* added = Event(L"New alarm");
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->Value(L"description", L""), L"Two, \"quoted\"\nlines");
    EXPECT_EQ(added->Value(L"disabled", L""), L"F");
    EXPECT_EQ(added->Value(L"notify", L""), L"T");
    EXPECT_EQ(added->Value(L"record", L""), L"F");
    EXPECT_EQ(added->Value(L"delayToActivate", L""), L"0");
    EXPECT_EQ(added->Node(L"eventsGroups")->Size(), 2);
    EXPECT_EQ(added->Node(L"clientActions")->Size(), 4);
    std::wstring const id = added->Value(L"id", L"");
    EXPECT_EQ(id.size(), 38u);
    EXPECT_NE(m_project->DeviceGroups()->NodeV(L"devices/device?id=%s?", id.c_str()), nullptr);

    // The sheet of the new tree reads as it was imported.
    std::string const again = Export();
    EXPECT_NE(again.find("New alarm,\"Two, \"\"quoted\"\"\nlines\",T,T,F,"), std::string::npos);
    EXPECT_EQ(Report(Plan(again)), "0 added, 0 modified, 25 unchanged.\n");
}

TEST_F(DemoSheet, FaultyRowsAreRefusedWithTheirLineAndColumnAndNothingIsApplied)
{
    std::string sheet = Export();
    sheet = Replace(sheet, "{9B743C11-7535-5B34-A39B-0F16A4EACD93},Tank overflow,", "{9B743C11-7535-5B34-A39B-0F16A4EACD93},Pump 2 fault,");
    sheet = Replace(sheet, "{F921873A-F106-5F41-ADB5-FC08583B672F}", "{00000000-0000-0000-0000-000000000000}");
    sheet = Replace(sheet, "Tank dry-run risk,Reservoir level below 5 %: pumps stopped to protect them from running dry.,T",
                    "Tank dry-run risk,Reservoir level below 5 %: pumps stopped to protect them from running dry.,maybe");
    sheet = Replace(sheet, ",Reservoir | Pumps,", ",Reservoir | Spare,");
    sheet += ",Fresh,,T,T,T,,,,,Never,,,,,a2=1:,,,,\r\n";
    sheet += ",Mains failure,,T,T,T,1,,,,,,,,,,,,,\r\n";
    std::string const line2 = sheet.substr(sheet.find("{E4A3"), sheet.find("\r\n{9B74") - sheet.find("{E4A3"));
    sheet += line2 + "\r\n";
    ZoImportPlan plan = Plan(sheet);
    EXPECT_TRUE(plan.Refused());
    std::string const report = Report(plan);
    for (char const* expected :
         {"Line 4, column 1 (id): No event has this id.\n",
          "Line 5, column 4 (enabled): \"maybe\" is not a yes or no value: write T or F.\n",
          "Line 5, column 12 (groups): No event group is named \"Spare\".\n",
          "Line 26, column 7 (condition): The condition is empty.\n",
          "Line 26, column 11 (timeTable): No time table is named \"Never\".\n",
          "Line 26, column 16 (arguments): The argument \"a2=1:\" is not written a1=formula:format.\n",
          "Line 28, column 1 (id): This id is also on line 2.\n",
          "Line 3, column 2 (name): Another event is named \"Pump 2 fault\".\n",
          "Line 27, column 2 (name): Another event is named \"Mains failure\".\n"})
        EXPECT_NE(report.find(expected), std::string::npos) << expected << "\nin:\n" << report;
    ZoCheckImport(plan, Target());
    EXPECT_TRUE(plan.findings.empty());
    EXPECT_TRUE(ZoApplyImport(plan, Target()).empty());
    EXPECT_FALSE(m_project->Events().JournalHasChanges());
    EXPECT_NE(Event(L"Tank overflow"), nullptr);

    // With the groups created, the row with the new group passes.
    std::string const grouped = Replace(Export(), ",Reservoir | Pumps,", ",Reservoir | Spare,");
    ZoImportPlan const created = Plan(grouped, {false, true});
    EXPECT_EQ(Report(created), "0 added, 1 modified, 23 unchanged.\nNew event group \"Spare\"\n"
                               "Line 5: event \"Tank dry-run risk\": groups: \"Reservoir | Pumps\" → \"Reservoir | Spare\"\n");
    ZoApplyImport(created, Target());
    EXPECT_NE(m_project->Events().Root()->Node(L"eventsGroups/eventsGroup?name=Spare?"), nullptr);
}

TEST_F(DemoSheet, ColumnsInAnyOrderUnknownOnesNamedMissingEventsDeletedWhenAsked)
{
    std::string const sheet = "comment;NAME;id\n"
                              "keep;Tank high level;{E4A3F686-1418-5B42-A7E6-B943C7E7C0FF}\n"
                              "\n"
                              "rename;Tank high;{9B743C11-7535-5B34-A39B-0F16A4EACD93}\n"
                              ";;\n";
    ZoImportPlan plan = Plan(sheet, {true, false});
    ASSERT_FALSE(plan.Refused()) << Report(plan);
    std::string const report = Report(plan);
    EXPECT_EQ(report.substr(0, report.find("Event \"")),
              "0 added, 1 modified, 1 unchanged, 22 deleted.\nColumn 1 (comment) is not imported.\n"
              "Line 4: event \"Tank high\": name: \"Tank overflow\" → \"Tank high\"\n");
    std::wstring const deletedId = Event(L"Pump 1 fault")->Value(L"id", L"");
    ZoApplyImport(plan, Target());
    EXPECT_EQ(m_project->Events().Root()->Node(L"events")->Size(), 2);
    EXPECT_EQ(m_project->DeviceGroups()->NodeV(L"devices/device?id=%s?", deletedId.c_str()), nullptr);
}

TEST_F(DemoSheet, TheCheckReportsTheFindingsOfTheImportedRowsByTheirLine)
{
    std::string const sheet = Replace(Export(), "[PUMP1.FAULT] == 1,", "[PUMP1.NOPE] == 1,");
    ZoImportPlan plan = Plan(sheet);
    ZoCheckImport(plan, Target());
    ASSERT_FALSE(plan.findings.empty());
    EXPECT_EQ(plan.findings.front().line, 6);
    std::string const text = Utf8(ZoImportFindingText(plan.findings.front()));
    EXPECT_TRUE(QString::fromStdString(text).contains(
        QRegularExpression(R"(^Line 6: error: event "Pump 1 fault": condition, column \d+: .*NOPE.* \(unknown-variable\)$)")))
        << text;
    EXPECT_EQ(Event(L"Pump 1 fault")->Value(L"condition", L""), L"[PUMP1.FAULT] == 1");
}

} // namespace

namespace {

TEST_F(DemoSheet, HostileSheetsAreRefusedWithTheirLineAndReasonAndNothingIsApplied)
{
    // A 2 GB file is refused before a byte of it is read (the file is sparse).
    QString const huge = m_dir.filePath("huge.csv");
    {
        QFile file(huge);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(qint64(2) << 30));
    }
    std::string bytes;
    std::wstring error;
    EXPECT_FALSE(ZoReadSheetFile(huge, bytes, error));
    EXPECT_NE(Utf8(error).find("larger than 1 GiB"), std::string::npos) << Utf8(error);
    EXPECT_TRUE(bytes.empty());
    QFile::remove(huge);

    std::string const header = Header();
    std::string const wide = header.substr(0, header.size() - 2) + std::string(1000, ',') + "\r\n";
    std::string const twoRenames = Replace(Replace(Export(), ",Tank overflow,", ",Same,"), ",Tank low level,", ",Same,");
    struct Case {
        std::string sheet;
        std::string report;
    } const cases[] = {
        {header + ",\"" + std::string(2 << 20, 'x') + "\"\r\n", "Line 2, column 2: The cell is longer than 1 MiB.\n"},
        {wide, "Line 1, column 1001: The row has more than 1000 columns.\n"},
        {header + ",x,\"open\r\n", "Line 2, column 3: A quoted cell is not closed.\n"},
        {header + std::string(",x\0y", 4) + "\r\n", "Line 2, column 2: The text holds a NUL character.\n"},
        {header + ",\xC0\xAF\r\n", "Line 2, column 2: The text is not UTF-8. Save the sheet as CSV in UTF-8.\n"},
        {twoRenames, "Line 3, column 2 (name): Another event is named \"Same\".\n"
                     "Line 4, column 2 (name): Another event is named \"Same\".\n"},
    };
    for (Case const& c : cases) {
        ZoImportPlan const plan = Plan(c.sheet, {true, true});
        std::string const report = Report(plan);
        EXPECT_TRUE(plan.Refused());
        EXPECT_NE(report.find(c.report), std::string::npos) << report.substr(0, 400);
        EXPECT_TRUE(ZoApplyImport(plan, Target()).empty());
    }
    EXPECT_FALSE(m_project->Events().JournalHasChanges());
    EXPECT_EQ(Report(Plan(Export())), "0 added, 0 modified, 24 unchanged.\n");
}

} // namespace
