#pragma once
// A small device catalog for the chooser and wizard tests: a controller with a variable of
// most kinds, a pump unit, a device whose name holds a point, and two events. Installed
// for the time of a test by ChooserCatalogGuard (the choosers' static entry points use the
// installed catalog).
#include "config/XmlDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"

#include <memory>

inline char const kChooserCatalogXml[] = R"(<deviceTree><catalog>
<driver><name>PLC1</name><description>Station controller</description><type>MODBUS-TCP</type><address>192.168.10.11:502</address>
  <variable><code>LEVEL</code><description>Tank level</description><type>analog</type><unit>%</unit><min>0</min><max>100</max></variable>
  <variable><code>RUN</code><description>Pump running</description><type>digital</type></variable>
  <variable><code>MODE</code><description>Station mode</description><type>integer</type><writable>T</writable>
    <states><state><value>1</value><text>Local</text></state><state><value>2</value><text>Remote</text></state></states></variable>
  <variable><code>NAME</code><description>Station name</description><type>text</type><writable>T</writable></variable>
  <variable><code>ENERGY</code><description>Energy meter</description><type>counter</type><unit>kWh</unit><min>0</min></variable>
  <variable><code>SETPOINT</code><description>Level setpoint</description><type>analog</type><unit>%</unit><writable>T</writable><min>0</min><max>100</max></variable>
</driver>
<driver><name>PUMP1</name><description>Raw water pump</description><type>PROFIBUS</type>
  <variable><code>CURRENT</code><description>Motor current</description><type>analog</type><unit>A</unit><min>0</min><max>60</max></variable>
  <variable><code>HOURS</code><description>Running hours</description><type>counter</type><unit>h</unit></variable>
</driver>
<driver><name>Line 2.A</name><type>SNMP</type>
  <variable><code>FLOW</code><description>Outlet flow</description><type>analog</type><unit>m3/h</unit></variable>
</driver>
</catalog></deviceTree>)";

inline char const kChooserEventsXml[] = "<eventsConfiguration><events>"
                                        "<event><name>Tank high</name></event>"
                                        "<event><name>Pump fault</name></event>"
                                        "</events></eventsConfiguration>";

inline std::unique_ptr<ZoDeviceCatalog> MakeChooserTestCatalog()
{
    XmlDocument devices;
    XmlDocument events;
    devices.Parse(kChooserCatalogXml);
    events.Parse(kChooserEventsXml);
    auto catalog = std::make_unique<ZoDeviceCatalog>();
    catalog->LoadDevices(devices.Root());
    catalog->LoadEvents(events.Root());
    return catalog;
}

// Installs the test catalog for the life of the guard, and none afterwards.
class ChooserCatalogGuard {
public:
    ChooserCatalogGuard() { ZoDeviceCatalog::Install(MakeChooserTestCatalog()); }
    ~ChooserCatalogGuard() { ZoDeviceCatalog::Install(nullptr); }
    ChooserCatalogGuard(ChooserCatalogGuard const&) = delete;
    ChooserCatalogGuard& operator=(ChooserCatalogGuard const&) = delete;
    ZoDeviceCatalog const& Catalog() const { return *ZoDeviceCatalog::Installed(); }
};
