// Events > Check Project: the Problems window over the faulty example, opening the event
// editor at a finding's field, and the counts after a save.
#include "HostTestSupport.h"
#include "ProblemsWindow.h"
#include "ProjectCheckRunner.h"
#include "editor/ZoEDlgEventCfg.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoWaitDlg.h"
#include "support/ScriptedAnswerer.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>

using namespace host_test;

namespace {

// The texts the Problems window shows, in the language of the run: a severity column's start
// ("error | "), an event's element, a field with the column of a formula fault.
QString SeverityCell(unsigned id)
{
    return ZoText(id) + " | ";
}
QString EventElement(QString const& name)
{
    return ZoText(64503).replace("%s", name);
}
QString ConditionColumn(int column)
{
    return ZoText(64511) + ZoText(64528).replace("%d", QString::number(column));
}

// A main window on a temporary copy of examples/faulty.
struct FaultyWindow {
    QTemporaryDir dir, settings;
    MainWindow window{RecentFolders(settings.filePath("recent.ini"))};

    FaultyWindow()
    {
        QDir const source(QStringLiteral(ZO_SOURCE_DIR "/examples/faulty"));
        for (QString const& name : source.entryList(QDir::Files))
            EXPECT_TRUE(QFile::copy(source.filePath(name), QDir(dir.path()).filePath(name)));
        EXPECT_TRUE(window.OpenFolder(dir.path()));
    }
};

// Check Project loads the users file first, behind its wait box.
void CheckProject(MainWindow& window)
{
    ModalScript modal(ModalScript::As<ZoWaitDlg>([](ZoWaitDlg& wait) { return wait.exec(); }));
    window.OnCheckProject();
    EXPECT_EQ(modal.Classes(), QStringList{"ZoWaitDlg"});
}

// The visible rows as "severity | element | field" lines.
QStringList Rows(QTreeView const* list)
{
    QStringList rows;
    QAbstractItemModel const* model = list->model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows << model->index(row, 0).data().toString() + " | " + model->index(row, 1).data().toString() + " | " +
                    model->index(row, 2).data().toString();
    return rows;
}

// Makes the row with that element and field the current one; false when there is none.
bool SelectRow(QTreeView* list, QString const& element, QString const& field)
{
    QAbstractItemModel const* model = list->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->index(row, 1).data().toString() == element && model->index(row, 2).data().toString() == field) {
            list->setCurrentIndex(model->index(row, 0));
            return true;
        }
    }
    return false;
}

using HostProblems = HostTest;

TEST_F(HostProblems, TheDemoChecksClean)
{
    ScriptedAnswerer answers;
    DemoWindow demo;
    CheckProject(demo.window);
    ProblemsWindow* problems = demo.window.Problems();
    ASSERT_TRUE(problems);
    EXPECT_TRUE(problems->isVisible());
    EXPECT_FALSE(problems->isModal());
    EXPECT_TRUE(problems->windowTitle().startsWith(QString::fromStdWString(ZoFormat(ZoLoadString(64571).c_str(), 0, 0, 0)).section(", ", 0, 1))) << problems->windowTitle().toStdString();
    EXPECT_EQ(answers.Count(), 0);
}

TEST_F(HostProblems, EnterOpensTheEditorAtTheFieldAndTheEventIsCheckedAgainAfterOk)
{
    ScriptedAnswerer answers;
    FaultyWindow faulty;
    CheckProject(faulty.window);
    ProblemsWindow* problems = faulty.window.Problems();
    QAbstractItemModelTester tester(const_cast<ProblemsModel*>(&problems->Model()));
    ZoCheckCounts const before = problems->Model().Counts();
    EXPECT_GT(before.errors, 20);
    QTreeView* list = problems->List();
    EXPECT_EQ(list->findChild<QTreeView*>(), nullptr);
    // Errors come first (sorted by severity).
    EXPECT_TRUE(Rows(list).first().startsWith(SeverityCell(64500)));

    ASSERT_TRUE(SelectRow(list, EventElement("Pump 1 fault"), ConditionColumn(2)));
    ModalScript modal(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        EXPECT_EQ(editor.findChild<QTabWidget*>("tabs")->currentIndex(), ZoEDlgEventCfg::TabGeneral);
        auto* condition = editor.findChild<QLineEdit*>("conditionEdit");
        EXPECT_EQ(editor.focusWidget(), condition);
        EXPECT_EQ(condition->selectedText(), condition->text());
        condition->setText("[PUMP1.RUNNING] = 0");
        return ModalScript::ClickOk(editor);
    }));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(modal.Classes(), QStringList{"ZoEDlgEventCfg"});
    EXPECT_EQ(problems->Model().Counts().errors, before.errors - 1);
    EXPECT_FALSE(SelectRow(list, EventElement("Pump 1 fault"), ConditionColumn(2)));
    EXPECT_TRUE(problems->windowTitle().startsWith(ZoText(64571).section(",", 0, 0).replace("%d", QString::number(before.errors - 1))));
    // The save checks the whole project again in idle time: the window is filled again and
    // the status bar shows the counts.
    EXPECT_TRUE(faulty.window.CheckRunner()->IsRunning());
    faulty.window.CheckRunner()->Finish();
    EXPECT_EQ(problems->Model().Counts().errors, before.errors - 1);
    EXPECT_TRUE(faulty.window.statusBar()->currentMessage().contains(ZoText(64573).section(",", 0, 0).replace("%d", QString::number(before.errors - 1))))
        << faulty.window.statusBar()->currentMessage().toStdString();
}

// A save returns before the check: its counts follow in idle time, never while a dialog
// is open (it may be changing the documents), and a save during a check starts it again.
TEST_F(HostProblems, TheCountsFollowTheSaveInIdleTime)
{
    ScriptedAnswerer answers;
    FaultyWindow faulty;
    ProjectCheckRunner& runner = *faulty.window.CheckRunner();
    faulty.window.OnSave();
    EXPECT_EQ(faulty.window.statusBar()->currentMessage(), ZoText(60054));
    EXPECT_TRUE(runner.IsRunning());

    QDialog dialog(&faulty.window);
    dialog.setModal(true);
    dialog.show();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(runner.IsRunning());
    dialog.hide();

    QElapsedTimer clock;
    clock.start();
    while (runner.IsRunning() && clock.elapsed() < 10000)
        QCoreApplication::processEvents();
    EXPECT_FALSE(runner.IsRunning());
    EXPECT_TRUE(faulty.window.statusBar()->currentMessage().startsWith(ZoText(60054) + " " + ZoText(64573).section("%d", 0, 0))) << faulty.window.statusBar()->currentMessage().toStdString();
    EXPECT_EQ(answers.Count(), 0);
}

TEST_F(HostProblems, AnActionFindingOpensItsMomentAndCancelChangesNothing)
{
    ScriptedAnswerer answers;
    FaultyWindow faulty;
    CheckProject(faulty.window);
    ProblemsWindow* problems = faulty.window.Problems();
    QTreeView* list = problems->List();
    QStringList const rows = Rows(list);
    ASSERT_TRUE(SelectRow(list, EventElement("Missing screen"),
                          QString::fromStdWString(ZoFormat(ZoLoadString(64521).c_str(), ZoLoadString(34107).c_str(),
                                                           ZoLoadString(32831).c_str(), 1))));
    ModalScript modal(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        EXPECT_EQ(editor.findChild<QTabWidget*>("tabs")->currentIndex(), ZoEDlgEventCfg::TabClientActions);
        EXPECT_EQ(editor.findChild<QTabWidget*>("clientActionsMomentTabs")->currentIndex(), 0);
        return ModalScript::Reject()(editor);
    }));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->currentIndex()).center());
    EXPECT_EQ(modal.Classes(), QStringList{"ZoEDlgEventCfg"});
    EXPECT_EQ(Rows(list), rows);
}

TEST_F(HostProblems, FilterBySeverityAndSort)
{
    ScriptedAnswerer answers;
    FaultyWindow faulty;
    CheckProject(faulty.window);
    ProblemsWindow* problems = faulty.window.Problems();
    QTreeView* list = problems->List();
    ZoCheckCounts const counts = problems->Model().Counts();
    EXPECT_EQ(list->model()->rowCount(), counts.errors + counts.warnings + counts.notes);
    problems->findChild<QCheckBox*>("errorsCheck")->setChecked(false);
    problems->findChild<QCheckBox*>("notesCheck")->setChecked(false);
    EXPECT_EQ(list->model()->rowCount(), counts.warnings);
    for (QString const& row : Rows(list))
        EXPECT_TRUE(row.startsWith(SeverityCell(64501))) << row.toStdString();
    problems->findChild<QCheckBox*>("errorsCheck")->setChecked(true);
    list->sortByColumn(ProblemsModel::SeverityColumn, Qt::DescendingOrder);
    EXPECT_TRUE(Rows(list).first().startsWith(SeverityCell(64501)));
    EXPECT_TRUE(Rows(list).last().startsWith(SeverityCell(64500)));
}

} // namespace

namespace {

// Another dialog deletes an event while the window is open: the save fills it again, so no
// row points at an event that moved.
TEST_F(HostProblems, TheOpenWindowFollowsChangesOfOtherDialogs)
{
    ScriptedAnswerer answers;
    FaultyWindow faulty;
    CheckProject(faulty.window);
    ProblemsWindow* problems = faulty.window.Problems();
    int const rows = problems->List()->model()->rowCount();
    ModalScript modal(DeleteEventThen("Pump 1 fault"));
    faulty.window.OnEventsList();
    faulty.window.CheckRunner()->Finish();
    EXPECT_EQ(problems->List()->model()->rowCount(), rows - 1);
    EXPECT_FALSE(SelectRow(problems->List(), EventElement("Pump 1 fault"), ConditionColumn(2)));
    EXPECT_TRUE(SelectRow(problems->List(), EventElement("Follows a renamed event"), ConditionColumn(2)));
}

} // namespace
