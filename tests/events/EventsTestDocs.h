#pragma once
#include "config/XmlDocument.h"
#include "platform/tools/ZoUtf.h"
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

// Small documents for the events list tests, written as compact XML.
namespace events_test {

using XmlNode = XmlDocument::XmlNode;

// <event><id>ID-name</id><name>name</name>extra</event>
inline std::string Event(std::string const& name, std::string const& extra = {})
{
    return "<event><id>ID-" + name + "</id><name>" + name + "</name>" + extra + "</event>";
}

inline std::string EventsCfg(std::initializer_list<std::string> events)
{
    std::string xml = "<cfg><events>";
    for (auto const& event : events)
        xml += event;
    return xml + "</events><eventsGroups/></cfg>";
}

inline void Load(XmlDocument& doc, std::string const& xml)
{
    ASSERT_TRUE(doc.Parse(xml.c_str())) << doc.ErrorText() << "\n" << xml;
}

// The names of the `event` children of `events`, in document order, joined by ",".
inline std::string Names(XmlDocument const& doc)
{
    std::string out;
    XmlNode const* events = doc.Root() ? doc.Root()->Child(L"events") : nullptr;
    for (XmlNode const* e = events ? events->FirstChild() : nullptr; e; e = e->NextSibling()) {
        if (!e->HasTag(L"event"))
            continue;
        if (!out.empty())
            out += ",";
        out += ZoToUtf8(e->Value(L"name", L""));
    }
    return out;
}

// The ids of every `device` under a device groups element, at any depth, joined by ",".
inline std::string DeviceIds(XmlNode const* node)
{
    std::string out;
    std::vector<XmlNode const*> stack{node};
    while (!stack.empty()) {
        XmlNode const* current = stack.back();
        stack.pop_back();
        if (current->HasTag(L"device")) {
            if (!out.empty())
                out += ",";
            out += ZoToUtf8(current->Value(L"id", L""));
            continue;
        }
        std::vector<XmlNode const*> children;
        for (XmlNode const* c = current->FirstChild(); c; c = c->NextSibling())
            children.push_back(c);
        stack.insert(stack.end(), children.rbegin(), children.rend());
    }
    return out;
}

inline std::string Xml(XmlNode const* node)
{
    std::string out;
    node->CreateXmlCode(out);
    return out;
}

} // namespace events_test
