// Rename: the preview's changes, refusals, the documents after apply (and after the undo
// journal), the check after a rename, and a rename and its reverse on the demo project.
#include "UsesTestProject.h"

#include "ProjectFolder.h"
#include "check/ZoProjectChecker.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "support/XmlText.h"
#include "templates/TemplateDrift.h"
#include "templates/TemplateStore.h"
#include "uses/ZoRename.h"

#include <QDir>

#include <algorithm>
#include <QFile>
#include <QTemporaryDir>

using namespace uses_test;
using zo::project::ProjectDoc;

namespace {

class Rename : public UsesProject {
protected:
    bool Plan(ZoRenameKind kind, std::wstring const& device, std::wstring const& from, std::wstring const& to)
    {
        m_error.clear();
        return ZoPlanRename(m_events, m_devices, {kind, device, from, to}, m_plan, m_error);
    }

    // "subject: field: before -> after (count)" per change.
    std::vector<std::string> Preview() const
    {
        std::vector<std::string> rows;
        for (ZoRenameChange const& change : m_plan.changes)
            rows.push_back(Utf8(ZoSubjectText(change.place)) + ": " + Utf8(ZoFieldText(change.place)) + ": " +
                           Utf8(change.before) + " -> " + Utf8(change.after) + " (" + std::to_string(change.count) +
                           ")");
        return rows;
    }

    ZoRenamePlan m_plan;
    std::wstring m_error;
};

TEST_F(Rename, ADeviceRenamePreviewsTheCatalogEveryFormulaAndDeviceAction)
{
    ASSERT_TRUE(Plan(ZoRenameKind::Device, {}, L"PUMP1", L"Pump 1.B")) << Utf8(m_error);
    std::vector<std::string> const rows = Preview();
    ASSERT_EQ(rows.size(), 7u);
    EXPECT_EQ(rows[0], "device PUMP1: name: PUMP1 -> Pump 1.B (1)");
    EXPECT_EQ(rows[1], "event \"Pump 1 stopped\": condition: [PUMP1.RUNNING] = 0 AND [PUMP10.RUNNING] = 1 -> "
                       "[Pump 1.B.RUNNING] = 0 AND [PUMP10.RUNNING] = 1 (1)");
    EXPECT_EQ(rows[4], "event \"Pump 1 stopped\": Actions, Activation, action 1: [PUMP1.START] -> [Pump 1.B.START] (1)");
    EXPECT_EQ(rows[6], "event \"Pump 1 stopped\": Actions, Activation, action 2: PUMP1 -> Pump 1.B (1)");
    EXPECT_EQ(m_plan.references, 6);
    EXPECT_TRUE(m_plan.touchesEvents && m_plan.touchesDevices);
    // Planning changed nothing; applying changes exactly the planned texts.
    std::string const events = Xml(m_events.Root());
    EXPECT_NE(events.find("[PUMP1.START]"), std::string::npos);
    ZoApplyRename(m_plan.changes);
    std::string const renamed = Xml(m_events.Root());
    EXPECT_NE(renamed.find("<condition>[Pump 1.B.RUNNING] = 0 AND [PUMP10.RUNNING]"), std::string::npos);
    EXPECT_NE(renamed.find("<variable>[Pump 1.B.START]</variable><value>[Pump 1.B.RUNNING]</value>"), std::string::npos);
    EXPECT_NE(renamed.find("\"[PUMP1.RUNNING]\""), std::string::npos); // a text stays as written
    EXPECT_NE(renamed.find("<message>[PUMP1.RUNNING]</message>"), std::string::npos);
    EXPECT_NE(Xml(m_devices.Root()).find("<name>Pump 1.B</name>"), std::string::npos);
}

TEST_F(Rename, AVariableAndAnEventRenameTouchOnlyTheirReferences)
{
    ASSERT_TRUE(Plan(ZoRenameKind::Variable, L"PUMP1", L"RUN", L"ON")) << Utf8(m_error);
    EXPECT_EQ(Preview(), (std::vector<std::string>{
                             "device PUMP1: name: RUN -> ON (1)",
                             "event \"Pump 1 stopped\": delay to activate: [PUMP1.RUN] * 2 -> [PUMP1.ON] * 2 (1)"}));
    ASSERT_TRUE(Plan(ZoRenameKind::Event, {}, L"Flow high", L"Flow very high")) << Utf8(m_error);
    EXPECT_EQ(Preview(), (std::vector<std::string>{
                             "event \"Flow high\": name: Flow high -> Flow very high (1)",
                             "event \"Both\": condition: [R$EVE_Pump 1 stopped.ST] = 1 AND [R$EVE_Flow high.CACT] > 2"
                             " -> [R$EVE_Pump 1 stopped.ST] = 1 AND [R$EVE_Flow very high.CACT] > 2 (1)",
                             "event \"Both\": Actions, Activation, action 1: [R$EVE_Flow high.CACT] -> "
                             "[R$EVE_Flow very high.CACT] (1)"}));
    EXPECT_FALSE(m_plan.touchesDevices);
}

TEST_F(Rename, ClashingAndInvalidNamesAreRefusedAndNothingIsPlanned)
{
    struct Refused {
        ZoRenameKind kind;
        std::wstring device, from, to;
        std::string message;
    };
    Refused const cases[] = {
        {ZoRenameKind::Device, {}, L"PUMP1", L"PUMP10", "A device named \"PUMP10\" exists already."},
        {ZoRenameKind::Device, {}, L"PUMP1", L"PUMP1", "The new name \"PUMP1\" is the name it has already."},
        {ZoRenameKind::Device, {}, L"PUMP9", L"X", "No device named \"PUMP9\" in the catalog."},
        {ZoRenameKind::Device, {}, L"PUMP1", L"P[1]", "\"P[1]\" cannot be the name of a device"},
        {ZoRenameKind::Device, {}, L"PUMP1", L"A/B", "\"A/B\" cannot be the name of a device"},
        {ZoRenameKind::Device, {}, L"PUMP1", L"R$EVE_X", "\"R$EVE_X\" cannot be the name of a device"},
        {ZoRenameKind::Device, {}, L"PUMP1", L"", "\"\" cannot be the name of a device"},
        {ZoRenameKind::Device, {}, L"R$EVE_Both", L"X", "\"R$EVE_Both\" is an event"},
        {ZoRenameKind::Variable, L"PUMP1", L"RUN", L"RUNNING", "Device \"PUMP1\" has a variable \"RUNNING\" already."},
        {ZoRenameKind::Variable, L"PUMP1", L"STOP", L"X", "Device \"PUMP1\" has no variable \"STOP\"."},
        {ZoRenameKind::Variable, L"PUMP1", L"RUN", L"A.B", "\"A.B\" cannot be the code of a variable"},
        {ZoRenameKind::Variable, L"R$EVE_Both", L"ST", L"X", "The variables of the event device"},
        {ZoRenameKind::Event, {}, L"Both", L"flow HIGH", "An event named \"flow HIGH\" exists already."},
        {ZoRenameKind::Event, {}, L"Both", L"A]B", "\"A]B\" cannot be the name of an event"},
        {ZoRenameKind::Event, {}, L"Both", L" Both", "\" Both\" cannot be the name of an event"},
        {ZoRenameKind::Event, {}, L"both", L"X", "No event named \"both\"."},
    };
    std::string const events = Xml(m_events.Root());
    for (Refused const& refused : cases) {
        EXPECT_FALSE(Plan(refused.kind, refused.device, refused.from, refused.to));
        EXPECT_EQ(Utf8(m_error).substr(0, refused.message.size()), refused.message);
        EXPECT_TRUE(m_plan.changes.empty());
    }
    EXPECT_EQ(Xml(m_events.Root()), events);
    // Another case of the event's own name is a new name like any other.
    EXPECT_TRUE(Plan(ZoRenameKind::Event, {}, L"Both", L"BOTH"));
}

TEST_F(Rename, TheJournalUndoesAnAppliedRenameAsOneChange)
{
    std::string const events = Xml(m_events.Root());
    std::string const devices = Xml(m_devices.Root());
    ASSERT_TRUE(Plan(ZoRenameKind::Device, {}, L"Line 2.A", L"LINE2A"));
    m_events.BeginJournal();
    m_devices.BeginJournal();
    ZoApplyRename(m_plan.changes);
    EXPECT_TRUE(m_events.JournalHasChanges() && m_devices.JournalHasChanges());
    m_events.UndoJournal();
    m_devices.UndoJournal();
    EXPECT_EQ(Xml(m_events.Root()), events);
    EXPECT_EQ(Xml(m_devices.Root()), devices);
}

// The demo project in a temporary folder, renamed through the host's documents and saves.
class RenameDemo : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        QDir const demo(QStringLiteral(ZO_SOURCE_DIR "/examples/demo"));
        for (QString const& name : demo.entryList(QDir::Files))
            ASSERT_TRUE(QFile::copy(demo.filePath(name), m_folder.filePath(name)));
        // One event refers to another, as a condition may.
        QFile events(m_folder.filePath(QStringLiteral("Events.zocfg")));
        ASSERT_TRUE(events.open(QIODevice::ReadWrite));
        QByteArray text = events.readAll();
        QByteArray const condition = "<condition>[PLC1.TANK_LEVEL] &gt; 98";
        ASSERT_TRUE(text.contains(condition));
        text.replace(condition, condition + " AND [R$EVE_Tank high level.ST] &gt; 0");
        events.seek(0);
        events.write(text);
    }

    QByteArray Bytes(ProjectDoc doc) const
    {
        QFile file(m_folder.filePath(QString::fromWCharArray(zo::project::FileName(doc))));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    // Opens the folder, renames, saves what the rename touched; the check's errors and
    // warnings after it, as rules.
    std::multiset<std::string> RenameAndCheck(ZoRenameRequest const& request)
    {
        std::wstring error;
        std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(m_folder.path(), error);
        EXPECT_TRUE(project) << Utf8(error);
        if (!project)
            return {};
        ZoRenamePlan plan;
        EXPECT_TRUE(ZoPlanRename(project->Events(), project->Devices(), request, plan, error)) << Utf8(error);
        EXPECT_GT(plan.references, 0);
        ZoApplyRename(plan.changes);
        EXPECT_TRUE(project->Save({ProjectDoc::Events, ProjectDoc::Devices}, error)) << Utf8(error);
        return Faults(*project);
    }

    std::multiset<std::string> Faults(ProjectFolder& project)
    {
        ZoCheckOptions options;
        options.from = QDate(2026, 1, 1);
        std::multiset<std::string> rules;
        for (ZoFinding const& finding :
             ZoCheckProject({project.Events().Root(), project.TimeTables().Root(), project.Devices().Root(), nullptr,
                             project.Folder().toStdWString()},
                            options))
            if (finding.severity != ZoSeverity::Note)
                rules.insert(std::string(finding.rule));
        return rules;
    }

    QTemporaryDir m_folder;
};

TEST_F(RenameDemo, ARenameAndItsReverseRestoreTheFilesByteForByteAndTheCheckFindsNothingNew)
{
    QByteArray const events = Bytes(ProjectDoc::Events);
    QByteArray const devices = Bytes(ProjectDoc::Devices);
    std::wstring error;
    std::multiset<std::string> before;
    {
        std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(m_folder.path(), error);
        ASSERT_TRUE(project);
        before = Faults(*project);
    }
    ZoRenameRequest const requests[][2] = {
        {{ZoRenameKind::Device, {}, L"PUMP1", L"Pump 1.B"}, {ZoRenameKind::Device, {}, L"Pump 1.B", L"PUMP1"}},
        {{ZoRenameKind::Variable, L"PLC1", L"TANK_LEVEL", L"LEVEL"},
         {ZoRenameKind::Variable, L"PLC1", L"LEVEL", L"TANK_LEVEL"}},
        {{ZoRenameKind::Event, {}, L"Tank high level", L"Reservoir high"},
         {ZoRenameKind::Event, {}, L"Reservoir high", L"Tank high level"}},
    };
    for (auto const& [there, back] : requests) {
        EXPECT_EQ(RenameAndCheck(there), before) << Utf8(there.newName);
        EXPECT_NE(Bytes(ProjectDoc::Events), events);
        EXPECT_EQ(RenameAndCheck(back), before);
        EXPECT_EQ(Bytes(ProjectDoc::Events), events);
        EXPECT_EQ(Bytes(ProjectDoc::Devices), devices);
    }
}

// The demo's "PUMP1 stalled" was stamped from a template over PUMP1: its link follows the
// device's new name, so the event differs from its template only in the plain texts that
// name the device, and an update brings it in step.
TEST_F(RenameDemo, AStampedEventFollowsItsRenamedDeviceAndDriftsOnlyInItsPlainTexts)
{
    std::wstring error;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(m_folder.path(), error);
    ASSERT_TRUE(project);
    ZoRenamePlan plan;
    ASSERT_TRUE(ZoPlanRename(project->Events(), project->Devices(), {ZoRenameKind::Device, {}, L"PUMP1", L"P-101"},
                             plan, error));
    auto const link = std::find_if(plan.changes.begin(), plan.changes.end(),
                                   [](ZoRenameChange const& change) { return change.place.name == L"PUMP1 stalled"
                                                                             && change.before == L"PUMP1"; });
    ASSERT_NE(link, plan.changes.end());
    ZoApplyRename(plan.changes);

    ZoDeviceCatalog catalog;
    catalog.LoadDevices(project->Devices().Root());
    zo::templates::DriftReport const report = zo::templates::FindDrift(project->Events().Root(), catalog);
    EXPECT_TRUE(report.withoutDevice.empty());
    ASSERT_EQ(report.drifted.size(), 1u);
    EXPECT_EQ(report.drifted[0].device, L"P-101");
    // The formulas were rewritten by the rename; the texts that only name the device were not.
    std::vector<std::wstring> fields;
    for (zo::templates::FieldDifference const& difference : report.drifted[0].differences)
        fields.push_back(difference.field + L": " + difference.expected);
    EXPECT_EQ(fields, (std::vector<std::wstring>{L"name: P-101 stalled", L"annotation: P-101 stalled at %a1 %%",
                                                 L"deaAnnotation: P-101 turning again"}));
    EXPECT_EQ(zo::templates::UpdateFromTemplates(project->Events().Root(), catalog, report.drifted), 1);
    EXPECT_TRUE(zo::templates::FindDrift(project->Events().Root(), catalog).drifted.empty());
}

// The alarm rules read the catalog's kinds through the variables' names: a device renamed to
// a name with points keeps every finding of the faulty example where it was.
TEST(RenameFaulty, TheCheckFindsTheSameAfterADeviceGetsANameWithPoints)
{
    QTemporaryDir folder;
    QDir const faulty(QStringLiteral(ZO_SOURCE_DIR "/examples/faulty"));
    for (QString const& name : faulty.entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(faulty.filePath(name), folder.filePath(name)));
    std::wstring error;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(folder.path(), error);
    ASSERT_TRUE(project);
    auto const faults = [&] {
        ZoCheckOptions options;
        options.from = QDate(2026, 1, 1);
        std::multiset<std::string> found;
        for (ZoFinding finding :
             ZoCheckProject({project->Events().Root(), project->TimeTables().Root(), project->Devices().Root(),
                             nullptr, project->Folder().toStdWString()},
                            options)) {
            finding.column = 0; // the new name is longer
            found.insert(std::string(finding.rule) + " " + Utf8(finding.name) + " " + Utf8(ZoFieldText(finding)));
        }
        return found;
    };
    std::multiset<std::string> const before = faults();
    EXPECT_EQ(before.count("chattering Flow chatter condition"), 1u);
    ZoRenamePlan plan;
    ASSERT_TRUE(ZoPlanRename(project->Events(), project->Devices(), {ZoRenameKind::Device, {}, L"PLC1", L"Line 2.A"},
                             plan, error));
    ZoApplyRename(plan.changes);
    EXPECT_EQ(faults(), before);
}

} // namespace
