// Formulas: one condition analysed and evaluated as the editor does on every keystroke,
// every formula of a large project analysed against a large device catalog, building that
// catalog, and the project check (every rule over the same project, and one event again).
#include "BenchFixtures.h"

#include "check/ZoProjectChecker.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoUtf.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace {

using namespace zo::bench;
using XmlNode = XmlDocument::XmlNode;

constexpr int kCatalogDevices = 5000;

int Arg(benchmark::State const& state) { return static_cast<int>(state.range(0)); }

// The generated device catalog of 5,000 devices, parsed once.
XmlDocument const& CatalogDocument()
{
    static XmlDocument const* doc = [] {
        auto* parsed = new XmlDocument;
        if (!zo::docgen::LoadGenerated(*parsed, zo::docgen::MakeDeviceCatalogXml(SpecFor(0), kCatalogDevices)))
            std::abort();
        return parsed;
    }();
    return *doc;
}

std::unique_ptr<ZoDeviceCatalog> DevicesCatalog()
{
    auto catalog = std::make_unique<ZoDeviceCatalog>();
    catalog->LoadDevices(CatalogDocument().Root());
    return catalog;
}

// 200 characters, 8 variables of the 5,000-device catalog.
constexpr wchar_t kCondition[] =
    L"[PLC1.PUMP_1_PRESSURE]>8.5 AND [PLC1.PUMP_1_RUN]=1 OR [PLC2.VALVE_3_FLOW]<12 AND "
    L"[PLC3.FAN_7_CURRENT]>40 OR [PLC4.FAN_2_SPEED]<300 AND [PLC5.TANK_9_LEVEL]>1.5 OR "
    L"[PLC6.FAN_4_RUN]=1 AND [PLC8.FAN_5_POWER]>5";

// What the event editor does on each keystroke of the condition: a new evaluator on the
// text, analysed and evaluated with the editor's checks.
void BM_EvaluateCondition(benchmark::State& state)
{
    auto const catalog = DevicesCatalog();
    ZoDeviceCatalog::Install(nullptr);
    int code = -1;
    for (auto _ : state) {
        ZoEvaluator evaluator(kCondition);
        evaluator.SetCatalog(catalog.get());
        evaluator.SetFlags(ZoEvaluator::kEditorCheck, ~0u);
        int const kind = evaluator.AnalizeExpression();
        double value = 0;
        int type = 0;
        code = evaluator.Evaluate(value, type) + 100 * kind;
        benchmark::DoNotOptimize(value);
    }
    if (code != 100)
        state.SkipWithError("the condition does not evaluate as a logical formula without fault");
    state.counters["chars"] = static_cast<double>(std::wstring_view(kCondition).size());
}

// What a formula of the project must give, as the editor judges its field.
enum class Role {
    Logical,     // a condition or stop condition
    Numeric,     // a delay or an argument value
    WriteTarget, // a force action's variable: one writable device variable
    Value,       // a force action's value: a number or a logical value
};

// Calls visit(text, role) for the UTF-8 text of every formula of the project: each
// condition, stop condition, delay and argument value, and each force action's variable and
// value (in either list of actions, at any moment); returns how many there were.
template <class Visit>
long VisitFormulas(XmlNode const& events, Visit const& visit)
{
    XmlDocument const& doc = *events.Document();
    void const* const condition = doc.TagKey(L"condition");
    void const* const stop = doc.TagKey(L"conditionStop");
    void const* const delayOn = doc.TagKey(L"delayToActivate");
    void const* const delayOff = doc.TagKey(L"delayToDeactivate");
    void const* const arguments = doc.TagKey(L"arguments");
    void const* const value = doc.TagKey(L"value");
    void const* const sides[] = {doc.TagKey(L"actions"), doc.TagKey(L"clientActions")};
    void const* const force = doc.TagKey(L"force");
    void const* const variable = doc.TagKey(L"variable");
    long count = 0;
    auto const visitForce = [&](XmlNode const& action) {
        for (XmlNode const* part = action.FirstChild(); part; part = part->NextSibling()) {
            if (part->TagKey() == variable || part->TagKey() == value) {
                visit(part->TextUtf8(), part->TagKey() == variable ? Role::WriteTarget : Role::Value);
                ++count;
            }
        }
    };
    for (XmlNode const* event = events.FirstChild(); event; event = event->NextSibling()) {
        for (XmlNode const* key = event->FirstChild(); key; key = key->NextSibling()) {
            void const* const tag = key->TagKey();
            if (tag == condition || tag == stop || tag == delayOn || tag == delayOff) {
                visit(key->TextUtf8(), tag == condition || tag == stop ? Role::Logical : Role::Numeric);
                ++count;
            } else if (tag == arguments) {
                for (XmlNode const* argument = key->FirstChild(); argument; argument = argument->NextSibling())
                    for (XmlNode const* part = argument->FirstChild(); part; part = part->NextSibling())
                        if (part->TagKey() == value) {
                            visit(part->TextUtf8(), Role::Numeric);
                            ++count;
                        }
            } else if (tag == sides[0] || tag == sides[1]) {
                for (XmlNode const* moment = key->FirstChild(); moment; moment = moment->NextSibling())
                    for (XmlNode const* action = moment->FirstChild(); action; action = action->NextSibling())
                        if (action->TagKey() == force)
                            visitForce(*action);
            }
        }
    }
    return count;
}

// Every formula of the project analysed and evaluated, one evaluator reused, against the
// catalog of 5,000 devices and the project's events pseudo-devices, with the flags the
// editor gives the field (a force action's variable is analysed as a write target).
void BM_AnalyseProjectFormulas(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    auto const catalog = DevicesCatalog();
    catalog->LoadEvents(project->Events());
    long formulas = 0;
    long faults = 0;
    std::string firstFault;
    for (auto _ : state) {
        ZoEvaluator evaluator;
        evaluator.SetCatalog(catalog.get());
        faults = 0;
        formulas = VisitFormulas(*project->Events(), [&](std::string_view text, Role role) {
            unsigned const target = role == Role::WriteTarget ? ZoEvaluator::kWriteTarget : 0u;
            evaluator.SetFlags(ZoEvaluator::kEditorCheck | target, ~0u);
            evaluator.SetUtf8(text);
            double value = 0;
            int type = 0;
            int const kind = evaluator.AnalizeExpression();
            int const code = evaluator.Evaluate(value, type);
            bool const expected = role == Role::Logical ? kind == 1
                                : role == Role::Numeric ? kind == 0
                                                        : kind == 0 || kind == 1;
            if (code != 0 || !expected) {
                if (faults++ == 0)
                    firstFault = "a generated formula does not evaluate without fault: " + std::string(text) + ": " +
                                 ZoToUtf8(evaluator.ErrorMsg(code));
            }
        });
    }
    if (faults != 0)
        state.SkipWithError(firstFault.c_str());
    state.counters["formulas"] = static_cast<double>(formulas);
    state.counters["faults"] = static_cast<double>(faults);
}

// Floor: the same walk over the project, each formula's text only converted to wide text
// as SetUtf8 does, nothing analysed.
void BM_ReadProjectFormulas(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    std::wstring text;
    long formulas = 0;
    for (auto _ : state) {
        formulas = VisitFormulas(*project->Events(), [&](std::string_view utf8, Role) {
            text.clear();
            ZoAppendUtf8AsWide(text, utf8);
            benchmark::DoNotOptimize(text.data());
        });
    }
    state.counters["formulas"] = static_cast<double>(formulas);
}

// The events pseudo-devices of the project, rebuilt (as after the events list closed).
void BM_CatalogLoadEvents(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    ZoDeviceCatalog catalog;
    for (auto _ : state)
        catalog.LoadEvents(project->Events());
    state.counters["devices"] = static_cast<double>(catalog.EventsDevices().size());
    state.counters["MemoryUsed_MB"] = static_cast<double>(catalog.MemoryUsed()) / 1e6;
}

// The 5,000 devices of the catalog element, read from the parsed document.
void BM_CatalogLoadDevices(benchmark::State& state)
{
    ZoDeviceCatalog catalog;
    for (auto _ : state)
        catalog.LoadDevices(CatalogDocument().Root());
    std::size_t variables = 0;
    for (ZoDriver const& driver : catalog.Devices())
        variables += driver.Variables().size();
    state.counters["devices"] = static_cast<double>(catalog.Devices().size());
    state.counters["variables"] = static_cast<double>(variables);
    state.counters["MemoryUsed_MB"] = static_cast<double>(catalog.MemoryUsed()) / 1e6;
}

// The device tree as Devices.zocfg holds it: the generated device groups (every event
// registered) and the catalog of 5,000 devices.
std::unique_ptr<XmlDocument> DeviceTree(LoadedProject& project)
{
    auto tree = std::make_unique<XmlDocument>();
    tree->Create(L"deviceTree");
    *tree->Root()->NewChild(L"deviceGroups") = *project.deviceGroups.Root();
    *tree->Root()->NewChild(L"catalog") = *CatalogDocument().Root();
    return tree;
}

// Every rule of the project check over the project, with the catalog the editor has
// installed (as the Problems window and a save do); the indexes are built in the loop.
void BM_CheckProject(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    auto const tree = DeviceTree(*project);
    auto const catalog = DevicesCatalog();
    catalog->LoadEvents(project->Events());
    ZoProjectDocs const docs{project->eventsCfg.Root(), TimeTables().Root(), tree->Root(), nullptr, {}};
    ZoCheckOptions options;
    options.from = QDate(2026, 1, 1);
    options.catalog = catalog.get();
    ZoCheckCounts counts;
    std::size_t findings = 0;
    for (auto _ : state) {
        std::vector<ZoFinding> const found = ZoCheckProject(docs, options);
        findings = found.size();
        counts = ZoCountFindings(found);
    }
    state.counters["findings"] = static_cast<double>(findings);
    state.counters["errors"] = counts.errors;
    state.counters["warnings"] = counts.warnings;
}

// One event checked again after an edit, as the Problems window does after the editor's OK.
void BM_CheckOneEvent(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    auto const tree = DeviceTree(*project);
    auto const catalog = DevicesCatalog();
    catalog->LoadEvents(project->Events());
    ZoCheckOptions options;
    options.from = QDate(2026, 1, 1);
    options.catalog = catalog.get();
    ZoProjectChecker checker({project->eventsCfg.Root(), TimeTables().Root(), tree->Root(), nullptr, {}}, options);
    checker.CheckProject();
    std::uint32_t const last = static_cast<std::uint32_t>(Arg(state) - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(checker.CheckEvent(last).size());
}

} // namespace

BENCHMARK(BM_EvaluateCondition)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadProjectFormulas)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_AnalyseProjectFormulas)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_CheckProject)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_CheckOneEvent)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_CatalogLoadEvents)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_CatalogLoadDevices)->Arg(kCatalogDevices)->Unit(benchmark::kMillisecond)->Iterations(5);
