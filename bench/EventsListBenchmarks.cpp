// The events list on a large project: filling and sorting its rows, pasting many events,
// and the working-copy round trip of modifying one event.
#include "BenchFixtures.h"

#include "events/DeviceRegistration.h"
#include "events/EventsClipboard.h"
#include "events/EventsListModel.h"
#include "platform/tools/ZoUtf.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zo::bench;
using XmlNode = XmlDocument::XmlNode;

constexpr int kListSize = 100000;

int Arg(benchmark::State const& state) { return static_cast<int>(state.range(0)); }

// A first fill: every event read and sorted.
void BM_EventsListFill(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    int rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto model = std::make_unique<EventsListModel>(&project->eventsCfg, &TimeTables());
        state.ResumeTiming();
        model->UpdateList();
        rows = model->rowCount();
    }
    state.counters["rows"] = rows;
}

// A refill after one event was renamed: the one changed event read again and merged in.
void BM_EventsListRefill(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    EventsListModel model(&project->eventsCfg, &TimeTables());
    model.UpdateList();
    XmlNode* event = project->Events()->FirstChild();
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        model.Clear();
        event->SetValue(L"name", L"Renamed " + std::to_wstring(++round));
        state.ResumeTiming();
        model.UpdateList();
    }
    state.counters["rows"] = model.rowCount();
}

void BM_EventsListSort(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    EventsListModel model(&project->eventsCfg, &TimeTables());
    model.UpdateList();
    // Each click is on the next column, so every column is sorted ascending in turn, the
    // columns with few distinct texts (falling back on the name) included.
    int column = 0;
    for (auto _ : state) {
        column = (column + 1) % EventsListModel::ColumnCount;
        model.ClickColumn(column);
    }
    state.counters["rows"] = model.rowCount();
}

// Pastes the clipboard of the project's first events into the list, as a copy and paste
// within one project does: every name clashes and gets a "_1".
void BM_EventsPaste(benchmark::State& state)
{
    auto project = LoadProject(kListSize);
    EventsListModel model(&project->eventsCfg, &TimeTables());
    model.UpdateList();
    std::string const clipboard = zo::docgen::MakeEventsClipboardXml(SpecFor(Arg(state)));
    std::vector<XmlNode*> pasted;
    for (auto _ : state) {
        pasted.clear();
        bool const ok = PasteEventsText(clipboard, project->eventsCfg, project->deviceGroups.Root(),
                                        model.NameSet(), &pasted);
        model.UpdateList();
        benchmark::DoNotOptimize(ok);

        state.PauseTiming();
        std::vector<std::wstring> ids;
        ids.reserve(pasted.size());
        for (XmlNode* event : pasted) {
            ids.push_back(event->Value(L"id", L""));
            project->Events()->RemoveChild(event);
        }
        RemoveEventsFromDeviceGroupsNode(project->deviceGroups.Root(), ids);
        model.UpdateList();
        state.ResumeTiming();
    }
    state.counters["pasted"] = static_cast<double>(pasted.size());
}

double MillisecondsOf(auto&& work)
{
    auto const start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// What the list does around the event editor: a working copy of `events`, the event found
// in it by name, one key changed, and the copy assigned back over the live element.
// The round trips follow one another on the same project, as a user's edits do; the
// counters show the first and the last, and a refill of the list before and after them
// (a tree whose layout suffers from the round trips shows it there).
void BM_EventsModifyRoundTrip(benchmark::State& state)
{
    int const events = Arg(state);
    auto project = LoadProject(events);
    EventsListModel model(&project->eventsCfg, &TimeTables());
    double const fillBefore = MillisecondsOf([&] { model.UpdateList(); });
    model.Clear();
    std::wstring const name = ZoFromUtf8(zo::docgen::GeneratedEventName(SpecFor(events).seed, events / 2));
    int round = 0;
    double first = 0, last = 0;
    for (auto _ : state) {
        last = MillisecondsOf([&] {
            XmlDocument copy(*project->Events());
            XmlNode* event = copy.Root()->NodeV(L"/event?name=%s?", name.c_str());
            if (!event) {
                state.SkipWithError("the event to modify is not found");
                return;
            }
            event->SetValue(L"description", round % 2 ? L"Pressure high" : L"Pressure very high");
            *project->Events() = *copy.Root();
        });
        if (round++ == 0)
            first = last;
    }
    double const fillAfter = MillisecondsOf([&] { model.UpdateList(); }); // the loop's timing has ended
    state.counters["first_ms"] = first;
    state.counters["last_ms"] = last;
    state.counters["fill_before_ms"] = fillBefore;
    state.counters["fill_after_ms"] = fillAfter;
    // What the live document holds after the round trips, against the size of its text.
    double const file = static_cast<double>(EventsText(events).size());
    state.counters["live_MemoryUsed_x_file"] = static_cast<double>(project->eventsCfg.MemoryUsed()) / file;
}

} // namespace

BENCHMARK(BM_EventsListFill)->Arg(kListSize)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EventsListRefill)->Arg(kListSize)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EventsListSort)->Arg(kListSize)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EventsPaste)->Arg(1000)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EventsModifyRoundTrip)->Arg(kListSize)->Iterations(8)->Unit(benchmark::kMillisecond);
