#include "events/DeviceRegistration.h"
#include "platform/tools/ZoUtf.h"
#include <deque>
#include <string_view>
#include <unordered_set>

using XmlNode = XmlDocument::XmlNode;

namespace {

struct Utf8Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};
using IdSet = std::unordered_set<std::string, Utf8Hash, std::equal_to<>>;

// Removes, from the first `devices` child of group, every `device` whose id is in ids.
// One pass over the devices gives what repeating "find device?id=...?, remove it" until
// nothing is found gives, without rescanning the list for every duplicate.
void RemoveMatchingDevices(XmlNode* group, IdSet const& ids)
{
    XmlNode* devices = group->Child(L"devices");
    if (!devices)
        return;
    XmlNode* child = devices->FirstChild();
    while (child) {
        XmlNode* next = child->NextSibling();
        if (child->HasTag(L"device") && child->Child(L"id")
            && ids.find(child->ValueUtf8(L"id")) != ids.end())
            devices->RemoveChild(child);
        child = next;
    }
}

void RemoveDevices(XmlNode* deviceGroups, IdSet const& ids)
{
    if (!deviceGroups || ids.empty())
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
    RemoveDevices(deviceGroups, IdSet{ZoToUtf8(id)});
}

void RemoveEventsFromDeviceGroupsNode(XmlNode* deviceGroups, std::vector<std::wstring> const& ids)
{
    IdSet set;
    set.reserve(ids.size());
    for (auto const& id : ids)
        set.insert(ZoToUtf8(id));
    RemoveDevices(deviceGroups, set);
}
