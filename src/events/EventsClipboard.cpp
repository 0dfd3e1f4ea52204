#include "events/EventsClipboard.h"
#include "events/DeviceRegistration.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoGuid.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

constexpr std::string_view kOpen = "<eventsClipboard>";
constexpr std::string_view kClose = "</eventsClipboard>";

std::string_view UpToNul(std::string_view text)
{
    auto const nul = text.find('\0');
    return nul == std::string_view::npos ? text : text.substr(0, nul);
}

// Parses the text; true when it is XML with the events clipboard's root.
bool ParseEventsClipboard(std::string_view text, XmlDocument& doc)
{
    text = UpToNul(text);
    if (text.empty() || !doc.Parse(text.data(), text.size()))
        return false;
    XmlNode const* root = doc.Root();
    return root && root->HasTag(kEventsClipboardRoot);
}

XmlNode* EventsElement(XmlDocument& eventsCfg)
{
    XmlNode* root = eventsCfg.Root();
    if (!root)
        return nullptr;
    XmlNode* events = root->Child(L"events");
    return events ? events : root->NewChild(L"events");
}

} // namespace

std::string BuildEventsClipboardText(std::vector<XmlNode const*> const& events)
{
    std::string text(kOpen);
    for (XmlNode const* event : events) {
        if (event)
            event->AppendXmlCode(text);
    }
    text += kClose;
    return text;
}

bool IsEventsClipboardText(std::string_view text)
{
    XmlDocument doc;
    return ParseEventsClipboard(text, doc);
}

bool PasteEventsText(std::string_view text, XmlDocument& eventsCfg, XmlNode* deviceGroups,
                     EventNameSet const& namesBeforePaste, std::vector<XmlNode*>* pasted)
{
    XmlDocument clipboard;
    if (!ParseEventsClipboard(text, clipboard))
        return false;
    UniqueNamer uniqueName(namesBeforePaste);
    for (XmlNode const* item = clipboard.Root()->FirstChild(); item; item = item->NextSibling()) {
        if (!item->HasTag(L"event"))
            continue;
        XmlNode* events = EventsElement(eventsCfg);
        if (!events)
            break;
        std::wstring const name = item->Value(L"name", L"");
        if (name.empty())
            continue;
        XmlNode* copy = events->NewChild(L"event");
        *copy = *item;
        copy->SetValue(L"id", ZoNewGuidText());
        std::wstring const unique = uniqueName(name);
        if (unique != name)
            copy->SetValue(L"name", unique);
        AddEventToDeviceGroupsNode(deviceGroups, *copy);
        if (pasted)
            pasted->push_back(copy);
    }
    return true;
}
