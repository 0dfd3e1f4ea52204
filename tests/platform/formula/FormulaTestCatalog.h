#pragma once
// A small device catalog for the formula tests: one controller with a variable of every
// kind, a device whose name holds a point and blanks, and the events pseudo-device of one
// event. Sample values: LEVEL 0, CURRENT 4 (range 4..20), MODE 1 (named values 1 and 2).
#include "config/XmlDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"

#include <memory>

inline char const kFormulaTestCatalogXml[] = R"(<deviceTree><catalog>
<driver><name>PLC1</name><type>MODBUS-TCP</type>
  <variable><code>LEVEL</code><type>analog</type><unit>%</unit><min>0</min><max>100</max></variable>
  <variable><code>CURRENT</code><type>analog</type><unit>mA</unit><min>4</min><max>20</max></variable>
  <variable><code>RUN</code><type>digital</type></variable>
  <variable><code>MODE</code><type>integer</type><writable>T</writable>
    <states><state><value>1</value><text>Local</text></state><state><value>2</value><text>Remote</text></state></states></variable>
  <variable><code>STATUS</code><type>integer</type></variable>
  <variable><code>NAME</code><type>text</type><writable>T</writable></variable>
  <variable><code>ENERGY</code><type>counter</type><unit>kWh</unit><min>0</min></variable>
  <variable><code>UPTIME</code><type>duration</type><unit>s</unit></variable>
  <variable><code>SETPOINT</code><type>analog</type><writable>T</writable><min>0</min><max>100</max></variable>
</driver>
<driver><name>Line 2.A</name><type>SNMP</type>
  <variable><code>FLOW</code><type>analog</type><unit>m3/h</unit></variable>
</driver>
</catalog></deviceTree>)";

inline char const kFormulaTestEventsXml[] =
    "<eventsConfiguration><events><event><name>Pump fault</name></event></events></eventsConfiguration>";

// The catalog built from the two documents above.
inline std::unique_ptr<ZoDeviceCatalog> MakeFormulaTestCatalog()
{
    XmlDocument devices;
    XmlDocument events;
    devices.Parse(kFormulaTestCatalogXml);
    events.Parse(kFormulaTestEventsXml);
    auto catalog = std::make_unique<ZoDeviceCatalog>();
    catalog->LoadDevices(devices.Root());
    catalog->LoadEvents(events.Root());
    return catalog;
}
