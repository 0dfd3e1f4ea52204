#pragma once
#include "config/XmlDocument.h"

#include <QString>

#include <memory>
#include <string>
#include <vector>

class ZoDriver;
class ZoDeviceCatalog;

// Choosing the devices a template is stamped over, and the sample device its formulas are
// checked against while it is edited.
namespace zo::templates {

struct DeviceFilter {
    QString pattern;          // the name, with `*` and `?`, without regard to case; empty: any
    std::wstring type;        // the driver type exactly; empty: any
    bool onlyCapable = false; // only devices that have every variable in `required`
};

// Whether the device has every variable (codes compare exactly).
bool HasVariables(ZoDriver const& device, std::vector<std::wstring> const& codes);

// The catalog's devices (events pseudo-devices never) that pass the filter, in catalog order.
std::vector<ZoDriver const*> FilterDevices(ZoDeviceCatalog const& catalog, DeviceFilter const& filter,
                                           std::vector<std::wstring> const& required = {});

// The driver types of the catalog's devices, each once, sorted.
std::vector<std::wstring> DeviceTypes(ZoDeviceCatalog const& catalog);

// The placeholder's device while a template is edited: a device named "{device}" with the
// variables of a sample device (the first of the catalog that has every variable the
// template uses, else the first), so that `[{device}.RUNNING]` resolves in the editor's
// formula checks as it will for the devices stamped. A catalog of the device tree's devices
// plus that one and of the events' pseudo-devices; `sample` receives the sample's name
// (empty when the catalog has no device).
std::unique_ptr<ZoDeviceCatalog> SampleDeviceCatalog(XmlDocument::XmlNode const* deviceTree,
                                                     XmlDocument::XmlNode const* eventsRoot,
                                                     XmlDocument::XmlNode const& templateEvent, std::wstring& sample);

} // namespace zo::templates
