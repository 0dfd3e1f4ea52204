// Applying an import plan to the documents, and checking what it imports.
#include "spreadsheet/EventsImport.h"

#include "check/ZoProjectChecker.h"
#include "editor/ZoEventFields.h"
#include "events/DeviceRegistration.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoUtf.h"
#include "project/ProjectFiles.h"

#include <unordered_map>
#include <unordered_set>

using XmlNode = XmlDocument::XmlNode;

namespace {

// Sets the first child `key` to the text, appending it when there is none.
void SetKey(XmlNode& element, wchar_t const* key, std::string_view utf8)
{
    XmlNode* child = element.Child(key);
    if (!child)
        child = element.NewChild(key);
    child->SetValueUtf8(utf8);
}

// Sets the key to the text, or removes it when the text is empty: the keys whose presence
// means something (a stop condition switched on, a time table chosen).
void SetOrEraseKey(XmlNode& element, wchar_t const* key, std::string_view utf8)
{
    if (utf8.empty())
        element.EraseTag(key);
    else
        SetKey(element, key, utf8);
}

XmlNode& ChildOrNew(XmlNode& element, wchar_t const* tag)
{
    XmlNode* child = element.Child(tag);
    return child ? *child : *element.NewChild(tag);
}

wchar_t const* KeyOf(ZoSheetColumn column)
{
    switch (column) {
    case ZoSheetColumn::Name: return L"name";
    case ZoSheetColumn::Description: return L"description";
    case ZoSheetColumn::Notify: return L"notify";
    case ZoSheetColumn::Record: return L"record";
    case ZoSheetColumn::Condition: return L"condition";
    case ZoSheetColumn::DelayToActivate: return L"delayToActivate";
    case ZoSheetColumn::DelayToDeactivate: return L"delayToDeactivate";
    case ZoSheetColumn::Annotation: return L"annotation";
    case ZoSheetColumn::DeaAnnotation: return L"deaAnnotation";
    case ZoSheetColumn::AckAnnotation: return L"ackAnnotation";
    case ZoSheetColumn::RssActivate: return L"rssActivate";
    case ZoSheetColumn::RssDeactivate: return L"rssDeactivate";
    case ZoSheetColumn::RssAcknowledge: return L"rssAcknowledge";
    default: return nullptr;
    }
}

class Applier {
public:
    Applier(ZoImportPlan const& plan, ZoImportTarget const& target) : m_plan(plan), m_target(target) {}

    std::vector<ZoAppliedEvent> Run()
    {
        std::vector<ZoAppliedEvent> applied;
        XmlNode* root = m_target.events ? m_target.events->Root() : nullptr;
        if (!root || m_plan.Refused())
            return applied;
        m_root = root;
        AddGroups();
        applied.reserve(m_plan.modified.size() + m_plan.added.size());
        for (ZoImportedEvent const& event : m_plan.modified) {
            Modify(*event.event, event);
            applied.push_back({event.event, event.line});
        }
        XmlNode* deviceGroups = m_target.devices && m_target.devices->Root()
                                    ? m_target.devices->Root()->Child(zo::project::kDeviceGroupsTag)
                                    : nullptr;
        if (!m_plan.added.empty()) {
            XmlNode& events = ChildOrNew(*root, L"events");
            for (ZoImportedEvent const& event : m_plan.added) {
                XmlNode& created = Add(events, event);
                AddEventToDeviceGroupsNode(deviceGroups, created);
                applied.push_back({&created, event.line});
            }
        }
        Delete(deviceGroups);
        return applied;
    }

private:
    void AddGroups()
    {
        if (!m_plan.newGroups.empty()) {
            XmlNode& groups = ChildOrNew(*m_root, L"eventsGroups");
            for (std::string const& name : m_plan.newGroups) {
                XmlNode* group = groups.NewChild(L"eventsGroup");
                group->SetValue(L"id", ZoNewGuidText());
                SetKey(*group, L"name", name);
            }
        }
        // Names resolve to the first group that bears them, as the editor finds them.
        if (XmlNode const* groups = m_root->Child(L"eventsGroups"))
            for (XmlNode const* group = groups->FirstChild(); group; group = group->NextSibling())
                if (group->HasTag(L"eventsGroup"))
                    m_groupIds.emplace(group->ValueUtf8(L"name"), group->ValueUtf8(L"id"));
    }

    void Modify(XmlNode& event, ZoImportedEvent const& imported)
    {
        for (ZoFieldChange const& change : imported.changes)
            Write(event, imported, change);
    }

    void Write(XmlNode& event, ZoImportedEvent const& imported, ZoFieldChange const& change)
    {
        if (wchar_t const* key = KeyOf(change.column)) {
            SetKey(event, key, change.after);
            return;
        }
        switch (change.column) {
        case ZoSheetColumn::Enabled:
            SetKey(event, L"disabled", change.after == "T" ? "F" : "T");
            break;
        case ZoSheetColumn::StopCondition:
            // The element exists exactly when the stop condition is on.
            SetOrEraseKey(event, L"conditionStop", change.after);
            break;
        case ZoSheetColumn::TimeTable:
            SetOrEraseKey(event, L"timeTable", imported.timeTableId);
            break;
        case ZoSheetColumn::Groups:
            WriteGroups(event, imported.groups);
            break;
        case ZoSheetColumn::Arguments:
            WriteArguments(event, imported.arguments);
            break;
        default:
            break;
        }
    }

    void WriteGroups(XmlNode& event, std::vector<std::string> const& names)
    {
        XmlNode* groups = event.Child(L"eventsGroups");
        if (!groups && names.empty())
            return;
        if (!groups)
            groups = event.NewChild(L"eventsGroups");
        while (XmlNode* child = groups->FirstChild())
            groups->RemoveChild(child);
        for (std::string const& name : names) {
            auto const found = m_groupIds.find(name);
            if (found != m_groupIds.end())
                groups->NewChild(L"eventsGroup")->SetValueUtf8(found->second);
        }
    }

    // Arguments are matched by their number: the n-th keeps its id and thousand separator.
    static void WriteArguments(XmlNode& event, std::vector<ZoImportedEvent::Argument> const& arguments)
    {
        XmlNode* list = event.Child(L"arguments");
        if (!list && arguments.empty())
            return;
        if (!list)
            list = event.NewChild(L"arguments");
        std::size_t index = 0;
        XmlNode* child = list->FirstChild();
        while (child) {
            XmlNode* next = child->NextSibling();
            if (child->HasTag(L"argument")) {
                if (index < arguments.size()) {
                    SetKey(*child, L"value", arguments[index].value);
                    SetKey(*child, L"format", arguments[index].format);
                } else {
                    list->RemoveChild(child);
                }
                ++index;
            }
            child = next;
        }
        for (; index < arguments.size(); ++index) {
            XmlNode* argument = list->NewChild(L"argument");
            argument->SetValue(L"id", ZoNewGuidText());
            SetKey(*argument, L"value", arguments[index].value);
            SetKey(*argument, L"format", arguments[index].format);
            argument->SetValue(L"thousandSeparator", L"F");
        }
    }

    // A new event as the events list creates one: a fresh id, the editor's keys in its
    // order (an empty delay is "0"), then its arguments, groups and empty action lists.
    XmlNode& Add(XmlNode& events, ZoImportedEvent const& imported)
    {
        XmlNode& event = *events.NewChild(L"event");
        event.SetValue(L"id", ZoNewGuidText());
        auto const text = [&](ZoSheetColumn column) {
            ZoFieldChange const* change = imported.Change(column);
            return change ? ZoFromUtf8(change->after) : std::wstring();
        };
        auto const flag = [&](ZoSheetColumn column) {
            ZoFieldChange const* change = imported.Change(column);
            return change && change->after == "T";
        };
        ZoEventFields fields;
        fields.name = text(ZoSheetColumn::Name);
        fields.description = text(ZoSheetColumn::Description);
        fields.condition = text(ZoSheetColumn::Condition);
        fields.conditionStop = text(ZoSheetColumn::StopCondition);
        fields.stopEnabled = !fields.conditionStop.empty();
        fields.delayToActivate = imported.Change(ZoSheetColumn::DelayToActivate) ? text(ZoSheetColumn::DelayToActivate) : L"0";
        fields.delayToDeactivate =
            imported.Change(ZoSheetColumn::DelayToDeactivate) ? text(ZoSheetColumn::DelayToDeactivate) : L"0";
        fields.notify = flag(ZoSheetColumn::Notify);
        fields.record = flag(ZoSheetColumn::Record);
        fields.enabled = flag(ZoSheetColumn::Enabled);
        fields.rssActivate = flag(ZoSheetColumn::RssActivate);
        fields.rssDeactivate = flag(ZoSheetColumn::RssDeactivate);
        fields.rssAcknowledge = flag(ZoSheetColumn::RssAcknowledge);
        if (!imported.timeTableId.empty())
            fields.timeTable = ZoFromUtf8(imported.timeTableId);
        fields.annotation = text(ZoSheetColumn::Annotation);
        fields.deaAnnotation = text(ZoSheetColumn::DeaAnnotation);
        fields.ackAnnotation = text(ZoSheetColumn::AckAnnotation);
        ZoWriteEventFields(event, fields);
        WriteArguments(event, imported.arguments);
        WriteGroups(event, imported.groups);
        ZoEnsureActionLists(event);
        return event;
    }

    void Delete(XmlNode* deviceGroups)
    {
        if (m_plan.deleted.empty())
            return;
        std::vector<std::wstring> ids;
        ids.reserve(m_plan.deleted.size());
        for (ZoImportPlan::Deleted const& deleted : m_plan.deleted) {
            ids.push_back(ZoFromUtf8(deleted.event->ValueUtf8(L"id")));
            deleted.event->Parent()->RemoveChild(deleted.event);
        }
        RemoveEventsFromDeviceGroupsNode(deviceGroups, ids);
    }

    ZoImportPlan const& m_plan;
    ZoImportTarget const& m_target;
    XmlNode* m_root = nullptr;
    std::unordered_map<std::string_view, std::string_view> m_groupIds;
};

} // namespace

std::vector<ZoAppliedEvent> ZoApplyImport(ZoImportPlan const& plan, ZoImportTarget const& target)
{
    return Applier(plan, target).Run();
}

void ZoCheckImport(ZoImportPlan& plan, ZoImportTarget const& target)
{
    plan.findings.clear();
    if (plan.Refused() || !target.events || !target.events->Root()
        || (plan.modified.empty() && plan.added.empty()))
        return;
    XmlDocument& events = *target.events;
    events.BeginJournal();
    if (target.devices)
        target.devices->BeginJournal();
    std::vector<ZoAppliedEvent> const applied = ZoApplyImport(plan, target);
    std::unordered_map<XmlNode const*, int> lineOf;
    lineOf.reserve(applied.size());
    for (ZoAppliedEvent const& event : applied)
        lineOf.emplace(event.event, event.line);
    // The positions of the imported events, for the findings' paths.
    std::unordered_map<std::uint32_t, int> lineAt;
    if (XmlNode const* list = events.Root()->Child(L"events")) {
        std::uint32_t position = 0;
        for (XmlNode const* event = list->FirstChild(); event; event = event->NextSibling(), ++position)
            if (auto const found = lineOf.find(event); found != lineOf.end())
                lineAt.emplace(position, found->second);
    }
    ZoProjectDocs docs;
    docs.events = events.Root();
    docs.timeTables = target.timeTables ? target.timeTables->Root() : nullptr;
    docs.devices = target.devices ? target.devices->Root() : nullptr;
    docs.users = target.users;
    docs.folder = target.folder;
    ZoCheckOptions options;
    options.catalog = target.catalog;
    for (ZoFinding& finding : ZoCheckProject(docs, options)) {
        if (finding.file != zo::project::ProjectDoc::Events || finding.subject != ZoCheckSubject::Event
            || finding.path.size() < 2)
            continue;
        auto const found = lineAt.find(finding.path[1]);
        if (found != lineAt.end())
            plan.findings.push_back({found->second, std::move(finding)});
    }
    events.UndoJournal();
    if (target.devices)
        target.devices->UndoJournal();
}
