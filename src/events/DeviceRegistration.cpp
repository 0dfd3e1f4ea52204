#include "events/DeviceRegistration.h"
#include "config/XmlKeys.h"
#include "platform/tools/ZoUtf.h"
#include <deque>
#include <string_view>
#include <unordered_set>
#include <vector>

using XmlNode = XmlDocument::XmlNode;

namespace {

struct Utf8Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};
// The ids of the events whose registrations go. Most often one or a few, compared
// directly (a million registrations are not hashed); a larger set is hashed.
class IdSet {
public:
    void Reserve(std::size_t count) { m_ids.reserve(count); }
    void Insert(std::string id)
    {
        if (m_ids.size() < kFew)
            m_few.push_back(id);
        m_ids.insert(std::move(id));
    }
    bool Empty() const { return m_ids.empty(); }
    bool Contains(std::string_view id) const
    {
        if (m_ids.size() > kFew)
            return m_ids.find(id) != m_ids.end();
        for (std::string const& few : m_few) {
            if (few.size() == id.size() && few == id)
                return true;
        }
        return false;
    }

private:
    static constexpr std::size_t kFew = 8;
    std::unordered_set<std::string, Utf8Hash, std::equal_to<>> m_ids;
    std::vector<std::string> m_few;
};

// Removes, from the first `devices` child of group, every `device` whose id is in ids.
// One pass over the devices gives what repeating "find device?id=...?, remove it" until
// nothing is found gives, without rescanning the list for every duplicate. Tags are
// compared as the document's interned keys: a million registrations take one quick pass.
void RemoveMatchingDevices(XmlNode* group, IdSet const& ids)
{
    XmlNode* devices = group->Child(L"devices");
    XmlNode* child = devices ? devices->FirstChild() : nullptr;
    if (!child)
        return;
    XmlDocument const& doc = *devices->Document();
    void const* const deviceTag = doc.TagKey(L"device");
    void const* const idTag = doc.TagKey(L"id");
    if (!deviceTag || !idTag)
        return;
    while (child) {
        XmlNode* next = child->NextSibling();
        if (child->TagKey() == deviceTag) {
            XmlNode const* id = zo::xml::ChildByKey(*child, idTag);
            if (id && ids.Contains(id->TextUtf8()))
                devices->RemoveChild(child);
        }
        child = next;
    }
}

void RemoveDevices(XmlNode* deviceGroups, IdSet const& ids)
{
    if (!deviceGroups || ids.Empty())
        return;
    std::deque<XmlNode*> queue{deviceGroups};
    while (!queue.empty()) {
        XmlNode* group = queue.front();
        queue.pop_front();
        RemoveMatchingDevices(group, ids);
        if (XmlNode* groups = group->Child(L"groups")) {
            for (XmlNode* sub = groups->FirstChild(); sub; sub = sub->NextSibling())
                queue.push_back(sub);
        }
    }
}

} // namespace

void AddEventToDeviceGroupsNode(XmlNode* deviceGroups, XmlNode const& event)
{
    if (!deviceGroups)
        return;
    XmlNode* devices = deviceGroups->Child(L"devices");
    if (!devices)
        devices = deviceGroups->NewChild(L"devices");
    XmlNode* device = devices->NewChild(L"device");
    device->SetValue(L"id", event.Value(L"id", L""));
    device->SetValue(L"type", kEventDeviceType);
}

void RemoveEventFromDeviceGroupsNode(XmlNode* deviceGroups, std::wstring const& id)
{
    IdSet set;
    set.Insert(ZoToUtf8(id));
    RemoveDevices(deviceGroups, set);
}

void RemoveEventsFromDeviceGroupsNode(XmlNode* deviceGroups, std::vector<std::wstring> const& ids)
{
    IdSet set;
    set.Reserve(ids.size());
    for (auto const& id : ids)
        set.Insert(ZoToUtf8(id));
    RemoveDevices(deviceGroups, set);
}
