// The project check over stamped events: stamping adds no finding that the template does
// not have, and events that drifted from their template are noted.
#include "check/ZoProjectChecker.h"
#include "events/DeviceRegistration.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplateCheck.h"
#include "templates/TemplateStamp.h"
#include "templates/TemplateStore.h"

#include <QFile>
#include <gtest/gtest.h>

#include <map>

using namespace zo::templates;

namespace {

class TemplateCheck : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (auto [document, file] : {std::pair{&m_events, "Events.zocfg"}, std::pair{&m_devices, "Devices.zocfg"},
                                      std::pair{&m_timeTables, "TimeTables.zocfg"}}) {
            QFile in(QString(ZO_SOURCE_DIR "/examples/demo/") + file);
            ASSERT_TRUE(in.open(QIODevice::ReadOnly));
            ASSERT_TRUE(document->Parse(in.readAll().constData()));
        }
        m_catalog.LoadDevices(m_devices.Root());
    }

    std::vector<ZoFinding> CheckTemplateNamed(wchar_t const* name)
    {
        return CheckTemplate(*FindTemplate(m_events.Root(), name), m_events.Root(), m_devices.Root(),
                             m_timeTables.Root(), nullptr, ZO_SOURCE_DIR L"/examples/demo");
    }

    // Rule and severity of each finding, counted.
    std::map<std::string, int> Findings()
    {
        m_catalog.LoadEvents(m_events.Root());
        ZoProjectDocs docs;
        docs.events = m_events.Root();
        docs.devices = m_devices.Root();
        docs.timeTables = m_timeTables.Root();
        docs.folder = ZO_SOURCE_DIR L"/examples/demo";
        ZoCheckOptions options;
        options.from = QDate(2026, 1, 1);
        options.catalog = &m_catalog;
        std::map<std::string, int> counted;
        for (ZoFinding const& finding : ZoCheckProject(docs, options))
            ++counted[std::string(ZoSeverityWord(finding.severity)) + " " + std::string(finding.rule)];
        return counted;
    }

    // Removes the stamped events of the demo, their registrations and links.
    void Unstamp()
    {
        XmlDocument::XmlNode* root = m_events.Root();
        std::unordered_map<std::string_view, XmlDocument::XmlNode*> const events = EventsById(root);
        std::vector<std::wstring> ids;
        for (StampLink const& link : StampLinks(root)) {
            ids.push_back(ZoFromUtf8(link.eventId));
            root->Child(L"events")->RemoveChild(events.at(link.eventId));
        }
        ASSERT_EQ(ids.size(), 2u);
        RemoveEventsFromDeviceGroupsNode(m_devices.Root()->Child(L"deviceGroups"), ids);
        root->RemoveChild(root->Child(kStampsTag));
    }

    XmlDocument m_events;
    XmlDocument m_devices;
    XmlDocument m_timeTables;
    ZoDeviceCatalog m_catalog;
};

TEST_F(TemplateCheck, StampedEventsAddNoFindingAndDriftIsANote)
{
    std::map<std::string, int> const stamped = Findings();
    EXPECT_EQ(stamped, (std::map<std::string, int>{{"note flood-bound", 1}}));
    Unstamp();
    std::map<std::string, int> const without = Findings();
    EXPECT_EQ(without, stamped);

    TemplateStamper stamper(m_events.Root());
    stamper.Preview(FindTemplate(m_events.Root(), L"{device} stalled"),
                    {m_catalog.Find(L"PUMP1"), m_catalog.Find(L"PUMP2")});
    ASSERT_EQ(stamper.Apply(m_devices.Root()->Child(L"deviceGroups")).size(), 2u);
    EXPECT_EQ(Findings(), stamped);

    FindTemplate(m_events.Root(), L"{device} stalled")->SetValue(L"delayToActivate", L"30");
    std::map<std::string, int> drifted = stamped;
    drifted["note template-drift"] = 2;
    EXPECT_EQ(Findings(), drifted);
}

// A template's own faults are exactly what its stamped events add to the project's findings.
TEST_F(TemplateCheck, TheTemplatesFaultsAreWhatItsStampsAdd)
{
    EXPECT_TRUE(CheckTemplateNamed(L"{device} stalled").empty());

    XmlDocument::XmlNode* faulty = FindTemplate(m_events.Root(), L"{device} stalled");
    faulty->SetValue(L"delayToActivate", L"[{device}.SPEED] +");
    faulty->Node(L"clientActions/activate/screen")->SetValue(L"name", L"Gone");
    faulty->SetValue(L"annotation", L"{device} at %a3");
    Unstamp();
    std::map<std::string, int> expected = Findings();
    for (ZoFinding const& finding : CheckTemplateNamed(L"{device} stalled"))
        expected[std::string(ZoSeverityWord(finding.severity)) + " " + std::string(finding.rule)] += 2;
    EXPECT_EQ(expected.size(), 4u); // the flood bound and the three faults
    TemplateStamper stamper(m_events.Root());
    stamper.Preview(faulty, {m_catalog.Find(L"PUMP1"), m_catalog.Find(L"PUMP2")});
    ASSERT_EQ(stamper.Apply(m_devices.Root()->Child(L"deviceGroups")).size(), 2u);
    EXPECT_EQ(Findings(), expected);
}

} // namespace
