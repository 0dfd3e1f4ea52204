#include "editor/ZoAnnotationData.h"

#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoUtf.h"

#include <unordered_set>

namespace {

constexpr wchar_t kGroupTag[] = L"eventsGroup";
constexpr wchar_t kReferencesTag[] = L"eventsGroups";
constexpr wchar_t kArgumentsTag[] = L"arguments";
constexpr wchar_t kArgumentTag[] = L"argument";

} // namespace

ZoGroupIndex::ZoGroupIndex(XmlNode const* groupsRoot)
{
    if (!groupsRoot)
        return;
    m_groups.reserve(std::size_t(groupsRoot->Size()));
    for (XmlNode const* group = groupsRoot->FirstChild(); group; group = group->NextSibling()) {
        if (group->HasTag(kGroupTag))
            m_groups.push_back(group);
    }
    m_byId.reserve(m_groups.size());
    m_byName.reserve(m_groups.size());
    for (XmlNode const* group : m_groups) {
        if (XmlNode const* id = group->Child(L"id"))
            m_byId.emplace(id->TextUtf8(), group);
        if (XmlNode const* name = group->Child(L"name"))
            m_byName.emplace(name->TextUtf8(), group);
    }
}

XmlNode const* ZoGroupIndex::ById(std::string_view idUtf8) const
{
    auto const found = m_byId.find(idUtf8);
    return found == m_byId.end() ? nullptr : found->second;
}

XmlNode const* ZoGroupIndex::ByName(std::wstring_view name) const
{
    auto const found = m_byName.find(ZoToUtf8(name));
    return found == m_byName.end() ? nullptr : found->second;
}

std::vector<ZoGroupMember> ZoResolvedGroups(XmlNode const& event, ZoGroupIndex const& groups)
{
    std::vector<ZoGroupMember> members;
    XmlNode const* references = event.Child(kReferencesTag);
    if (!references)
        return members;
    for (XmlNode* reference = references->FirstChild(); reference; reference = reference->NextSibling()) {
        if (!reference->HasTag(kGroupTag))
            continue;
        if (XmlNode const* group = groups.ById(reference->TextUtf8()))
            members.push_back({reference, group});
    }
    return members;
}

std::vector<std::wstring> ZoMemberGroupNames(XmlNode const& event, XmlNode const* groupsRoot)
{
    ZoGroupIndex const groups(groupsRoot);
    std::vector<std::wstring> names;
    for (ZoGroupMember const& member : ZoResolvedGroups(event, groups))
        names.push_back(ZoFromUtf8(member.group->ValueUtf8(L"name")));
    return names;
}

std::vector<std::wstring> ZoGroupsToOffer(ZoGroupIndex const& groups, std::vector<std::wstring> const& shown)
{
    std::unordered_set<std::wstring> const taken(shown.begin(), shown.end());
    std::vector<std::wstring> offer;
    for (XmlNode const* group : groups.Groups()) {
        std::wstring name = ZoFromUtf8(group->ValueUtf8(L"name"));
        if (!taken.count(name))
            offer.push_back(std::move(name));
    }
    return offer;
}

int ZoAddGroupReferences(XmlNode& event, ZoGroupIndex const& groups, std::vector<std::wstring> const& names)
{
    XmlNode* references = event.Child(kReferencesTag);
    if (!references)
        references = event.NewChild(kReferencesTag);
    int added = 0;
    for (std::wstring const& name : names) {
        XmlNode const* group = groups.ByName(name);
        if (!group)
            continue;
        references->NewChild(kGroupTag)->SetValue(group->Value(L"id", L""));
        ++added;
    }
    return added;
}

void ZoRemoveGroupReferences(XmlNode& event, std::vector<XmlNode*> const& references)
{
    XmlNode* parent = event.Child(kReferencesTag);
    if (!parent)
        return;
    for (XmlNode* reference : references) {
        if (reference && reference->Parent() == parent)
            parent->RemoveChild(reference);
    }
}

std::vector<XmlNode*> ZoArgumentsOf(XmlNode const& event)
{
    std::vector<XmlNode*> arguments;
    XmlNode const* list = event.Child(kArgumentsTag);
    if (!list)
        return arguments;
    for (auto it = list->ChildsBegin(); it != list->ChildsEnd(); ++it) {
        if ((*it)->HasTag(kArgumentTag))
            arguments.push_back(const_cast<XmlNode*>(*it));
    }
    return arguments;
}

std::vector<std::wstring> ZoArgumentValues(XmlNode const& event)
{
    std::vector<std::wstring> values;
    for (XmlNode const* argument : ZoArgumentsOf(event))
        values.push_back(argument->Value(L"value", L""));
    return values;
}

XmlNode* ZoAppendArgument(XmlNode& event)
{
    XmlNode* list = event.Child(kArgumentsTag);
    if (!list)
        list = event.NewChild(kArgumentsTag);
    XmlNode* argument = list->NewChild(kArgumentTag);
    argument->SetValue(L"id", ZoNewGuidText());
    return argument;
}

void ZoRemoveArgument(XmlNode& event, XmlNode* argument)
{
    XmlNode* list = event.Child(kArgumentsTag);
    if (list && argument && argument->Parent() == list)
        list->RemoveChild(argument);
}
