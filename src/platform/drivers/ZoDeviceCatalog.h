#pragma once
#include "ZoDriver.h"
#include "ZoTextArena.h"
#include "config/XmlDocument.h"

#include <array>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

// The project's device catalog: the devices of the `catalog` element of the device tree
// (Devices.zocfg) with their variables, and one events pseudo-device per event of the
// event configuration document. Formulas resolve their variables here.
//
// Both parts are read into the catalog (texts copied into large blocks, no pointer into
// the documents kept) and indexed by name with hash tables, so that a lookup costs the same
// with 5 devices or 100,000. LoadEvents rebuilds the events part alone, in a few
// milliseconds for 100,000 events: call it after the events changed. Device and variable
// pointers stay valid until the part that holds them is loaded again or the catalog is
// destroyed.
//
// One catalog is installed for the open project (Install), and formulas use it unless they
// are given another. Everything runs on the user-interface thread.
class ZoDeviceCatalog {
public:
    using XmlNode = XmlDocument::XmlNode;

    ZoDeviceCatalog();
    ~ZoDeviceCatalog();
    ZoDeviceCatalog(ZoDeviceCatalog const&) = delete;
    ZoDeviceCatalog& operator=(ZoDeviceCatalog const&) = delete;

    // Reads the `driver` elements of the catalog: node is the `catalog` element or the
    // device tree's root that holds it; null empties the devices part. A driver without a
    // name and a variable without a code are skipped; of two devices with the same name,
    // or two variables of one device with the same code, the first counts.
    void LoadDevices(XmlNode const* node);
    // Builds one events pseudo-device per `event` with a name: node is the `events`
    // element or the event configuration document's root; null empties the events part.
    void LoadEvents(XmlNode const* node);

    // The device with exactly that name (ordinary devices first, then events
    // pseudo-devices), or null.
    ZoDriver const* Find(std::wstring_view name) const;
    ZoVariableInfo const* FindVariable(std::wstring_view device, std::wstring_view code) const;

    std::span<ZoDriver const> Devices() const { return m_devices.drivers; }
    std::span<ZoDriver const> EventsDevices() const { return m_events.drivers; }
    // The six variables every events pseudo-device shares (order of kZoEventVariableCodes).
    std::span<ZoVariableInfo const> EventVariables() const { return m_eventVariables; }

    std::size_t MemoryUsed() const;

    // The catalog installed for the open project, or null when none is.
    static ZoDeviceCatalog* Installed();
    // Installs a catalog (null: none), destroying the one installed before.
    static void Install(std::unique_ptr<ZoDeviceCatalog> catalog);
    // Installs a catalog for a while and hands back the one installed before (null when
    // none), alive and unchanged for whatever still points at it, to be exchanged back.
    static std::unique_ptr<ZoDeviceCatalog> Exchange(std::unique_ptr<ZoDeviceCatalog> catalog);

private:
    struct DevicesPart {
        ZoTextArena texts;
        std::vector<ZoDriver> drivers;
        std::vector<ZoVariableInfo> variables;
        std::vector<ZoNamedValue> namedValues;
        std::vector<ZoNameIndex> codeIndexes;
        ZoNameIndex index;
    };
    struct EventsPart {
        ZoTextArena names;
        std::vector<ZoDriver> drivers;
        ZoNameIndex index;
    };
    struct Tags;
    void ReadDriver(XmlNode const& element, Tags const& tags);
    void ReadVariable(XmlNode const& element, Tags const& tags);
    void ReadStates(XmlNode const* states, Tags const& tags, ZoValueInfo& info);
    void IndexDevices();
    void MakeSharedVariables();

    DevicesPart m_devices;
    EventsPart m_events;
    // Shared by the devices: the named values of a digital without states of its own, and
    // the variables of every events pseudo-device.
    ZoTextArena m_sharedTexts;
    std::array<ZoNamedValue, 2> m_digitalStates;
    std::array<ZoNamedValue, 4> m_eventStates;
    std::array<ZoVariableInfo, 6> m_eventVariables;
};

// The host's call when it opens a project: builds the catalog from the device tree's root
// (or its `catalog`) and the event configuration document's root (or its `events`), either
// of which may be null, and installs it.
void ZoInstallProjectCatalog(XmlDocument::XmlNode const* deviceTree, XmlDocument::XmlNode const* events);
// After the events changed (an events list closed with OK): rebuilds the installed
// catalog's events pseudo-devices; installs a catalog without devices when none is.
void ZoRefreshProjectEvents(XmlDocument::XmlNode const* events);
