#include "templates/TemplateCheck.h"

#include "check/ZoProjectChecker.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "project/ProjectFiles.h"
#include "templates/TemplateDevices.h"

namespace zo::templates {

using XmlNode = XmlDocument::XmlNode;

std::vector<ZoFinding> CheckTemplate(XmlNode const& templateEvent, XmlNode const* eventsRoot, XmlNode const* deviceTree,
                                     XmlNode const* timeTablesRoot, XmlNode const* usersRoot, std::wstring const& folder)
{
    // A project of the template alone, registered, with the project's groups.
    XmlDocument events;
    events.Create(zo::project::kEventsRoot);
    *events.Root()->NewChild(L"events")->NewChild(L"event") = templateEvent;
    if (XmlNode const* groups = eventsRoot ? eventsRoot->Child(L"eventsGroups") : nullptr)
        *events.Root()->NewChild(L"eventsGroups") = *groups;
    XmlDocument devices;
    devices.Create(zo::project::kDevicesRoot);
    XmlNode* registration = devices.Root()->NewChild(L"deviceGroups")->NewChild(L"devices")->NewChild(L"device");
    registration->SetValue(L"id", templateEvent.Value(L"id", L""));
    registration->SetValue(L"type", zo::project::kEventDeviceType);

    std::unique_ptr<ZoDeviceCatalog> const catalog = PlaceholderDeviceCatalog(deviceTree, eventsRoot);
    ZoProjectDocs docs;
    docs.events = events.Root();
    docs.devices = devices.Root();
    docs.timeTables = timeTablesRoot;
    docs.users = usersRoot;
    docs.folder = folder;
    ZoCheckOptions options;
    options.catalog = catalog.get();
    std::vector<ZoFinding> findings;
    for (ZoFinding& finding : ZoCheckProject(docs, options)) {
        if (finding.perEvent && finding.field != ZoCheckField::Identity && finding.rule != "duplicate-name")
            findings.push_back(std::move(finding));
    }
    return findings;
}

} // namespace zo::templates
