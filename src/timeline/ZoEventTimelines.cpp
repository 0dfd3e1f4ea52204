#include "timeline/ZoEventTimelines.h"

#include "platform/tools/ZoUtf.h"

#include <unordered_map>

using XmlNode = XmlDocument::XmlNode;
using Kind = ZoTimeTableResolution::Kind;

XmlNode const* ZoFindEvent(XmlNode const* events, std::wstring_view nameOrId)
{
    if (!events || nameOrId.empty())
        return nullptr;
    std::string const wanted = ZoToUtf8(std::wstring(nameOrId));
    XmlNode const* byId = nullptr;
    for (XmlNode const* event = events->FirstChild(); event; event = event->NextSibling()) {
        if (!event->HasTag(L"event"))
            continue;
        if (event->ValueUtf8(L"name") == wanted)
            return event;
        if (!byId && event->ValueUtf8(L"id") == wanted)
            byId = event;
    }
    return byId;
}

std::vector<XmlNode const*> ZoEventsAllowedAt(XmlNode const* events, ZoTimeTableResolution const& tables,
                                              ZoMoment moment)
{
    std::vector<XmlNode const*> allowed;
    std::unordered_map<std::string_view, bool> allows; // reference as stored -> allowed then
    for (XmlNode const* event = events ? events->FirstChild() : nullptr; event; event = event->NextSibling()) {
        if (!event->HasTag(L"event") || event->ValueUtf8(L"disabled") != "F")
            continue;
        std::string_view const reference = event->ValueUtf8(L"timeTable");
        auto found = allows.find(reference);
        if (found == allows.end())
            found = allows.emplace(reference, ZoAllowedAt(tables, ZoFromUtf8(reference), moment)).first;
        if (found->second)
            allowed.push_back(event);
    }
    return allowed;
}

ZoTableElement ZoFindTimeTable(XmlNode const* root, std::wstring_view id)
{
    if (!root || id.empty())
        return {};
    struct Container {
        wchar_t const* container;
        wchar_t const* element;
        Kind kind;
    } const containers[] = {{L"days", L"day", Kind::Day}, {L"weeks", L"week", Kind::Week},
                            {L"calendars", L"calendar", Kind::Calendar}};
    std::string const wanted = ZoToUtf8(std::wstring(id));
    for (Container const& c : containers) {
        XmlNode const* container = root->Child(c.container);
        for (XmlNode const* table = container ? container->FirstChild() : nullptr; table; table = table->NextSibling())
            if (table->HasTag(c.element) && table->ValueUtf8(L"id") == wanted)
                return {table, c.kind};
    }
    return {};
}
