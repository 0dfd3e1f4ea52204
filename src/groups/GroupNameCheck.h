#pragma once
#include "config/XmlDocument.h"
#include <string>

// The checks a group's new name passes, in this order:
//   1. an empty name is refused (text 32907);
//   2. a name that IsValidId refuses is refused (text 32764);
//   3. a name that "eventsGroup?name=%s?" finds among the children of `groups` is refused
//      (text 32908), unless what it finds is the group being named, so that a group may
//      keep its own name.
// Returns 0 when the name passes, else the text id of the first failing check.
unsigned CheckGroupName(std::wstring const& name, XmlDocument::XmlNode const* group,
                        XmlDocument::XmlNode const* groups);
