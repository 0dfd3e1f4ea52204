// Event templates on a large project: stamping 60 templates over 40 devices (2,400 events,
// the preview included) into the generated 100,000-event project, and the drift report over
// 100,000 stamped events. Each is measured beside the XML library alone doing the walk and
// the copies that the operation cannot avoid, in the same run.
#include "BenchFixtures.h"

#include "platform/drivers/ZoDeviceCatalog.h"
#include "templates/TemplateDrift.h"
#include "templates/TemplateStamp.h"
#include "templates/TemplateStore.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <memory>
#include <string>
#include <unordered_set>

namespace {

using namespace zo::bench;
using namespace zo::templates;
using XmlNode = XmlDocument::XmlNode;

constexpr int kEvents = 100000;
constexpr int kTemplates = 60;
constexpr int kStampDevices = 40;
// The drift report: 40 templates over 2,500 devices.
constexpr int kDriftTemplates = 40;
constexpr int kDriftDevices = 2500;

// A catalog of pump drives, each with the variables the templates name.
std::string PumpCatalogXml(int devices)
{
    std::string xml = "<deviceTree><catalog>";
    for (int d = 1; d <= devices; ++d) {
        xml += "<driver><id>{PUMP-" + std::to_string(d) + "}</id><name>PUMP" + std::to_string(d) +
               "</name><description>Pump " + std::to_string(d) + " drive</description><type>MODBUS</type>"
               "<variable><code>RUNNING</code><type>digital</type></variable>"
               "<variable><code>START_CMD</code><type>digital</type><writable>T</writable></variable>";
        for (int v = 1; v <= kTemplates; ++v)
            xml += "<variable><code>V" + std::to_string(v) + "</code><type>analog</type></variable>";
        xml += "</driver>";
    }
    return xml + "</catalog></deviceTree>";
}

// Template k, shaped like a generated event: every text kind holds a placeholder.
std::string TemplateXml(int k)
{
    std::string const n = std::to_string(k);
    return "<event><id>{TEMPLATE-" + n + "}</id><name>{device} alarm " + n + "</name>"
           "<description>{description}: measure " + n + " out of range</description>"
           "<condition>[{device}.V" + n + "] &gt; 80 AND [{device}.RUNNING] = 1</condition>"
           "<conditionStop>[{device}.V" + n + "] &lt; 70</conditionStop><delayToActivate>10</delayToActivate>"
           "<delayToDeactivate>5</delayToDeactivate><notify>T</notify><record>T</record><disabled>F</disabled>"
           "<rssActivate>T</rssActivate><rssDeactivate>F</rssDeactivate><rssAcknowledge>F</rssAcknowledge>"
           "<annotation>{device} measure " + n + " at %a1</annotation><deaAnnotation>{device} back</deaAnnotation>"
           "<ackAnnotation/><arguments><argument><id>{A-" + n + "}</id><value>[{device}.V" + n +
           "]</value><format>.1</format></argument></arguments>"
           "<actions><activate><force><id>{F-" + n + "}</id><variable>[{device}.START_CMD]</variable><value>0</value>"
           "</force><mail><id>{M-" + n + "}</id><message>{description} measure " + n + " high</message></mail>"
           "</activate><while/><deactivate/><acknowledge/></actions><clientActions><activate><screen><id>{S-" + n +
           "}</id><name>Pumps</name></screen></activate><while/><deactivate/><acknowledge/></clientActions></event>";
}

void AddTemplates(XmlDocument& events, int count)
{
    std::string xml = "<eventTemplates>";
    for (int k = 1; k <= count; ++k)
        xml += TemplateXml(k);
    xml += "</eventTemplates>";
    XmlDocument parsed;
    if (!parsed.Parse(xml.c_str()))
        std::abort();
    *TemplatesElement(events.Root(), true) = *parsed.Root();
}

std::vector<ZoDriver const*> AllDevices(ZoDeviceCatalog const& catalog)
{
    std::vector<ZoDriver const*> devices;
    for (ZoDriver const& device : catalog.Devices())
        devices.push_back(&device);
    return devices;
}

// 60 templates previewed over 40 devices and stamped into 100,000 events: the names read,
// every row previewed, 2,400 events made, registered and linked. Undone after each round
// (outside the timing) through the documents' journals.
void BM_StampTemplates(benchmark::State& state)
{
    auto project = LoadProject(kEvents);
    AddTemplates(project->eventsCfg, kTemplates);
    XmlDocument devices;
    devices.Parse(PumpCatalogXml(kStampDevices).c_str());
    ZoDeviceCatalog catalog;
    catalog.LoadDevices(devices.Root());
    std::vector<ZoDriver const*> const pumps = AllDevices(catalog);
    std::vector<XmlNode*> const templates = Templates(project->eventsCfg.Root());
    std::size_t made = 0;
    for (auto _ : state) {
        state.PauseTiming();
        project->eventsCfg.BeginJournal();
        project->deviceGroups.BeginJournal();
        state.ResumeTiming();
        TemplateStamper stamper(project->eventsCfg.Root());
        for (XmlNode* templateEvent : templates)
            stamper.Preview(templateEvent, pumps);
        made = stamper.Apply(project->deviceGroups.Root()).size();
        state.PauseTiming();
        project->eventsCfg.UndoJournal();
        project->deviceGroups.UndoJournal();
        state.ResumeTiming();
    }
    if (made != static_cast<std::size_t>(kTemplates * kStampDevices))
        state.SkipWithError("not every event was made");
    state.counters["events_made"] = static_cast<double>(made);
}

// Floor: the library reads every event's name into a set (what names are checked against)
// and appends 2,400 copies of the templates to the events.
void BM_PugiStampTemplates(benchmark::State& state)
{
    auto project = LoadProject(kEvents);
    AddTemplates(project->eventsCfg, kTemplates);
    std::string text;
    project->eventsCfg.Root()->CreateXmlCode(text);
    for (auto _ : state) {
        state.PauseTiming();
        pugi::xml_document doc;
        doc.load_buffer(text.data(), text.size());
        state.ResumeTiming();
        pugi::xml_node const root = doc.document_element();
        pugi::xml_node events = root.child("events");
        std::unordered_set<std::string_view> names;
        for (pugi::xml_node event = events.first_child(); event; event = event.next_sibling())
            names.insert(event.child_value("name"));
        for (pugi::xml_node templateEvent : root.child("eventTemplates").children())
            for (int d = 0; d < kStampDevices; ++d)
                events.append_copy(templateEvent);
        benchmark::DoNotOptimize(names.size());
        state.PauseTiming();
        doc.reset();
        state.ResumeTiming();
    }
}

// A project of 100,000 stamped events (40 templates over 2,500 devices); the first
// template then changed, so that 2,500 events drift.
struct StampedProject {
    XmlDocument events;
    XmlDocument devices;
    ZoDeviceCatalog catalog;
};
StampedProject& DriftProject()
{
    static std::unique_ptr<StampedProject> project = [] {
        auto made = std::make_unique<StampedProject>();
        made->events.Create(L"eventsConfiguration");
        made->events.Root()->NewChild(L"events");
        AddTemplates(made->events, kDriftTemplates);
        made->devices.Parse(PumpCatalogXml(kDriftDevices).c_str());
        made->catalog.LoadDevices(made->devices.Root());
        TemplateStamper stamper(made->events.Root());
        for (XmlNode* templateEvent : Templates(made->events.Root()))
            stamper.Preview(templateEvent, AllDevices(made->catalog));
        stamper.Apply(nullptr);
        Templates(made->events.Root()).front()->SetValue(L"delayToActivate", L"15");
        return made;
    }();
    return *project;
}

void BM_TemplateDrift(benchmark::State& state)
{
    StampedProject& project = DriftProject();
    std::size_t drifted = 0;
    int stamped = 0;
    for (auto _ : state) {
        DriftReport const report = FindDrift(project.events.Root(), project.catalog);
        drifted = report.drifted.size();
        stamped = report.stamped;
    }
    if (stamped != kEvents || drifted != static_cast<std::size_t>(kDriftDevices))
        state.SkipWithError("unexpected drift");
    state.counters["stamped"] = stamped;
    state.counters["drifted"] = static_cast<double>(drifted);
}

// Floor: the library walks every element of the 100,000 events and compares each text
// with itself (what the comparison reads), and indexes the events and links by id.
void BM_PugiTemplateDrift(benchmark::State& state)
{
    std::string text;
    DriftProject().events.Root()->CreateXmlCode(text);
    pugi::xml_document doc;
    doc.load_buffer(text.data(), text.size());
    for (auto _ : state) {
        pugi::xml_node const root = doc.document_element();
        std::unordered_set<std::string_view> ids;
        long compared = 0;
        for (pugi::xml_node event : root.child("events").children()) {
            ids.insert(event.child_value("id"));
            for (pugi::xml_node node = event.first_child(); node;) {
                compared += std::string_view(node.text().get()) == node.child_value();
                if (node.first_child() && node.first_child().type() == pugi::node_element) {
                    node = node.first_child();
                    continue;
                }
                while (node && !node.next_sibling() && node != event)
                    node = node.parent();
                if (!node || node == event)
                    break;
                node = node.next_sibling();
            }
        }
        for (pugi::xml_node stamp : root.child("stampedEvents").children())
            compared += ids.count(stamp.child_value("event"));
        benchmark::DoNotOptimize(compared);
    }
}

} // namespace

BENCHMARK(BM_StampTemplates)->Name("BM_StampTemplates/60x40")->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PugiStampTemplates)->Name("BM_PugiStampTemplates/60x40")->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TemplateDrift)->Arg(kEvents)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PugiTemplateDrift)->Arg(kEvents)->Iterations(5)->Unit(benchmark::kMillisecond);
