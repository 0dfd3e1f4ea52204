// Every formula of the demo project is valid against the demo's own device catalog: the
// conditions and stop conditions are logical, the delays and argument values numeric, and
// each force action names one writable variable and a numeric value.
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/formula/ZoEvaluator.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

using XmlNode = XmlDocument::XmlNode;

bool Load(XmlDocument& doc, char const* file)
{
    std::ifstream in(std::string(ZO_SOURCE_DIR "/examples/demo/") + file, std::ios::binary);
    std::string const text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return doc.Parse(text.c_str(), text.size());
}

std::string Narrow(std::wstring const& text)
{
    std::string out;
    for (wchar_t c : text)
        out += c < 0x80 ? static_cast<char>(c) : '?';
    return out;
}

class DemoFormulas : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Load(m_devices, "Devices.zocfg"));
        ASSERT_TRUE(Load(m_events, "Events.zocfg"));
        m_catalog.LoadDevices(m_devices.Root());
        m_catalog.LoadEvents(m_events.Root());
        ASSERT_GE(m_catalog.Devices().size(), 6u);
        ASSERT_GE(m_catalog.EventsDevices().size(), 20u);
    }

    // Checks one formula; counts it.
    void Check(std::wstring const& where, std::wstring const& formula, unsigned flags, bool periods, int kind)
    {
        SCOPED_TRACE(Narrow(where + L": " + formula));
        ZoEvaluator evaluator(formula);
        evaluator.SetCatalog(&m_catalog);
        evaluator.SetFlags(flags, ~0u);
        evaluator.EnableDiscriminators(periods);
        EXPECT_EQ(evaluator.AnalizeExpression(), kind);
        double value = 0;
        int type = -1;
        int const code = evaluator.Evaluate(value, type);
        EXPECT_EQ(code, 0) << Narrow(evaluator.ErrorMsg(code));
        if (flags & ZoEvaluator::kWriteTarget)
            EXPECT_TRUE(evaluator.IsOnlyOneDeviceVariable());
        else
            EXPECT_EQ(type, kind);
        ++m_checked;
    }

    void CheckForces(std::wstring const& event, XmlNode const& actions)
    {
        for (XmlNode const* moment = actions.FirstChild(); moment; moment = moment->NextSibling())
            for (XmlNode const* action = moment->FirstChild(); action; action = action->NextSibling())
                if (action->HasTag(L"force")) {
                    Check(event + L" force variable", action->Value(L"variable", L""), 3, false, 0);
                    Check(event + L" force value", action->Value(L"value", L""), 2, false, 0);
                }
    }

    XmlDocument m_devices;
    XmlDocument m_events;
    ZoDeviceCatalog m_catalog;
    int m_checked = 0;
};

} // namespace

TEST_F(DemoFormulas, EveryFormulaAnalysesAndEvaluatesWithoutFault)
{
    constexpr unsigned kEditor = ZoEvaluator::kEditorCheck;
    XmlNode const* events = m_events.Root()->Child(L"events");
    ASSERT_NE(events, nullptr);
    for (XmlNode const* event = events->FirstChild(); event; event = event->NextSibling()) {
        std::wstring const name = event->Value(L"name", L"");
        Check(name + L" condition", event->Value(L"condition", L""), kEditor, true, 1);
        if (XmlNode const* stop = event->Child(L"conditionStop"); stop && !stop->Value().empty())
            Check(name + L" stop condition", stop->Value(), kEditor, true, 1);
        Check(name + L" delay to activate", event->Value(L"delayToActivate", L"0"), kEditor, true, 0);
        Check(name + L" delay to deactivate", event->Value(L"delayToDeactivate", L"0"), kEditor, true, 0);
        if (XmlNode const* arguments = event->Child(L"arguments"))
            for (XmlNode const* argument = arguments->FirstChild(); argument; argument = argument->NextSibling())
                Check(name + L" argument", argument->Value(L"value", L""), kEditor, true, 0);
        for (wchar_t const* list : {L"actions", L"clientActions"})
            if (XmlNode const* actions = event->Child(list))
                CheckForces(name, *actions);
    }
    EXPECT_GT(m_checked, 100);
}

TEST_F(DemoFormulas, TheExamplesOfTheLanguageReferenceGiveWhatItSays)
{
    // Rows of the "Examples" table of docs/formulas.md: `formula` | kind | code...
    std::ifstream in(ZO_SOURCE_DIR "/docs/formulas.md");
    std::string line;
    bool inExamples = false;
    int rows = 0;
    while (std::getline(in, line)) {
        if (line.rfind("## ", 0) == 0)
            inExamples = line == "## Examples";
        if (!inExamples || line.rfind("| `", 0) != 0)
            continue;
        std::size_t const end = line.find("` |");
        std::size_t const kindEnd = line.find(" | ", end + 3);
        ASSERT_NE(kindEnd, std::string::npos) << line;
        std::string const formula = line.substr(3, end - 3);
        std::string const kind = line.substr(end + 4, kindEnd - end - 4);
        int const code = std::stoi(line.substr(kindEnd + 3));
        SCOPED_TRACE(line);
        ZoEvaluator evaluator;
        evaluator.SetCatalog(&m_catalog);
        evaluator.SetFlags(ZoEvaluator::kEditorCheck, ~0u);
        evaluator.SetUtf8(formula);
        EXPECT_EQ(evaluator.AnalizeExpression(), kind == "logical" ? 1 : (kind == "numeric" ? 0 : -1));
        double value = 0;
        int type = 0;
        EXPECT_EQ(evaluator.Evaluate(value, type), code);
        ++rows;
    }
    EXPECT_GE(rows, 15);
}
