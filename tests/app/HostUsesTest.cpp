// Events > Where Used… and Events > Rename… in the host editor on the demo project: the
// rows the user sees, Enter opening the event editor at the field, the preview, a refused
// name, and the files after a rename.
#include "HostTestSupport.h"
#include "RenameDlg.h"
#include "UsesWindow.h"
#include "editor/ZoEDlgEventCfg.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "events/ZoEDlgEventsCfg.h"
#include "groups/ZoEDlgEventGroupsCfg.h"
#include "timetables/ZoDlgTimeTableSetup.h"
#include "platform/drivers/ZoDeviceTreePanel.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "support/ScriptedAnswerer.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTest>

using namespace host_test;

namespace {

// A row of the where-used list as Rows() gives it, in the language of the run: the event,
// then the list, the moment (32831 activation, 32832 while active, 32834 acknowledgement)
// and the action, with its column.
QString ActionUse(QString const& event, unsigned moment)
{
    QString const field = QString::fromStdWString(
        ZoFormat(ZoLoadString(64521).c_str(), ZoLoadString(34106).c_str(), ZoLoadString(moment).c_str(), 1));
    return ZoText(64503).replace("%s", event) + " | " + field + ZoText(64528).replace("%d", "1");
}
// A row whose field is the event's time table.
QString TimeTableUse(QString const& event)
{
    return ZoText(64503).replace("%s", event) + " | " + ZoText(64515);
}

// The rows as "element | field" lines.
QStringList Rows(QTreeView const* list)
{
    QStringList rows;
    QAbstractItemModel const* model = list->model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows << model->index(row, 0).data().toString() + " | " + model->index(row, 1).data().toString();
    return rows;
}

using HostUses = HostTest;

TEST_F(HostUses, TheWindowListsEveryUseAndEnterOpensTheEditorAtTheActionsMoment)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    demo.window.OnWhereUsed("[PUMP1.START_CMD]");
    UsesWindow* uses = demo.window.Uses();
    ASSERT_TRUE(uses);
    EXPECT_TRUE(uses->isVisible());
    EXPECT_FALSE(uses->isModal());
    QAbstractItemModelTester tester(const_cast<UsesModel*>(&uses->Model()));
    QTreeView* list = uses->List();
    EXPECT_EQ(Rows(list), (QStringList{ActionUse("Tank high level", 32831), ActionUse("Tank overflow", 32832),
                                       ActionUse("Tank dry-run risk", 32831), ActionUse("PUMP1 stalled", 32831)}));
    EXPECT_EQ(uses->findChild<QLabel*>("countLabel")->text(), ZoText(64748).replace("%d", "4"));
    EXPECT_EQ(list->currentIndex().row(), 0);

    list->setCurrentIndex(list->model()->index(1, 0));
    ModalScript modal(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        EXPECT_EQ(editor.findChild<QTabWidget*>("tabs")->currentIndex(), ZoEDlgEventCfg::TabActions);
        EXPECT_EQ(editor.findChild<QTabWidget*>("actionsMomentTabs")->currentIndex(), 1);
        return ModalScript::Reject()(editor);
    }));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(modal.Classes(), QStringList{"ZoEDlgEventCfg"});

    // A reference typed in the window; one that names nothing says so.
    auto* reference = uses->findChild<QLineEdit*>("referenceEdit");
    reference->setText("timetable:Out of hours week");
    QTest::keyClick(reference, Qt::Key_Return);
    EXPECT_EQ(Rows(list), (QStringList{TimeTableUse("Flow without pumping"), TimeTableUse("Door open out of hours")}));
    reference->setText("[PUMP9.START_CMD]");
    uses->findChild<QPushButton*>("findButton")->click();
    EXPECT_EQ(list->model()->rowCount(), 0);
    EXPECT_EQ(uses->findChild<QLabel*>("countLabel")->text(), ZoText(64700).replace("%s", "PUMP9"));
    EXPECT_EQ(answers.Count(), 0);
}

TEST_F(HostUses, RenameShowsThePreviewBeforeOkAppliesItAndSavesBothFiles)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    QByteArray const devices = ReadBytes(demo.File(ProjectDoc::Devices));
    int previewRows = 0;
    ModalScript modal(ModalScript::As<RenameDlg>([&](RenameDlg& dialog) {
        EXPECT_EQ(dialog.focusWidget(), dialog.findChild<QLineEdit*>("oldNameEdit"));
        EXPECT_FALSE(dialog.findChild<QLineEdit*>("deviceEdit")->isEnabled());
        dialog.findChild<QLineEdit*>("oldNameEdit")->setText("PUMP1");
        auto* newName = dialog.findChild<QLineEdit*>("newNameEdit");
        auto* message = dialog.findChild<QLabel*>("messageLabel");
        newName->setText("PUMP2");
        EXPECT_EQ(ModalScript::ClickOk(dialog), QDialog::Rejected);
        EXPECT_EQ(message->text(), ZoText(64713).replace("%s", "PUMP2"));
        newName->setText("Pump 1.B");
        // The first OK shows the preview, the second applies it.
        EXPECT_EQ(ModalScript::ClickOk(dialog), QDialog::Rejected);
        auto* list = dialog.findChild<QTreeView*>("previewList");
        previewRows = list->model()->rowCount();
        EXPECT_EQ(message->text().toStdWString(), ZoFormat(ZoLoadString(64766).c_str(), 23, 23));
        EXPECT_EQ(list->model()->index(1, RenamePreviewModel::BeforeColumn).data().toString(), "[PUMP1.START_CMD]");
        EXPECT_EQ(list->model()->index(1, RenamePreviewModel::AfterColumn).data().toString(), "[Pump 1.B.START_CMD]");
        return ModalScript::ClickOk(dialog);
    }));
    demo.window.findChild<QAction*>("renameAction")->trigger();
    EXPECT_EQ(modal.Classes(), QStringList{"RenameDlg"});
    EXPECT_EQ(previewRows, 23);
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
    EXPECT_TRUE(ReadBytes(demo.File(ProjectDoc::Events)).contains("<variable>[Pump 1.B.START_CMD]</variable>"));
    QByteArray renamed = ReadBytes(demo.File(ProjectDoc::Devices));
    EXPECT_TRUE(renamed.contains("<name>Pump 1.B</name>"));
    EXPECT_EQ(renamed.replace("<name>Pump 1.B</name>", "<name>PUMP1</name>"), devices);
    EXPECT_EQ(answers.Count(), 0);
}

TEST_F(HostUses, ACancelledRenameChangesNothing)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    QByteArray const events = ReadBytes(demo.File(ProjectDoc::Events));
    ModalScript modal(ModalScript::As<RenameDlg>([](RenameDlg& dialog) {
        dialog.findChild<QComboBox*>("kindCombo")->setCurrentIndex(static_cast<int>(ZoRenameKind::Event));
        dialog.findChild<QLineEdit*>("oldNameEdit")->setText("Tank high level");
        dialog.findChild<QLineEdit*>("newNameEdit")->setText("Reservoir high");
        dialog.findChild<QPushButton*>("previewButton")->click();
        EXPECT_EQ(dialog.findChild<QTreeView*>("previewList")->model()->rowCount(), 2); // the name, one force
        return ModalScript::Reject()(dialog);
    }));
    demo.window.OnRename();
    EXPECT_EQ(modal.Classes(), QStringList{"RenameDlg"});
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), events);
    EXPECT_FALSE(demo.window.HasUnsavedChanges());
}

TEST_F(HostUses, TheEventsListShowsTheUsesOfAnEventAndSelectsTheOneChosen)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    QString selected;
    ModalScript modal(ModalScript::As<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
        list.SelectEvent(std::wstring(L"Tank high level"));
        std::unique_ptr<QMenu> menu = list.CreateContextMenu();
        auto* uses = menu->findChild<QAction*>("whereUsedAction");
        EXPECT_TRUE(uses);
        if (uses)
            uses->trigger();
        auto* view = list.findChild<QAbstractItemView*>("eventsList");
        selected = view->currentIndex().siblingAtColumn(0).data().toString();
        return ModalScript::Reject()(list);
    }));
    modal.Then(ModalScript::As<UsesWindow>([](UsesWindow& window) {
        EXPECT_EQ(Rows(window.List()), QStringList{ActionUse("Tank overflow", 32834)});
        EXPECT_EQ(window.findChild<QLineEdit*>("referenceEdit")->text(), "event:Tank high level");
        QTest::keyClick(window.List(), Qt::Key_Return);
        return window.result();
    }));
    demo.window.OnEventsList();
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventsCfg", "UsesWindow"}));
    EXPECT_EQ(selected, "Tank overflow");
}

TEST_F(HostUses, TheVariableChooserShowsWhereItsCurrentVariableIsUsed)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    ZoSelectDriver chooser(nullptr, ZoSelectDriver::Mode::Variable);
    chooser.SetInitial(L"PUMP1.START_CMD");
    chooser.EnsureInitialized();
    auto* button = chooser.findChild<QPushButton*>("whereUsedButton");
    ASSERT_TRUE(button);
    EXPECT_TRUE(button->isEnabled());
    EXPECT_TRUE(button->text().contains('&'));
    ModalScript modal(ModalScript::As<UsesWindow>([](UsesWindow& window) {
        EXPECT_EQ(window.findChild<QLineEdit*>("referenceEdit")->text(), "[PUMP1.START_CMD]");
        EXPECT_EQ(window.Model().rowCount(), 4);
        return ModalScript::Reject()(window);
    }));
    button->click();
    EXPECT_EQ(modal.Classes(), QStringList{"UsesWindow"});
    // Without a host there is no button.
    ZoSelectDriver::SetWhereUsed({});
    ZoSelectDriver plain(nullptr, ZoSelectDriver::Mode::Device);
    plain.EnsureInitialized();
    EXPECT_EQ(plain.findChild<QPushButton*>("whereUsedButton"), nullptr);
}

// The step for the modal where-used window a dialog's "Where Used…" opens: the reference and
// the number of rows it shows.
ModalScript::Step ExpectUses(QString const& reference, int rows)
{
    return ModalScript::As<UsesWindow>([reference, rows](UsesWindow& window) {
        EXPECT_EQ(window.findChild<QLineEdit*>("referenceEdit")->text(), reference);
        EXPECT_EQ(window.Model().rowCount(), rows);
        return ModalScript::Reject()(window);
    });
}

void TriggerWhereUsed(QMenu* menu)
{
    QAction* uses = menu ? menu->findChild<QAction*>("whereUsedAction") : nullptr;
    ASSERT_TRUE(uses);
    uses->trigger();
}

TEST_F(HostUses, TheTimeTablesSetupAndTheGroupsDialogShowWhereTheSelectedOneIsUsed)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    ModalScript modal(ModalScript::As<ZoDlgTimeTableSetup>([](ZoDlgTimeTableSetup& setup) {
        auto* list = setup.findChild<QTreeView*>("timeTablesList");
        QModelIndexList const found =
            list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, "Operations week", 1, Qt::MatchExactly);
        EXPECT_EQ(found.size(), 1);
        list->selectionModel()->select(found.value(0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        TriggerWhereUsed(setup.CreateContextMenu().get());
        return ModalScript::Reject()(setup);
    }));
    modal.Then(ExpectUses("timetable:Operations week", 2));
    modal.Then(ModalScript::As<ZoEDlgEventGroupsCfg>([](ZoEDlgEventGroupsCfg& groups) {
        groups.SelectGroup("Pumps");
        TriggerWhereUsed(groups.CreateContextMenu().get());
        return ModalScript::Reject()(groups);
    }));
    modal.Then(ExpectUses("group:Pumps", 12));
    demo.window.OnTimeTables();
    demo.window.OnEventGroups();
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoDlgTimeTableSetup", "UsesWindow", "ZoEDlgEventGroupsCfg", "UsesWindow"}));
}

} // namespace
