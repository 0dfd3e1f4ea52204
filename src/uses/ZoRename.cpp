#include "uses/ZoRename.h"

#include "platform/drivers/ZoEventVariables.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoIds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplateStore.h"
#include "uses/ZoEventFields.h"
#include "uses/ZoFormulaReferences.h"
#include "uses/ZoProjectNames.h"

#include <unordered_map>

using namespace zo::uses;

namespace {

bool Refuse(std::wstring& error, unsigned text, std::wstring const& a, std::wstring const& b = {})
{
    error = ZoFormat(ZoLoadString(text).c_str(), a.c_str(), b.c_str());
    return false;
}

// The planner is handed the documents to change; the walk and the lookups read them.
XmlNode* Writable(XmlNode const* node)
{
    return const_cast<XmlNode*>(node);
}

// What the references are rewritten from and into.
struct Rewrite {
    std::wstring device;      // the device the references name
    std::wstring code;        // Variable: the code; empty: any
    ZoReferencePart part = ZoReferencePart::Device;
    std::wstring replacement;
    bool deviceActions = false; // device actions naming `device` are renamed too
};

// The changes to the events' fields that the rewrite makes.
void CollectEventChanges(XmlNode const* eventsRoot, Rewrite const& rewrite, ZoRenamePlan& plan)
{
    std::string const needle = ZoToUtf8(rewrite.device);
    ForEachEventField(eventsRoot, [&](FieldPlace const& place, FieldKind kind, XmlNode const& node) {
        std::string_view const text = node.TextUtf8();
        ZoRenameChange change;
        if (kind == FieldKind::DeviceName && rewrite.deviceActions && text == needle) {
            change.before = rewrite.device;
            change.after = rewrite.replacement;
        } else if (kind == FieldKind::Formula && text.find(needle) != std::string_view::npos) {
            change.before = ZoFromUtf8(text);
            change.after = ZoRewriteReferences(change.before, rewrite.device, rewrite.code, rewrite.part,
                                               rewrite.replacement, change.count);
            if (change.count == 0)
                return;
        } else {
            return;
        }
        change.place = PlaceFinding(eventsRoot, place);
        change.place.rule = "rename";
        change.node = Writable(&node);
        plan.references += change.count;
        plan.changes.push_back(std::move(change));
    });
}

// The positions of node and its parents among their siblings, from the root's children down.
std::vector<std::uint32_t> PathOf(XmlNode const& node)
{
    std::vector<std::uint32_t> path;
    for (XmlNode const* step = &node; step->Parent(); step = step->Parent())
        path.insert(path.begin(), PositionIn(*step));
    return path;
}

// The change of a catalog element's own name (a driver's `name`, a variable's `code`).
ZoRenameChange DefinitionChange(XmlNode const& driver, XmlNode const& key, std::wstring const& after)
{
    ZoRenameChange change;
    change.place.severity = ZoSeverity::Note;
    change.place.rule = "rename";
    change.place.file = zo::project::ProjectDoc::Devices;
    change.place.subject = ZoCheckSubject::Registration;
    change.place.name = ZoFromUtf8(driver.ValueUtf8(L"name"));
    change.place.id = ZoFromUtf8(driver.ValueUtf8(L"id"));
    change.place.field = ZoCheckField::Name;
    change.place.path = PathOf(key);
    change.node = Writable(&key);
    change.before = ZoFromUtf8(key.TextUtf8());
    change.after = after;
    return change;
}

// A stamped event remembers the device it was stamped over: the link follows the device's
// new name, so that the event stays in step with its template (an update from the template
// then brings its texts to the new name).
void CollectStampChanges(XmlNode* eventsRoot, ZoRenameRequest const& request, ZoRenamePlan& plan)
{
    std::string const oldName = ZoToUtf8(request.oldName);
    std::vector<zo::templates::StampLink> links;
    for (zo::templates::StampLink const& link : zo::templates::StampLinks(eventsRoot))
        if (link.device == oldName)
            links.push_back(link);
    if (links.empty())
        return;
    // The linked events' names, found in one walk of the events.
    std::unordered_map<std::string_view, XmlNode const*> byId;
    for (zo::templates::StampLink const& link : links)
        byId.emplace(link.eventId, nullptr);
    if (XmlNode const* events = eventsRoot->Child(L"events"))
        for (XmlNode const* event = events->FirstChild(); event; event = event->NextSibling())
            if (auto found = byId.find(event->ValueUtf8(L"id")); found != byId.end())
                found->second = event;
    for (zo::templates::StampLink const& link : links) {
        XmlNode const* event = byId[link.eventId];
        XmlNode* key = link.stamp->Child(zo::templates::kStampDeviceKey);
        if (!event || !key)
            continue; // a link whose event is gone is dropped at the next stamp or update
        ZoRenameChange change;
        change.place.rule = "rename";
        change.place.file = zo::project::ProjectDoc::Events;
        change.place.subject = ZoCheckSubject::Event;
        change.place.name = ZoFromUtf8(event->ValueUtf8(L"name"));
        change.place.id = ZoFromUtf8(link.eventId);
        change.place.path = PathOf(*key);
        change.node = key;
        change.before = request.oldName;
        change.after = request.newName;
        plan.changes.push_back(std::move(change));
    }
}

bool PlanDevice(XmlDocument& events, XmlDocument& devices, ZoRenameRequest const& request, ZoRenamePlan& plan,
                std::wstring& error)
{
    if (request.oldName.starts_with(kZoEventsDevicePrefix))
        return Refuse(error, 64711, request.oldName);
    XmlNode const* driver = FindDriver(devices.Root(), request.oldName);
    if (!driver)
        return Refuse(error, 64700, request.oldName);
    if (!ZoIsValidDeviceName(request.newName))
        return Refuse(error, 64712, request.newName);
    if (FindDriver(devices.Root(), request.newName))
        return Refuse(error, 64713, request.newName);
    plan.changes.push_back(DefinitionChange(*driver, *driver->Child(L"name"), request.newName));
    Rewrite const rewrite{request.oldName, {}, ZoReferencePart::Device, request.newName, true};
    CollectEventChanges(events.Root(), rewrite, plan);
    CollectStampChanges(events.Root(), request, plan);
    return true;
}

bool PlanVariable(XmlDocument& events, XmlDocument& devices, ZoRenameRequest const& request, ZoRenamePlan& plan,
                  std::wstring& error)
{
    if (request.device.starts_with(kZoEventsDevicePrefix))
        return Refuse(error, 64716, request.device);
    XmlNode const* driver = FindDriver(devices.Root(), request.device);
    if (!driver)
        return Refuse(error, 64700, request.device);
    XmlNode const* variable = FindVariable(driver, request.oldName);
    if (!variable)
        return Refuse(error, 64706, request.device, request.oldName);
    if (!ZoIsValidVariableCode(request.newName))
        return Refuse(error, 64714, request.newName);
    if (FindVariable(driver, request.newName))
        return Refuse(error, 64715, request.device, request.newName);
    plan.changes.push_back(DefinitionChange(*driver, *variable->Child(L"code"), request.newName));
    Rewrite const rewrite{request.device, request.oldName, ZoReferencePart::Code, request.newName, false};
    CollectEventChanges(events.Root(), rewrite, plan);
    return true;
}

bool PlanEvent(XmlDocument& events, ZoRenameRequest const& request, ZoRenamePlan& plan, std::wstring& error)
{
    XmlNode const* event = FindEvent(events.Root(), request.oldName);
    if (!event)
        return Refuse(error, 64701, request.oldName);
    if (!ZoIsValidEventName(request.newName))
        return Refuse(error, 64717, request.newName);
    if (FindEventFolded(events.Root(), request.newName, event))
        return Refuse(error, 64718, request.newName);
    FieldPlace place;
    place.event = event;
    place.position = PositionIn(*event);
    place.field = ZoCheckField::Name;
    ZoRenameChange own;
    own.place = PlaceFinding(events.Root(), place);
    own.place.rule = "rename";
    own.node = Writable(event->Child(L"name"));
    own.before = request.oldName;
    own.after = request.newName;
    plan.changes.push_back(std::move(own));
    for (ZoRenameChange& change : ZoEventReferenceChanges(events, request.oldName, request.newName)) {
        plan.references += change.count;
        plan.changes.push_back(std::move(change));
    }
    return true;
}

// Blanks and the characters that end or split a reference in a formula.
bool BreaksReference(std::wstring const& name, std::wstring_view more)
{
    return name.find_first_of(L"[]") != std::wstring::npos || name.find_first_of(more) != std::wstring::npos;
}

} // namespace

bool ZoIsValidDeviceName(std::wstring const& name)
{
    return IsValidId(name.c_str(), true) && !BreaksReference(name, L"") && !name.starts_with(kZoEventsDevicePrefix) &&
           name.back() != L'.';
}

bool ZoIsValidVariableCode(std::wstring const& code)
{
    return IsValidId(code.c_str(), true) && !BreaksReference(code, L". ");
}

bool ZoIsValidEventName(std::wstring const& name)
{
    return IsValidId(name.c_str(), true) && !BreaksReference(name, L"");
}

bool ZoPlanRename(XmlDocument& events, XmlDocument& devices, ZoRenameRequest const& request, ZoRenamePlan& plan,
                  std::wstring& error)
{
    plan = ZoRenamePlan();
    if (request.newName == request.oldName)
        return Refuse(error, 64710, request.newName);
    bool planned = false;
    switch (request.kind) {
    case ZoRenameKind::Device: planned = PlanDevice(events, devices, request, plan, error); break;
    case ZoRenameKind::Variable: planned = PlanVariable(events, devices, request, plan, error); break;
    case ZoRenameKind::Event: planned = PlanEvent(events, request, plan, error); break;
    }
    if (!planned) {
        plan = ZoRenamePlan();
        return false;
    }
    for (ZoRenameChange const& change : plan.changes) {
        bool const inDevices = change.place.file == zo::project::ProjectDoc::Devices;
        plan.touchesDevices |= inDevices;
        plan.touchesEvents |= !inDevices;
    }
    return true;
}

std::vector<ZoRenameChange> ZoEventReferenceChanges(XmlDocument& events, std::wstring const& oldName,
                                                    std::wstring const& newName)
{
    std::wstring const prefix(kZoEventsDevicePrefix);
    ZoRenamePlan plan;
    CollectEventChanges(events.Root(), Rewrite{prefix + oldName, {}, ZoReferencePart::Device, prefix + newName, false},
                        plan);
    return std::move(plan.changes);
}

void ZoApplyRename(std::vector<ZoRenameChange> const& changes)
{
    for (ZoRenameChange const& change : changes)
        change.node->SetValue(change.after);
}
