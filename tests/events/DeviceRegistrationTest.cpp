#include "events/DeviceRegistration.h"
#include "events/EventsTestDocs.h"

using namespace events_test;

TEST(DeviceRegistration, AddCreatesDevicesAndFilesOnlyAtTheTopLevel)
{
    XmlDocument devices;
    Load(devices, "<deviceGroups><groups><g1><devices/></g1></groups></deviceGroups>");
    XmlDocument pump;
    Load(pump, Event("Pump"));

    AddEventToDeviceGroupsNode(devices.Root(), *pump.Root());
    AddEventToDeviceGroupsNode(devices.Root(), *pump.Root());

    XmlNode const* top = devices.Root()->Child(L"devices");
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(top->Size(), 2);
    EXPECT_EQ(top->FirstChild()->Tag(), L"device");
    EXPECT_EQ(top->FirstChild()->Value(L"id", L""), L"ID-Pump");
    EXPECT_EQ(top->FirstChild()->Value(L"type", L""), L"R$EVE");
    EXPECT_EQ(devices.Root()->Node(L"groups/g1/devices")->Size(), 0);

    // A null device groups element registers nothing and does not fail.
    AddEventToDeviceGroupsNode(nullptr, *pump.Root());
    RemoveEventFromDeviceGroupsNode(nullptr, L"ID-Pump");
    RemoveEventsFromDeviceGroupsNode(nullptr, {L"ID-Pump"});
}

// Duplicates and several levels of nested groups, whatever the tag of a group.
constexpr char const* kNestedDevices =
    "<deviceGroups>"
    "<devices><device><id>A</id></device><device><id>B</id></device><device><id>A</id></device></devices>"
    "<groups>"
    "<plant><devices><device><id>A</id></device><other><id>A</id></other></devices>"
    "<groups><line><devices><device><id>C</id></device><device><id>A</id></device></devices>"
    "<groups><cell><devices><device><id>A</id></device><device><id>B</id></device></devices></cell></groups>"
    "</line></groups></plant>"
    "<hall><devices><device><id>A</id></device></devices></hall>"
    "</groups></deviceGroups>";

TEST(DeviceRegistration, RemoveWalksEveryNestedGroupAndRemovesDuplicates)
{
    XmlDocument devices;
    Load(devices, kNestedDevices);

    RemoveEventFromDeviceGroupsNode(devices.Root(), L"A");
    EXPECT_EQ(DeviceIds(devices.Root()), "B,C,B");
    // Only `device` elements are devices.
    EXPECT_NE(devices.Root()->Node(L"groups/plant/devices/other"), nullptr);

    RemoveEventFromDeviceGroupsNode(devices.Root(), L"B");
    RemoveEventFromDeviceGroupsNode(devices.Root(), L"nobody");
    EXPECT_EQ(DeviceIds(devices.Root()), "C");
}

TEST(DeviceRegistration, BatchedRemovalGivesTheSameTreeAsOneCallPerId)
{
    XmlDocument one, batched;
    Load(one, kNestedDevices);
    Load(batched, kNestedDevices);

    RemoveEventFromDeviceGroupsNode(one.Root(), L"A");
    RemoveEventFromDeviceGroupsNode(one.Root(), L"C");
    RemoveEventsFromDeviceGroupsNode(batched.Root(), {L"A", L"C", L"A"});

    EXPECT_EQ(DeviceIds(batched.Root()), "B,B");
    EXPECT_EQ(Xml(batched.Root()), Xml(one.Root()));
}
