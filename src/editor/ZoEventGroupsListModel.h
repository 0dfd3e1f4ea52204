#pragma once
#include "editor/ZoNumberedListModel.h"

// The event editor's group list: one row per group reference of the event whose group
// exists, in document order, numbered over those rows only (as the "%g" placeholders count
// them), showing the group's `name` (heading 355). Each row holds the reference element.
class ZoEventGroupsListModel : public ZoNumberedListModel {
    Q_OBJECT
public:
    explicit ZoEventGroupsListModel(QObject* parent = nullptr);
    // Rebuilds the rows from the event's references, resolved in the groups root. An event
    // without an `eventsGroups` element leaves the rows as they are.
    void Fill(XmlNode const& event, XmlNode const* groupsRoot);
};
