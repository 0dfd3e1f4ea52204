// Any bytes as the event configuration document of a project with templates, over a small
// catalog of three devices: the drift report, then every template stamped over every
// device, the report again, then every drifted event updated and the report once more.
// Aborts when:
//   - a drifted event is not an event of the document, or is reported without a difference;
//   - the stamp makes another number of events than its preview, an event without a fresh id
//     of its own, a name already taken (ignoring case), or an event not registered once;
//   - an event just stamped (from a template with a name and an id of its own, not nested
//     deeper than the comparison goes) is reported as drifted;
//   - after the update, a chosen event of such a template still drifts;
//   - or any sanitizer report.
#include "config/XmlDocument.h"
#include "events/EventNames.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplateDrift.h"
#include "templates/TemplatePlaceholders.h"
#include "templates/TemplateStamp.h"
#include "templates/TemplateStore.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>

namespace {

using XmlNode = XmlDocument::XmlNode;
using namespace zo::templates;

[[noreturn]] void Fail(char const* what)
{
    std::fprintf(stderr, "fuzz_templates: %s\n", what);
    std::abort();
}

constexpr char kDevices[] =
    "<deviceTree><deviceGroups><devices/></deviceGroups><catalog>"
    "<driver><name>PUMP1</name><description>Pump {device} one</description><type>A</type>"
    "<variable><code>RUN</code><type>digital</type></variable><variable><code>T</code><type>analog</type></variable></driver>"
    "<driver><name>PUMP2</name><description></description><type>A</type>"
    "<variable><code>RUN</code><type>digital</type></variable></driver>"
    "<driver><name>M&#233;ter</name><description>&lt;x&gt;</description><type>B</type>"
    "<variable><code>T</code><type>analog</type></variable></driver>"
    "</catalog></deviceTree>";

int Depth(XmlNode const& element)
{
    int deepest = 0;
    std::vector<std::pair<XmlNode const*, int>> pending{{&element, 0}};
    while (!pending.empty()) {
        auto [node, depth] = pending.back();
        pending.pop_back();
        deepest = std::max(deepest, depth);
        for (XmlNode const* child = node->FirstChild(); child; child = child->NextSibling())
            pending.push_back({child, depth + 1});
    }
    return deepest;
}

// Templates whose stamps must not drift: a name, an id no other template has, shallow.
std::set<XmlNode const*> WellFormedTemplates(XmlNode* root)
{
    std::map<std::string, int> ids;
    for (XmlNode* templateEvent : Templates(root))
        ++ids[std::string(templateEvent->ValueUtf8(L"id"))];
    std::set<XmlNode const*> good;
    for (XmlNode* templateEvent : Templates(root)) {
        std::string const id(templateEvent->ValueUtf8(L"id"));
        int names = 0;
        for (XmlNode* key = templateEvent->FirstChild(); key; key = key->NextSibling())
            names += key->HasTag(L"name") && !key->FirstChild();
        if (!id.empty() && ids[id] == 1 && names == 1 && !templateEvent->ValueUtf8(L"name").empty() &&
            Depth(*templateEvent) < 30)
            good.insert(templateEvent);
    }
    return good;
}

void CheckReport(XmlNode* root, DriftReport const& report)
{
    std::set<XmlNode const*> events;
    if (XmlNode* list = root->Child(L"events"))
        for (XmlNode* event = list->FirstChild(); event; event = event->NextSibling())
            events.insert(event);
    for (DriftedEvent const& drifted : report.drifted) {
        if (!events.count(drifted.event))
            Fail("a drifted event is not an event of the document");
        if (drifted.differences.empty())
            Fail("a drifted event without a difference");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    XmlDocument events;
    if (!events.Parse(reinterpret_cast<char const*>(data), size) || !events.Root())
        return 0;
    XmlDocument devices;
    if (!devices.Parse(kDevices))
        Fail("the catalog does not parse");
    ZoDeviceCatalog catalog;
    catalog.LoadDevices(devices.Root());
    catalog.LoadEvents(events.Root());
    XmlNode* root = events.Root();
    CheckReport(root, FindDrift(root, catalog));

    std::set<std::string> idsBefore;
    std::vector<std::wstring> namesBefore;
    if (XmlNode* list = root->Child(L"events")) {
        for (XmlNode* event = list->FirstChild(); event; event = event->NextSibling()) {
            idsBefore.insert(std::string(event->ValueUtf8(L"id")));
            namesBefore.push_back(ZoFromUtf8(event->ValueUtf8(L"name")));
        }
    }
    EventNameSet taken(namesBefore);
    std::vector<ZoDriver const*> all;
    for (ZoDriver const& device : catalog.Devices())
        all.push_back(&device);
    std::set<XmlNode const*> const good = WellFormedTemplates(root);
    TemplateStamper stamper(root);
    for (XmlNode* templateEvent : Templates(root))
        stamper.Preview(templateEvent, all);
    std::map<XmlNode const*, XmlNode const*> templateOf;
    std::vector<XmlNode const*> rowTemplates;
    for (StampRow const& row : stamper.Rows())
        if (row.skip == StampSkip::None)
            rowTemplates.push_back(row.templateEvent);
    int const previewed = stamper.EventCount();
    std::vector<XmlNode*> const made = stamper.Apply(devices.Root()->Child(L"deviceGroups"));
    if (int(made.size()) != previewed)
        Fail("the stamp made another number of events than previewed");
    std::set<std::string> ids;
    std::set<std::string> names;
    for (std::size_t i = 0; i < made.size(); ++i) {
        std::string const id(made[i]->ValueUtf8(L"id"));
        if (id.empty() || idsBefore.count(id) || !ids.insert(id).second)
            Fail("a stamped event without a fresh id of its own");
        std::wstring const name = ZoFromUtf8(made[i]->ValueUtf8(L"name"));
        if (taken.Contains(name) || !names.insert(FoldedName(name)).second)
            Fail("a stamped name is taken");
        templateOf[made[i]] = rowTemplates[i];
        int registered = 0;
        for (XmlNode* device = devices.Root()->Node(L"deviceGroups/devices")->FirstChild(); device;
             device = device->NextSibling())
            registered += device->ValueUtf8(L"id") == id;
        if (registered != 1)
            Fail("a stamped event is not registered once");
    }
    DriftReport report = FindDrift(root, catalog);
    CheckReport(root, report);
    for (DriftedEvent const& drifted : report.drifted) {
        auto const from = templateOf.find(drifted.event);
        if (from != templateOf.end() && good.count(from->second))
            Fail("an event just stamped drifts");
    }

    UpdateFromTemplates(root, catalog, report.drifted);
    std::set<XmlNode const*> updated;
    for (DriftedEvent const& drifted : report.drifted)
        if (good.count(drifted.templateEvent))
            updated.insert(drifted.event);
    DriftReport const after = FindDrift(root, catalog);
    CheckReport(root, after);
    for (DriftedEvent const& drifted : after.drifted)
        if (updated.count(drifted.event) && good.count(drifted.templateEvent))
            Fail("an updated event still drifts");
    return 0;
}
