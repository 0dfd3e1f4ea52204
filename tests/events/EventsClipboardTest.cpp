#include "events/EventsClipboard.h"
#include "events/EventsTestDocs.h"

using namespace events_test;

namespace {

std::string Clip(std::initializer_list<std::string> events)
{
    return Wrap("eventsClipboard", events);
}

// Pastes against the names of the document's events as they are now.
bool Paste(std::string const& text, XmlDocument& cfg, XmlNode* devices = nullptr,
           std::vector<XmlNode*>* pasted = nullptr)
{
    std::vector<std::wstring> names;
    if (XmlNode const* events = cfg.Root()->Child(L"events")) {
        for (XmlNode const* e = events->FirstChild(); e; e = e->NextSibling())
            names.push_back(e->Value(L"name", L""));
    }
    return PasteEventsText(text, cfg, devices, EventNameSet(names), pasted);
}

} // namespace

TEST(EventsClipboard, CopyJoinsWholeEventsAndPasteGivesNewIdentities)
{
    XmlDocument source, devices;
    Load(source, EventsCfg({Event("A", "<eventsGroups><eventsGroup>G</eventsGroup></eventsGroups>"), Event("B"),
                            Event("C", "<timeTable>T1</timeTable>")}));
    Load(devices, "<deviceGroups/>");
    std::vector<XmlNode const*> copied;
    for (XmlNode const* e = source.Node(L"events")->FirstChild(); e; e = e->NextSibling())
        copied.push_back(e);
    std::string const text = BuildEventsClipboardText(copied);
    EXPECT_EQ(text, Clip({Xml(copied[0]), Xml(copied[1]), Xml(copied[2])}));

    std::vector<XmlNode*> pasted;
    ASSERT_TRUE(Paste(text, source, devices.Root(), &pasted));
    EXPECT_EQ(Names(source), "A,B,C,A_1,B_1,C_1");
    ASSERT_EQ(pasted.size(), 3u);
    std::string ids;
    for (XmlNode const* copy : pasted) {
        EXPECT_EQ(copy->Value(L"id", L"").size(), 38u); // a fresh GUID, never the source's id
        ids += (ids.empty() ? "" : ",") + ZoToUtf8(copy->Value(L"id", L""));
    }
    EXPECT_NE(pasted[0]->Value(L"id", L""), pasted[1]->Value(L"id", L""));
    EXPECT_EQ(DeviceIds(devices.Root()), ids); // each registered once
    // Everything else is kept as copied, also references that name nothing here.
    EXPECT_EQ(pasted[0]->Node(L"eventsGroups/eventsGroup")->Value(), L"G");
    EXPECT_EQ(pasted[2]->Value(L"timeTable", L""), L"T1");
}

TEST(EventsClipboard, NamesAreMadeUniqueAgainstTheListBeforeThePaste)
{
    XmlDocument cfg;
    Load(cfg, EventsCfg({Event("A"), Event("A_1"), Event("A_2"), Event("Pump"), Event("\xc3\x84RGER")}));
    // A, A_1, A_2 taken: A becomes A_3; A_1 becomes A_1_1; case is ignored, beyond ASCII too.
    ASSERT_TRUE(Paste(Clip({Event("A"), Event("A_1"), Event("pump"), Event("\xc3\xa4rger"), Event("New")}), cfg));
    EXPECT_EQ(Names(cfg), "A,A_1,A_2,Pump,\xc3\x84RGER,A_3,A_1_1,pump_1,\xc3\xa4rger_1,New");

    // Deliberate: pasted events are tested against the list as it was before the paste
    // only, never against one another. Two pasted events that clash with the same existing
    // name get the same new name; a name that clashes only with another pasted one is kept.
    Load(cfg, EventsCfg({Event("Pump")}));
    ASSERT_TRUE(Paste(Clip({Event("Pump"), Event("PUMP"), Event("Valve"), Event("valve")}), cfg));
    EXPECT_EQ(Names(cfg), "Pump,Pump_1,PUMP_1,Valve,valve");
}

TEST(EventsClipboard, OnlyNamedEventsOfAnEventsClipboardArePasted)
{
    XmlDocument cfg;
    Load(cfg, "<cfg><eventsGroups/></cfg>");
    // An empty events clipboard is still an events clipboard (the list marks itself
    // modified), but nothing is created for it.
    EXPECT_TRUE(Paste(Clip({}), cfg));
    EXPECT_EQ(cfg.Root()->Child(L"events"), nullptr);
    EXPECT_TRUE(Paste(Clip({"<event><name/></event>", "<timeTable><name>T</name></timeTable>", Event("Fan")}), cfg));
    EXPECT_EQ(Names(cfg), "Fan");

    // Foreign or broken texts paste nothing; the text ends at its first NUL, as the
    // clipboard's text does.
    std::string const before = Xml(cfg.Root());
    for (std::string const& text : {std::string(), std::string("plain words"), Wrap("actionClipboard", {Event("B")}),
                                   "<eventsClipboard>" + Event("B"), std::string("\xff\xfe<\0\x01", 5),
                                   std::string("<eventsClipboard\0>", 18) + Event("B") + "</eventsClipboard>"}) {
        EXPECT_FALSE(IsEventsClipboardText(text)) << text;
        EXPECT_FALSE(Paste(text, cfg)) << text;
    }
    EXPECT_EQ(Xml(cfg.Root()), before);
    EXPECT_TRUE(Paste(Clip({Event("B")}) + std::string("\0garbage", 8), cfg));
    EXPECT_EQ(Names(cfg), "Fan,B");
}
