// Search and replace over a large project: a search whose only match is in the last event,
// and a replace all with one match in every event. Each reports, as counters, the XML
// library alone walking the same fields of the same document in the same run (floor_ms),
// and our time as a multiple of it (x_floor).
#include "BenchFixtures.h"

#include "events/EventSearch.h"
#include "events/ZoEDlgEventsCfg.h"
#include "platform/reports/CDlgSearchReplace.h"
#include "platform/tools/ZoUtf.h"
#include "platform/ui/ZoMessage.h"

#include <QApplication>
#include <QTreeView>
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zo::bench;
using XmlNode = XmlDocument::XmlNode;
using Clock = std::chrono::steady_clock;

int Arg(benchmark::State const& state) { return static_cast<int>(state.range(0)); }

double MsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// ---- the floor: pugixml walking the same fields ----------------------------------------

constexpr char const* kActionKeys[] = {"variable", "value", "command", "parameter", "address", "phone", "message", "name"};
constexpr char const* kEventKeys[] = {"condition", "conditionStop", "delayToActivate", "delayToDeactivate", "annotation"};

// The same search as ours on ASCII texts without match case: the text upper-cased into a
// buffer, then a substring search.
bool ContainsUpper(char const* text, std::string const& upperNeedle, std::string& buffer)
{
    std::size_t const length = std::strlen(text);
    buffer.resize(length);
    for (std::size_t i = 0; i < length; ++i) {
        char const c = text[i];
        buffer[i] = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    }
    return buffer.find(upperNeedle) != std::string::npos;
}

// Calls found(key) for every field of every event that holds the text, in search order,
// until it returns false.
template <class Found>
void PugiWalk(pugi::xml_node events, std::string const& upperNeedle, Found&& found)
{
    std::string buffer;
    for (pugi::xml_node event = events.child("event"); event; event = event.next_sibling("event")) {
        for (char const* side : {"actions", "clientActions"}) {
            for (pugi::xml_node moment : event.child(side).children()) {
                for (pugi::xml_node action : moment.children()) {
                    for (char const* key : kActionKeys) {
                        pugi::xml_node const field = action.child(key);
                        if (field && ContainsUpper(field.child_value(), upperNeedle, buffer) && !found(field))
                            return;
                    }
                }
            }
        }
        for (char const* key : kEventKeys) {
            pugi::xml_node const field = event.child(key);
            if (field && ContainsUpper(field.child_value(), upperNeedle, buffer) && !found(field))
                return;
        }
    }
}

std::unique_ptr<pugi::xml_document> PugiLoad(std::string const& text)
{
    auto doc = std::make_unique<pugi::xml_document>();
    doc->load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    return doc;
}

// Replaces every occurrence of needle (plain ASCII, as in the benchmark) in the field.
void PugiReplace(pugi::xml_node field, std::string const& needle, std::string const& replacement)
{
    std::string text = field.child_value();
    std::string out;
    std::size_t from = 0;
    for (std::size_t hit = text.find(needle); hit != std::string::npos; hit = text.find(needle, from)) {
        out.append(text, from, hit - from);
        out += replacement;
        from = hit + needle.size();
    }
    out.append(text, from, std::string::npos);
    field.text().set(out.c_str());
}

void ReportFloor(benchmark::State& state, double ownMs, double floorMs)
{
    double const n = static_cast<double>(state.iterations());
    state.counters["floor_ms"] = floorMs / n;
    state.counters["x_floor"] = floorMs > 0 ? ownMs / floorMs : 0;
}

// ---- ours -------------------------------------------------------------------------------

constexpr char const* kMark = "ZQX_ONLY_HERE";

// Find next from the first event, when the only match is in the last one: the walk, then
// what the list does before its editor shows (a working copy of the events and the event
// found in it by name).
void BM_SearchNext(benchmark::State& state)
{
    int const events = Arg(state);
    auto project = LoadProject(events);
    XmlNode* last = project->Events()->FirstChild();
    while (last->NextSibling())
        last = last->NextSibling();
    last->SetValue(L"conditionStop", last->Value(L"conditionStop", L"") + L" AND " + ZoFromUtf8(kMark));
    std::string text;
    project->eventsCfg.Root()->CreateXmlCode(text);
    auto pugi = PugiLoad(text);
    std::string const upper = kMark;
    EventTextMatcher const matcher(L"zqx_only_here", false);

    double floorMs = 0;
    bool ok = true;
    double ownMs = 0;
    double walkMs = 0; // the walk alone, without the working copy
    for (auto _ : state) {
        auto const own = Clock::now();
        EventSearch search;
        search.Reset(project->Events(), nullptr);
        std::optional<EventSearchMatch> const match = search.FindNext(matcher);
        walkMs += MsSince(own);
        ok = ok && match && match->event == last;
        XmlDocument copy(*project->Events());
        std::wstring const name = ZoFromUtf8(last->ValueUtf8(L"name"));
        benchmark::DoNotOptimize(copy.Root()->NodeV(L"/event?name=%s?", name.c_str()));
        ownMs += MsSince(own);

        state.PauseTiming();
        auto const start = Clock::now();
        int hits = 0;
        PugiWalk(pugi->child(zo::docgen::kEventsRootTag).child("events"), upper, [&](pugi::xml_node) { ++hits; return false; });
        floorMs += MsSince(start);
        ok = ok && hits == 1;
        state.ResumeTiming();
    }
    if (!ok)
        state.SkipWithError("the search did not find the one match in the last event");
    ReportFloor(state, ownMs, floorMs);
    state.counters["walk_ms"] = walkMs / static_cast<double>(state.iterations());
}

// The pugixml floor of BM_SearchNext as a benchmark of its own, timed like ours.
void BM_SearchNextPugiFloor(benchmark::State& state)
{
    auto project = LoadProject(Arg(state));
    std::string text;
    project->eventsCfg.Root()->CreateXmlCode(text);
    project.reset();
    auto pugi = PugiLoad(text);
    for (auto _ : state) {
        int hits = 0;
        PugiWalk(pugi->child(zo::docgen::kEventsRootTag).child("events"), kMark, [&](pugi::xml_node) { ++hits; return false; });
        benchmark::DoNotOptimize(hits);
    }
}

// Replace all over every event, where each event's annotation holds "%g1" once. The runs
// alternate between "%g1" -> "%g2" and back, so each does the same work.
void BM_SearchReplaceAll(benchmark::State& state)
{
    int const events = Arg(state);
    auto project = LoadProject(events);
    auto pugi = PugiLoad(EventsText(events));
    pugi::xml_node const pugiEvents = pugi->child(zo::docgen::kEventsRootTag).child("events");

    double floorMs = 0;
    bool ok = true;
    double ownMs = 0;
    int round = 0;
    for (auto _ : state) {
        bool const forth = round++ % 2 == 0;
        std::wstring const from = forth ? L"%g1" : L"%g2";
        std::wstring const to = forth ? L"%g2" : L"%g1";
        auto const own = Clock::now();
        EventSearch search;
        search.Reset(project->Events(), nullptr);
        EventReplaceAllResult const result = search.ReplaceAll(EventTextMatcher(from, false), to);
        ownMs += MsSince(own);
        ok = ok && result.fields == events && result.occurrences == events;

        state.PauseTiming();
        std::string const needle = ZoToUtf8(from);
        std::string const replacement = ZoToUtf8(to);
        auto const start = Clock::now();
        int replaced = 0;
        PugiWalk(pugiEvents, forth ? "%G1" : "%G2", [&](pugi::xml_node field) {
            PugiReplace(field, needle, replacement);
            ++replaced;
            return true;
        });
        floorMs += MsSince(start);
        ok = ok && replaced == events;
        state.ResumeTiming();
    }
    if (!ok)
        state.SkipWithError("replace all did not replace one occurrence in each event");
    ReportFloor(state, ownMs, floorMs);
}

// Replace all as the user does it in the events list of the host: the list of every event
// shown, the host's journal running, the search dialog open on the first event; from the
// request until the message (answered at once) and the list painted again. The runs
// alternate between `from` -> `to` and back, so each does the same work. The label is the
// message's count; counters: the fields replaced by the floor (the library walking and
// replacing the same fields, floor_ms, x_floor).
void ListReplaceAll(benchmark::State& state, std::wstring const& from, std::wstring const& to)
{
    int const events = Arg(state);
    auto project = LoadProject(events);
    auto pugi = PugiLoad(EventsText(events));
    pugi::xml_node const pugiEvents = pugi->child(zo::docgen::kEventsRootTag).child("events");
    XmlDocument timeTables;
    timeTables.Create(L"timeTables");
    XmlDocument users;
    users.Create(L"usersBD");
    ZoEDlgEventsCfg list(nullptr, project->deviceGroups.Root(), &project->eventsCfg, &timeTables, &users);
    list.EnsureInitialized();
    list.show();
    QApplication::processEvents();
    auto* view = list.findChild<QAbstractItemView*>("eventsList");
    view->selectionModel()->select(view->model()->index(0, 0),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    std::vector<std::wstring> messages;
    ZoMessageAnswerer const previous = ZoGetMessageAnswerer();
    ZoSetMessageAnswerer([&](ZoMessage const& message) {
        messages.push_back(message.text);
        return ZoAnswer::Ok;
    });

    double floorMs = 0;
    double ownMs = 0;
    int round = 0;
    int floorFields[2] = {-1, -1};
    bool same = true;
    for (auto _ : state) {
        state.PauseTiming();
        bool const forth = round++ % 2 == 0;
        ZoSearchReplaceRequest request;
        request.find = forth ? from : to;
        request.replace = forth ? to : from;
        request.command = ZoSearchReplaceRequest::kReplaceAll;
        list.OnGroupsSearchReplace();
        project->eventsCfg.BeginJournal();
        messages.clear();
        state.ResumeTiming();

        auto const own = Clock::now();
        list.OnCtrlSearchReplace(0, request);
        QApplication::processEvents();
        ownMs += MsSince(own);

        state.PauseTiming();
        project->eventsCfg.EndJournal();
        same = same && messages.size() == 1 && view->model()->rowCount() == events
            && view->selectionModel()->isRowSelected(0, {});
        std::string const needle = ZoToUtf8(request.find);
        std::string upper = needle;
        for (char& c : upper)
            c = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
        auto const start = Clock::now();
        int replaced = 0;
        PugiWalk(pugiEvents, upper, [&](pugi::xml_node field) {
            PugiReplace(field, needle, ZoToUtf8(request.replace));
            ++replaced;
            return true;
        });
        floorMs += MsSince(start);
        int& seen = floorFields[forth ? 0 : 1];
        same = same && (seen < 0 || seen == replaced);
        seen = replaced;
        state.ResumeTiming();
    }
    ZoSetMessageAnswerer(previous);
    if (!same || (round > 1 && floorFields[0] != floorFields[1]))
        state.SkipWithError("replace all did not do the same work each time, or the list lost its rows");
    ReportFloor(state, ownMs, floorMs);
    state.counters["fields"] = floorFields[0];
    if (!messages.empty())
        state.SetLabel(ZoToUtf8(messages.back().substr(messages.back().find(L'\n') + 1)));
}

// One replacement in each event: its annotation's "%g1".
void BM_ListReplaceAllOnePerEvent(benchmark::State& state)
{
    ListReplaceAll(state, L"%g1", L"%g2");
}

// The prefix of every device name: "PLC" in every condition and every action that names a
// variable.
void BM_ListReplaceAllDevicePrefix(benchmark::State& state)
{
    ListReplaceAll(state, L"PLC", L"CTL");
}

} // namespace

BENCHMARK(BM_SearchNext)->Arg(100000)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchNextPugiFloor)->Arg(100000)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchReplaceAll)->Arg(100000)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListReplaceAllOnePerEvent)->Arg(100000)->Iterations(6)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListReplaceAllDevicePrefix)->Arg(100000)->Iterations(6)->Unit(benchmark::kMillisecond);
