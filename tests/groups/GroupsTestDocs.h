#pragma once
// Small event configuration documents for the event groups tests, written as compact XML.
#include "config/XmlDocument.h"
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

namespace groups_test {

using XmlNode = XmlDocument::XmlNode;

// <event><id>E-name</id><name>name</name><eventsGroups>one eventsGroup per id</eventsGroups></event>
// (no eventsGroups at all when groupIds is empty).
inline std::string Ev(std::string const& name, std::initializer_list<char const*> groupIds = {})
{
    std::string xml = "<event><id>E-" + name + "</id><name>" + name + "</name>";
    if (groupIds.size() > 0) {
        xml += "<eventsGroups>";
        for (char const* id : groupIds)
            xml += std::string("<eventsGroup>") + id + "</eventsGroup>";
        xml += "</eventsGroups>";
    }
    return xml + "</event>";
}

inline std::string Grp(std::string const& id, std::string const& name)
{
    return "<eventsGroup><id>" + id + "</id><name>" + name + "</name></eventsGroup>";
}

inline std::string Cfg(std::initializer_list<std::string> events, std::initializer_list<std::string> groups)
{
    std::string xml = "<cfg><events>";
    for (auto const& event : events)
        xml += event;
    xml += "</events><eventsGroups>";
    for (auto const& group : groups)
        xml += group;
    return xml + "</eventsGroups></cfg>";
}

inline void Load(XmlDocument& doc, std::string const& xml)
{
    ASSERT_TRUE(doc.Parse(xml.c_str())) << doc.ErrorText() << "\n" << xml;
}

// The group ids an event names, joined by ",".
inline std::string Memberships(XmlDocument& doc, wchar_t const* eventName)
{
    XmlNode const* event = doc.Root()->NodeV(L"events/event?name=%s?", eventName);
    XmlNode const* groups = event ? event->Child(L"eventsGroups") : nullptr;
    std::string ids;
    if (groups)
        for (XmlNode const* child = groups->FirstChild(); child; child = child->NextSibling())
            ids += (ids.empty() ? "" : ",") + std::string(child->TextUtf8());
    return ids;
}

// The names of the groups in document order, joined by ",".
inline std::string GroupNames(XmlDocument& doc)
{
    std::string names;
    if (XmlNode const* groups = doc.Root()->Child(L"eventsGroups"))
        for (XmlNode const* group = groups->FirstChild(); group; group = group->NextSibling())
            names += (names.empty() ? "" : ",") + std::string(group->ValueUtf8(L"name"));
    return names;
}

} // namespace groups_test
