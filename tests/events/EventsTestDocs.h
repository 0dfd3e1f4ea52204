#pragma once
#include "config/XmlDocument.h"
#include "platform/tools/ZoUtf.h"
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

// Small documents for the events list tests, written as compact XML.
namespace events_test {

using XmlNode = XmlDocument::XmlNode;

// <event><id>ID-name</id><name>name</name>extra</event>
inline std::string Event(std::string const& name, std::string const& extra = {})
{
    return "<event><id>ID-" + name + "</id><name>" + name + "</name>" + extra + "</event>";
}

// The children wrapped in <root>...</root>.
inline std::string Wrap(char const* root, std::initializer_list<std::string> children)
{
    std::string xml = std::string("<") + root + ">";
    for (auto const& child : children)
        xml += child;
    return xml + "</" + root + ">";
}

inline std::string EventsCfg(std::initializer_list<std::string> events)
{
    return "<cfg>" + Wrap("events", events) + "<eventsGroups/></cfg>";
}

inline void Load(XmlDocument& doc, std::string const& xml)
{
    ASSERT_TRUE(doc.Parse(xml.c_str())) << doc.ErrorText() << "\n" << xml;
}

// The names of the `event` children of `events`, in document order, joined by ",".
inline std::string Names(XmlDocument const& doc)
{
    std::string out;
    XmlNode const* events = doc.Root()->Child(L"events");
    for (XmlNode const* e = events ? events->FirstChild() : nullptr; e; e = e->NextSibling())
        out += (out.empty() ? "" : ",") + ZoToUtf8(e->Value(L"name", L""));
    return out;
}

// The ids of every `device` below a node, at any depth, in document order, joined by ",".
inline std::string DeviceIds(XmlNode const* node, std::string out = {})
{
    for (XmlNode const* c = node->FirstChild(); c; c = c->NextSibling())
        out = c->HasTag(L"device") ? out + (out.empty() ? "" : ",") + ZoToUtf8(c->Value(L"id", L"")) : DeviceIds(c, out);
    return out;
}

inline std::string Xml(XmlNode const* node)
{
    std::string out;
    node->CreateXmlCode(out);
    return out;
}

} // namespace events_test
