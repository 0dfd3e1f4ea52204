// The device catalog read from a device tree built in memory: devices, variables with
// their kinds, ranges and named values, the events pseudo-devices, lookups by name, and
// the variables that force actions lock.
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/drivers/ZoEventVariables.h"
#include "platform/drivers/ZoVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using XmlNode = XmlDocument::XmlNode;

XmlNode* AddDriver(XmlNode* catalog, wchar_t const* name, wchar_t const* type = L"MODBUS-TCP")
{
    XmlNode* driver = catalog->NewChild(L"driver");
    driver->SetValue(L"id", L"{11111111-2222-4333-8444-555555555555}");
    driver->SetValue(L"name", name);
    driver->SetValue(L"description", L"Station controller");
    driver->SetValue(L"type", type);
    driver->SetValue(L"address", L"192.168.10.11:502");
    return driver;
}

XmlNode* AddVariable(XmlNode* driver, wchar_t const* code, wchar_t const* type)
{
    XmlNode* variable = driver->NewChild(L"variable");
    variable->SetValue(L"code", code);
    variable->SetValue(L"description", std::wstring(L"About ") + code);
    variable->SetValue(L"type", type);
    return variable;
}

void AddState(XmlNode* variable, wchar_t const* value, wchar_t const* text)
{
    XmlNode* states = variable->Node(L"states");
    if (!states)
        states = variable->NewChild(L"states");
    XmlNode* state = states->NewChild(L"state");
    state->SetValue(L"value", value);
    state->SetValue(L"text", text);
}

// "flags min..max [value=text,...]" of a variable's value information.
std::wstring Info(ZoVariableInfo const* variable)
{
    if (!variable)
        return L"missing";
    ZoValueInfo const& info = variable->valueInfo;
    std::wstring out = std::to_wstring(info.flags);
    if (info.flags & kZoValueRange)
        out += L" " + std::to_wstring(static_cast<long long>(info.min)) + L".." +
               (std::isinf(info.max) ? std::wstring(L"inf") : std::to_wstring(static_cast<long long>(info.max)));
    for (ZoNamedValue const& named : info.values)
        out += L" " + std::to_wstring(static_cast<long long>(named.value)) + L"=" + std::wstring(named.text);
    return out;
}

class DeviceCatalog : public ::testing::Test {
protected:
    DeviceCatalog()
    {
        m_devices.Create(L"deviceTree");
        m_devices.Root()->NewChild(L"deviceGroups");
        m_catalog = m_devices.Root()->NewChild(L"catalog");
        m_events.Create(L"eventsConfiguration");
        m_eventList = m_events.Root()->NewChild(L"events");
    }
    XmlNode* AddEvent(wchar_t const* name)
    {
        XmlNode* event = m_eventList->NewChild(L"event");
        event->SetValue(L"id", L"{AAAAAAAA-2222-4333-8444-555555555555}");
        if (name)
            event->SetValue(L"name", name);
        event->SetValue(L"condition", L"TRUE");
        return event;
    }
    XmlDocument m_devices;
    XmlDocument m_events;
    XmlNode* m_catalog = nullptr;
    XmlNode* m_eventList = nullptr;
    ZoDeviceCatalog m_subject;
};

} // namespace

TEST_F(DeviceCatalog, DevicesKeepTheirKeysAndVariablesInDocumentOrder)
{
    XmlNode* plc = AddDriver(m_catalog, L"PLC1");
    AddVariable(plc, L"LEVEL", L"analog")->SetValue(L"unit", L"%");
    AddVariable(plc, L"RUN", L"digital");
    AddDriver(m_catalog, L"UPS", L"SNMP");
    m_catalog->NewChild(L"comment")->SetValue(L"not a driver");
    m_subject.LoadDevices(m_devices.Root());

    ASSERT_EQ(m_subject.Devices().size(), 2u);
    ZoDriver const* driver = m_subject.Find(L"PLC1");
    ASSERT_NE(driver, nullptr);
    EXPECT_EQ(driver->Name(), L"PLC1");
    EXPECT_EQ(driver->Id(), L"{11111111-2222-4333-8444-555555555555}");
    EXPECT_EQ(driver->Description(), L"Station controller");
    EXPECT_EQ(driver->Type(), L"MODBUS-TCP");
    EXPECT_EQ(driver->Address(), L"192.168.10.11:502");
    EXPECT_FALSE(driver->IsEventsDevice());
    ASSERT_EQ(driver->Variables().size(), 2u);
    EXPECT_EQ(driver->Variables()[0].code, L"LEVEL");
    EXPECT_EQ(driver->Variables()[0].description, L"About LEVEL");
    EXPECT_EQ(driver->Variables()[0].unit, L"%");
    EXPECT_EQ(driver->Variables()[1].code, L"RUN");
    EXPECT_EQ(m_subject.Find(L"UPS")->Type(), L"SNMP");
    EXPECT_EQ(m_subject.Find(L"ups"), nullptr) << "names compare exactly";
    EXPECT_EQ(m_subject.FindVariable(L"PLC1", L"RUN"), &driver->Variables()[1]);
    EXPECT_EQ(m_subject.FindVariable(L"PLC1", L"STOP"), nullptr);
    EXPECT_EQ(m_subject.FindVariable(L"PLC2", L"RUN"), nullptr);

    m_subject.LoadDevices(m_catalog); // the catalog element itself serves as well
    EXPECT_EQ(m_subject.Devices().size(), 2u);
    m_subject.LoadDevices(nullptr);
    EXPECT_TRUE(m_subject.Devices().empty());
    EXPECT_EQ(m_subject.Find(L"PLC1"), nullptr);
}

TEST_F(DeviceCatalog, KindsRangesAndNamedValuesMakeTheValueInformation)
{
    XmlNode* plc = AddDriver(m_catalog, L"PLC1");
    XmlNode* level = AddVariable(plc, L"LEVEL", L"analog");
    level->SetValue(L"min", L" 0 ");
    level->SetValue(L"max", L"100");
    AddVariable(plc, L"FREE", L"analog");
    AddVariable(plc, L"LOW", L"ANALOG")->SetValue(L"min", L"-40");
    AddVariable(plc, L"DOOR", L"digital");
    XmlNode* pump = AddVariable(plc, L"PUMP", L"digital");
    AddState(pump, L"0", L"Stopped");
    AddState(pump, L"1", L"Running");
    XmlNode* mode = AddVariable(plc, L"MODE", L"integer");
    AddState(mode, L"0", L"Local");
    AddState(mode, L"1", L"Remote");
    AddState(mode, L"two", L"Not a number: skipped");
    AddState(mode, L"2", L"Maintenance");
    AddVariable(plc, L"COUNT", L"integer");
    AddVariable(plc, L"LABEL", L"text");
    AddVariable(plc, L"KWH", L"counter")->SetValue(L"min", L"0");
    AddVariable(plc, L"ODD", L"no such kind");
    XmlNode* reversed = AddVariable(plc, L"REVERSED", L"analog");
    reversed->SetValue(L"min", L"10");
    reversed->SetValue(L"max", L"0");
    AddVariable(plc, L"", L"analog");
    m_subject.LoadDevices(m_devices.Root());

    ZoDriver const& driver = *m_subject.Find(L"PLC1");
    EXPECT_EQ(driver.Variables().size(), 11u) << "a variable without a code is skipped";
    EXPECT_EQ(Info(driver.FindVariable(L"LEVEL")), L"2 0..100");
    EXPECT_EQ(Info(driver.FindVariable(L"FREE")), L"0");
    EXPECT_EQ(Info(driver.FindVariable(L"LOW")), L"2 -40..inf");
    EXPECT_EQ(Info(driver.FindVariable(L"DOOR")), L"14 0..1 0=Off 1=On");
    EXPECT_EQ(Info(driver.FindVariable(L"PUMP")), L"14 0..1 0=Stopped 1=Running");
    EXPECT_EQ(Info(driver.FindVariable(L"MODE")), L"12 0=Local 1=Remote 2=Maintenance");
    EXPECT_EQ(Info(driver.FindVariable(L"COUNT")), L"4");
    EXPECT_EQ(Info(driver.FindVariable(L"LABEL")), L"1");
    EXPECT_EQ(Info(driver.FindVariable(L"KWH")), L"2 0..inf");
    EXPECT_EQ(Info(driver.FindVariable(L"REVERSED")), L"0") << "a range whose bounds are reversed is ignored";
    EXPECT_EQ(driver.FindVariable(L"ODD")->kind, kZoAnalog) << "an unknown kind reads as analog";
    EXPECT_EQ(driver.FindVariable(L"LABEL")->Type(), ZoTypeSet().set(3));
    EXPECT_EQ(driver.FindVariable(L"PUMP")->Type(), ZoTypeSet().set(0));
    EXPECT_EQ(driver.FindVariable(L"KWH")->Type(), ZoTypeSet().set(4));
    EXPECT_FALSE(driver.FindVariable(L"LEVEL")->writable);
}

TEST_F(DeviceCatalog, SampleValuesAreTheRestValueWithinRangeAndNamedValues)
{
    XmlNode* plc = AddDriver(m_catalog, L"PLC1");
    XmlNode* loop = AddVariable(plc, L"LOOP", L"analog");
    loop->SetValue(L"min", L"4");
    loop->SetValue(L"max", L"20");
    AddVariable(plc, L"COLD", L"analog")->SetValue(L"max", L"-5");
    XmlNode* mode = AddVariable(plc, L"MODE", L"integer");
    AddState(mode, L"3", L"Auto");
    AddState(mode, L"4", L"Manual");
    XmlNode* level = AddVariable(plc, L"LEVEL", L"analog");
    level->SetValue(L"min", L"-10");
    level->SetValue(L"max", L"10");
    AddVariable(plc, L"RUN", L"digital");
    m_subject.LoadDevices(m_catalog);
    ZoDriver const& driver = *m_subject.Find(L"PLC1");
    EXPECT_EQ(ZoSampleValue(*driver.FindVariable(L"LOOP")), 4);
    EXPECT_EQ(ZoSampleValue(*driver.FindVariable(L"COLD")), -5);
    EXPECT_EQ(ZoSampleValue(*driver.FindVariable(L"MODE")), 3);
    EXPECT_EQ(ZoSampleValue(*driver.FindVariable(L"LEVEL")), 0);
    EXPECT_EQ(ZoSampleValue(*driver.FindVariable(L"RUN")), 0);
    EXPECT_EQ(ZoDescribeValues(*driver.FindVariable(L"LOOP")), L"4 to 20");
    EXPECT_EQ(ZoDescribeValues(*driver.FindVariable(L"MODE")), L"3 Auto, 4 Manual");
    EXPECT_EQ(ZoDescribeValues(*driver.FindVariable(L"COLD")), L"number");
}

TEST_F(DeviceCatalog, OfTwoDevicesOrVariablesWithOneNameTheFirstCounts)
{
    XmlNode* first = AddDriver(m_catalog, L"PLC1");
    for (int i = 0; i < 40; ++i) // enough for the device to get a hash index of its codes
        AddVariable(first, (L"V" + std::to_wstring(i)).c_str(), L"analog");
    AddVariable(first, L"V7", L"text");
    AddVariable(AddDriver(m_catalog, L"PLC1"), L"OTHER", L"analog");
    AddDriver(m_catalog, L""); // no name: skipped
    m_subject.LoadDevices(m_catalog);
    EXPECT_EQ(m_subject.Devices().size(), 2u);
    ZoDriver const* driver = m_subject.Find(L"PLC1");
    EXPECT_EQ(driver, &m_subject.Devices()[0]);
    EXPECT_EQ(driver->FindVariable(L"V7")->kind, kZoAnalog);
    EXPECT_EQ(driver->FindVariable(L"V39"), &driver->Variables()[39]);
    EXPECT_EQ(driver->FindVariable(L"OTHER"), nullptr);
}

TEST_F(DeviceCatalog, EveryNamedEventIsAPseudoDeviceWithTheSixStateVariables)
{
    AddEvent(L"Pump 1 fault");
    AddEvent(nullptr);
    AddEvent(L"Caf\u00E9 1.5 bar");
    m_subject.LoadEvents(m_events.Root());
    ASSERT_EQ(m_subject.EventsDevices().size(), 2u);
    ZoDriver const* device = m_subject.Find(L"R$EVE_Pump 1 fault");
    ASSERT_NE(device, nullptr);
    EXPECT_TRUE(device->IsEventsDevice());
    EXPECT_EQ(device->Type(), kZoEventsDeviceType);
    EXPECT_EQ(device->Description(), L"Pump 1 fault");
    std::wstring codes;
    for (ZoVariableInfo const& variable : device->Variables())
        codes += std::wstring(variable.code) + L":" + std::wstring(variable.description) + L":" +
                 (variable.writable ? L"W" : L"R") + L" ";
    EXPECT_EQ(codes, L"ST:Event state:R TACT:Time active since the last activation:R CACT:Number of activations:W "
                     L"CDIS:Number of deactivations:W CACK:Number of acknowledgements:W CTIM:Total time active:W ");
    EXPECT_EQ(Info(device->FindVariable(L"ST")),
              L"14 0..3 0=Inactive 1=Active 2=Active, acknowledged 3=Inactive, not acknowledged");
    EXPECT_EQ(device->FindVariable(L"TACT")->unit, L"s");
    EXPECT_EQ(device->FindVariable(L"CACT")->Type(), ZoTypeSet().set(1));
    EXPECT_EQ(m_subject.FindVariable(L"R$EVE_Caf\u00E9 1.5 bar", L"CTIM")->Type(), ZoTypeSet().set(5));

    // The events part alone is rebuilt; the devices stay.
    AddVariable(AddDriver(m_catalog, L"PLC1"), L"LEVEL", L"analog");
    m_subject.LoadDevices(m_catalog);
    m_eventList->RemoveChild(m_eventList->FirstChild());
    m_subject.LoadEvents(m_eventList);
    EXPECT_EQ(m_subject.Find(L"R$EVE_Pump 1 fault"), nullptr);
    EXPECT_NE(m_subject.Find(L"R$EVE_Caf\u00E9 1.5 bar"), nullptr);
    EXPECT_NE(m_subject.Find(L"PLC1"), nullptr);
    m_subject.LoadEvents(nullptr);
    EXPECT_TRUE(m_subject.EventsDevices().empty());
    EXPECT_NE(m_subject.Find(L"PLC1"), nullptr);
}

TEST_F(DeviceCatalog, ManyEventsAreAllFoundByName)
{
    for (int i = 0; i < 3000; ++i)
        AddEvent((L"Event " + std::to_wstring(i)).c_str());
    m_subject.LoadEvents(m_eventList);
    ASSERT_EQ(m_subject.EventsDevices().size(), 3000u);
    for (int i = 0; i < 3000; i += 7) {
        ZoDriver const* device = m_subject.Find(L"R$EVE_Event " + std::to_wstring(i));
        ASSERT_NE(device, nullptr) << i;
        EXPECT_EQ(device, &m_subject.EventsDevices()[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(m_subject.Find(L"R$EVE_Event 3000"), nullptr);
    EXPECT_EQ(m_subject.Find(L"Event 1"), nullptr);
}

TEST_F(DeviceCatalog, ADriverVariableLocksInTheInstalledCatalog)
{
    XmlNode* plc = AddDriver(m_catalog, L"PUMP1");
    XmlNode* start = AddVariable(plc, L"START_CMD", L"digital");
    start->SetValue(L"writable", L"T");
    AddState(start, L"0", L"Stop");
    AddState(start, L"1", L"Start");
    AddEvent(L"Tank high");
    ZoInstallProjectCatalog(m_devices.Root(), m_events.Root());

    ZoDriverVariable variable;
    EXPECT_FALSE(variable.Lock()) << "not set up";
    ASSERT_TRUE(variable.Setup(L"[PUMP1.START_CMD]"));
    EXPECT_EQ(variable.Device(), L"PUMP1");
    EXPECT_EQ(variable.Code(), L"START_CMD");
    EXPECT_EQ(variable.Name(), L"PUMP1.START_CMD");
    ASSERT_TRUE(variable.Lock());
    EXPECT_TRUE(variable.Info()->writable);
    EXPECT_EQ(variable.Driver()->Name(), L"PUMP1");
    EXPECT_EQ(variable.ValueInfo().flags, kZoValueWhole | kZoValueRange | kZoValueNamed);
    EXPECT_EQ(variable.ValueInfo().values.size(), 2u);
    EXPECT_EQ(variable.ValueInfo().values[1].text, L"Start");

    EXPECT_TRUE(variable.Setup(L"PUMP1.START_CMD/day"));
    EXPECT_EQ(variable.Filter(), L"day");
    EXPECT_FALSE(variable.IsLocked()) << "a new name unlocks";
    EXPECT_TRUE(variable.Lock()) << "the filter does not change which variable it is";
    EXPECT_TRUE(variable.Setup(L"R$EVE_Tank high.CACK"));
    EXPECT_TRUE(variable.Lock());
    EXPECT_TRUE(variable.Setup(L"PUMP1.STOP_CMD"));
    EXPECT_FALSE(variable.Lock());
    EXPECT_EQ(variable.ValueInfo().flags, 0u);
    EXPECT_FALSE(variable.Setup(L"[PUMP1]"));
    EXPECT_FALSE(variable.IsSetUp());
    EXPECT_EQ(variable.Name(), L"");

    m_eventList->NewChild(L"event")->SetValue(L"name", L"Tank low");
    ZoRefreshProjectEvents(m_events.Root());
    EXPECT_NE(ZoDeviceCatalog::Installed()->Find(L"R$EVE_Tank low"), nullptr);
    EXPECT_NE(ZoDeviceCatalog::Installed()->Find(L"PUMP1"), nullptr);
    ZoDeviceCatalog::Install(nullptr);
    EXPECT_TRUE(variable.Setup(L"PUMP1.START_CMD"));
    EXPECT_FALSE(variable.Lock()) << "no catalog installed";
}

TEST(ValueInfo, AcceptsValuesWithinRangeWholeAndOneOfTwoNamedValues)
{
    ZoNamedValue const two[] = {{0, L"Stop"}, {1, L"Start"}};
    ZoNamedValue const three[] = {{0, L"Local"}, {1, L"Remote"}, {2, L"Maintenance"}};
    ZoValueInfo command{kZoValueWhole | kZoValueRange | kZoValueNamed, 0, 1, two};
    EXPECT_TRUE(command.Accepts(1));
    EXPECT_FALSE(command.Accepts(0.5));
    EXPECT_FALSE(command.Accepts(2));
    ZoValueInfo mode{kZoValueWhole | kZoValueNamed, 0, 0, three};
    EXPECT_TRUE(mode.Accepts(7)) << "a longer list names the usual values, not all of them";
    EXPECT_FALSE(mode.Accepts(1.5));
    EXPECT_EQ(mode.Named(2)->text, L"Maintenance");
    EXPECT_EQ(mode.Named(3), nullptr);
    ZoValueInfo level{kZoValueRange, 0, 100, {}};
    EXPECT_TRUE(level.Accepts(99.9));
    EXPECT_FALSE(level.Accepts(-0.1));
    EXPECT_FALSE(level.Accepts(std::nan("")));
    ZoValueInfo const text{kZoValueNoCheck, 0, 0, {}};
    EXPECT_TRUE(text.Accepts(std::nan("")));
}

TEST(VariableKinds, CatalogNamesAndTypeSets)
{
    ZoVariableKind kind = kZoText;
    for (auto [name, expected] : {std::pair{"digital", kZoDigital}, std::pair{"Integer", kZoInteger},
                                  std::pair{"ANALOG", kZoAnalog}, std::pair{"text", kZoText},
                                  std::pair{"counter", kZoCounter}, std::pair{"duration", kZoDuration}}) {
        ASSERT_TRUE(ZoParseVariableKind(name, kind)) << name;
        EXPECT_EQ(kind, expected) << name;
        EXPECT_TRUE((ZoAllTypes() & ZoTypeOf(kind)).any());
    }
    EXPECT_FALSE(ZoParseVariableKind("float", kind));
    EXPECT_FALSE(ZoParseVariableKind("", kind));
    EXPECT_EQ(ZoAllTypes().count(), 6u);
    EXPECT_FALSE(ZoAllTypes().test(6));
}
