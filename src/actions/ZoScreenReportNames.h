#pragma once
#include "config/XmlDocument.h"
#include "platform/tools/ZoBasicString.h"

#include <vector>

// The names a `screen` or `report` action can choose: those of the screen files
// ("*.*.XSCN") or report files ("*.*.xrpt") of the project folder (see ZoSplitFileName.h),
// in the order of their file names, without the names used by another action of the same
// kind in the moment. Extensions are matched without regard to case. A missing or
// unreadable folder gives no names; a file whose title does not split is left out, and a
// name that two files share is listed once.

enum class ZoProjectFileKind { Screen, Report };

// The kind an action element chooses: "report" lists reports, any other tag screens.
ZoProjectFileKind ZoProjectFileKindOf(XmlDocument::XmlNode const& action);

// The names of the folder's files of that kind, as listed.
std::vector<ZoBasicString<wchar_t>> ZoListProjectNames(ZoBasicString<wchar_t> const& folder, ZoProjectFileKind kind);

// The names the action may choose: a name is left out when the first action of the moment
// with the action's tag and that `name` has an `id` other than the action's. So a screen or
// a report is chosen once per moment, and the action's own choice stays in the list.
std::vector<ZoBasicString<wchar_t>> ZoFreeNames(std::vector<ZoBasicString<wchar_t>> names,
                                                XmlDocument::XmlNode const* moment,
                                                XmlDocument::XmlNode const& action);
