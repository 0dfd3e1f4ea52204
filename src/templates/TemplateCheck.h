#pragma once
#include "check/ZoCheckFinding.h"
#include "config/XmlDocument.h"

#include <vector>

// The project check's rules of one event, over a template: what every event stamped from
// it will be found to have (the stamp adds nothing else; see TemplateCheckTest). `{device}`
// stands for a device that has every variable of the catalog (PlaceholderDeviceCatalog), so
// that `[{device}.NOPE]` is a fault when no device has NOPE. Rules that compare the event
// with the others (names, ids, duplicates) and its registration are left out: a template is
// not an event of the project.
namespace zo::templates {

std::vector<ZoFinding> CheckTemplate(XmlDocument::XmlNode const& templateEvent, XmlDocument::XmlNode const* eventsRoot,
                                     XmlDocument::XmlNode const* deviceTree, XmlDocument::XmlNode const* timeTablesRoot,
                                     XmlDocument::XmlNode const* usersRoot, std::wstring const& folder);

} // namespace zo::templates
