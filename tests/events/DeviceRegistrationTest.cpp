#include "events/DeviceRegistration.h"
#include "events/EventsTestDocs.h"

using namespace events_test;

// Events are registered at the top level only. Removal walks every nested group (whatever
// its tag), takes duplicates too and only `device` elements; a batch removes the same.
TEST(DeviceRegistration, AddAtTheTopLevelAndRemoveEverywhere)
{
    std::string const nested =
        "<deviceGroups><devices><device><id>A</id></device><device><id>B</id></device></devices><groups>"
        "<plant><devices><device><id>A</id></device><other><id>A</id></other></devices>"
        "<groups><line><devices><device><id>C</id></device><device><id>A</id></device></devices></line></groups>"
        "</plant></groups></deviceGroups>";
    XmlDocument one, batched, pump;
    Load(one, nested);
    Load(batched, nested);
    Load(pump, Event("Pump"));

    AddEventToDeviceGroupsNode(one.Root(), *pump.Root());
    EXPECT_EQ(Xml(one.Node(L"devices/device?id=ID-Pump?")), "<device><id>ID-Pump</id><type>R$EVE</type></device>");
    EXPECT_EQ(DeviceIds(one.Root()), "A,B,ID-Pump,A,C,A");

    RemoveEventFromDeviceGroupsNode(one.Root(), L"A");
    RemoveEventFromDeviceGroupsNode(one.Root(), L"ID-Pump");
    RemoveEventFromDeviceGroupsNode(one.Root(), L"nobody");
    EXPECT_EQ(DeviceIds(one.Root()), "B,C");
    EXPECT_NE(one.Node(L"groups/plant/devices/other"), nullptr);
    RemoveEventsFromDeviceGroupsNode(batched.Root(), {L"A", L"A"});
    EXPECT_EQ(Xml(batched.Root()), Xml(one.Root()));

    // A null device groups element registers nothing and does not fail.
    AddEventToDeviceGroupsNode(nullptr, *pump.Root());
    RemoveEventsFromDeviceGroupsNode(nullptr, {L"A"});
}
