#include "groups/GroupMembers.h"
#include "platform/tools/ZoUtf.h"
#include <QHash>
#include <algorithm>
#include <unordered_map>

using XmlNode = XmlDocument::XmlNode;

namespace {

// Lets the maps below be searched with the tree's texts without copying them.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};
template <class Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

// The tags the loops below look for, found once per document: comparing interned tags is
// much quicker than comparing tag texts for each of many thousand events.
class EventTags {
public:
    explicit EventTags(XmlNode const* events)
        : m_doc(events ? events->Document() : nullptr)
    {
    }
    // The event's `eventsGroups` child, or null.
    XmlNode* Memberships(XmlNode const* event) { return Find(event, m_memberships, L"eventsGroups"); }
    // The event's `name` child, or null.
    XmlNode* NameNode(XmlNode const* event) { return Find(event, m_name, L"name"); }
    // Its text as stored, empty when there is none.
    std::string_view Name(XmlNode const* event)
    {
        XmlNode const* name = NameNode(event);
        return name ? name->TextUtf8() : std::string_view();
    }

private:
    XmlNode* Find(XmlNode const* element, void const*& key, wchar_t const* tag)
    {
        // First the children: an element still shared with a copy's source interns its
        // children's tags when they are first reached.
        XmlNode* child = element->FirstChild();
        if (!key)
            key = m_doc ? m_doc->TagKey(tag) : nullptr;
        if (!key)
            return nullptr;
        for (; child; child = child->NextSibling())
            if (child->TagKey() == key)
                return child;
        return nullptr;
    }

    XmlDocument const* m_doc;
    void const* m_memberships = nullptr;
    void const* m_name = nullptr;
};

bool IsMember(EventTags& tags, XmlNode const* event, std::string_view groupId)
{
    XmlNode const* memberships = tags.Memberships(event);
    if (!memberships)
        return false;
    for (XmlNode const* membership = memberships->FirstChild(); membership; membership = membership->NextSibling())
        if (membership->TextUtf8() == groupId)
            return true;
    return false;
}

QString NameOf(XmlNode const* element)
{
    std::string_view const name = element->ValueUtf8(L"name");
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

QString NameOf(EventTags& tags, XmlNode const* event)
{
    std::string_view const name = tags.Name(event);
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

// Removes up to `count` children of memberships whose text is groupId, first ones first.
void RemoveMemberships(XmlNode* memberships, std::string_view groupId, int count)
{
    XmlNode* membership = memberships->FirstChild();
    while (membership && count > 0) {
        XmlNode* const next = membership->NextSibling();
        if (membership->TextUtf8() == groupId) {
            memberships->RemoveChild(membership);
            --count;
        }
        membership = next;
    }
}

} // namespace

int CountEvents(XmlNode const* events)
{
    int count = 0;
    if (events)
        for (XmlNode const* child = events->FirstChild(); child; child = child->NextSibling())
            count += child->HasTag(L"event") ? 1 : 0;
    return count;
}

std::vector<GroupRecord> CollectGroupMembers(XmlNode* root)
{
    std::vector<GroupRecord> records;
    XmlNode* groups = root ? root->Child(L"eventsGroups") : nullptr;
    if (!groups)
        return records;

    // Group id -> its first record; groups sharing an id are chained, so each gets the members.
    std::unordered_map<std::string_view, std::size_t> firstById;
    std::vector<std::size_t> nextSameId;
    std::vector<std::string_view> ids;
    for (XmlNode* group = groups->FirstChild(); group; group = group->NextSibling()) {
        if (!group->HasTag(L"eventsGroup"))
            continue;
        GroupRecord record;
        record.group = group;
        record.name = NameOf(group);
        records.push_back(std::move(record));
        ids.push_back(group->ValueUtf8(L"id"));
    }
    nextSameId.assign(records.size(), records.size());
    for (std::size_t i = records.size(); i-- > 0;) {
        auto [it, inserted] = firstById.try_emplace(ids[i], i);
        if (!inserted) {
            nextSameId[i] = it->second;
            it->second = i;
        }
    }

    XmlNode* events = root->Child(L"events");
    if (!events || firstById.empty())
        return records;
    // The event that last joined each record, so that an event naming a group twice
    // counts once.
    std::vector<XmlNode const*> lastMember(records.size(), nullptr);
    EventTags tags(events);
    for (XmlNode* event = events->FirstChild(); event; event = event->NextSibling()) {
        if (!event->HasTag(L"event"))
            continue;
        XmlNode const* memberships = tags.Memberships(event);
        if (!memberships || memberships->Size() == 0)
            continue;
        QString name;
        bool named = false;
        for (XmlNode const* membership = memberships->FirstChild(); membership;
             membership = membership->NextSibling()) {
            auto const found = firstById.find(membership->TextUtf8());
            if (found == firstById.end())
                continue;
            for (std::size_t i = found->second; i < records.size(); i = nextSameId[i]) {
                if (lastMember[i] == event)
                    continue;
                lastMember[i] = event;
                if (!named) {
                    name = NameOf(tags, event);
                    named = true;
                }
                records[i].members.push_back(name);
            }
        }
    }
    return records;
}

std::vector<std::wstring> NonMemberNames(XmlNode const* events, std::wstring const& groupId)
{
    std::vector<std::wstring> names;
    if (!events)
        return names;
    std::string const id = ZoToUtf8(groupId);
    EventTags tags(events);
    for (XmlNode const* event = events->FirstChild(); event; event = event->NextSibling())
        if (!IsMember(tags, event, id))
            names.push_back(ZoFromUtf8(tags.Name(event)));
    return names;
}

std::vector<QString> AddGroupMembers(XmlNode* events, std::wstring const& groupId,
                                     std::vector<std::wstring> const& chosen)
{
    std::vector<QString> added;
    if (!events || chosen.empty())
        return added;
    // Chosen name -> the first event with it, found in one pass over the events.
    TextMap<XmlNode*> byName;
    byName.reserve(chosen.size());
    for (std::wstring const& name : chosen)
        byName.try_emplace(ZoToUtf8(name), nullptr);
    EventTags tags(events);
    std::size_t unresolved = byName.size();
    for (XmlNode* event = events->FirstChild(); event && unresolved > 0; event = event->NextSibling()) {
        auto const found = byName.find(tags.Name(event));
        if (found != byName.end() && !found->second) {
            found->second = event;
            --unresolved;
        }
    }

    added.reserve(chosen.size());
    for (std::wstring const& name : chosen) {
        XmlNode* event = byName.find(ZoToUtf8(name))->second;
        if (!event)
            continue;
        XmlNode* memberships = tags.Memberships(event);
        if (!memberships)
            memberships = event->NewChild(L"eventsGroups");
        memberships->NewChild(L"eventsGroup")->SetValue(groupId);
        added.push_back(QString::fromStdWString(name));
    }
    return added;
}

void RemoveGroupMembers(XmlNode* events, std::wstring const& groupId, std::vector<QString> const& names,
                        std::vector<QString>& record)
{
    if (names.empty())
        return;
    // Each name given is one removal from the first event so named: count them per name.
    struct Removal {
        int count = 0;
        XmlNode* event = nullptr;
    };
    TextMap<Removal> removals;
    QHash<QString, int> recordRemovals;
    for (QString const& name : names) {
        ++removals[name.toStdString()].count;
        ++recordRemovals[name];
    }

    if (events) {
        EventTags tags(events);
        std::size_t unresolved = removals.size();
        for (XmlNode* event = events->FirstChild(); event && unresolved > 0; event = event->NextSibling()) {
            // An event without a name never matches, as a search by name does not find it.
            XmlNode const* name = event->HasTag(L"event") ? tags.NameNode(event) : nullptr;
            if (!name)
                continue;
            auto const found = removals.find(name->TextUtf8());
            if (found != removals.end() && !found->second.event) {
                found->second.event = event;
                --unresolved;
            }
        }
        std::string const id = ZoToUtf8(groupId);
        for (auto& [name, removal] : removals)
            if (removal.event)
                if (XmlNode* memberships = tags.Memberships(removal.event))
                    RemoveMemberships(memberships, id, removal.count);
    }

    // The first equal names leave the record, as many as were given.
    auto const kept = std::remove_if(record.begin(), record.end(), [&](QString const& name) {
        auto const found = recordRemovals.find(name);
        if (found == recordRemovals.end() || *found == 0)
            return false;
        --*found;
        return true;
    });
    record.erase(kept, record.end());
}

void DeleteGroups(XmlNode* events, std::vector<XmlNode*> const& groups)
{
    // Deleted id -> how many deleted groups had it (each removes one membership per event),
    // and the event being cleaned with what it has removed of it so far.
    struct Deleted {
        int count = 0;
        XmlNode const* event = nullptr;
        int removed = 0;
    };
    TextMap<Deleted> deleted;
    for (XmlNode* group : groups) {
        if (!group)
            continue;
        ++deleted[std::string(group->ValueUtf8(L"id"))].count;
        group->Parent()->RemoveChild(group);
    }
    if (!events || deleted.empty())
        return;
    EventTags tags(events);
    for (XmlNode* event = events->FirstChild(); event; event = event->NextSibling()) {
        XmlNode* memberships = tags.Memberships(event);
        if (!memberships)
            continue;
        XmlNode* membership = memberships->FirstChild();
        while (membership) {
            XmlNode* const next = membership->NextSibling();
            auto const found = deleted.find(membership->TextUtf8());
            if (found != deleted.end()) {
                Deleted& entry = found->second;
                if (entry.event != event) {
                    entry.event = event;
                    entry.removed = 0;
                }
                if (entry.removed < entry.count) {
                    memberships->RemoveChild(membership);
                    ++entry.removed;
                }
            }
            membership = next;
        }
    }
}
