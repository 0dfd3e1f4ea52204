#pragma once
#include "config/XmlDocument.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

using XmlNode = XmlDocument::XmlNode;

// What the event editor's annotation area edits in an event: its `arguments` (the n-th
// `argument` is what "%a" n shows) and its group references (the `eventsGroup` children of
// its `eventsGroups`, each holding a group's id; the n-th one that resolves is "%g" n).
// Plain functions over the tree, so that the rules hold without a dialog.

// The project's groups (the `eventsGroup` children of the groups root) by id and by name,
// read once, so that resolving many references stays linear. The keys are the texts as the
// document stores them (UTF-8), so nothing is converted or copied; the index serves while
// the groups root is unchanged. When several groups share an id or a name the first one
// counts, as a path step picks the first match.
class ZoGroupIndex {
public:
    explicit ZoGroupIndex(XmlNode const* groupsRoot);
    XmlNode const* ById(std::string_view idUtf8) const;
    XmlNode const* ByName(std::wstring_view name) const;
    // Every group, in document order.
    std::vector<XmlNode const*> const& Groups() const { return m_groups; }

private:
    std::vector<XmlNode const*> m_groups;
    std::unordered_map<std::string_view, XmlNode const*> m_byId;
    std::unordered_map<std::string_view, XmlNode const*> m_byName;
};

// One membership that resolves: the event's reference and the group it names.
struct ZoGroupMember {
    XmlNode* reference = nullptr;
    XmlNode const* group = nullptr;
};

// The event's references whose group exists, in document order (a reference to a group
// that no longer exists is skipped and uses up no number).
std::vector<ZoGroupMember> ZoResolvedGroups(XmlNode const& event, ZoGroupIndex const& groups);
// Their groups' names, in the same order (the choices of "%g").
std::vector<std::wstring> ZoMemberGroupNames(XmlNode const& event, XmlNode const* groupsRoot);
// The names of the project's groups, in document order, that are not among the names shown.
std::vector<std::wstring> ZoGroupsToOffer(ZoGroupIndex const& groups, std::vector<std::wstring> const& shown);
// Appends a reference for each name that names a group (the first group of that name),
// creating `eventsGroups` when missing; names that match no group are ignored. Returns the
// number of references added.
int ZoAddGroupReferences(XmlNode& event, ZoGroupIndex const& groups, std::vector<std::wstring> const& names);
// Removes these references (children of the event's `eventsGroups`; others are ignored).
void ZoRemoveGroupReferences(XmlNode& event, std::vector<XmlNode*> const& references);

// The event's `argument` elements, in document order.
std::vector<XmlNode*> ZoArgumentsOf(XmlNode const& event);
// Their `value`s (the choices of "%a").
std::vector<std::wstring> ZoArgumentValues(XmlNode const& event);
// Appends a new `argument` with a fresh id, creating `arguments` when missing.
XmlNode* ZoAppendArgument(XmlNode& event);
// Removes the argument from the event's `arguments` (nothing else is renumbered).
void ZoRemoveArgument(XmlNode& event, XmlNode* argument);
