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

// The placeholder's device while a template is edited: a device named "{device}" that has
// every variable code of the catalog's devices (each as the first device that has it
// defines it), so that `[{device}.RUNNING]` resolves in the editor's formula checks when
// some device has RUNNING, and `[{device}.NOPE]` is refused when none has. A catalog of the
// device tree's devices plus that one, and of the events' pseudo-devices.
std::unique_ptr<ZoDeviceCatalog> PlaceholderDeviceCatalog(XmlDocument::XmlNode const* deviceTree,
                                                          XmlDocument::XmlNode const* eventsRoot);

} // namespace zo::templates
