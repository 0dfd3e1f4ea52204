#pragma once
#include "config/XmlDocument.h"
#include <string>
#include <vector>

// Every event is also registered as a device of the reserved type "R$EVE" under the
// project's device groups element, so that the host lists events among its devices:
//
//   deviceGroups
//     devices/device        id = the event's id, type = "R$EVE"
//     groups/<any tag>      a device group, with its own devices and groups, to any depth
//
// A null device groups element means "nothing is registered": every function then does
// nothing.

// The device type by which the host recognises an event used as a device.
inline constexpr wchar_t const* kEventDeviceType = L"R$EVE";

// Appends a device for the event to the top-level `devices` element (created when
// absent). The user files it into device groups elsewhere in the host.
void AddEventToDeviceGroupsNode(XmlDocument::XmlNode* deviceGroups,
                                XmlDocument::XmlNode const& event);

// Removes every device whose id is `id` (duplicates too) from the device groups element
// and from all its nested groups, walking them breadth first.
void RemoveEventFromDeviceGroupsNode(XmlDocument::XmlNode* deviceGroups, std::wstring const& id);

// The same for many events at once: one walk over the device tree, whatever the number of
// ids, with the same result as one RemoveEventFromDeviceGroupsNode call per id.
void RemoveEventsFromDeviceGroupsNode(XmlDocument::XmlNode* deviceGroups,
                                      std::vector<std::wstring> const& ids);
