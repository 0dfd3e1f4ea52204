// The events sheet on a project of 100,000 events: the export, the import preview (read,
// match, compare, check) of a sheet that changes every row, and applying it. Each reports,
// as counters, the XML library alone doing the nearest work on the same project in the
// same run (floor_ms) and our time as a multiple of it (x_floor).
#include "BenchFixtures.h"
#include "BenchFloor.h"

#include "spreadsheet/CsvReader.h"
#include "spreadsheet/CsvWriter.h"
#include "spreadsheet/EventsExport.h"
#include "spreadsheet/EventsImport.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <cstdlib>
#include <cstdio>
#include <memory>
#include <string>

namespace {

using namespace zo::bench;
using XmlNode = XmlDocument::XmlNode;

// The three documents of a generated project, with the device catalog its formulas name.
struct SheetProject {
    XmlDocument events;
    XmlDocument devices;

    explicit SheetProject(int count)
    {
        zo::docgen::EventDocShape const shape = SpecFor(count);
        std::string const devicesText = "<deviceTree>" + zo::docgen::MakeDeviceGroupsXml(shape)
                                        + zo::docgen::MakeDeviceCatalogXml(shape, 5000) + "</deviceTree>";
        if (!zo::docgen::LoadGenerated(events, EventsText(count)) || !zo::docgen::LoadGenerated(devices, devicesText))
            std::abort();
    }

    ZoImportTarget Target()
    {
        ZoImportTarget target;
        target.events = &events;
        target.timeTables = &TimeTables();
        target.devices = &devices;
        return target;
    }

    std::string Sheet() const
    {
        std::string sheet;
        ZoExportEvents(events.Root(), TimeTables().Root(), sheet);
        return sheet;
    }
};

SheetProject& Project(int count)
{
    static std::unique_ptr<SheetProject> project;
    static int loaded = 0;
    if (!project || loaded != count) {
        project.reset();
        project = std::make_unique<SheetProject>(count);
        loaded = count;
    }
    return *project;
}

// The sheet with the description of every row changed, as a script would change it.
std::string EditedSheet(std::string const& sheet)
{
    ZoCsvTable table;
    if (!table.Read(sheet))
        std::abort();
    std::string edited;
    ZoCsvWriter writer(edited);
    writer.Begin();
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        for (std::size_t cell = 0; cell < table.CellCount(row); ++cell)
            writer.Cell(row > 0 && cell == 2 ? std::string(table.Cell(row, cell)) + " (edited)"
                                             : std::string(table.Cell(row, cell)));
        writer.EndRow();
    }
    return edited;
}

// The floor of the export: the XML library walking the events and writing the texts of
// the same keys, separated by commas.
double PugiExportMs(pugi::xml_document const& doc, std::string& out)
{
    static constexpr char const* kKeys[] = {
        "id",        "name",          "description",   "disabled",   "notify",        "record",
        "condition", "conditionStop", "delayToActivate", "delayToDeactivate", "timeTable", "annotation",
        "deaAnnotation", "ackAnnotation", "rssActivate", "rssDeactivate", "rssAcknowledge"};
    return MillisecondsOf([&] {
        out.clear();
        for (pugi::xml_node event : doc.first_child().child("events").children("event")) {
            for (char const* key : kKeys)
                out.append(event.child(key).child_value()).push_back(',');
            out.append("\r\n");
        }
    });
}

pugi::xml_document& PugiEvents(int count)
{
    static pugi::xml_document doc;
    static int loaded = 0;
    if (loaded != count) {
        std::string const& text = EventsText(count);
        doc.load_buffer(text.data(), text.size(), pugi::parse_default & ~pugi::parse_escapes);
        loaded = count;
    }
    return doc;
}

void BM_ExportEvents(benchmark::State& state)
{
    int const count = static_cast<int>(state.range(0));
    SheetProject& project = Project(count);
    std::string sheet;
    for (auto _ : state) {
        ZoExportEvents(project.events.Root(), TimeTables().Root(), sheet);
        benchmark::DoNotOptimize(sheet.data());
    }
    double ours = 0;
    for (std::int64_t i = 0; i < state.iterations(); ++i)
        ours += MillisecondsOf([&] { ZoExportEvents(project.events.Root(), TimeTables().Root(), sheet); });
    std::string floorText;
    double floor = 0;
    for (std::int64_t i = 0; i < state.iterations(); ++i)
        floor += PugiExportMs(PugiEvents(count), floorText);
    ReportAgainstFloor(state, state.iterations(), "ours_ms", ours, "floor_ms", floor, "x_floor");
    state.counters["sheet_MB"] = static_cast<double>(sheet.size()) / 1e6;
    // The round trip: importing the sheet unchanged changes nothing.
    ZoImportPlan const plan = ZoPlanImport(sheet, project.Target(), {});
    state.counters["round_trip_unchanged"] =
        !plan.Refused() && !plan.ChangesAnything() && plan.unchanged == static_cast<std::size_t>(count);
}

void BM_ImportPreview(benchmark::State& state)
{
    int const count = static_cast<int>(state.range(0));
    SheetProject& project = Project(count);
    std::string const sheet = EditedSheet(project.Sheet());
    ZoImportTarget const target = project.Target();
    TrimHeap();
    std::size_t const before = ResidentBytes();
    double growth = 0;
    std::size_t modified = 0;
    for (auto _ : state) {
        ZoImportPlan plan = ZoPlanImport(sheet, target, {});
        ZoCheckImport(plan, target);
        modified = plan.modified.size();
        state.PauseTiming();
        growth = std::max(growth, static_cast<double>(ResidentBytes()) - static_cast<double>(before));
        state.ResumeTiming();
    }
    // The floor: the XML library reading the events document.
    std::string const& text = EventsText(count);
    double const floor = MillisecondsOfRounds(state.iterations(), [&] {
        pugi::xml_document doc;
        doc.load_buffer(text.data(), text.size(), pugi::parse_default & ~pugi::parse_escapes);
    });
    state.counters["floor_ms"] = floor / static_cast<double>(state.iterations());
    state.counters["modified"] = static_cast<double>(modified);
    double const projectBytes = static_cast<double>(project.events.MemoryUsed() + project.devices.MemoryUsed());
    state.counters["growth_MB"] = growth / 1e6;
    state.counters["x_project_memory"] = projectBytes > 0 ? growth / projectBytes : 0;
}

void BM_ImportApply(benchmark::State& state)
{
    int const count = static_cast<int>(state.range(0));
    SheetProject& project = Project(count);
    ZoImportTarget const target = project.Target();
    ZoImportPlan const plan = ZoPlanImport(EditedSheet(project.Sheet()), target, {});
    for (auto _ : state) {
        project.events.BeginJournal();
        project.devices.BeginJournal();
        ZoApplyImport(plan, target);
        state.PauseTiming();
        project.events.UndoJournal();
        project.devices.UndoJournal();
        state.ResumeTiming();
    }
    // The floor: the XML library setting the description of every event.
    pugi::xml_document& doc = PugiEvents(count);
    double const floor = MillisecondsOfRounds(state.iterations(), [&] {
        for (pugi::xml_node event : doc.first_child().child("events").children("event"))
            event.child("description").text().set("edited");
    });
    state.counters["floor_ms"] = floor / static_cast<double>(state.iterations());
    state.counters["rows"] = static_cast<double>(plan.modified.size());
}

} // namespace

BENCHMARK(BM_ExportEvents)->Arg(100000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportPreview)->Arg(100000)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportApply)->Arg(100000)->Iterations(3)->Unit(benchmark::kMillisecond);
