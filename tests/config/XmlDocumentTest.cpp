#include "config/XmlDocument.h"
#include "support/XmlText.h"
#include "platform/tools/ZoUtf.h"

#include <gtest/gtest.h>

#include <string>

using XmlNode = XmlDocument::XmlNode;

namespace {

XmlDocument& Load(XmlDocument& doc, char const* text)
{
    EXPECT_TRUE(doc.Parse(text)) << doc.ErrorText();
    return doc;
}

} // namespace

TEST(XmlPaths, LeadingSlashKeyedStepsAndFirstMatch)
{
    XmlDocument doc;
    Load(doc, "<cfg><events>"
              "<event><id>A</id><name>Pump</name></event>"
              "<event><id>B</id><name>Valve</name><eventsGroups><eventsGroup>G1</eventsGroup></eventsGroups></event>"
              "<event><id>C</id><name>Pump</name></event>"
              "</events><eventsGroups/></cfg>");
    XmlNode* events = doc.Node(L"events");
    ASSERT_NE(events, nullptr);

    // A leading "/" changes nothing: the search starts at the element it is called on.
    EXPECT_EQ(events->Node(L"/event?name=Valve?"), events->Node(L"event?name=Valve?"));
    EXPECT_EQ(doc.Root()->Node(L"events/event?name=Valve?"), events->Node(L"/event?name=Valve?"));
    // First match in document order wins.
    EXPECT_EQ(events->NodeV(L"/event?name=%s?", L"Pump")->Value(L"id", L""), L"A");
    // The right tag without the attribute, or an unknown id, match nothing.
    EXPECT_EQ(events->NodeV(L"/event?description=%s?", L"x"), nullptr);
    EXPECT_EQ(events->NodeV(L"/event?id=%s?", L"Z"), nullptr);
    EXPECT_EQ(events->Node(L"/event?name"), nullptr);
    EXPECT_EQ(doc.Node(L"nothing/event"), nullptr);

    XmlNode* valve = events->Node(L"event?id=B?");
    ASSERT_NE(valve, nullptr);
    EXPECT_EQ(valve->Value(L"name", L"?"), valve->Value(L"/name", L"?"));
    EXPECT_EQ(valve->Node(L"name")->Value(), L"Valve");
    EXPECT_EQ(valve->Value(L"missing", L"dflt"), L"dflt");
    EXPECT_EQ(valve->Node(L"/eventsGroups")->FirstChild()->Value(), L"G1");
    // NodeV conversions used by the dialogs.
    XmlNode* day = doc.Root()->NewChild(L"day7");
    day->SetValue(L"color", L"00FF0A");
    EXPECT_EQ(doc.Root()->NodeV(L"day%d", 7), day);
    EXPECT_EQ(doc.Root()->NodeV(L"day%d?color=%06X?", 7, 0xFF0Au), day);
    EXPECT_EQ(doc.Root()->NodeV(L"%ls", L"day7"), day);

    // Search and removal repeated until nothing is found removes every duplicate.
    int removed = 0;
    while (XmlNode* pump = events->Node(L"/event?name=Pump?")) {
        events->RemoveChild(pump);
        ++removed;
    }
    EXPECT_EQ(removed, 2);
    EXPECT_EQ(events->Size(), 1);
}

TEST(XmlPaths, ValuesMayHoldSlashesAndQuestionMarks)
{
    XmlDocument doc;
    doc.Create(L"events");
    XmlNode* event = doc.Root()->NewChild(L"event");
    event->SetValue(L"name", L"a/b?c");
    event->NewChild(L"sub")->SetValue(L"x", L"1");
    EXPECT_EQ(doc.Root()->NodeV(L"/event?name=%s?", L"a/b?c"), event);
    EXPECT_EQ(doc.Root()->NodeV(L"/event?name=%s?/sub", L"a/b?c"), event->Node(L"sub"));
}

TEST(XmlNodes, PropertiesChildrenAndOwnText)
{
    XmlDocument doc;
    doc.Create(L"main");
    XmlNode* root = doc.Root();
    EXPECT_EQ(root->Tag(), L"main");
    EXPECT_EQ(root->Size(), 0);

    root->SetValue(L"name", L"First");
    root->SetValue(L"name", std::wstring(L"Second"));
    root->SetValue(L"/disabled", L"T");
    EXPECT_EQ(root->Size(), 2);
    EXPECT_EQ(root->Value(L"name", L""), L"Second");
    EXPECT_EQ(root->Value(L"disabled", L""), L"T");
    EXPECT_TRUE(root->EraseTag(L"disabled"));
    EXPECT_FALSE(root->EraseTag(L"disabled"));

    // Own text: cached wide form follows every change.
    XmlNode* member = root->NewChild(L"eventsGroup");
    EXPECT_EQ(member->Value(), L"");
    member->SetValue(L"{G}");
    EXPECT_EQ(member->Value(), L"{G}");
    member->SetValue(L"\u00e9t\u00e9 \U0001F600");
    EXPECT_EQ(member->Value(), L"\u00e9t\u00e9 \U0001F600");
    // Texts never hold NUL characters.
    member->SetValue(std::wstring(L"a\0b", 3));
    EXPECT_EQ(member->Value(), L"ab");

    // Children keep insertion order; NewChild after a given child inserts there.
    XmlNode* a = root->NewChild(L"k");
    XmlNode* c = root->NewChild(L"k");
    XmlNode* b = root->NewChild(L"k", a);
    a->SetValue(L"a"); b->SetValue(L"b"); c->SetValue(L"c");
    std::wstring order;
    for (auto it = root->ChildsBegin(); it != root->ChildsEnd(); ++it)
        if ((*it)->Tag() == L"k")
            order += (*it)->Value();
    EXPECT_EQ(order, L"abc");
    root->RemoveChild(c);
    XmlNode* d = root->NewChild(L"k"); // appending after removing the last child
    d->SetValue(L"d");
    EXPECT_EQ(Xml(root), "<main><name>Second</name><eventsGroup>ab</eventsGroup><k>a</k><k>b</k><k>d</k></main>");

    XmlNode* kept = root;
    root->Reset();
    EXPECT_EQ(kept, doc.Root());
    EXPECT_EQ(Xml(root), "<main/>");
    EXPECT_EQ(root->Document(), &doc);
}

TEST(XmlNodes, AssignmentCopiesDeeplyInPlace)
{
    XmlDocument live;
    Load(live, "<cfg><events><event><name>A</name><actions><activate><beep/></activate></actions></event></events></cfg>");
    XmlNode* events = live.Node(L"events");

    // A working copy is independent of its source...
    XmlDocument copy(*events);
    copy.Root()->Node(L"event")->SetValue(L"name", L"Renamed");
    copy.Root()->NewChild(L"event")->SetValue(L"name", L"New");
    EXPECT_EQ(events->Node(L"event")->Value(L"name", L""), L"A");

    // ...and assigning it back keeps the live element's address and leaves the copy intact.
    *events = *copy.Root();
    EXPECT_EQ(live.Node(L"events"), events);
    EXPECT_EQ(Xml(events), "<events><event><name>Renamed</name><actions><activate><beep/></activate></actions></event>"
                           "<event><name>New</name></event></events>");
    EXPECT_EQ(Xml(copy.Root()), Xml(events));
    // Tags are interned per document: the copied tags belong to the live document.
    EXPECT_EQ(events->Node(L"event")->TagKey(), live.TagKey(L"event"));

    // A smaller tree of another shape assigned over it leaves nothing of the old one behind.
    XmlDocument small;
    Load(small, "<events><event><actions>x</actions><name>Only</name></event><other/></events>");
    *events = *small.Root();
    EXPECT_EQ(Xml(events), "<events><event><actions>x</actions><name>Only</name></event><other/></events>");
    *events = *copy.Root();

    // Assigning a descendant over its ancestor, and an ancestor over a descendant.
    XmlNode* actions = events->Node(L"event/actions");
    XmlNode* firstEvent = events->Node(L"event");
    *firstEvent = *actions;
    EXPECT_EQ(Xml(firstEvent), "<actions><activate><beep/></activate></actions>");
    XmlNode* activate = firstEvent->Node(L"activate");
    *activate = *firstEvent;
    EXPECT_EQ(Xml(firstEvent), "<actions><actions><activate><beep/></activate></actions></actions>");
}

TEST(XmlText, WriteAndParseRoundTripEveryTree)
{
    XmlDocument doc;
    doc.Create(L"root");
    XmlNode* root = doc.Root();
    root->SetValue(L"blank", L"   ");
    root->SetValue(L"specials", L"a<b>&c\r\nd\te\x01");
    root->SetValue(L"unicode", L"\u00c5ngstr\u00f6m \u4e2d\u6587 \U0001F600");
    root->SetValue(L"empty", L"");
    XmlNode* mixed = root->NewChild(L"mixed");
    mixed->SetValue(L" \r\n\t");
    mixed->NewChild(L"child")->SetValue(L"x");
    XmlNode* textAndChildren = root->NewChild(L"textAndChildren");
    textAndChildren->SetValue(L" lead");
    textAndChildren->NewChild(L"c");

    std::string const written = Xml(root);
    XmlDocument back;
    Load(back, written.c_str());
    EXPECT_EQ(Xml(back.Root()), written);
    EXPECT_EQ(back.Root()->Value(L"blank", L"?"), L"   ");
    EXPECT_EQ(back.Root()->Value(L"specials", L""), L"a<b>&c\r\nd\te\x01");
    EXPECT_EQ(back.Root()->Value(L"unicode", L""), L"\u00c5ngstr\u00f6m \u4e2d\u6587 \U0001F600");
    EXPECT_EQ(back.Root()->Node(L"mixed")->Value(), L" \r\n\t");
    EXPECT_EQ(back.Root()->Node(L"textAndChildren")->Value(), L" lead");

    // The indented form reads back as the same tree.
    std::string indented;
    root->AppendXmlCode(indented, 2);
    EXPECT_NE(indented.find("\n  <unicode>"), std::string::npos);
    XmlDocument fromIndented;
    Load(fromIndented, indented.c_str());
    EXPECT_EQ(Xml(fromIndented.Root()), written);

    // Several elements' texts joined inside one enclosing element parse as its children.
    std::string clip = "<eventsClipboard>";
    root->Node(L"mixed")->AppendXmlCode(clip);
    root->Node(L"unicode")->AppendXmlCode(clip);
    clip += "</eventsClipboard>";
    XmlDocument joined;
    Load(joined, clip.c_str());
    EXPECT_EQ(joined.Root()->Size(), 2);
    EXPECT_EQ(joined.Root()->Node(L"unicode")->Value(), back.Root()->Value(L"unicode", L""));
}

TEST(XmlText, HandWrittenFilesAreRead)
{
    XmlDocument doc;
    Load(doc, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a project -->\n"
              "<cfg version=\"2\">\n  <events>\n    <event>\n      <name>Pump &amp; valve</name>\n"
              "      <condition><![CDATA[[A.B] < 3]]></condition>\n    </event>\n  </events>\n</cfg>\n");
    // Indentation is not text; XML attributes become properties; CDATA is text.
    EXPECT_EQ(doc.Root()->Value(L"version", L""), L"2");
    EXPECT_EQ(doc.Node(L"events")->Value(), L"");
    EXPECT_EQ(doc.Node(L"events/event")->Value(L"name", L""), L"Pump & valve");
    EXPECT_EQ(doc.Node(L"events/event")->Value(L"condition", L""), L"[A.B] < 3");
}

TEST(XmlText, BadInputIsRefusedOrRepairedNeverTrusted)
{
    XmlDocument doc;
    for (char const* bad : {"", "   ", "<a>", "<a><b></a>", "<a/><b/>", "<a>&unknown</a", "\xff\xfe<\0a"}) {
        EXPECT_FALSE(doc.Parse(bad)) << bad;
        EXPECT_FALSE(doc.IsOK());
        EXPECT_EQ(doc.Root(), nullptr);
    }
    EXPECT_FALSE(doc.Parse("<a><b></a>"));
    EXPECT_FALSE(doc.ErrorText().empty());

    // Malformed UTF-8 is repaired with replacement characters, so everything written is UTF-8.
    ASSERT_TRUE(doc.Parse("<a>ok\xC3\x28\xFF</a>"));
    std::string const written = Xml(doc.Root());
    EXPECT_TRUE(ZoIsValidUtf8(written));
    EXPECT_EQ(doc.Root()->Value(), L"ok\uFFFD(\uFFFD");

    // Declared entities are never expanded and nothing outside the text is read.
    ASSERT_TRUE(doc.Parse("<!DOCTYPE a [<!ENTITY big \"xxxxxxxxxx\"><!ENTITY ext SYSTEM \"file:///etc/hostname\">]>"
                          "<a><b>&big;&big;</b><c>&ext;</c></a>"));
    EXPECT_EQ(doc.Node(L"b")->Value().find(L"xxxxxxxxxx"), std::wstring::npos);
    EXPECT_EQ(doc.Node(L"c")->Value(), L"&ext;");
}

TEST(XmlText, DeepTreesNeverRecurse)
{
    constexpr int kDepth = 100000;
    std::string text;
    for (int i = 0; i < kDepth; ++i)
        text += "<n>";
    text += "leaf";
    for (int i = 0; i < kDepth; ++i)
        text += "</n>";

    auto doc = std::make_unique<XmlDocument>();
    ASSERT_TRUE(doc->Parse(text.c_str()));
    std::string written;
    doc->Root()->CreateXmlCode(written);
    EXPECT_EQ(written, text);

    XmlDocument copy(*doc->Root());
    *doc->Root() = *copy.Root()->FirstChild();
    EXPECT_EQ(doc->Root()->Node(L"n/n/n") != nullptr, true);
    doc->Root()->Reset();
    doc.reset();
}
