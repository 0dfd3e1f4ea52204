#pragma once
#include "ZoNameIndex.h"
#include "ZoVariableInfo.h"

#include <cstdint>
#include <span>
#include <string_view>

// One device of the project's device catalog, with its variables. Devices belong to the
// catalog (ZoDeviceCatalog) and live as long as it does, or until its events part is
// rebuilt for an events pseudo-device.
//
// An events pseudo-device stands for one event of the project: it is named "R$EVE_"
// followed by the event's name, has type "R$EVE" and the six variables of an event's state
// (ZoEventVariables.h), so that a formula can test another event.
class ZoDriver {
public:
    std::wstring_view Name() const { return m_name; }
    std::wstring_view Id() const { return m_id; }
    // The device's description; for an events pseudo-device, the event's name.
    std::wstring_view Description() const { return m_description; }
    // The driver type ("MODBUS-TCP"...); "R$EVE" for an events pseudo-device.
    std::wstring_view Type() const { return m_type; }
    std::wstring_view Address() const { return m_address; }
    bool IsEventsDevice() const { return m_eventsDevice; }

    std::span<ZoVariableInfo const> Variables() const { return {m_variables, m_variableCount}; }
    // The variable with that code (codes compare exactly), or null when the device lacks it.
    ZoVariableInfo const* FindVariable(std::wstring_view code) const;

private:
    friend class ZoDeviceCatalog;
    std::wstring_view m_name;
    std::wstring_view m_id;
    std::wstring_view m_description;
    std::wstring_view m_type;
    std::wstring_view m_address;
    ZoVariableInfo const* m_variables = nullptr;
    std::uint32_t m_variableCount = 0;
    bool m_eventsDevice = false;
    ZoNameIndex const* m_codes = nullptr; // only for devices with many variables
};
