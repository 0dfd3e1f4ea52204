// The event editor's group and argument lists on an event with many memberships and
// arguments: filling the group list (every reference resolved in the project's groups) and
// sorting it by name, beside the XML library alone resolving the same references, and
// formatting sample values. Each figure comes with its floor from the same run.
#include "config/XmlDocument.h"
#include "editor/ZoArgumentsListModel.h"
#include "editor/ZoEventGroupsListModel.h"
#include "platform/reports/ZoEditTemplateWnd.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <cstdio>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using XmlNode = XmlDocument::XmlNode;

// `count` groups, an event that belongs to all of them (in reverse order, plus one
// reference to a deleted group in every ten) and has `count` arguments.
std::string AnnotatedProject(int count)
{
    std::string text = "<eventsConfiguration><eventsGroups>";
    char buffer[160];
    for (int g = 0; g < count; ++g) {
        std::snprintf(buffer, sizeof buffer, "<eventsGroup><id>{G-%08d}</id><name>Group %d</name></eventsGroup>", g,
                      (g * 7919) % count);
        text += buffer;
    }
    text += "</eventsGroups><event><name>Tank high</name><eventsGroups>";
    for (int g = count - 1; g >= 0; --g) {
        if (g % 10 == 0)
            text += "<eventsGroup>{G-DELETED}</eventsGroup>";
        std::snprintf(buffer, sizeof buffer, "<eventsGroup>{G-%08d}</eventsGroup>", g);
        text += buffer;
    }
    text += "</eventsGroups><arguments>";
    for (int a = 0; a < count; ++a) {
        std::snprintf(buffer, sizeof buffer, "<argument><id>{A-%d}</id><value>[PLC1.LEVEL_%d] * 2</value></argument>",
                      a, a);
        text += buffer;
    }
    return text + "</arguments></event></eventsConfiguration>";
}

struct Loaded {
    XmlDocument doc;
    XmlNode const* groups = nullptr;
    XmlNode const* event = nullptr;
    explicit Loaded(int count)
    {
        std::string const text = AnnotatedProject(count);
        doc.Parse(text.c_str(), text.size());
        groups = doc.Root()->Child(L"eventsGroups");
        event = doc.Root()->Child(L"event");
    }
};

void BM_AnnotationGroupsListFill(benchmark::State& state)
{
    Loaded const project(int(state.range(0)));
    ZoEventGroupsListModel model;
    for (auto _ : state) {
        model.Fill(*project.event, project.groups);
        benchmark::DoNotOptimize(model.rowCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The floor: the XML library alone resolving the same references by id through a hash
// map and collecting the names.
void BM_AnnotationGroupsPugiFloor(benchmark::State& state)
{
    std::string const text = AnnotatedProject(int(state.range(0)));
    pugi::xml_document doc;
    doc.load_buffer(text.data(), text.size());
    pugi::xml_node const root = doc.child("eventsConfiguration");
    for (auto _ : state) {
        std::unordered_map<std::string_view, pugi::xml_node> byId;
        for (pugi::xml_node group : root.child("eventsGroups").children("eventsGroup"))
            byId.emplace(group.child_value("id"), group);
        std::vector<std::string> names;
        for (pugi::xml_node reference : root.child("event").child("eventsGroups").children("eventsGroup")) {
            auto const found = byId.find(reference.child_value());
            if (found != byId.end())
                names.emplace_back(found->second.child_value("name"));
        }
        benchmark::DoNotOptimize(names.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A heading click on the name column, each iteration reversing the last order.
void BM_AnnotationGroupsListSort(benchmark::State& state)
{
    Loaded const project(int(state.range(0)));
    ZoEventGroupsListModel model;
    model.Fill(*project.event, project.groups);
    for (auto _ : state) {
        model.ClickColumn(1);
        benchmark::DoNotOptimize(model.rowCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_AnnotationArgumentsListFill(benchmark::State& state)
{
    Loaded const project(int(state.range(0)));
    ZoArgumentsListModel model;
    for (auto _ : state) {
        model.Fill(project.event);
        benchmark::DoNotOptimize(model.rowCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A sample value in a padded, grouped format, beside snprintf's "%.2f" as the floor.
void BM_AnnotationFormatDouble(benchmark::State& state)
{
    std::wstring out;
    double value = 1234567.891;
    for (auto _ : state) {
        ZoEditTemplateWnd::FormatDouble(out, value, 9, 2, true, true, true);
        benchmark::DoNotOptimize(out.data());
        value += 0.37;
    }
}

void BM_AnnotationFormatSnprintfFloor(benchmark::State& state)
{
    char buffer[64];
    double value = 1234567.891;
    for (auto _ : state) {
        std::snprintf(buffer, sizeof buffer, "%012.2f", value);
        benchmark::DoNotOptimize(buffer);
        value += 0.37;
    }
}

BENCHMARK(BM_AnnotationGroupsPugiFloor)->Arg(1000)->Arg(20000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AnnotationGroupsListFill)->Arg(1000)->Arg(20000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AnnotationGroupsListSort)->Arg(1000)->Arg(20000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AnnotationArgumentsListFill)->Arg(1000)->Arg(20000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AnnotationFormatSnprintfFloor);
BENCHMARK(BM_AnnotationFormatDouble);

} // namespace
