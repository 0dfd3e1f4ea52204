#pragma once
// A small project for the templates' tests: two pumps that have the variables the
// template uses, a meter that lacks one, a group, one hand-made event and one template
// whose every kind of text holds a placeholder.
#include "config/XmlDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplateStamp.h"
#include "templates/TemplateStore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace templates_test {

inline std::string const kDevices = R"(<deviceTree><deviceGroups><devices/><groups/></deviceGroups><catalog>
<driver><id>{D1}</id><name>PUMP1</name><description>Intake pump</description><type>MODBUS</type>
 <variable><code>RUNNING</code><type>digital</type></variable>
 <variable><code>FAULT</code><type>digital</type></variable>
 <variable><code>CURRENT</code><type>analog</type><min>0</min><max>50</max></variable>
 <variable><code>START_CMD</code><type>digital</type><writable>T</writable></variable></driver>
<driver><id>{D2}</id><name>PUMP2</name><description>Booster pump</description><type>MODBUS</type>
 <variable><code>RUNNING</code><type>digital</type></variable>
 <variable><code>FAULT</code><type>digital</type></variable>
 <variable><code>CURRENT</code><type>analog</type><min>0</min><max>50</max></variable>
 <variable><code>START_CMD</code><type>digital</type><writable>T</writable></variable></driver>
<driver><id>{D3}</id><name>METER</name><description>Mains meter</description><type>IEC</type>
 <variable><code>RUNNING</code><type>digital</type></variable>
 <variable><code>CURRENT</code><type>analog</type></variable></driver>
</catalog></deviceTree>)";

// The template: every text kind uses a placeholder.
inline std::string const kTemplate = R"(<event><id>{T1}</id><name>{device} fault</name>
<description>{description} ({device}) tripped</description>
<condition>[{device}.FAULT] = 1 AND [{device}.RUNNING] = 0</condition>
<conditionStop>[{device}.FAULT] = 0</conditionStop>
<delayToActivate>[{device}.CURRENT] / 10</delayToActivate><delayToDeactivate>5</delayToDeactivate>
<notify>T</notify><disabled>F</disabled>
<annotation>{device}: %a1 A</annotation><deaAnnotation>{description} back</deaAnnotation><ackAnnotation>Ack {device}</ackAnnotation>
<arguments><argument><id>{A1}</id><value>[{device}.CURRENT]</value><format>.1</format></argument></arguments>
<actions><activate><force><id>{F1}</id><variable>[{device}.START_CMD]</variable><value>[{device}.RUNNING] * 0</value></force>
<mail><id>{M1}</id><message>{description} {device} fault</message></mail></activate><while/>
<deactivate><shellExecute><id>{X1}</id><command>/bin/log-{device}</command><parameter>--device "{description}"</parameter></shellExecute></deactivate>
<acknowledge/></actions>
<clientActions><activate><screen><id>{S1}</id><name>{device}</name></screen></activate><while/><deactivate/><acknowledge/></clientActions>
</event>)";

inline std::string const kEvents =
    "<eventsConfiguration><events><event><id>{E1}</id><name>PUMP1 fault</name>"
    "<condition>[PUMP1.FAULT] = 1</condition></event></events>"
    "<eventsGroups><eventsGroup><id>{G1}</id><name>Pumps</name></eventsGroup></eventsGroups>"
    "<eventTemplates>" + kTemplate + "</eventTemplates></eventsConfiguration>";

class TemplatesProject : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_events.Parse(kEvents.c_str()));
        ASSERT_TRUE(m_devices.Parse(kDevices.c_str()));
        m_catalog.LoadDevices(m_devices.Root());
        m_catalog.LoadEvents(m_events.Root());
    }

    XmlDocument::XmlNode* Root() { return m_events.Root(); }
    XmlDocument::XmlNode* DeviceGroups() { return m_devices.Root()->Child(L"deviceGroups"); }
    XmlDocument::XmlNode* Template() { return zo::templates::FindTemplate(Root(), L"{device} fault"); }

    std::vector<ZoDriver const*> Devices(std::vector<std::wstring> const& names) const
    {
        std::vector<ZoDriver const*> devices;
        for (auto const& name : names)
            devices.push_back(m_catalog.Find(name));
        return devices;
    }

    // Stamps the template over the devices; the new events.
    std::vector<XmlDocument::XmlNode*> Stamp(std::vector<std::wstring> const& names, std::wstring const& group = {})
    {
        zo::templates::TemplateStamper stamper(Root());
        stamper.Preview(Template(), Devices(names));
        return stamper.Apply(DeviceGroups(), group);
    }

    static std::string Text(XmlDocument::XmlNode const* event, wchar_t const* path)
    {
        XmlDocument::XmlNode const* node = event->Node(path);
        return node ? std::string(node->TextUtf8()) : "<none>";
    }

    XmlDocument m_events;
    XmlDocument m_devices;
    ZoDeviceCatalog m_catalog;
};

} // namespace templates_test
