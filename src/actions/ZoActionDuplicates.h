#pragma once
#include "config/XmlDocument.h"

#include <string_view>

// The checks that keep one moment from holding the same action twice. Each compares an
// action with its siblings in the moment element; a sibling with the same `id` is the
// action itself and never counts. All comparisons are exact (case and blanks count).

// Another `force` of the moment writes the same `variable` (a variable is forced once per
// moment). variable is the text the editor is about to write.
bool ZoIsForcedElsewhere(XmlDocument::XmlNode const* moment, XmlDocument::XmlNode const& action,
                         std::wstring_view variable);

// Another `shellExecute` of the moment holds the same `command` and `parameter` as the
// action as stored in the tree. The stored values are compared, not what the editor is
// about to write: OK writes only after this check, so a sibling that the stored element
// already repeats is caught, and a new, still empty action is compared with empty values.
bool ZoRepeatsStoredCommand(XmlDocument::XmlNode const* moment, XmlDocument::XmlNode const& action);
