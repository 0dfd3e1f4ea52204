#include "groups/GroupMembers.h"
#include "groups/GroupNameCheck.h"
#include "groups/GroupsTestDocs.h"
#include <QStringList>

using namespace groups_test;

namespace {

QString Join(std::vector<QString> const& names)
{
    return QStringList(names.begin(), names.end()).join(u',');
}

// "group:member,member;group:..." for every record.
QString Records(std::vector<GroupRecord> const& records)
{
    QStringList parts;
    for (GroupRecord const& record : records)
        parts << record.name + u':' + Join(record.members);
    return parts.join(u';');
}

XmlNode* Events(XmlDocument& doc)
{
    return doc.Root()->Child(L"events");
}

} // namespace

TEST(GroupMembers, CollectsEachGroupsMembersInEventOrderOnce)
{
    XmlDocument doc;
    Load(doc, Cfg({Ev("Zeta", {"A", "A"}), Ev("alpha", {"B", "A"}), Ev("Lost", {"gone"}),
                   "<note><name>Note</name><eventsGroups><eventsGroup>A</eventsGroup></eventsGroups></note>",
                   Ev("Mid", {"B"}), Ev("Bare")},
                  {Grp("A", "First"), Grp("B", "Second"), "<other><id>A</id></other>", Grp("A", "Twin")}));
    // An event naming a group twice counts once; only `event` children are members; a group
    // that shares its id with another gets the same members.
    EXPECT_EQ(Records(CollectGroupMembers(doc.Root())),
              QStringLiteral("First:Zeta,alpha;Second:alpha,Mid;Twin:Zeta,alpha"));
    EXPECT_EQ(CountEvents(Events(doc)), 5);

    XmlDocument empty;
    Load(empty, "<cfg/>");
    EXPECT_TRUE(CollectGroupMembers(empty.Root()).empty());
    EXPECT_EQ(CountEvents(nullptr), 0);
}

TEST(GroupMembers, CandidatesAreEveryChildThatIsNotAMember)
{
    XmlDocument doc;
    Load(doc, Cfg({Ev("One", {"A"}), Ev("Two", {"B"}),
                   "<note><name>Note</name></note>", Ev("Three")},
                  {Grp("A", "First")}));
    // Children of any tag are offered, not only events.
    std::vector<std::wstring> const names = NonMemberNames(Events(doc), L"A");
    EXPECT_EQ(names, (std::vector<std::wstring>{L"Two", L"Note", L"Three"}));
}

TEST(GroupMembers, AddingGivesTheFirstEventOfEachNameAMembership)
{
    XmlDocument doc;
    Load(doc, Cfg({Ev("One"), Ev("Two", {"B"}), Ev("One", {"B"})}, {Grp("A", "First")}));
    std::vector<QString> const added = AddGroupMembers(Events(doc), L"A", {L"Two", L"Gone", L"One", L"One"});
    // A name no event has is skipped; a name chosen twice adds twice to the same event.
    EXPECT_EQ(Join(added), QStringLiteral("Two,One,One"));
    EXPECT_EQ(Memberships(doc, L"Two"), "B,A");
    XmlNode* first = *Events(doc)->ChildsBegin();
    EXPECT_EQ(first->Child(L"eventsGroups")->Size(), 2); // created, then appended to
    XmlNode* last = Events(doc)->FirstChild()->NextSibling()->NextSibling();
    EXPECT_EQ(last->Child(L"eventsGroups")->Size(), 1);
}

TEST(GroupMembers, RemovingTakesTheFirstMembershipOfTheFirstEventSoNamed)
{
    XmlDocument doc;
    Load(doc, Cfg({Ev("One", {"A", "B", "A"}), Ev("Two", {"A"}), Ev("Three", {"A"})}, {Grp("A", "First")}));
    std::vector<QString> record{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three"),
                                QStringLiteral("Two")};
    RemoveGroupMembers(Events(doc), L"A", {QStringLiteral("One"), QStringLiteral("Two")}, record);
    EXPECT_EQ(Memberships(doc, L"One"), "B,A");
    EXPECT_EQ(Memberships(doc, L"Two"), "");
    EXPECT_EQ(Memberships(doc, L"Three"), "A");
    EXPECT_EQ(Join(record), QStringLiteral("Three,Two"));

    // The same name twice is two removals from the same first event.
    RemoveGroupMembers(Events(doc), L"A", {QStringLiteral("One"), QStringLiteral("One")}, record);
    EXPECT_EQ(Memberships(doc, L"One"), "B");
}

// Deleting a group removes only the FIRST membership of it from each event: an event that
// names the group twice keeps the second reference. This is how the dialog has always
// behaved and projects may rely on it, so it is kept and pinned here.
TEST(GroupMembers, DeletingAGroupRemovesOneMembershipPerEvent)
{
    XmlDocument doc;
    Load(doc, Cfg({Ev("One", {"A", "B", "A"}), Ev("Two", {"B"}), Ev("Three", {"C", "A"})},
                  {Grp("A", "First"), Grp("B", "Second"), Grp("C", "Third")}));
    XmlNode* groups = doc.Root()->Child(L"eventsGroups");
    DeleteGroups(Events(doc), {groups->FirstChild(), groups->FirstChild()->NextSibling()->NextSibling()});
    EXPECT_EQ(GroupNames(doc), "Second");
    EXPECT_EQ(Memberships(doc, L"One"), "B,A");
    EXPECT_EQ(Memberships(doc, L"Two"), "B");
    EXPECT_EQ(Memberships(doc, L"Three"), "");
}

TEST(GroupMembers, NameChecksRunInOrder)
{
    XmlDocument doc;
    Load(doc, Cfg({}, {Grp("A", "Pumps"), Grp("B", "Tanks")}));
    XmlNode const* groups = doc.Root()->Child(L"eventsGroups");
    XmlNode const* pumps = groups->FirstChild();
    EXPECT_EQ(CheckGroupName(L"", pumps, groups), 32907u);
    EXPECT_EQ(CheckGroupName(L"a/b", pumps, groups), 32764u);
    EXPECT_EQ(CheckGroupName(L" Pumps", pumps, groups), 32764u);
    EXPECT_EQ(CheckGroupName(L"Tanks", pumps, groups), 32908u);
    EXPECT_EQ(CheckGroupName(L"Pumps", pumps, groups), 0u); // its own name
    EXPECT_EQ(CheckGroupName(L"tanks", pumps, groups), 0u); // names compare with case
}
