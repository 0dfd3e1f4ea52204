#include "events/EventsClipboard.h"
#include "events/EventsTestDocs.h"

using namespace events_test;

namespace {

std::string Clip(std::initializer_list<std::string> events)
{
    std::string text = "<eventsClipboard>";
    for (auto const& event : events)
        text += event;
    return text + "</eventsClipboard>";
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
    XmlDocument source;
    Load(source, EventsCfg({Event("A", "<notify>T</notify><eventsGroups><eventsGroup>G</eventsGroup></eventsGroups>"),
                            Event("B"), Event("C", "<timeTable>T1</timeTable>")}));
    std::vector<XmlNode const*> copied;
    for (XmlNode const* e = source.Node(L"events")->FirstChild(); e; e = e->NextSibling())
        copied.push_back(e);
    std::string const text = BuildEventsClipboardText(copied);
    EXPECT_EQ(text.rfind("<eventsClipboard>", 0), 0u);
    EXPECT_EQ(text.substr(text.size() - 18), "</eventsClipboard>");
    EXPECT_TRUE(IsEventsClipboardText(text));

    XmlDocument devices;
    Load(devices, "<deviceGroups/>");
    std::vector<XmlNode*> pasted;
    ASSERT_TRUE(Paste(text, source, devices.Root(), &pasted));

    EXPECT_EQ(Names(source), "A,B,C,A_1,B_1,C_1");
    ASSERT_EQ(pasted.size(), 3u);
    std::string expectedDevices;
    for (XmlNode const* copy : pasted) {
        std::wstring const id = copy->Value(L"id", L"");
        EXPECT_EQ(id.size(), 38u); // a fresh GUID, never the source's id
        if (!expectedDevices.empty())
            expectedDevices += ",";
        expectedDevices += ZoToUtf8(id);
    }
    EXPECT_NE(pasted[0]->Value(L"id", L""), pasted[1]->Value(L"id", L""));
    EXPECT_EQ(DeviceIds(devices.Root()), expectedDevices); // each registered once
    // Everything else is kept as copied, also references that name nothing here.
    EXPECT_EQ(pasted[0]->Value(L"notify", L""), L"T");
    EXPECT_EQ(pasted[0]->Node(L"eventsGroups/eventsGroup")->Value(), L"G");
    EXPECT_EQ(pasted[2]->Value(L"timeTable", L""), L"T1");
}

TEST(EventsClipboard, NamesAreMadeUniqueAgainstTheListBeforeThePaste)
{
    XmlDocument cfg;
    Load(cfg, EventsCfg({Event("A"), Event("A_1"), Event("A_2"), Event("Pump")}));

    ASSERT_TRUE(Paste(Clip({Event("A"), Event("A_1"), Event("pump"), Event("New")}), cfg));
    // A, A_1, A_2 taken: A becomes A_3; A_1 becomes A_1_1; case is ignored: pump_1.
    EXPECT_EQ(Names(cfg), "A,A_1,A_2,Pump,A_3,A_1_1,pump_1,New");

    // Case is ignored beyond ASCII too.
    XmlDocument accents;
    Load(accents, EventsCfg({Event("\xc3\x84RGER")}));
    ASSERT_TRUE(Paste(Clip({Event("\xc3\xa4rger")}), accents));
    EXPECT_EQ(Names(accents), "\xc3\x84RGER,\xc3\xa4rger_1");
}

// Deliberate: pasted events are tested against the list as it was before the paste only,
// never against one another. Two pasted events that clash with the same existing name
// get the same new name, and a name that clashes only with another pasted one is kept.
TEST(EventsClipboard, EventsPastedTogetherAreNotTestedAgainstOneAnother)
{
    XmlDocument cfg;
    Load(cfg, EventsCfg({Event("Pump")}));

    ASSERT_TRUE(Paste(Clip({Event("Pump"), Event("PUMP"), Event("Valve"), Event("valve")}), cfg));
    EXPECT_EQ(Names(cfg), "Pump,Pump_1,PUMP_1,Valve,valve");
}

TEST(EventsClipboard, SkipsOtherTagsAndNamelessEventsAndCreatesEventsWhenAbsent)
{
    XmlDocument cfg;
    Load(cfg, "<cfg><eventsGroups/></cfg>");

    // An empty events clipboard is still an events clipboard: the caller marks the list
    // modified. Nothing is created for it.
    EXPECT_TRUE(Paste(Clip({}), cfg));
    EXPECT_EQ(cfg.Root()->Child(L"events"), nullptr);

    // A nameless event creates `events` (it is looked for before the name is read) but is
    // not pasted; children of other tags are skipped.
    EXPECT_TRUE(Paste(Clip({"<event><id>X</id></event>", "<timeTable><name>T</name></timeTable>"}), cfg));
    ASSERT_NE(cfg.Root()->Child(L"events"), nullptr);
    EXPECT_EQ(cfg.Root()->Child(L"events")->Size(), 0);

    EXPECT_TRUE(Paste(Clip({"<event><name/></event>", Event("Fan")}), cfg));
    EXPECT_EQ(Names(cfg), "Fan");
}

TEST(EventsClipboard, ForeignOrBrokenTextPastesNothing)
{
    XmlDocument cfg;
    Load(cfg, EventsCfg({Event("A")}));
    std::string const before = Xml(cfg.Root());

    for (std::string const& text : {std::string(), std::string("plain words"),
                                   std::string("<actionClipboard>") + Event("B") + "</actionClipboard>",
                                   std::string("<eventsClipboard>") + Event("B"),
                                   std::string("<eventsClipboard\0>", 18) + Event("B") + "</eventsClipboard>",
                                   std::string("\xff\xfe<\0\x01", 5)}) {
        EXPECT_FALSE(IsEventsClipboardText(text)) << text;
        EXPECT_FALSE(Paste(text, cfg)) << text;
    }
    EXPECT_EQ(Xml(cfg.Root()), before);

    // The text ends at its first NUL, as the clipboard's text does.
    std::string withNul = Clip({Event("B")});
    withNul += std::string("\0garbage", 8);
    EXPECT_TRUE(Paste(withNul, cfg));
    EXPECT_EQ(Names(cfg), "A,B");
}
