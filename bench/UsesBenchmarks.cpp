// Where-used and rename over a project of 100,000 events, one device named in the condition
// of every tenth event (10,000 formulas). Each reports, as counters, the XML library alone
// walking the same formula fields of the same document for the device's name in the same
// run (floor_ms), and our time as a multiple of it (x_floor).
#include "BenchFixtures.h"

#include "check/ZoProjectChecker.h"
#include "uses/ZoRename.h"
#include "uses/ZoWhereUsed.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <chrono>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <tuple>

namespace {

using namespace zo::bench;
using XmlNode = XmlDocument::XmlNode;
using Clock = std::chrono::steady_clock;

double MsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

constexpr char const* kCatalog = "<deviceTree><catalog><driver><id>{B-METER}</id><name>METER1</name>"
                                 "<variable><code>ENERGY</code><type>counter</type></variable>"
                                 "<variable><code>POWER</code><type>analog</type></variable></driver>"
                                 "</catalog></deviceTree>";

// The generated project with "[METER1.ENERGY/day] > 0" added to the condition of every
// tenth event, and a catalog that holds the meter.
struct MeterProject {
    std::unique_ptr<LoadedProject> project;
    XmlDocument devices;
    std::string text; // the events document's text, for the floor
    int formulas = 0;
};

MeterProject& Meter(int events)
{
    static std::unique_ptr<MeterProject> shared;
    if (shared && shared->project->Events()->Size() == events)
        return *shared;
    shared = std::make_unique<MeterProject>();
    shared->project = LoadProject(events);
    shared->devices.Parse(kCatalog);
    int index = 0;
    for (XmlNode* event = shared->project->Events()->FirstChild(); event; event = event->NextSibling(), ++index) {
        if (index % 10 != 0)
            continue;
        XmlNode* condition = event->Child(L"condition");
        condition->SetValueUtf8(std::string(condition->TextUtf8()) + " OR [METER1.ENERGY/day] > 0");
        ++shared->formulas;
    }
    shared->project->eventsCfg.Root()->CreateXmlCode(shared->text);
    return *shared;
}

// The floor: pugixml walking the same formula fields for the device's name.
int PugiCountFormulas(pugi::xml_node events, char const* needle)
{
    int found = 0;
    auto const look = [&](pugi::xml_node field) {
        if (field && std::strstr(field.child_value(), needle))
            ++found;
    };
    for (pugi::xml_node event = events.child("event"); event; event = event.next_sibling("event")) {
        for (char const* key : {"condition", "conditionStop", "delayToActivate", "delayToDeactivate"})
            look(event.child(key));
        for (pugi::xml_node argument : event.child("arguments").children())
            look(argument.child("value"));
        for (char const* side : {"actions", "clientActions"})
            for (pugi::xml_node moment : event.child(side).children())
                for (pugi::xml_node action : moment.children("force")) {
                    look(action.child("variable"));
                    look(action.child("value"));
                }
    }
    return found;
}

double FloorMs(MeterProject const& meter, int& found)
{
    pugi::xml_document doc;
    doc.load_buffer(meter.text.data(), meter.text.size(), pugi::parse_default, pugi::encoding_utf8);
    auto const start = Clock::now();
    found = PugiCountFormulas(doc.child(zo::docgen::kEventsRootTag).child("events"), "METER1");
    return MsSince(start);
}

void BM_WhereUsed(benchmark::State& state)
{
    MeterProject& meter = Meter(static_cast<int>(state.range(0)));
    ZoUseDocs const docs{meter.project->eventsCfg.Root(), nullptr, meter.devices.Root(), nullptr};
    ZoUseTarget target;
    std::wstring error;
    if (!ZoReadUseTarget(L"[METER1.ENERGY]", docs, target, error)) {
        state.SkipWithError("the meter is not in the catalog");
        return;
    }
    std::size_t uses = 0;
    double floorMs = 0;
    int found = 0;
    for (auto _ : state) {
        uses = ZoFindUses(docs, target).size();
        state.PauseTiming();
        floorMs += FloorMs(meter, found);
        state.ResumeTiming();
    }
    if (uses != static_cast<std::size_t>(meter.formulas) || found != meter.formulas)
        state.SkipWithError("not every use was found");
    double const n = static_cast<double>(state.iterations());
    state.counters["uses"] = static_cast<double>(uses);
    state.counters["floor_ms"] = floorMs / n;
}

// The findings of the check as (rule, element, field) with their severities, so that a
// rename's effect is compared without the messages, which name the device.
std::multiset<std::tuple<std::string, std::wstring, int>> CheckedFaults(XmlDocument const& events,
                                                                       XmlDocument const& timeTables,
                                                                       XmlDocument const& devices)
{
    ZoCheckOptions options;
    options.from = QDate(2026, 1, 1);
    std::multiset<std::tuple<std::string, std::wstring, int>> faults;
    for (ZoFinding const& finding :
         ZoCheckProject({events.Root(), timeTables.Root(), devices.Root(), nullptr, {}}, options))
        faults.emplace(std::string(finding.rule) + ZoSeverityWord(finding.severity).data(), finding.name,
                       static_cast<int>(finding.field));
    return faults;
}

// A generated project of 2,000 events with its catalog: the check finds the same after a
// controller that a fifth of the formulas name is renamed as before.
bool CheckUnchangedByRename()
{
    zo::docgen::EventDocShape shape;
    shape.events = 2000;
    XmlDocument events;
    XmlDocument timeTables;
    XmlDocument devices;
    if (!zo::docgen::LoadGenerated(events, zo::docgen::MakeEventsDocumentXml(shape)) ||
        !zo::docgen::LoadGenerated(timeTables, zo::docgen::MakeTimeTablesXml(shape)) ||
        !zo::docgen::LoadGenerated(devices, "<deviceTree>" + zo::docgen::MakeDeviceGroupsXml(shape) +
                                                zo::docgen::MakeDeviceCatalogXml(shape, 100) + "</deviceTree>"))
        return false;
    auto const before = CheckedFaults(events, timeTables, devices);
    ZoRenamePlan plan;
    std::wstring error;
    if (!ZoPlanRename(events, devices, {ZoRenameKind::Device, {}, L"PLC3", L"Plant 3.A"}, plan, error) ||
        plan.references < 100)
        return false;
    ZoApplyRename(plan.changes);
    return CheckedFaults(events, timeTables, devices) == before;
}

// The preview (the plan) and the apply of renaming the meter, the apply with the journals
// on as the editor does it; the journals undo it outside the timing.
void BM_RenameDevice(benchmark::State& state)
{
    MeterProject& meter = Meter(static_cast<int>(state.range(0)));
    XmlDocument& events = meter.project->eventsCfg;
    double previewMs = 0;
    double applyMs = 0;
    double floorMs = 0;
    int changed = 0;
    int found = 0;
    bool ok = true;
    for (auto _ : state) {
        auto const start = Clock::now();
        ZoRenamePlan plan;
        std::wstring error;
        ok = ok && ZoPlanRename(events, meter.devices, {ZoRenameKind::Device, {}, L"METER1", L"Main meter"}, plan,
                                error);
        previewMs += MsSince(start);
        events.BeginJournal();
        meter.devices.BeginJournal();
        auto const apply = Clock::now();
        ZoApplyRename(plan.changes);
        applyMs += MsSince(apply);
        changed = plan.references;
        state.PauseTiming();
        events.UndoJournal();
        meter.devices.UndoJournal();
        floorMs += FloorMs(meter, found);
        state.ResumeTiming();
    }
    if (!ok || changed != meter.formulas || found != meter.formulas)
        state.SkipWithError("the rename did not plan every reference");
    if (!CheckUnchangedByRename())
        state.SkipWithError("the check finds other faults after a rename on a generated project");
    double const n = static_cast<double>(state.iterations());
    state.counters["formulas"] = changed;
    state.counters["preview_ms"] = previewMs / n;
    state.counters["apply_ms"] = applyMs / n;
    state.counters["floor_ms"] = floorMs / n;
    state.counters["preview_x_floor"] = floorMs > 0 ? previewMs / floorMs : 0;
}

} // namespace

BENCHMARK(BM_WhereUsed)->Arg(100000)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RenameDevice)->Arg(100000)->Iterations(6)->Unit(benchmark::kMillisecond);
