// Any bytes pasted into the events list as an events clipboard text, into a small project
// of a few events registered in nested device groups. Afterwards:
//   - every `event` under `events` has a non-empty name and an id;
//   - each pasted event has an id of its own: none of the clipboard's ids, none of the
//     project's, and no two pasted events share one;
//   - each pasted name is free among the names the list had before the paste;
//   - each pasted event is registered exactly once as a device;
//   - as many events are pasted as the clipboard holds named `event` elements.
#include "EventDocGenerator.h"
#include "config/XmlDocument.h"
#include "events/EventNames.h"
#include "events/EventsClipboard.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using XmlNode = XmlDocument::XmlNode;

[[noreturn]] void Fail(char const* what, std::wstring const& detail = {})
{
    std::fprintf(stderr, "fuzz_events_paste: %s %ls\n", what, detail.c_str());
    std::abort();
}

struct Project {
    XmlDocument eventsCfg;
    XmlDocument deviceGroups;
};

// The project before any paste, parsed once; each input works on a fresh deep copy.
Project const& Pristine()
{
    static Project const* project = [] {
        auto* loaded = new Project;
        zo::docgen::EventDocShape shape;
        shape.events = 4;
        shape.timeTables = 3;
        shape.eventGroups = 2;
        shape.deviceGroupDepth = 2;
        if (!zo::docgen::LoadGenerated(loaded->eventsCfg, zo::docgen::MakeEventsDocumentXml(shape)) ||
            !zo::docgen::LoadGenerated(loaded->deviceGroups, zo::docgen::MakeDeviceGroupsXml(shape)))
            Fail("the generated project does not parse");
        return loaded;
    }();
    return *project;
}

std::vector<XmlNode*> EventsOf(XmlDocument& doc)
{
    std::vector<XmlNode*> events;
    XmlNode* container = doc.Root() ? doc.Root()->Child(L"events") : nullptr;
    if (!container)
        return events;
    for (auto it = container->ChildsBegin(); it != container->ChildsEnd(); ++it)
        if ((*it)->HasTag(L"event"))
            events.push_back(*it);
    return events;
}

// How many devices of each id the device tree holds, at any depth.
std::map<std::wstring, int> DeviceCounts(XmlNode* deviceGroups)
{
    std::map<std::wstring, int> counts;
    std::deque<XmlNode*> queue{deviceGroups};
    while (!queue.empty()) {
        XmlNode* group = queue.front();
        queue.pop_front();
        if (XmlNode* devices = group->Child(L"devices"))
            for (auto it = devices->ChildsBegin(); it != devices->ChildsEnd(); ++it)
                if ((*it)->HasTag(L"device"))
                    ++counts[(*it)->Value(L"id", L"")];
        if (XmlNode* groups = group->Child(L"groups"))
            for (auto it = groups->ChildsBegin(); it != groups->ChildsEnd(); ++it)
                queue.push_back(*it);
    }
    return counts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const*>(data), size);

    Project project{XmlDocument(*Pristine().eventsCfg.Root()), XmlDocument(*Pristine().deviceGroups.Root())};

    // What the list knew before the paste.
    std::set<std::wstring> idsBefore;
    std::vector<std::wstring> namesBefore;
    for (XmlNode* event : EventsOf(project.eventsCfg)) {
        idsBefore.insert(event->Value(L"id", L""));
        namesBefore.push_back(event->Value(L"name", L""));
    }
    EventNameSet const taken(namesBefore);
    std::map<std::wstring, int> const devicesBefore = DeviceCounts(project.deviceGroups.Root());

    // What the clipboard holds, read the way paste reads it (up to the first NUL).
    std::set<std::wstring> clipboardIds;
    std::size_t namedEvents = 0;
    bool const isClipboard = IsEventsClipboardText(text);
    if (isClipboard) {
        std::string_view const upToNul = text.substr(0, text.find('\0'));
        XmlDocument clipboard;
        if (!clipboard.Parse(upToNul.data(), upToNul.size()))
            Fail("IsEventsClipboardText accepted a text that does not parse");
        for (auto it = clipboard.Root()->ChildsBegin(); it != clipboard.Root()->ChildsEnd(); ++it) {
            if (!(*it)->HasTag(L"event"))
                continue;
            clipboardIds.insert((*it)->Value(L"id", L""));
            if (!(*it)->Value(L"name", L"").empty())
                ++namedEvents;
        }
    }

    std::vector<XmlNode*> pasted;
    bool const ok = PasteEventsText(text, project.eventsCfg, project.deviceGroups.Root(), taken, &pasted);
    if (ok != isClipboard)
        Fail("PasteEventsText and IsEventsClipboardText disagree");
    if (pasted.size() != namedEvents)
        Fail("the number of pasted events differs from the clipboard's named events");

    for (XmlNode* event : EventsOf(project.eventsCfg)) {
        if (event->Value(L"name", L"").empty())
            Fail("an event without a name");
        if (event->Value(L"id", L"").empty())
            Fail("an event without an id");
    }

    std::map<std::wstring, int> const devicesAfter = DeviceCounts(project.deviceGroups.Root());
    std::set<std::wstring> pastedIds;
    for (XmlNode* event : pasted) {
        if (!event || !event->HasTag(L"event") || event->Parent() != project.eventsCfg.Root()->Child(L"events"))
            Fail("a pasted element is not an event of the events element");
        std::wstring const id = event->Value(L"id", L"");
        std::wstring const name = event->Value(L"name", L"");
        if (clipboardIds.count(id) || idsBefore.count(id))
            Fail("a pasted event kept an existing id:", id);
        if (!pastedIds.insert(id).second)
            Fail("two pasted events share an id:", id);
        if (taken.Contains(name))
            Fail("a pasted name clashes with the list before the paste:", name);
        auto const registered = devicesAfter.find(id);
        if (registered == devicesAfter.end() || registered->second != 1)
            Fail("a pasted event is not registered exactly once:", id);
    }
    // Nothing else of the device tree changed.
    for (auto const& [id, count] : devicesBefore) {
        auto const after = devicesAfter.find(id);
        if (after == devicesAfter.end() || after->second != count)
            Fail("a device registration of the project changed:", id);
    }
    return 0;
}
