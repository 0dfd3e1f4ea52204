// Where-used over a whole project: every kind of target, every field that can name it,
// and the references that only look like uses.
#include "UsesTestProject.h"

#include "check/ZoCheckReport.h"
#include "uses/ZoWhereUsed.h"

using namespace uses_test;

namespace {

class WhereUsed : public UsesProject {
protected:
    // "event "Name": field, column N" per use, as the results window's rows read.
    std::vector<std::string> Uses(std::wstring const& reference)
    {
        ZoUseTarget target;
        std::wstring error;
        EXPECT_TRUE(ZoReadUseTarget(reference, Docs(), target, error)) << Utf8(error);
        std::vector<std::string> rows;
        for (ZoFinding const& use : ZoFindUses(Docs(), target))
            rows.push_back(Utf8(ZoSubjectText(use)) + ": " + Utf8(ZoFieldText(use)));
        return rows;
    }
};

TEST_F(WhereUsed, AVariableIsFoundInEveryFormulaFieldAndNowhereElse)
{
    EXPECT_EQ(Uses(L"[PUMP1.RUNNING]"), (std::vector<std::string>{
                                            "event \"Pump 1 stopped\": condition, column 1",
                                            "event \"Pump 1 stopped\": stop condition, column 1",
                                            "event \"Pump 1 stopped\": Actions, Activation, action 1, column 1",
                                        }));
    // The same variable written without brackets, and with a period filter.
    EXPECT_EQ(Uses(L"PUMP1.RUNNING").size(), 3u);
    EXPECT_EQ(Uses(L"[Line 2.A.FLOW/day]"), (std::vector<std::string>{"event \"Pump 1 stopped\": argument 1, column 1",
                                                                      "event \"Flow high\": condition, column 28"}));
}

TEST_F(WhereUsed, ADeviceIsFoundInFormulasAndDeviceActions)
{
    std::vector<std::string> const uses = Uses(L"device:PUMP1");
    EXPECT_EQ(uses.size(), 6u);
    EXPECT_EQ(uses[2], "event \"Pump 1 stopped\": delay to activate, column 1");
    EXPECT_EQ(uses.back(), "event \"Pump 1 stopped\": Actions, Activation, action 2");
    // A device's name alone, points included, is the whole device.
    EXPECT_EQ(Uses(L"Line 2.A").size(), 2u);
    EXPECT_EQ(Uses(L"PUMP10"), std::vector<std::string>{"event \"Pump 1 stopped\": condition, column 25"});
}

TEST_F(WhereUsed, AnEventIsFoundThroughItsPseudoDevice)
{
    EXPECT_EQ(Uses(L"event:Flow high"), (std::vector<std::string>{"event \"Both\": condition, column 35",
                                                                  "event \"Both\": Actions, Activation, action 1, column 1"}));
    EXPECT_EQ(Uses(L"[R$EVE_Pump 1 stopped.ST]"), std::vector<std::string>{"event \"Both\": condition, column 1"});
}

TEST_F(WhereUsed, TimeTablesGroupsScreensAndRecipientsAreFoundByTheirIds)
{
    EXPECT_EQ(Uses(L"timetable:Weekdays"), std::vector<std::string>{"event \"Pump 1 stopped\": time table"});
    EXPECT_EQ(Uses(L"timetable:Work"), (std::vector<std::string>{"week program \"Weekdays\": ",
                                                                 "week program \"Weekdays\": ",
                                                                 "calendar \"Holidays\": "}));
    EXPECT_EQ(Uses(L"group:Pumps"), (std::vector<std::string>{"event \"Pump 1 stopped\": groups",
                                                              "event \"Flow high\": groups"}));
    EXPECT_EQ(Uses(L"screen:Overview"),
              std::vector<std::string>{"event \"Pump 1 stopped\": Client actions, Activation, action 1"});
    EXPECT_EQ(Uses(L"maillist:Ops"), std::vector<std::string>{"event \"Pump 1 stopped\": Actions, Activation, action 3"});
    EXPECT_TRUE(Uses(L"user:Anna").empty());
}

TEST_F(WhereUsed, AUseCarriesTheFieldsTextAndItsPathForTheLineAndTheEditor)
{
    ZoUseTarget target;
    std::wstring error;
    ASSERT_TRUE(ZoReadUseTarget(L"timetable:Work", Docs(), target, error));
    std::vector<ZoFinding> const uses = ZoFindUses(Docs(), target);
    ASSERT_EQ(uses.size(), 3u);
    EXPECT_EQ(uses[0].path, (std::vector<std::uint32_t>{1, 0, 2}));
    EXPECT_EQ(Utf8(uses[0].message), "day1");
    EXPECT_EQ(Utf8(uses[2].message), "2026 month12 day25");
    ASSERT_TRUE(ZoReadUseTarget(L"[PUMP10.RUNNING]", Docs(), target, error));
    ZoFinding const use = ZoFindUses(Docs(), target).at(0);
    EXPECT_EQ(use.path, (std::vector<std::uint32_t>{0, 0}));
    EXPECT_EQ(ZoFindingLine(use),
              "Events.zocfg: note: event \"Pump 1 stopped\": condition, column 25: "
              "[PUMP1.RUNNING] = 0 AND [PUMP10.RUNNING] = 1 (use)");
}

TEST_F(WhereUsed, AReferenceThatNamesNothingIsRefusedWithTheReason)
{
    struct Refused {
        std::wstring reference;
        std::string message;
    };
    Refused const cases[] = {
        {L"[PUMP2.RUNNING]", "No device named \"PUMP2\" in the catalog."},
        {L"device:pump1", "No device named \"pump1\" in the catalog."},
        {L"event:Nothing", "No event named \"Nothing\"."},
        {L"[R$EVE_Nothing.ST]", "No event named \"Nothing\"."},
        {L"timetable:Never", "No time table named \"Never\"."},
        {L"group:None", "No event group named \"None\"."},
        {L"phonelist:Ops", "No user, mailing list or phone list named \"Ops\"."},
        {L"NOPE", "\"NOPE\" is not a reference"},
    };
    for (Refused const& refused : cases) {
        ZoUseTarget target;
        std::wstring error;
        EXPECT_FALSE(ZoReadUseTarget(refused.reference, Docs(), target, error));
        EXPECT_EQ(Utf8(error).substr(0, refused.message.size()), refused.message);
    }
}

} // namespace
