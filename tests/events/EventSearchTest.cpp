#include "events/EventSearch.h"
#include "events/EventsTestDocs.h"
#include "platform/tools/ZoUtf.h"
#include "platform/tools/ZoWideChar.h"

#include <gtest/gtest.h>

using namespace events_test;

namespace {

// An event with every kind of field: server actions in two moments, client actions, and
// the event's own keys, each key text naming its place. Keys are written out of search
// order on purpose: the search order is fixed, whatever the document's order.
std::string const kRichEvent = Event(
    "Rich",
    "<annotation>ann</annotation><condition>cond</condition>"
    "<actions><activate><force><id>1</id><value>val</value><variable>var</variable></force>"
    "<mail><id>2</id><message>msg</message><address>addr</address></mail></activate>"
    "<while/><deactivate><shellExecute><id>3</id><parameter>par</parameter><command>cmd</command></shellExecute>"
    "</deactivate><acknowledge><sms><id>4</id><phone>tel</phone></sms></acknowledge></actions>"
    "<delayToDeactivate>dd</delayToDeactivate><conditionStop>stop</conditionStop>"
    "<clientActions><activate><screen><id>5</id><name>scr</name></screen></activate><while/>"
    "<deactivate><device><id>6</id><name>dev</name></device></deactivate><acknowledge/></clientActions>"
    "<delayToActivate>da</delayToActivate><description>not searched</description>");

struct Doc {
    explicit Doc(std::initializer_list<std::string> events) { Load(doc, EventsCfg(events)); }
    XmlNode* Events() { return doc.Root()->Child(L"events"); }
    XmlNode* EventAt(int n)
    {
        XmlNode* e = Events()->FirstChild();
        while (n-- > 0)
            e = e->NextSibling();
        return e;
    }
    XmlDocument doc;
};

// "tag:text@focus" of every field of the event, joined by " ".
std::string Fields(XmlNode& event, EventSearchKeys const& keys)
{
    std::vector<EventSearchField> fields;
    CollectEventSearchFields(event, keys, fields);
    std::string out;
    for (EventSearchField const& f : fields)
        out += (out.empty() ? "" : " ") + ZoToUtf8(f.key->Tag()) + ":" + std::string(f.key->TextUtf8()) + "@"
            + std::to_string(f.focusCode);
    return out;
}

// Every match of a walk from the start: "event/tag@focus", joined by ",".
std::string Walk(EventSearch& search, EventTextMatcher const& matcher)
{
    std::string out;
    while (auto match = search.FindNext(matcher))
        out += (out.empty() ? "" : ",") + std::string(match->event->ValueUtf8(L"name")) + "/"
            + ZoToUtf8(match->tag) + "@" + std::to_string(match->field.focusCode);
    return out;
}

} // namespace

TEST(EventSearchFields, ActionsOfBothSidesThenTheEventsOwnKeysInAFixedKeyOrder)
{
    Doc d{kRichEvent};
    std::string const expected =
        "variable:var@3 value:val@3 address:addr@3 message:msg@3 command:cmd@5 parameter:par@5 phone:tel@6 "
        "name:scr@7 name:dev@9 condition:cond@1 conditionStop:stop@1 delayToActivate:da@1 "
        "delayToDeactivate:dd@1 annotation:ann@1";
    EXPECT_EQ(Fields(*d.EventAt(0), EventSearchKeys::ForDocument(d.doc)), expected);
    // A working copy's tags are compared by text: the same fields in the same order.
    EXPECT_EQ(Fields(*d.EventAt(0), EventSearchKeys::ByName()), expected);
}

TEST(EventSearchFields, OnlyTheFirstKeyOfATagCountsAndMissingKeysAreSkipped)
{
    Doc d{Event("E", "<condition>one</condition><condition>two</condition>"
                     "<actions><activate><force><variable>v1</variable><variable>v2</variable></force></activate>"
                     "</actions>")};
    EXPECT_EQ(Fields(*d.EventAt(0), EventSearchKeys::ForDocument(d.doc)), "variable:v1@3 condition:one@1");
}

TEST(EventTextMatcher, EveryFieldKindIsFoundWithAndWithoutMatchCase)
{
    for (char const* tag : {"variable", "value", "command", "parameter", "address", "phone", "message", "name"}) {
        SCOPED_TRACE(tag);
        std::string const key = std::string("<") + tag + ">x ABC y</" + tag + ">";
        Doc d{Event("E", "<clientActions><while><any>" + key + "</any></while></clientActions>")};
        EventSearch search;
        search.Reset(d.Events(), nullptr);
        EXPECT_EQ(Walk(search, EventTextMatcher(L"abc", false)), std::string("E/") + tag + "@8");
        search.Reset(d.Events(), nullptr);
        EXPECT_EQ(Walk(search, EventTextMatcher(L"abc", true)), "");
        search.Reset(d.Events(), nullptr);
        EXPECT_EQ(Walk(search, EventTextMatcher(L"ABC", true)), std::string("E/") + tag + "@8");
    }
    for (char const* tag : {"condition", "conditionStop", "delayToActivate", "delayToDeactivate", "annotation"}) {
        SCOPED_TRACE(tag);
        Doc d{Event("E", std::string("<") + tag + ">[PLC.ABC] &gt; 1</" + tag + ">")};
        EventSearch search;
        search.Reset(d.Events(), nullptr);
        EXPECT_EQ(Walk(search, EventTextMatcher(L"plc.abc", false)), std::string("E/") + tag + "@1");
        search.Reset(d.Events(), nullptr);
        EXPECT_EQ(Walk(search, EventTextMatcher(L"plc.abc", true)), "");
    }
}

TEST(EventTextMatcher, KeysThatAreNotSearchedAreNeverFound)
{
    Doc d{Event("Pump", "<description>Pump</description><deaAnnotation>Pump</deaAnnotation>"
                        "<actions><activate><launchWeb><url>Pump</url></launchWeb></activate></actions>")};
    EventSearch search;
    search.Reset(d.Events(), nullptr);
    EXPECT_EQ(Walk(search, EventTextMatcher(L"Pump", true)), "");
}

TEST(EventTextMatcher, AnEmptyTextNeverMatches)
{
    EventTextMatcher const empty(L"", false);
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_FALSE(empty.Contains(std::string_view("")));
    EXPECT_FALSE(empty.Contains(std::string_view("anything")));
    EXPECT_EQ(empty.ReplaceAll(L"abc", L"x"), L"abc");
}

TEST(EventTextMatcher, CaseFoldsCharacterByCharacterBeyondAscii)
{
    // Stored texts are UTF-8: an ASCII field is compared in place, any other widened. Both
    // ways give what upper-casing each wide character gives.
    EXPECT_TRUE(EventTextMatcher(L"zona t\u00e9cnica", false).Contains(std::string_view("ZONA T\xC3\x89" "CNICA")));
    EXPECT_FALSE(EventTextMatcher(L"zona t\u00e9cnica", true).Contains(std::string_view("ZONA T\xC3\x89" "CNICA")));
    EXPECT_TRUE(EventTextMatcher(L"\u00c9", true).Contains(std::string_view("x\xC3\x89y")));
    // One character for one: "ß" has no single upper-case letter, so "SS" does not find it.
    EXPECT_FALSE(EventTextMatcher(L"STRASSE", false).Contains(std::string_view("stra\xC3\x9F" "e")));
    // The dotless i upper-cases to a plain I, so it finds an ASCII "i" without match case.
    EXPECT_EQ(ZoWideChar::ToUpper(L'\u0131'), L'I');
    EXPECT_TRUE(EventTextMatcher(L"\u0131", false).Contains(std::string_view("pump in")));
    EXPECT_FALSE(EventTextMatcher(L"\u0131", true).Contains(std::string_view("pump in")));
    EXPECT_TRUE(EventTextMatcher(L"PUMP", false).Contains(std::wstring_view(L"a pump \u00e9")));
}

TEST(EventTextMatcher, ReplaceAllReplacesLeftToRightInTheOriginalTextOnly)
{
    int count = 0;
    EXPECT_EQ(EventTextMatcher(L"abc", false).ReplaceAll(L"Abc + aBC - x", L"Y", &count), L"Y + Y - x");
    EXPECT_EQ(count, 2);
    EXPECT_EQ(EventTextMatcher(L"abc", true).ReplaceAll(L"Abc + abc", L"Y", &count), L"Abc + Y");
    EXPECT_EQ(count, 1);
    // A replacement holding the text is not searched again, so this ends.
    EXPECT_EQ(EventTextMatcher(L"a", true).ReplaceAll(L"banana", L"aa", &count), L"baanaanaa");
    EXPECT_EQ(count, 3);
    // Occurrences do not overlap: the next is looked for after the end of the last.
    EXPECT_EQ(EventTextMatcher(L"aa", true).ReplaceAll(L"aaa", L"b", &count), L"ba");
    EXPECT_EQ(count, 1);
}

// A field of plain ASCII is replaced as the tree stores it, exactly as its wide text would be;
// any other field is left to the wide replacement.
TEST(EventTextMatcher, AsciiFieldsAreReplacedInPlaceAsTheirWideTextWouldBe)
{
    struct Case {
        wchar_t const* find;
        bool matchCase;
        char const* text;
        wchar_t const* replacement;
    };
    Case const cases[] = {
        {L"abc", false, "Abc + aBC - x", L"Y"}, {L"abc", true, "Abc + abc", L"Y"}, {L"a", true, "banana", L"aa"},
        {L"aa", true, "aaa", L"b"},            {L"plc", false, "[PLC3.T] > [plc4.T]", L"CTL"},
        {L"T1", false, "[t1]", L"t1"},          {L"x", false, "none here", L"y"},
        {L"T", false, "[T1]", L"\u00e9t\u00e9"}, {L"\u00e9", false, "ascii", L"e"},
    };
    std::string out;
    for (Case const& c : cases) {
        EventTextMatcher const matcher(c.find, c.matchCase);
        int wideCount = -1;
        int count = -1;
        std::wstring const wide = matcher.ReplaceAll(ZoFromUtf8(c.text), c.replacement, &wideCount);
        ASSERT_TRUE(matcher.ReplaceAllAscii(c.text, ZoToUtf8(c.replacement), out, count)) << c.text;
        EXPECT_EQ(out, ZoToUtf8(wide)) << c.text;
        EXPECT_EQ(count, wideCount) << c.text;
    }
    int count = 0;
    EXPECT_FALSE(EventTextMatcher(L"t", false).ReplaceAllAscii("\xC3\xA9t\xC3\xA9", "x", out, count));
}

TEST(EventSearchWalk, FindNextGoesOnAfterTheFieldFoundAndStopsAtTheEnd)
{
    Doc d{Event("A", "<condition>X and X</condition><annotation>X</annotation>"),
          "<other><condition>X</condition></other>", Event("B", "<condition>none</condition>"),
          Event("C", "<actions><while><force><value>x</value></force></while></actions>")};
    EventSearch search;
    search.Reset(d.Events(), nullptr);
    // A field holding the text twice is one place; a child that is not an event is skipped.
    EXPECT_EQ(Walk(search, EventTextMatcher(L"x", false)), "A/condition@1,A/annotation@1,C/value@4");
    EXPECT_TRUE(search.AtEnd());
    EXPECT_FALSE(search.FindNext(EventTextMatcher(L"x", false)));
    EXPECT_FALSE(search.IncIterators());
}

TEST(EventSearchWalk, StartsAtTheGivenEventAndIncIteratorsSkipsOtherChildren)
{
    Doc d{Event("A"), "<other/>", Event("B"), Event("C")};
    EventSearch search;
    search.Reset(d.Events(), d.EventAt(2));
    EXPECT_EQ(search.CurrentEvent(), d.EventAt(2));
    EXPECT_EQ(search.CurrentPosition(), 1);
    EXPECT_TRUE(search.IncIterators());
    EXPECT_EQ(search.CurrentEvent(), d.EventAt(3));
    EXPECT_EQ(search.CurrentPosition(), 2);
    EXPECT_FALSE(search.IncIterators());
    // An element that is not one of the events starts at the first event.
    search.Reset(d.Events(), d.EventAt(1));
    EXPECT_EQ(search.CurrentEvent(), d.EventAt(0));
}

TEST(EventSearchWalk, ResyncFollowsTheCurrentEventOrTheOneThatTookItsPlace)
{
    Doc d{Event("A", "<condition>x</condition>"), Event("B", "<condition>x</condition>"),
          Event("C", "<condition>x</condition>")};
    EventTextMatcher const matcher(L"x", false);
    EventSearch search;
    search.Reset(d.Events(), nullptr);
    ASSERT_TRUE(search.FindNext(matcher));
    ASSERT_TRUE(search.IncIterators()); // at B
    // An event before it goes: the walk stays at B.
    d.Events()->RemoveChild(d.EventAt(0));
    search.Resync(d.Events());
    EXPECT_EQ(std::string(search.CurrentEvent()->ValueUtf8(L"name")), "B");
    EXPECT_EQ(search.CurrentPosition(), 0);
    // B itself goes: the walk goes on with C, which now stands at its place.
    d.Events()->RemoveChild(d.EventAt(0));
    search.Resync(d.Events());
    EXPECT_EQ(Walk(search, matcher), "C/condition@1");
}

TEST(EventSearchReplaceAll, ReplacesBothOccurrencesOfEachFieldFromTheCurrentEventOn)
{
    Doc d{Event("A", "<condition>[T1] &gt; 1 AND [T1] &lt; 5</condition>"),
          Event("B", "<condition>[t1] &gt; 1 AND [T1] &lt; 5</condition>"
                     "<actions><activate><force><variable>[T1]</variable></force></activate></actions>"),
          Event("C", "<condition>[T2] = 0</condition>")};
    EventSearch search;
    search.Reset(d.Events(), d.EventAt(1));
    EventReplaceAllResult const result = search.ReplaceAll(EventTextMatcher(L"[T1]", false), L"[PLC.T1]");
    EXPECT_EQ(result.fields, 2);
    EXPECT_EQ(result.occurrences, 3);
    EXPECT_TRUE(search.AtEnd());
    EXPECT_EQ(d.EventAt(0)->Value(L"condition", L""), L"[T1] > 1 AND [T1] < 5");
    EXPECT_EQ(d.EventAt(1)->Value(L"condition", L""), L"[PLC.T1] > 1 AND [PLC.T1] < 5");
    EXPECT_EQ(d.EventAt(1)->Value(L"actions/activate/force/variable", L""), L"[PLC.T1]");
    EXPECT_EQ(d.EventAt(2)->Value(L"condition", L""), L"[T2] = 0");
}

TEST(EventSearchReplaceAll, AReplacementThatHoldsTheTextEndsAndIsNotReplacedAgain)
{
    Doc d{Event("A", "<condition>T &gt; 1 OR T &lt; 0</condition>")};
    EventSearch search;
    search.Reset(d.Events(), nullptr);
    EventReplaceAllResult const result = search.ReplaceAll(EventTextMatcher(L"T", true), L"TT");
    EXPECT_EQ(result.occurrences, 2);
    EXPECT_EQ(d.EventAt(0)->Value(L"condition", L""), L"TT > 1 OR TT < 0");
}

TEST(EventSearchReplaceAll, AFieldThatWouldNotChangeIsNotWritten)
{
    Doc d{Event("A", "<condition>abc</condition>")};
    d.doc.BeginJournal();
    EventSearch search;
    search.Reset(d.Events(), nullptr);
    EXPECT_EQ(search.ReplaceAll(EventTextMatcher(L"ABC", false), L"abc").fields, 0);
    EXPECT_FALSE(d.doc.JournalHasChanges());
}

TEST(EventSearchReplaceOne, ReplacesTheFieldAtItsPlaceOnlyWhileItStillHoldsTheText)
{
    Doc d{kRichEvent};
    XmlNode& event = *d.EventAt(0);
    EventTextMatcher const matcher(L"CMD", false);
    // The field at place 4 is the command; place 5 (the parameter) is not.
    EXPECT_FALSE(ReplaceEventField(event, 5, L"parameter", matcher, L"run"));
    EXPECT_FALSE(ReplaceEventField(event, 4, L"parameter", matcher, L"run"));
    EXPECT_FALSE(ReplaceEventField(event, 99, L"command", matcher, L"run"));
    EXPECT_TRUE(ReplaceEventField(event, 4, L"command", matcher, L"run"));
    EXPECT_EQ(event.Value(L"actions/deactivate/shellExecute/command", L""), L"run");
    EXPECT_FALSE(ReplaceEventField(event, 4, L"command", matcher, L"run"));
}
