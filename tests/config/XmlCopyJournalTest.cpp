// Working copies (which borrow from the element they copy until read or changed), their
// assignment back, and the undo journal: each must behave exactly like a full copy and a
// full snapshot would.
#include "config/XmlChange.h"
#include "config/XmlDocument.h"
#include "support/XmlText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using XmlNode = XmlDocument::XmlNode;

namespace {

char const* const kProject =
    "<cfg><events>"
    "<event><id>1</id><name>Pump</name><actions><activate><beep/></activate></actions></event>"
    "<event><id>2</id><name>Valve</name></event>"
    "<event><id>3</id><name>Tank</name><eventsGroups><eventsGroup>G</eventsGroup></eventsGroups></event>"
    "</events><eventsGroups><eventsGroup><id>G</id><name>Water</name></eventsGroup></eventsGroups></cfg>";

struct Project {
    XmlDocument doc;
    XmlNode* events = nullptr;
    Project()
    {
        EXPECT_TRUE(doc.Parse(kProject));
        events = doc.Node(L"events");
    }
    std::vector<XmlNode*> Events() const
    {
        std::vector<XmlNode*> all;
        for (auto it = events->ChildsBegin(); it != events->ChildsEnd(); ++it)
            all.push_back(*it);
        return all;
    }
};

} // namespace

TEST(XmlWorkingCopy, ReadsLikeAFullCopyAndIsIndependent)
{
    Project live;
    std::string const before = Xml(live.events);
    XmlDocument copy(*live.events);
    XmlNode* root = copy.Root();
    EXPECT_EQ(root->Size(), 3);
    EXPECT_EQ(root->Document(), &copy);
    // The name check and the list's lookups find the copy's own elements.
    XmlNode* valve = root->NodeV(L"/event?name=%s?", L"Valve");
    ASSERT_NE(valve, nullptr);
    EXPECT_EQ(valve->Document(), &copy);
    EXPECT_EQ(valve->Parent(), root);
    EXPECT_EQ(root->Node(L"event?name=Tank?/eventsGroups/eventsGroup")->Value(), L"G");
    EXPECT_EQ(valve->Value(L"/name", L""), L"Valve");
    EXPECT_EQ(root->NodeV(L"/event?name=%s?", L"Nothing"), nullptr);
    EXPECT_EQ(Xml(root), before);

    valve->SetValue(L"name", L"Gate");
    root->Node(L"event")->Node(L"actions")->Reset();
    EXPECT_EQ(Xml(live.events), before);
    EXPECT_EQ(root->Node(L"event?name=Gate?"), valve);
    EXPECT_EQ(Xml(root->Node(L"event")), "<event><id>1</id><name>Pump</name><actions/></event>");
}

TEST(XmlWorkingCopy, AssignedBackRewritesOnlyWhatChanged)
{
    Project live;
    std::vector<XmlNode*> const events = live.Events();
    XmlNode* const pumpActions = events[0]->Node(L"actions");
    {
        XmlDocument copy(*live.events);
        XmlNode* valve = copy.Root()->Node(L"event?name=Valve?");
        valve->SetValue(L"name", L"Gate");
        valve->SetValue(L"disabled", L"T");
        copy.Root()->NewChild(L"event")->SetValue(L"name", L"New");
        *live.events = *copy.Root();
        EXPECT_EQ(Xml(live.events), Xml(copy.Root()));
    }
    // The unchanged events and the untouched subtrees are the very same elements.
    std::vector<XmlNode*> const after = live.Events();
    ASSERT_EQ(after.size(), 4u);
    EXPECT_EQ(after[0], events[0]);
    EXPECT_EQ(after[0]->Node(L"actions"), pumpActions);
    EXPECT_EQ(after[1], events[1]);
    EXPECT_EQ(after[2], events[2]);
    EXPECT_EQ(after[1]->Value(L"name", L""), L"Gate");
    EXPECT_EQ(after[3]->Document(), &live.doc);
    EXPECT_EQ(after[3]->Node(L"name")->TagKey(), live.doc.TagKey(L"name"));

    // An event removed from the copy goes; the others keep their identity.
    XmlDocument copy(*live.events);
    copy.Root()->RemoveChild(copy.Root()->Node(L"event?name=Pump?"));
    *live.events = *copy.Root();
    EXPECT_EQ(live.Events(), (std::vector<XmlNode*>{after[1], after[2], after[3]}));
    EXPECT_EQ(Xml(live.events), Xml(copy.Root()));
}

TEST(XmlWorkingCopy, StaysExactWhereverItGoes)
{
    Project live;
    std::string const before = Xml(live.events);
    // Assigned over another element, or copied again: a full copy of what it holds.
    auto copy = std::make_unique<XmlDocument>(*live.events);
    copy->Root()->Node(L"event?name=Valve?")->SetValue(L"name", L"Gate");
    std::string const edited = Xml(copy->Root());
    XmlDocument again(*copy->Root());
    EXPECT_EQ(Xml(again.Root()), edited);
    XmlNode* groups = live.doc.Node(L"eventsGroups");
    *groups = *copy->Root();
    EXPECT_EQ(Xml(groups), edited);
    EXPECT_EQ(Xml(live.events), before);

    // The source changes while the copy lives: the copy keeps what it copied.
    XmlDocument second(*live.events);
    live.events->RemoveChild(live.events->Node(L"event?name=Tank?"));
    live.events->Node(L"event")->SetValue(L"name", L"Changed");
    EXPECT_EQ(Xml(second.Root()), before);

    // The source is destroyed before the copy.
    auto source = std::make_unique<XmlDocument>();
    ASSERT_TRUE(source->Parse(kProject));
    XmlDocument orphan(*source->Node(L"events"));
    source.reset();
    EXPECT_EQ(Xml(orphan.Root()), before);
    EXPECT_EQ(orphan.Root()->Node(L"event?name=Tank?/id")->Value(), L"3");
}

TEST(XmlJournal, UndoPutsBackTheSameElements)
{
    Project live;
    std::string const before = Xml(live.doc.Root());
    std::vector<XmlNode*> const events = live.Events();
    live.doc.BeginJournal();
    EXPECT_FALSE(live.doc.JournalHasChanges());

    // What the events list does in place: delete, paste, edit through a working copy.
    live.events->RemoveChild(events[1]);
    XmlDocument clipboard;
    ASSERT_TRUE(clipboard.Parse("<event><id>9</id><name>Pasted</name><actions><a/></actions></event>"));
    *live.events->NewChild(L"event") = *clipboard.Root();
    {
        XmlDocument copy(*live.events);
        copy.Root()->Node(L"event?name=Pump?")->SetValue(L"name", L"Renamed");
        copy.Root()->Node(L"event?name=Tank?")->EraseTag(L"eventsGroups");
        *live.events = *copy.Root();
    }
    live.doc.Node(L"eventsGroups")->Reset();
    *events[0]->Node(L"actions") = *events[2];
    EXPECT_TRUE(live.doc.JournalHasChanges());
    EXPECT_NE(Xml(live.doc.Root()), before);

    live.doc.UndoJournal();
    EXPECT_EQ(Xml(live.doc.Root()), before);
    EXPECT_EQ(live.Events(), events);
    EXPECT_FALSE(live.doc.JournalHasChanges());

    // Kept changes stay, and later changes are not recorded any more.
    live.doc.BeginJournal();
    live.events->RemoveChild(events[0]);
    live.doc.EndJournal();
    live.events->RemoveChild(events[1]);
    live.doc.UndoJournal();
    EXPECT_EQ(live.Events(), (std::vector<XmlNode*>{events[2]}));
}

// The host's history: each change taken out of the journal is undone and redone any number
// of times, several of them in a row, and the same elements come back each time.
TEST(XmlJournal, TakenChangesUndoAndRedoInOrder)
{
    Project live;
    std::vector<std::string> states{Xml(live.doc.Root())};
    std::vector<XmlNode*> const events = live.Events();
    std::vector<std::unique_ptr<XmlChange>> changes;
    auto take = [&] {
        changes.push_back(XmlChange::TakeJournal(live.doc));
        ASSERT_NE(changes.back(), nullptr);
        EXPECT_FALSE(live.doc.JournalHasChanges());
        states.push_back(Xml(live.doc.Root()));
    };
    // A paste through a working copy, then a delete and a rename, then a reorder and a tag.
    live.doc.BeginJournal();
    XmlDocument clipboard;
    ASSERT_TRUE(clipboard.Parse("<event><id>9</id><name>Pasted</name><actions><a/></actions></event>"));
    *live.events->NewChild(L"event") = *clipboard.Root();
    {
        XmlDocument copy(*live.events);
        copy.Root()->Node(L"event?name=Tank?")->EraseTag(L"eventsGroups");
        *live.events = *copy.Root();
    }
    take();
    live.doc.BeginJournal();
    live.events->RemoveChild(events[1]);
    events[0]->SetValue(L"name", L"P-101");
    take();
    live.doc.BeginJournal();
    *events[0]->Node(L"actions") = *events[2];
    live.doc.Node(L"eventsGroups")->Reset();
    take();
    // Nothing changed: nothing to keep.
    live.doc.BeginJournal();
    EXPECT_EQ(XmlChange::TakeJournal(live.doc), nullptr);

    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = changes.size(); i-- > 0;) {
            changes[i]->Revert();
            EXPECT_EQ(Xml(live.doc.Root()), states[i]) << "undo " << i;
        }
        EXPECT_EQ(live.Events(), events);
        for (std::size_t i = 0; i < changes.size(); ++i) {
            changes[i]->Revert();
            EXPECT_EQ(Xml(live.doc.Root()), states[i + 1]) << "redo " << i;
        }
    }
    // Undone twice then a new change: the reversals dropped free what they kept.
    changes[2]->Revert();
    changes[1]->Revert();
    changes.resize(1);
    live.doc.BeginJournal();
    live.events->RemoveChild(live.Events().back());
    take();
    changes[1]->Revert();
    EXPECT_EQ(Xml(live.doc.Root()), states[1]);
    EXPECT_EQ(&changes[1]->Document(), &live.doc);
}
