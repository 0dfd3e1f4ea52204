// The formula wizard and the device chooser on a large project: the live status of a long
// formula (what the wizard and the editor's labels compute on every keystroke), and one
// keystroke of the chooser's filter over 5,000 devices of 20 variables and 100,000 events
// pseudo-devices.
#include "config/XmlDocument.h"
#include "editor/ZoFormulaStatus.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/drivers/ZoDeviceTreeModel.h"
#include "platform/formula/ZoEvaluator.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr int kVariablesPerDevice = 20;
constexpr int kEvents = 100000;

char const* const kKinds[] = {"analog", "digital", "integer", "counter", "duration", "text"};
char const* const kEquipment[] = {"PUMP", "VALVE", "FAN", "TANK", "MOTOR", "METER", "HEATER", "BLOWER"};
char const* const kMeasures[] = {"PRESSURE", "FLOW", "LEVEL", "RUN", "CURRENT", "SPEED", "POWER",
                                 "ALARM", "TEMPERATURE", "MODE"};

// devices devices "RTU0001"... with 20 variables each ("PUMP_3_PRESSURE", "Pump 3 pressure"
// of station 17), and kEvents events.
std::unique_ptr<ZoDeviceCatalog> MakeCatalog(int devices)
{
    std::string xml = "<catalog>";
    char buffer[512];
    for (int d = 1; d <= devices; ++d) {
        std::snprintf(buffer, sizeof buffer,
                      "<driver><name>RTU%04d</name><description>Remote unit of station %d</description>"
                      "<type>MODBUS-TCP</type><address>10.1.%d.%d:502</address>",
                      d, d, d / 250, d % 250);
        xml += buffer;
        for (int v = 0; v < kVariablesPerDevice; ++v) {
            char const* equipment = kEquipment[(d + v) % 8];
            char const* measure = kMeasures[v % 10];
            std::snprintf(buffer, sizeof buffer,
                          "<variable><code>%s_%d_%s</code><description>%c%s %d %s of station %d</description>"
                          "<type>%s</type><unit>bar</unit><min>0</min><max>100</max></variable>",
                          equipment, v / 2 + 1, measure, equipment[0], equipment + 1, v / 2 + 1, measure, d,
                          kKinds[v % 6]);
            xml += buffer;
        }
        xml += "</driver>";
    }
    xml += "</catalog>";
    std::string events = "<events>";
    for (int e = 1; e <= kEvents; ++e) {
        std::snprintf(buffer, sizeof buffer, "<event><name>Station %d alarm %d</name></event>", e % 5000, e);
        events += buffer;
    }
    events += "</events>";
    XmlDocument catalogDoc;
    XmlDocument eventsDoc;
    if (!catalogDoc.Parse(xml.c_str()) || !eventsDoc.Parse(events.c_str()))
        std::abort();
    auto catalog = std::make_unique<ZoDeviceCatalog>();
    catalog->LoadDevices(catalogDoc.Root());
    catalog->LoadEvents(eventsDoc.Root());
    return catalog;
}

ZoDeviceCatalog const& Catalog(int devices)
{
    static int built = 0;
    static std::unique_ptr<ZoDeviceCatalog> catalog;
    if (built != devices) {
        catalog = MakeCatalog(devices);
        built = devices;
    }
    return *catalog;
}

// A condition of exactly 512 characters over variables spread over the catalog.
std::wstring Formula512()
{
    std::wstring const tail = L" AND abs([RTU1000.PUMP_1_PRESSURE] - 50) < 5";
    std::wstring formula = L"[RTU1000.PUMP_1_PRESSURE] > 1";
    for (int i = 2;; ++i) {
        int const device = 1000 + i * 97 % 4000;
        // Its first variable: "<equipment>_1_PRESSURE", analog, 0 to 100 bar.
        std::string const equipment = kEquipment[device % 8];
        std::wstring const term = std::wstring(i % 3 ? L" AND " : L" OR ") + L"[RTU" + std::to_wstring(device) + L"." +
            std::wstring(equipment.begin(), equipment.end()) + L"_1_PRESSURE] > " + std::to_wstring(i);
        if (formula.size() + term.size() + tail.size() > 512)
            break;
        formula += term;
    }
    formula += tail;
    formula.resize(512, L' '); // blanks up to the length
    return formula;
}

void BM_FormulaStatus512(benchmark::State& state)
{
    ZoDeviceCatalog const& catalog = Catalog(5000);
    std::wstring const formula = Formula512();
    ZoEvaluator evaluator;
    evaluator.SetCatalog(&catalog);
    ZoFormulaStatus status;
    for (auto _ : state) {
        status = ZoLogicalFormulaStatus(evaluator, formula);
        benchmark::DoNotOptimize(status);
    }
    if (!status.shown || !status.detail.empty()) {
        static std::string message;
        message = "the formula does not give a status without fault: ";
        for (wchar_t const c : status.text + L" / " + status.detail)
            message += c < 128 ? static_cast<char>(c) : '?';
        state.SkipWithError(message.c_str());
    }
    state.counters["chars"] = static_cast<double>(formula.size());
}

// One keystroke that does not extend the previous filter (the whole catalog is searched):
// the filter switches between two words, as typing over a selected filter does.
void BM_DeviceFilter(benchmark::State& state)
{
    ZoDeviceCatalog const& catalog = Catalog(static_cast<int>(state.range(0)));
    ZoDeviceTreeModel model(&catalog, ZoDeviceTreeModel::Mode::Variables);
    bool flip = false;
    for (auto _ : state) {
        model.SetFilter(flip ? QStringLiteral("pressure") : QStringLiteral("heater 3"));
        flip = !flip;
        benchmark::DoNotOptimize(model.rowCount());
    }
    model.SetFilter(QStringLiteral("heater 3"));
    state.counters["shown_devices"] = model.DeviceCount();
    state.counters["shown_variables"] = model.VariableCount();
}

// Typing "station 42" letter by letter from an empty filter: each keystroke narrows what the
// previous one kept; the time is per keystroke.
void BM_DeviceFilterTyping(benchmark::State& state)
{
    ZoDeviceCatalog const& catalog = Catalog(static_cast<int>(state.range(0)));
    ZoDeviceTreeModel model(&catalog, ZoDeviceTreeModel::Mode::Variables);
    QString const typed = QStringLiteral("station 42");
    for (auto _ : state) {
        for (qsizetype n = 1; n <= typed.size(); ++n)
            model.SetFilter(typed.left(n));
        state.PauseTiming();
        model.SetFilter(QString());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * typed.size()); // keystrokes
}

// Opening a chooser: the catalog folded for the filter and sorted by name.
void BM_DeviceTreeOpen(benchmark::State& state)
{
    ZoDeviceCatalog const& catalog = Catalog(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        ZoDeviceTreeModel model(&catalog, ZoDeviceTreeModel::Mode::Variables);
        benchmark::DoNotOptimize(model.rowCount());
    }
}

} // namespace

BENCHMARK(BM_FormulaStatus512)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DeviceFilter)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_DeviceFilterTyping)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_DeviceTreeOpen)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(5);
