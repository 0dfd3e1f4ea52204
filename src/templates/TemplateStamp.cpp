#include "templates/TemplateStamp.h"

#include "events/DeviceRegistration.h"
#include "events/EventNames.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplateStore.h"

#include <unordered_map>
#include <unordered_set>

namespace zo::templates {

namespace {

// "template id" + NUL + "device name": one key per stamp made before.
std::string StampKey(std::string_view templateId, std::string_view device)
{
    std::string key;
    key.reserve(templateId.size() + 1 + device.size());
    key.append(templateId);
    key.push_back('\0');
    key.append(device);
    return key;
}

} // namespace

struct TemplateStamper::Names {
    EventNameSet taken;
    // The next counter to try for a folded name: a name stamped over 40 devices is made
    // unique in one step each, not by trying _1 ... _39 again.
    std::unordered_map<std::string, int> counters;
    std::unordered_set<std::string> stamped;

    std::wstring Unique(std::wstring const& name)
    {
        if (!taken.Contains(name)) {
            taken.Insert(name);
            return name;
        }
        int& counter = counters[FoldedName(name)];
        for (;;) {
            std::wstring candidate = name + L'_' + std::to_wstring(++counter);
            if (!taken.Contains(candidate)) {
                taken.Insert(candidate);
                return candidate;
            }
        }
    }
};

TemplateStamper::TemplateStamper(XmlNode* root) : m_root(root), m_names(std::make_unique<Names>())
{
    XmlNode* events = root ? root->Child(L"events") : nullptr;
    if (events) {
        void const* const eventTag = root->Document()->TagKey(L"event");
        void const* const nameTag = root->Document()->TagKey(L"name");
        std::string folded;
        m_names->taken.Reserve(static_cast<std::size_t>(events->Size()), 0);
        for (XmlNode* event = events->FirstChild(); event; event = event->NextSibling()) {
            if (event->TagKey() != eventTag)
                continue;
            for (XmlNode* key = event->FirstChild(); key; key = key->NextSibling()) {
                if (key->TagKey() == nameTag) {
                    folded.clear();
                    AppendFoldedName(folded, key->TextUtf8());
                    m_names->taken.InsertFolded(folded);
                    break;
                }
            }
        }
    }
    std::unordered_map<std::string_view, XmlNode*> const byId = EventsById(root);
    for (StampLink const& link : StampLinks(root)) {
        if (byId.contains(link.eventId))
            m_names->stamped.insert(StampKey(link.templateId, link.device));
    }
}

TemplateStamper::~TemplateStamper() = default;

DeviceTexts TextsOf(ZoDriver const& device)
{
    return {ZoToUtf8(device.Name()), ZoToUtf8(device.Description())};
}

void TemplateStamper::Preview(XmlNode* templateEvent, std::vector<ZoDriver const*> const& devices)
{
    std::vector<std::wstring> const variables = UsedVariables(*templateEvent);
    std::string_view const templateId = templateEvent->ValueUtf8(L"id");
    std::string_view const name = templateEvent->ValueUtf8(L"name");
    std::string_view const condition = templateEvent->ValueUtf8(L"condition");
    m_rows.reserve(m_rows.size() + devices.size());
    for (ZoDriver const* device : devices) {
        StampRow row;
        row.templateEvent = templateEvent;
        row.device = device;
        DeviceTexts const texts = TextsOf(*device);
        row.name = ZoFromUtf8(FilledIn(name, texts));
        row.condition = ZoFromUtf8(FilledIn(condition, texts));
        for (std::wstring const& code : variables) {
            if (!device->FindVariable(code))
                row.missing.push_back(code);
        }
        if (!row.missing.empty())
            row.skip = StampSkip::MissingVariables;
        else if (m_names->stamped.contains(StampKey(templateId, texts.name)))
            row.skip = StampSkip::AlreadyStamped;
        else {
            row.name = m_names->Unique(row.name);
            // A device chosen twice gets one event.
            m_names->stamped.insert(StampKey(templateId, texts.name));
        }
        m_rows.push_back(std::move(row));
    }
}

int TemplateStamper::EventCount() const
{
    int count = 0;
    for (StampRow const& row : m_rows)
        count += row.skip == StampSkip::None;
    return count;
}

void MakeStampedEvent(XmlNode& event, DeviceTexts const& device)
{
    FillInTree(event, device);
    // Every `id` of an event is an identity of its own (the event's, an argument's, an
    // action's); references to other elements are kept under other tags.
    std::vector<XmlNode*> pending{&event};
    while (!pending.empty()) {
        XmlNode* node = pending.back();
        pending.pop_back();
        for (XmlNode* child = node->FirstChild(); child; child = child->NextSibling()) {
            if (child->HasTag(L"id") && !child->FirstChild())
                child->SetValue(ZoNewGuidText());
            else if (child->FirstChild())
                pending.push_back(child);
        }
    }
    if (!event.Child(L"id"))
        event.SetValue(L"id", ZoNewGuidText());
}

namespace {

void JoinGroup(XmlNode& event, std::wstring const& groupId)
{
    XmlNode* groups = event.Child(L"eventsGroups");
    if (!groups)
        groups = event.NewChild(L"eventsGroups");
    std::string const utf8 = ZoToUtf8(groupId);
    for (XmlNode* member = groups->FirstChild(); member; member = member->NextSibling()) {
        if (member->TextUtf8() == utf8)
            return;
    }
    groups->NewChild(L"eventsGroup")->SetValue(groupId);
}

} // namespace

std::vector<XmlNode*> TemplateStamper::Apply(XmlNode* deviceGroups, std::wstring const& groupId)
{
    std::vector<XmlNode*> made;
    if (!m_root)
        return made;
    DropStaleLinks(m_root);
    XmlNode* events = m_root->Child(L"events");
    if (!events)
        events = m_root->NewChild(L"events");
    made.reserve(static_cast<std::size_t>(EventCount()));
    for (StampRow const& row : m_rows) {
        // A template made by hand in the file may lack an id: the links need one.
        if (row.skip == StampSkip::None && row.templateEvent->ValueUtf8(L"id").empty())
            row.templateEvent->SetValue(L"id", ZoNewGuidText());
    }
    for (StampRow& row : m_rows) {
        if (row.skip != StampSkip::None)
            continue;
        XmlNode* event = events->NewChild(L"event");
        *event = *row.templateEvent;
        DeviceTexts const texts = TextsOf(*row.device);
        MakeStampedEvent(*event, texts);
        event->SetValue(L"name", row.name);
        if (!groupId.empty())
            JoinGroup(*event, groupId);
        AddEventToDeviceGroupsNode(deviceGroups, *event);
        AddStampLink(m_root, event->Value(L"id", L""), row.templateEvent->Value(L"id", L""),
                     std::wstring(row.device->Name()));
        made.push_back(event);
    }
    m_rows.clear();
    return made;
}

std::wstring FindGroupId(XmlNode const* root, std::wstring_view nameOrId)
{
    XmlNode const* groups = root ? root->Child(L"eventsGroups") : nullptr;
    if (!groups)
        return {};
    std::string const utf8 = ZoToUtf8(nameOrId);
    std::string const folded = FoldedName(nameOrId);
    std::wstring byFoldedName;
    for (XmlNode const* group = groups->FirstChild(); group; group = group->NextSibling()) {
        std::string_view const id = group->ValueUtf8(L"id");
        std::string_view const name = group->ValueUtf8(L"name");
        if (id.empty())
            continue;
        if (name == utf8 || id == utf8)
            return ZoFromUtf8(id);
        std::string groupName;
        AppendFoldedName(groupName, name);
        if (byFoldedName.empty() && groupName == folded)
            byFoldedName = ZoFromUtf8(id);
    }
    return byFoldedName;
}

} // namespace zo::templates
