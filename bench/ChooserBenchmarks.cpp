// The formula wizard and the choosers on a large project: the live status of a long
// formula (what the wizard and the editor's labels compute on every keystroke), one
// keystroke of the device chooser's filter over 5,000 devices of 20 variables and 100,000
// events pseudo-devices, the wizard opened on that catalog, and the host's event chooser
// opened, filtered and cleared over the 100,000 events of the generated project.
#include "BenchFixtures.h"
#include "EventChooserDlg.h"
#include "config/XmlDocument.h"
#include "editor/ZoFormulaStatus.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/drivers/ZoDeviceTreeModel.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/reports/CDlgWizzard.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

double MsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Shows a dialog and lets Qt lay it out and paint it: the first frame the user sees.
void ShowAndPaint(QWidget& dialog)
{
    dialog.show();
    QApplication::processEvents();
}

// Lets Qt lay out and paint what a change of the dialog's rows asks for.
void Repaint()
{
    QApplication::processEvents();
}

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

// Opening the formula wizard as the event editor does on a condition of 512 characters: the
// dialog built with its device tree over the catalog, the status line computed, shown and
// painted.
void BM_FormulaWizardOpen(benchmark::State& state)
{
    ZoDeviceCatalog const& catalog = Catalog(static_cast<int>(state.range(0)));
    std::wstring const formula = Formula512();
    int devices = 0;
    for (auto _ : state) {
        auto wizard = std::make_unique<CDlgWizzard>(nullptr, std::bitset<34>(4), false, 0);
        wizard->m_bShowStatus = true;
        wizard->SetExpected(ZoWizardStatus::Expect::Logical);
        wizard->SetCatalog(&catalog);
        wizard->SetExpression(formula, 0, -1);
        wizard->EnsureInitialized();
        ShowAndPaint(*wizard);
        state.PauseTiming();
        devices = wizard->findChild<QTreeView*>("devicesTree")->model()->rowCount();
        wizard.reset();
        state.ResumeTiming();
    }
    state.counters["top_rows"] = devices;
}

// ---- the host's event chooser over the generated project --------------------------------

zo::bench::LoadedProject& ChooserProject()
{
    static std::unique_ptr<zo::bench::LoadedProject> project = zo::bench::LoadProject(kEvents);
    return *project;
}

// Floor: the XML library walking the same events and reading what the chooser shows of each
// (name, description, disabled), on the same text.
int PugiReadChoices(pugi::xml_node events)
{
    int rows = 0;
    for (pugi::xml_node event = events.child("event"); event; event = event.next_sibling("event")) {
        benchmark::DoNotOptimize(event.child("name").text().get());
        benchmark::DoNotOptimize(event.child("description").text().get());
        benchmark::DoNotOptimize(event.child("disabled").text().get());
        ++rows;
    }
    return rows;
}

struct ShownChooser {
    explicit ShownChooser(XmlDocument::XmlNode const* events)
        : dialog(nullptr, events)
    {
        dialog.EnsureInitialized();
        ShowAndPaint(dialog);
        filter = dialog.findChild<QLineEdit*>("filterEdit");
        list = dialog.findChild<QTreeView*>("eventsList");
        ok = dialog.findChild<QPushButton*>("okButton");
    }
    int Rows() const { return list->model()->rowCount(); }
    bool CanChoose() const { return ok->isEnabled(); }

    EventChooserDlg dialog;
    QLineEdit* filter = nullptr;
    QTreeView* list = nullptr;
    QPushButton* ok = nullptr;
};

// Events > Edit Event...: the chooser built on the project's events, shown and painted, with
// every row sorted by name and the first one selected. Counters: the floor (floor_ms,
// x_floor).
void BM_EventChooserOpen(benchmark::State& state)
{
    auto& project = ChooserProject();
    std::string text;
    project.eventsCfg.Root()->CreateXmlCode(text);
    pugi::xml_document pugi;
    pugi.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    text.clear();
    text.shrink_to_fit();
    pugi::xml_node const pugiEvents = pugi.child(zo::docgen::kEventsRootTag).child("events");

    // Qt's own first-time work (style, fonts, images) is done once before, as in the host,
    // whose window is up when the chooser opens.
    {
        XmlDocument few;
        few.Parse("<events><event><name>A</name></event></events>");
        ShownChooser warmUp(few.Root());
    }
    double ownMs = 0;
    double floorMs = 0;
    int rows = 0;
    bool ready = true;
    for (auto _ : state) {
        auto const start = Clock::now();
        auto chooser = std::make_unique<ShownChooser>(project.Events());
        ownMs += MsSince(start);
        state.PauseTiming();
        rows = chooser->Rows();
        ready = ready && chooser->CanChoose();
        chooser.reset();
        auto const floorStart = Clock::now();
        ready = ready && PugiReadChoices(pugiEvents) == rows;
        floorMs += MsSince(floorStart);
        state.ResumeTiming();
    }
    if (!ready || rows != state.range(0))
        state.SkipWithError("the chooser did not show every event with the first one selected");
    double const n = static_cast<double>(state.iterations());
    state.counters["rows"] = rows;
    state.counters["floor_ms"] = floorMs / n;
    state.counters["x_floor"] = floorMs > 0 ? ownMs / floorMs : 0;
}

// One keystroke of the chooser's filter that does not extend the previous one, so that every
// event's name is searched: the filter switches between two words, as typing over a selected
// filter does, until the rows are painted.
void BM_EventChooserFilter(benchmark::State& state)
{
    ShownChooser chooser(ChooserProject().Events());
    bool flip = false;
    int shown[2] = {};
    for (auto _ : state) {
        chooser.filter->setText(flip ? QStringLiteral("valve_3") : QStringLiteral("Pump"));
        Repaint();
        shown[flip] = chooser.Rows();
        flip = !flip;
    }
    if (shown[0] == 0 || shown[1] == 0 || !chooser.CanChoose())
        state.SkipWithError("the filter left no row to choose");
    state.counters["rows_pump"] = shown[0];
    state.counters["rows_valve_3"] = shown[1];
}

// Clearing the chooser's filter (its clear button, or the last letter erased): from the rows
// of one pump back to every event.
void BM_EventChooserClearFilter(benchmark::State& state)
{
    ShownChooser chooser(ChooserProject().Events());
    int rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        chooser.filter->setText(QStringLiteral("pump_12_pressure_high"));
        Repaint();
        state.ResumeTiming();
        chooser.filter->clear();
        Repaint();
        rows = chooser.Rows();
    }
    if (rows != state.range(0) || !chooser.CanChoose())
        state.SkipWithError("clearing the filter did not show every event again");
    state.counters["rows"] = rows;
}

} // namespace

BENCHMARK(BM_FormulaStatus512)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DeviceFilter)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_DeviceFilterTyping)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_DeviceTreeOpen)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_FormulaWizardOpen)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_EventChooserOpen)->Arg(kEvents)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_EventChooserFilter)->Arg(kEvents)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_EventChooserClearFilter)->Arg(kEvents)->Unit(benchmark::kMillisecond)->Iterations(3);
