// The timeline: one event's year of allowed intervals, and the coverage of one week by the
// notifying events of the generated project, each with the XML library's floor in the same
// run (BenchFloor.h).
#include "BenchFixtures.h"
#include "BenchFloor.h"
#include "timeline/ZoTimeTableCoverage.h"
#include "timeline/ZoTimeline.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <memory>
#include <string>

namespace {

using namespace zo::bench;
using XmlNode = XmlDocument::XmlNode;

std::unique_ptr<pugi::xml_document> PugiOf(XmlDocument const& doc)
{
    std::string text;
    doc.Root()->CreateXmlCode(text);
    auto pugiDoc = std::make_unique<pugi::xml_document>();
    pugiDoc->load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    return pugiDoc;
}

// Floor: the library reads every slot, week entry and calendar date of the time tables,
// what any resolution of one table must at least look at once.
std::size_t PugiReadTimeTables(pugi::xml_node root)
{
    std::size_t bytes = 0;
    for (pugi::xml_node container : root.children())
        for (pugi::xml_node table : container.children())
            for (pugi::xml_node key : table.children()) {
                bytes += std::char_traits<char>::length(key.text().get());
                for (pugi::xml_node inner : key.children())
                    for (pugi::xml_node entry : inner.children())
                        bytes += std::char_traits<char>::length(entry.text().get());
            }
    return bytes;
}

// The id of the first table of that container in the generated time tables.
std::wstring FirstId(wchar_t const* container)
{
    XmlNode const* tables = TimeTables().Root()->Child(container);
    XmlNode const* first = tables ? tables->FirstChild() : nullptr;
    return first ? first->Value(L"id", L"") : std::wstring();
}

// A year of one event's intervals as the timeline window computes it: the time tables
// resolved from the tree, then the intervals of a week program over 365 days.
void BM_TimelineYear(benchmark::State& state)
{
    std::wstring const week = FirstId(L"weeks");
    auto const pugiDoc = PugiOf(TimeTables());
    QDate const from(2026, 1, 1);
    std::size_t intervals = 0;
    double ours = 0;
    std::int64_t rounds = 0;
    for (auto _ : state) {
        ours += MillisecondsOf([&] {
            ZoTimeTableResolution const tables(TimeTables().Root());
            intervals = ZoAllowedIntervals(tables, week, from, from.addDays(364)).size();
        });
        ++rounds;
    }
    std::size_t bytes = 0;
    double const floor = MillisecondsOfRounds(rounds, [&] { bytes += PugiReadTimeTables(pugiDoc->document_element()); });
    benchmark::DoNotOptimize(bytes);
    state.counters["intervals"] = static_cast<double>(intervals);
    ReportAgainstFloor(state, rounds, "timeline_ms", ours, "pugi_read_ms", floor, "x_pugi_read");
}

// Floor: the library walks the events and reads what the coverage reads of each (notify,
// disabled, timeTable).
std::size_t PugiReadCoverageKeys(pugi::xml_node root)
{
    std::size_t notifying = 0;
    for (pugi::xml_node event = root.child("events").child("event"); event; event = event.next_sibling("event")) {
        bool const counted = std::string_view(event.child("notify").text().get()) == "T"
                             && std::string_view(event.child("disabled").text().get()) == "F";
        benchmark::DoNotOptimize(event.child("timeTable").text().get());
        notifying += counted;
    }
    return notifying;
}

// The coverage of one week by the project's notifying events, from the tree.
void BM_TimeTableCoverage(benchmark::State& state)
{
    auto project = LoadProject(static_cast<int>(state.range(0)));
    auto const pugiDoc = PugiOf(project->eventsCfg);
    int peak = 0;
    int notifying = 0;
    double ours = 0;
    std::int64_t rounds = 0;
    for (auto _ : state) {
        ours += MillisecondsOf([&] {
            ZoTimeTableResolution const tables(TimeTables().Root());
            ZoTimeTableCoverage const coverage(project->Events(), tables, QDate(2026, 12, 21));
            peak = coverage.Peak();
            notifying = coverage.NotifyingCount();
        });
        ++rounds;
    }
    std::size_t read = 0;
    double const floor = MillisecondsOfRounds(rounds, [&] { read += PugiReadCoverageKeys(pugiDoc->document_element()); });
    benchmark::DoNotOptimize(read);
    state.counters["notifying"] = notifying;
    state.counters["peak"] = peak;
    ReportAgainstFloor(state, rounds, "coverage_ms", ours, "pugi_walk_ms", floor, "x_pugi_walk");
}

} // namespace

BENCHMARK(BM_TimelineYear)->Unit(benchmark::kMicrosecond)->Iterations(2000);
BENCHMARK(BM_TimeTableCoverage)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);
