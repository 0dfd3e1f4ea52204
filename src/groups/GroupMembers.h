#pragma once
#include "config/XmlDocument.h"
#include <QString>
#include <string>
#include <string_view>
#include <vector>

// The membership rules of the event groups dialog, apart from any widget.
//
// A group (`eventsGroup` child of the document's `eventsGroups`, with `id` and `name`)
// names no events: an event is a member when its own `eventsGroups` child holds a child
// whose text is the group's `id`. Every function here reads the events in one pass,
// however many groups or names it is given, so that large projects stay quick.

// One row of the group list: the group element (in the live tree) and the names of its
// member events, in document order of the events.
struct GroupRecord {
    XmlDocument::XmlNode* group = nullptr;
    QString name;
    std::vector<QString> members;
};

// The number of `event` children of `events` (null counts none).
int CountEvents(XmlDocument::XmlNode const* events);

// One record per `eventsGroup` child of the root's `eventsGroups`, in document order, each
// with the names of the `event` children of `events` that are its members. An event counts
// once per group, however often it names the group.
std::vector<GroupRecord> CollectGroupMembers(XmlDocument::XmlNode* root);

// The names of the children of `events` (of any tag) that are not members of the group, in
// document order: candidates for adding.
std::vector<std::wstring> NonMemberNames(XmlDocument::XmlNode const* events, std::wstring const& groupId);

// Adds each chosen name, in order, to the group: the first child of `events` (any tag) with
// that name gets an `eventsGroup` membership (its `eventsGroups` is created when missing).
// Returns the names that found an event, in order, for the group's record; names that no
// event has are skipped. A name chosen twice adds two memberships to the same event.
std::vector<QString> AddGroupMembers(XmlDocument::XmlNode* events, std::wstring const& groupId,
                                     std::vector<std::wstring> const& chosen);

// Removes the group's membership of each named event, as one removal per name: the first
// `event` with that name loses its first membership of the group, and the first equal name
// leaves the record. A name given twice removes twice from the same first event.
void RemoveGroupMembers(XmlDocument::XmlNode* events, std::wstring const& groupId,
                        std::vector<QString> const& names, std::vector<QString>& record);

// Deletes the groups from their parent and, for each deleted group, removes from every
// child of `events` the first membership that names it. A second, duplicate membership of
// the same event stays.
void DeleteGroups(XmlDocument::XmlNode* events, std::vector<XmlDocument::XmlNode*> const& groups);
