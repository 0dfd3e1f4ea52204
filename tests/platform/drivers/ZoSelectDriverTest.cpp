// The device chooser: the tree of devices and variables as the user sees it after each
// filter, the offered variables, and the dialog driven from the keyboard.
#include "platform/drivers/ZoDeviceTreeModel.h"
#include "platform/drivers/ZoDeviceTreePanel.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "platform/reports/ChooserTestCatalog.h"
#include "support/ModalScript.h"
#include "support/TableText.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <gtest/gtest.h>

#include <ostream>

// Failures show texts, not bytes.
static void PrintTo(QString const& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

// The tree as one line: "PLC1: LEVEL RUN | PUMP1: CURRENT | Events (1): R$EVE_Pump fault: ST".
QString Tree(QAbstractItemModel const& model, QModelIndex const& parent = {})
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        QModelIndex const index = model.index(row, 0, parent);
        QString text = index.data().toString();
        if (model.rowCount(index) > 0)
            text += QStringLiteral(": ") + Tree(model, index);
        rows << text;
    }
    return rows.join(parent.isValid() && model.index(0, 0, parent).data().toString().startsWith(QStringLiteral("R$"))
                         ? QStringLiteral(", ")
                         : (parent.isValid() ? QStringLiteral(" ") : QStringLiteral(" | ")));
}

// The events branch as the table names it: "Events (2)". Texts are read when a test runs,
// after the language of the run is set.
QString Events(int count)
{
    return Said(62003, count);
}

// The whole tree, unfiltered.
QString All()
{
    return "Line 2.A: FLOW | PLC1: LEVEL RUN MODE NAME ENERGY SETPOINT | PUMP1: CURRENT HOURS | " + Events(2) +
           ": R$EVE_Pump fault: ST TACT CACT CDIS CACK CTIM, R$EVE_Tank high: ST TACT CACT CDIS CACK CTIM";
}

// A variable's details: reference, description, values, and whether it can be written.
QString Details(QString const& reference, QString const& description, QString const& values, bool writable)
{
    return reference + "\n" + description + "\n" + Said(62010, values.toStdWString().c_str()) + "\n" +
           ZoText(writable ? 62012 : 62013);
}
// "number" followed by the unit.
QString Number(QString const& unit)
{
    return ZoText(61231) + " " + unit;
}

class DeviceTree : public ::testing::Test {
protected:
    std::unique_ptr<ZoDeviceCatalog> m_catalog = MakeChooserTestCatalog();
};

TEST_F(DeviceTree, ShowsDevicesByNameThenTheEventsBranch)
{
    ZoDeviceTreeModel model(m_catalog.get(), ZoDeviceTreeModel::Mode::Variables);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(Tree(model), All());
    QModelIndex const plc1 = model.index(1, 0);
    QModelIndex const mode = model.index(2, 0, plc1);
    EXPECT_EQ(model.index(1, ZoDeviceTreeModel::DescriptionColumn).data().toString(), "Station controller");
    EXPECT_EQ(model.index(2, ZoDeviceTreeModel::KindColumn, plc1).data().toString(), ZoText(62005));
    EXPECT_EQ(model.ReferenceOf(mode), "PLC1.MODE");
    EXPECT_EQ(model.DetailsOf(mode), Details("PLC1.MODE", "Station mode", "1 Local, 2 Remote", true));
    EXPECT_EQ(model.DetailsOf(model.index(0, 0, model.index(0, 0))),
              Details("Line 2.A.FLOW", "Outlet flow", Number("m3/h"), false));
    QModelIndex const event = model.index(0, 0, model.index(3, 0));
    EXPECT_EQ(model.ReferenceOf(model.index(0, 0, event)), "R$EVE_Pump fault.ST");
    EXPECT_EQ(model.FindReference("R$EVE_Tank high.CTIM").parent().data().toString(), "R$EVE_Tank high");
    EXPECT_EQ(model.FindReference("Line 2.A.FLOW").parent().data().toString(), "Line 2.A");
    EXPECT_FALSE(model.FindReference("PLC1.NOPE").isValid());
    // A variable of a device that this catalog lacks (a wizard remembers references made
    // over another project) finds nothing, and does not take the top level for a device.
    EXPECT_FALSE(model.FindReference("GONE.FLOW").isValid());
    EXPECT_FALSE(model.FindReference("Missing.Device.FLOW").isValid());
}

TEST_F(DeviceTree, FilterFindsNamesCodesAndDescriptionsIgnoringCase)
{
    ZoDeviceTreeModel model(m_catalog.get(), ZoDeviceTreeModel::Mode::Variables);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    struct Case {
        QString filter;
        QString tree;
    };
    Case const cases[] = {
        {"pump1", "PUMP1: CURRENT HOURS"},                         // a device's name: all its variables
        {"RAW WATER", "PUMP1: CURRENT HOURS"},                     // a device's description
        {"level", "PLC1: LEVEL SETPOINT"},                         // a code, and a description
        {"running", "PLC1: RUN | PUMP1: HOURS"},                   // descriptions
        {"plc1.se", "PLC1: SETPOINT"},                             // device and code
        {"tank", "PLC1: LEVEL | " + Events(1) + ": R$EVE_Tank high: ST TACT CACT CDIS CACK CTIM"},
        // the last word of CACK's description, in the language of the run
        {ZoText(61204).section(' ', -1), Events(2) + ": R$EVE_Pump fault: CACK, R$EVE_Tank high: CACK"},
        {"nothing like it", ""},
        {"", All()},
    };
    for (Case const& c : cases) {
        model.SetFilter(c.filter);
        EXPECT_EQ(Tree(model), c.tree) << c.filter.toStdString();
    }
    // Typing on (each keystroke narrows what the last one kept) and back gives the same rows
    // as filtering at once.
    for (char const* typed : {"e", "en", "ene", "ener", "ene", "e"}) {
        model.SetFilter(QString::fromLatin1(typed));
        ZoDeviceTreeModel fresh(m_catalog.get(), ZoDeviceTreeModel::Mode::Variables);
        fresh.SetFilter(QString::fromLatin1(typed));
        EXPECT_EQ(Tree(model), Tree(fresh)) << typed;
    }
    model.SetFilter("ener");
    EXPECT_EQ(Tree(model), "PLC1: ENERGY");
    EXPECT_EQ(model.VariableCount(), 1);
}

TEST(DeviceTreeOrder, NamesEqualWithoutCaseComeAsWrittenAndEventsLikewise)
{
    std::string devices = "<catalog>";
    for (char const* name : {"pump", "Éclair", "PUMP", "eclair", "Pump", "ÉCLAIR", "pumps", "PUMP2 "})
        devices += std::string("<driver><name>") + name + "</name><description>Unit " + name +
            "</description><variable><code>V</code><type>analog</type></variable></driver>";
    devices += "</catalog>";
    std::string events = "<events>";
    for (char const* name : {"b", "B", "a b", "A", "a"})
        events += std::string("<event><name>") + name + "</name></event>";
    events += "</events>";
    XmlDocument devicesDoc;
    XmlDocument eventsDoc;
    ASSERT_TRUE(devicesDoc.Parse(devices.c_str()));
    ASSERT_TRUE(eventsDoc.Parse(events.c_str()));
    ZoDeviceCatalog catalog;
    catalog.LoadDevices(devicesDoc.Root());
    catalog.LoadEvents(eventsDoc.Root());
    ZoDeviceTreeModel model(&catalog, ZoDeviceTreeModel::Mode::Devices);
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << model.index(row, 0).data().toString();
    // Folded names first ("pump" before "pump2 " before "pumps"), then the names as written.
    EXPECT_EQ(rows.join('|'), "eclair|PUMP|Pump|pump|PUMP2 |pumps|ÉCLAIR|Éclair");
    ZoDeviceTreeModel variables(&catalog, ZoDeviceTreeModel::Mode::Variables);
    QModelIndex const branch = variables.index(variables.rowCount() - 1, 0);
    rows.clear();
    for (int row = 0; row < variables.rowCount(branch); ++row)
        rows << variables.index(row, 0, branch).data().toString();
    EXPECT_EQ(rows.join('|'), "R$EVE_A|R$EVE_a|R$EVE_a b|R$EVE_B|R$EVE_b");
}

TEST_F(DeviceTree, OffersOnlyTheVariablesOfTheMaskAndDevicesInDeviceMode)
{
    ZoDeviceTreeModel digital(m_catalog.get(), ZoDeviceTreeModel::Mode::Variables, ZoTypeOf(kZoDigital));
    EXPECT_EQ(Tree(digital), "PLC1: RUN");
    ZoDeviceTreeModel writable(m_catalog.get(), ZoDeviceTreeModel::Mode::Variables, ZoTypeSet().set(), true);
    EXPECT_EQ(Tree(writable), "PLC1: MODE NAME SETPOINT | " + Events(2) +
                                  ": R$EVE_Pump fault: CACT CDIS CACK CTIM, R$EVE_Tank high: CACT CDIS CACK CTIM");
    ZoDeviceTreeModel devices(m_catalog.get(), ZoDeviceTreeModel::Mode::Devices);
    QAbstractItemModelTester tester(&devices, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(Tree(devices), "Line 2.A | PLC1 | PUMP1");
    devices.SetFilter("motor"); // a variable's description finds its device
    EXPECT_EQ(Tree(devices), "PUMP1");
    EXPECT_EQ(devices.DetailsOf(devices.index(0, 0)),
              "PUMP1\nRaw water pump\n" + Said(62014, L"PROFIBUS") + "\n" + Said(62016, 2));
    ZoDeviceTreeModel none(nullptr, ZoDeviceTreeModel::Mode::Variables);
    EXPECT_EQ(none.rowCount(), 0);
}

class SelectDriver : public ::testing::Test {
protected:
    ChooserCatalogGuard m_catalog;
};

TEST_F(SelectDriver, ChoosesAVariableFromTheKeyboard)
{
    ModalScript modal(ModalScript::As<ZoSelectDriver>([](ZoSelectDriver& chooser) {
        chooser.show();
        auto* filter = chooser.findChild<QLineEdit*>("filterEdit");
        auto* tree = chooser.findChild<QTreeView*>("devicesTree");
        auto* ok = chooser.findChild<QPushButton*>("okButton");
        EXPECT_EQ(chooser.focusWidget(), filter);
        EXPECT_EQ(chooser.Panel()->ChosenReference(), "PLC1.LEVEL") << "the caller's variable is current";
        EXPECT_TRUE(ok->isEnabled());
        QTest::keyClicks(filter, "hours");
        EXPECT_EQ(Tree(*tree->model()), "PUMP1: HOURS");
        EXPECT_TRUE(ok->isEnabled());
        EXPECT_EQ(chooser.findChild<QLabel*>("detailsText")->text(),
                  Details("PUMP1.HOURS", "Running hours", Number("h"), false));
        QTest::keyClicks(filter, "xyz");
        EXPECT_EQ(chooser.findChild<QLabel*>("detailsText")->text(), Said(62107, L"hoursxyz"));
        EXPECT_FALSE(ok->isEnabled());
        filter->clear();
        QTest::keyClicks(filter, "current");
        QTest::keyClick(filter, Qt::Key_Down);
        EXPECT_EQ(chooser.focusWidget(), tree);
        QTest::keyClick(tree, Qt::Key_Return);
        return chooser.result();
    }));
    std::wstring variable = L"PLC1.LEVEL";
    EXPECT_TRUE(ZoSelectDriver::SelectDriverAndVar(nullptr, variable));
    EXPECT_EQ(variable, L"PUMP1.CURRENT");
}

TEST_F(SelectDriver, OpensOnTheCallersChoiceAndCancelLeavesItAlone)
{
    ModalScript modal(ModalScript::As<ZoSelectDriver>([](ZoSelectDriver& chooser) {
        EXPECT_EQ(chooser.windowTitle(), ZoText(62101));
        EXPECT_EQ(chooser.Panel()->ChosenReference(), "PLC1.SETPOINT");
        QTest::keyClick(chooser.findChild<QLineEdit*>("filterEdit"), Qt::Key_Escape);
        return chooser.result();
    }));
    std::wstring variable = L"PLC1.SETPOINT";
    EXPECT_FALSE(ZoSelectDriver::SelectDriverAndVar(nullptr, variable, ZoTypeOf(kZoAnalog), true));
    EXPECT_EQ(variable, L"PLC1.SETPOINT");
    EXPECT_EQ(modal.Classes(), QStringList{"ZoSelectDriver"});
}

TEST_F(SelectDriver, SelectChoosesADeviceAndNeverAnEventsPseudoDevice)
{
    ModalScript modal(ModalScript::As<ZoSelectDriver>([](ZoSelectDriver& chooser) {
        auto* tree = chooser.findChild<QTreeView*>("devicesTree");
        EXPECT_EQ(chooser.windowTitle(), ZoText(62100));
        EXPECT_EQ(Tree(*tree->model()), "Line 2.A | PLC1 | PUMP1");
        EXPECT_EQ(chooser.Panel()->ChosenReference(), "PLC1") << "the caller's device is current";
        QTest::keyClick(tree, Qt::Key_Down);
        return ModalScript::ClickOk(chooser);
    }));
    std::wstring device = L"PLC1";
    EXPECT_TRUE(ZoSelectDriver::Select(nullptr, device));
    EXPECT_EQ(device, L"PUMP1");
}

TEST_F(SelectDriver, EnterOnADeviceOpensItAndEveryControlHasAMnemonic)
{
    ZoSelectDriver chooser(nullptr, ZoSelectDriver::Mode::Variable);
    chooser.EnsureInitialized();
    auto* tree = chooser.findChild<QTreeView*>("devicesTree");
    QModelIndex const first = tree->model()->index(0, 0);
    ASSERT_EQ(tree->currentIndex(), first);
    QTest::keyClick(tree, Qt::Key_Return);
    EXPECT_TRUE(tree->isExpanded(first));
    EXPECT_EQ(chooser.result(), QDialog::Rejected) << "Enter on a device does not close the chooser";
    chooser.accept();
    EXPECT_EQ(chooser.result(), QDialog::Rejected) << "OK is refused on a device row";
    QStringList texts, expected;
    for (auto* label : chooser.findChildren<QLabel*>())
        if (label->objectName().isEmpty())
            texts << label->text();
    for (auto* button : chooser.findChildren<QPushButton*>())
        texts << button->text();
    for (QString const& text : texts)
        EXPECT_TRUE(text.contains('&')) << text.toStdString();
    for (unsigned id : {312, 62104, 62102, 311})
        expected << ZoText(id);
    texts.replaceInStrings("&", "");
    texts.sort();
    expected.sort();
    EXPECT_EQ(texts, expected);
}

} // namespace
