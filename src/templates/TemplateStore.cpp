#include "templates/TemplateStore.h"

#include "platform/tools/ZoUtf.h"
#include "events/EventNames.h"

namespace zo::templates {

XmlNode* TemplatesElement(XmlNode* root, bool create)
{
    if (!root)
        return nullptr;
    XmlNode* element = root->Child(kTemplatesTag);
    if (!element && create)
        element = root->NewChild(kTemplatesTag);
    return element;
}

std::vector<XmlNode*> Templates(XmlNode* root)
{
    std::vector<XmlNode*> result;
    XmlNode* element = TemplatesElement(root, false);
    for (XmlNode* child = element ? element->FirstChild() : nullptr; child; child = child->NextSibling()) {
        if (child->HasTag(L"event"))
            result.push_back(child);
    }
    return result;
}

XmlNode* FindTemplate(XmlNode* root, std::wstring_view key)
{
    std::string const utf8 = ZoToUtf8(key);
    std::string const folded = FoldedName(key);
    XmlNode* byFoldedName = nullptr;
    for (XmlNode* candidate : Templates(root)) {
        if (candidate->ValueUtf8(L"id") == utf8 || candidate->ValueUtf8(L"name") == utf8)
            return candidate;
        if (!byFoldedName) {
            std::string name;
            AppendFoldedName(name, candidate->ValueUtf8(L"name"));
            if (name == folded)
                byFoldedName = candidate;
        }
    }
    return byFoldedName;
}

std::vector<StampLink> StampLinks(XmlNode* root)
{
    std::vector<StampLink> links;
    XmlNode* stamps = root ? root->Child(kStampsTag) : nullptr;
    if (!stamps)
        return links;
    XmlDocument const* document = root->Document();
    void const* const stampTag = document->TagKey(kStampTag);
    void const* const eventTag = document->TagKey(kStampEventKey);
    void const* const templateTag = document->TagKey(kStampTemplateKey);
    void const* const deviceTag = document->TagKey(kStampDeviceKey);
    links.reserve(static_cast<std::size_t>(stamps->Size()));
    for (XmlNode* stamp = stamps->FirstChild(); stamp; stamp = stamp->NextSibling()) {
        if (stamp->TagKey() != stampTag)
            continue;
        StampLink link;
        link.stamp = stamp;
        for (XmlNode* key = stamp->FirstChild(); key; key = key->NextSibling()) {
            void const* const tag = key->TagKey();
            if (tag == eventTag && link.eventId.empty())
                link.eventId = key->TextUtf8();
            else if (tag == templateTag && link.templateId.empty())
                link.templateId = key->TextUtf8();
            else if (tag == deviceTag && link.device.empty())
                link.device = key->TextUtf8();
        }
        if (!link.eventId.empty() && !link.templateId.empty())
            links.push_back(link);
    }
    return links;
}

void AddStampLink(XmlNode* root, std::wstring const& eventId, std::wstring const& templateId,
                  std::wstring const& device)
{
    XmlNode* stamps = root->Child(kStampsTag);
    if (!stamps)
        stamps = root->NewChild(kStampsTag);
    XmlNode* stamp = stamps->NewChild(kStampTag);
    stamp->SetValue(kStampEventKey, eventId);
    stamp->SetValue(kStampTemplateKey, templateId);
    stamp->SetValue(kStampDeviceKey, device);
}

std::unordered_map<std::string_view, XmlNode*> EventsById(XmlNode* root)
{
    std::unordered_map<std::string_view, XmlNode*> byId;
    XmlNode* events = root ? root->Child(L"events") : nullptr;
    if (!events)
        return byId;
    XmlDocument const* document = root->Document();
    void const* const eventTag = document->TagKey(L"event");
    void const* const idTag = document->TagKey(L"id");
    byId.reserve(static_cast<std::size_t>(events->Size()));
    for (XmlNode* event = events->FirstChild(); event; event = event->NextSibling()) {
        if (event->TagKey() != eventTag)
            continue;
        for (XmlNode* key = event->FirstChild(); key; key = key->NextSibling()) {
            if (key->TagKey() == idTag) {
                byId.emplace(key->TextUtf8(), event);
                break;
            }
        }
    }
    return byId;
}

int DropStaleLinks(XmlNode* root)
{
    std::unordered_map<std::string_view, XmlNode*> const byId = EventsById(root);
    XmlNode* stamps = root ? root->Child(kStampsTag) : nullptr;
    if (!stamps)
        return 0;
    std::vector<XmlNode*> stale;
    for (StampLink const& link : StampLinks(root)) {
        if (!byId.contains(link.eventId))
            stale.push_back(link.stamp);
    }
    for (XmlNode* stamp : stale)
        stamps->RemoveChild(stamp);
    return static_cast<int>(stale.size());
}

} // namespace zo::templates
