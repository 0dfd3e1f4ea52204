#pragma once
// A small project in memory for where-used and rename: three devices (one with points in
// its name), three events that refer to them and to each other in every kind of field, a
// group, day and week programs and a calendar, and a users file.
#include "config/XmlDocument.h"
#include "uses/ZoUseTarget.h"

#include <QString>
#include <gtest/gtest.h>

#include <string>

namespace uses_test {

inline char const* const kDevices = R"(<deviceTree><deviceGroups><devices>
<device><id>{E1}</id><type>R$EVE</type></device><device><id>{E2}</id><type>R$EVE</type></device>
<device><id>{E3}</id><type>R$EVE</type></device></devices><groups/></deviceGroups>
<catalog><driver><id>{D1}</id><name>PUMP1</name><type>MODBUS</type>
 <variable><code>RUNNING</code><type>digital</type></variable>
 <variable><code>RUN</code><type>digital</type></variable>
 <variable><code>START</code><type>digital</type><writable>T</writable></variable></driver>
<driver><id>{D2}</id><name>PUMP10</name><type>MODBUS</type>
 <variable><code>RUNNING</code><type>digital</type></variable></driver>
<driver><id>{D3}</id><name>Line 2.A</name><type>MODBUS</type>
 <variable><code>FLOW</code><type>counter</type></variable></driver></catalog></deviceTree>)";

inline char const* const kEvents = R"(<eventsConfiguration><events>
<event><id>{E1}</id><name>Pump 1 stopped</name><condition>[PUMP1.RUNNING] = 0 AND [PUMP10.RUNNING] = 1</condition>
 <conditionStop>[PUMP1.RUNNING] = 1</conditionStop><delayToActivate>[PUMP1.RUN] * 2</delayToActivate>
 <delayToDeactivate>0</delayToDeactivate><timeTable>{W1}</timeTable>
 <arguments><argument><id>{A1}</id><value>[Line 2.A.FLOW/day]</value><format>.1</format></argument></arguments>
 <eventsGroups><eventsGroup>{G1}</eventsGroup></eventsGroups>
 <actions><activate><force><id>{F1}</id><variable>[PUMP1.START]</variable><value>[PUMP1.RUNNING]</value></force>
 <device><id>{V1}</id><name>PUMP1</name></device>
 <mail><id>{M1}</id><message>[PUMP1.RUNNING]</message><mailLists><mailList>{ML1}</mailList></mailLists></mail></activate>
 <while/><deactivate/><acknowledge/></actions>
 <clientActions><activate><screen><id>{S1}</id><name>Overview</name></screen></activate><while/><deactivate/>
 <acknowledge/></clientActions></event>
<event><id>{E2}</id><name>Flow high</name><condition>"[PUMP1.RUNNING]" = "x" OR [Line 2.A.FLOW] &gt; 9</condition>
 <delayToActivate>0</delayToActivate><delayToDeactivate>0</delayToDeactivate>
 <eventsGroups><eventsGroup>{G1}</eventsGroup></eventsGroups></event>
<event><id>{E3}</id><name>Both</name><condition>[R$EVE_Pump 1 stopped.ST] = 1 AND [R$EVE_Flow high.CACT] &gt; 2</condition>
 <delayToActivate>0</delayToActivate><delayToDeactivate>0</delayToDeactivate>
 <actions><activate><force><id>{F2}</id><variable>[R$EVE_Flow high.CACT]</variable><value>0</value></force>
 </activate><while/><deactivate/><acknowledge/></actions></event>
</events><eventsGroups><eventsGroup><id>{G1}</id><name>Pumps</name></eventsGroup></eventsGroups></eventsConfiguration>)";

inline char const* const kTimeTables = R"(<timeTables>
<days><day><id>{DY}</id><name>Work</name><color>FFFFFF</color></day></days>
<weeks><week><id>{W1}</id><name>Weekdays</name><day1>{DY}</day1><day2>{DY}</day2></week></weeks>
<calendars><calendar><id>{C1}</id><name>Holidays</name><year><year>2026</year><month12><day25>{DY}</day25></month12>
</year></calendar></calendars></timeTables>)";

inline char const* const kUsers = R"(<usersBD><users><user><id>{U1}</id><name>Anna</name></user></users>
<mailLists><mailList><id>{ML1}</id><name>Ops</name></mailList></mailLists><phoneLists/></usersBD>)";

class UsesProject : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_events.Parse(kEvents));
        ASSERT_TRUE(m_devices.Parse(kDevices));
        ASSERT_TRUE(m_timeTables.Parse(kTimeTables));
        ASSERT_TRUE(m_users.Parse(kUsers));
    }

    ZoUseDocs Docs() const { return {m_events.Root(), m_timeTables.Root(), m_devices.Root(), m_users.Root()}; }

    XmlDocument m_events;
    XmlDocument m_devices;
    XmlDocument m_timeTables;
    XmlDocument m_users;
};

inline std::string Utf8(std::wstring const& text)
{
    return QString::fromStdWString(text).toStdString();
}

} // namespace uses_test
