#pragma once
#include "config/XmlDocument.h"
#include "editor/ZoEDlgEventCfg.h"
#include "platform/drivers/ZoDeviceCatalog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using Tags_ = std::vector<std::wstring>;

// An event with every key the editor edits.
inline char const* const kFullEvent =
    "<id>{E-1}</id><name>Boiler overheat</name><description>Boiler too hot</description>"
    "<condition>[BOILER.T1] &gt; 90</condition><conditionStop>[BOILER.T1] &lt; 80</conditionStop>"
    "<timeTable>{W-1}</timeTable><notify>T</notify><record>T</record><disabled>F</disabled>"
    "<delayToActivate>5</delayToActivate><delayToDeactivate>10</delayToDeactivate>"
    "<annotation>Boiler %a1</annotation><deaAnnotation>Boiler ok</deaAnnotation>"
    "<ackAnnotation>Seen</ackAnnotation><rssActivate>T</rssActivate>"
    "<rssDeactivate>F</rssDeactivate><rssAcknowledge>T</rssAcknowledge>";

// The device catalog of the editor's tests: a boiler with a temperature (0 to 200), a
// digital input and a writable set point, and the events pseudo-device of "Pump fault".
inline char const kEditorTestCatalog[] =
    "<deviceTree><catalog><driver><name>BOILER</name><type>MODBUS-TCP</type>"
    "<variable><code>T1</code><type>analog</type><min>0</min><max>200</max></variable>"
    "<variable><code>DI1</code><type>digital</type></variable>"
    "<variable><code>SP</code><type>analog</type><writable>T</writable><min>0</min><max>150</max></variable>"
    "</driver></catalog></deviceTree>";

// A working copy of an `events` element holding "Pump fault", a time-tables document, and
// the event editor opened on an event added to the copy; the test catalog is installed.
class EventEditorTest : public ::testing::Test {
protected:
    ~EventEditorTest() override { ZoDeviceCatalog::Install(nullptr); }
    EventEditorTest()
    {
        EXPECT_TRUE(m_events.Parse("<events><event><id>{E-OTHER}</id><name>Pump fault</name></event></events>"));
        XmlDocument devices;
        EXPECT_TRUE(devices.Parse(kEditorTestCatalog));
        ZoInstallProjectCatalog(devices.Root(), m_events.Root());
        EXPECT_TRUE(m_timeTables.Parse(
            "<timeTables><days><day><id>{D-1}</id><name>Workday</name></day><day><id>{D-2}</id><name>Weekend</name>"
            "</day></days><weeks><week><id>{W-1}</id><name>Office week</name></week></weeks>"
            "<calendars><calendar><id>{C-1}</id><name>Holidays</name></calendar></calendars></timeTables>"));
        m_users.Create(L"usersBD");
    }

    // Appends an event given by its inner XML to the events and returns it.
    XmlNode* AddEvent(std::string const& keys)
    {
        XmlDocument piece;
        EXPECT_TRUE(piece.Parse(("<event>" + keys + "</event>").c_str()));
        XmlNode* event = m_events.Root()->NewChild(L"event", nullptr);
        *event = *piece.Root();
        return event;
    }
    // Creates the editor without initialising it (a test may set its flags first).
    ZoEDlgEventCfg& Create(XmlNode* event, XmlNode const* timeTablesRoot)
    {
        m_dialog = std::make_unique<ZoEDlgEventCfg>(nullptr, event, m_events.Root(), nullptr, timeTablesRoot, &m_users);
        return *m_dialog;
    }
    ZoEDlgEventCfg& Create(XmlNode* event) { return Create(event, m_timeTables.Root()); }
    ZoEDlgEventCfg& Open(XmlNode* event)
    {
        Create(event).EnsureInitialized();
        return *m_dialog;
    }

    template <class W>
    W* Get(char const* name) const
    {
        W* widget = m_dialog->findChild<W*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QLineEdit* Edit(char const* name) const { return Get<QLineEdit>(name); }
    QCheckBox* Check(char const* name) const { return Get<QCheckBox>(name); }
    QComboBox* TimeTables() const { return Get<QComboBox>("timeTableCombo"); }
    QTabWidget* Tabs() const { return Get<QTabWidget>("tabs"); }
    void SetText(char const* name, QString const& text) const { Edit(name)->setText(text); }
    void ClickOk() const { Get<QPushButton>("okButton")->click(); }

    static std::string Xml(XmlNode const* node)
    {
        std::string out;
        node->CreateXmlCode(out);
        return out;
    }
    static Tags_ Tags(XmlNode const* node)
    {
        Tags_ tags;
        for (auto it = node->ChildsBegin(); it != node->ChildsEnd(); ++it)
            tags.push_back((*it)->Tag());
        return tags;
    }

    XmlDocument m_events, m_timeTables, m_users;
    std::unique_ptr<ZoEDlgEventCfg> m_dialog;
};
