#pragma once
// Small time-tables documents for the time-table tests, written as compact XML.
#include "config/XmlDocument.h"
#include "platform/tools/ZoUtf.h"
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

namespace timetables_test {

using XmlNode = XmlDocument::XmlNode;

// <slot><from>from</from><to>to</to></slot>
inline std::string Slot(std::string const& from, std::string const& to)
{
    return "<slot><from>" + from + "</from><to>" + to + "</to></slot>";
}

// <day><id>D-name</id><name>name</name><color>color</color>extra</day>
inline std::string Day(std::string const& name, std::string const& color = "FFFFFF", std::string const& extra = {})
{
    return "<day><id>D-" + name + "</id><name>" + name + "</name><color>" + color + "</color>" + extra + "</day>";
}

inline std::string Week(std::string const& name, std::string const& extra = {})
{
    return "<week><id>W-" + name + "</id><name>" + name + "</name>" + extra + "</week>";
}

inline std::string Calendar(std::string const& name, std::string const& extra = {})
{
    return "<calendar><id>C-" + name + "</id><name>" + name + "</name>" + extra + "</calendar>";
}

inline std::string Join(std::initializer_list<std::string> parts)
{
    std::string out;
    for (auto const& part : parts)
        out += part;
    return out;
}

inline std::string TimeTables(std::string const& days, std::string const& weeks = {}, std::string const& calendars = {})
{
    return "<timeTables><days>" + days + "</days><weeks>" + weeks + "</weeks><calendars>" + calendars
        + "</calendars></timeTables>";
}

inline void Load(XmlDocument& doc, std::string const& xml)
{
    ASSERT_TRUE(doc.Parse(xml.c_str())) << doc.ErrorText() << "\n" << xml;
}

inline std::string Xml(XmlNode const* node)
{
    std::string out;
    if (node)
        node->CreateXmlCode(out);
    return out;
}

// The names of the children of a container (of any tag), in document order, joined by ",".
inline std::string Names(XmlNode const* container)
{
    std::string out;
    for (XmlNode const* e = container ? container->FirstChild() : nullptr; e; e = e->NextSibling())
        out += (out.empty() ? "" : ",") + ZoToUtf8(e->Value(L"name", L""));
    return out;
}

// "from-to" of each slot child of a day, joined by ",".
inline std::string SlotTexts(XmlNode const* day)
{
    std::string out;
    for (XmlNode const* e = day ? day->FirstChild() : nullptr; e; e = e->NextSibling())
        if (e->HasTag(L"slot"))
            out += (out.empty() ? "" : ",") + ZoToUtf8(e->Value(L"from", L"")) + "-" + ZoToUtf8(e->Value(L"to", L""));
    return out;
}

} // namespace timetables_test
