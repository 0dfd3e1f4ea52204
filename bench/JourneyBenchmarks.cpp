// The steps of a user's journey through the host editor on a generated project, each run
// through the real MainWindow with its dialogs scripted (see JourneyScript). The window is
// opened outside the timing; only the step named is timed (manual time, and the library's
// timer, hence the CPU time, runs only during the step).
#include "EventsListControls.h"
#include "JourneyChecks.h"
#include "JourneyScript.h"
#include "JourneySizes.h"
#include "JourneyWindow.h"
#include "ProjectFolderGenerator.h"
#include "StepTimer.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/ZoEDlgEventsCfg.h"
#include "groups/ZoDlgSelect.h"
#include "groups/ZoEDlgEventGroupsCfg.h"
#include "ChangeHistory.h"

#include <QTreeView>

#include <QFile>

#include <benchmark/benchmark.h>

using namespace zo::bench;

namespace {

// The list's question before it deletes the selected events.
constexpr unsigned kDeleteQuestion = 32792;

GeneratedProjectFolder const& FolderOf(benchmark::State const& state)
{
    return SharedProjectFolder(static_cast<int>(state.range(0)));
}

// A window that opened the benchmark's project; false (benchmark failed) when it could not.
bool OpenWindow(benchmark::State& state, JourneyWindow& window)
{
    if (window.Open(FolderOf(state)))
        return true;
    state.SkipWithError("the host did not open the generated project");
    return false;
}

// MainWindow::OpenFolder on a window that has no project open yet.
void BM_JourneyOpenProject(benchmark::State& state)
{
    GeneratedProjectFolder const& folder = FolderOf(state);
    JourneyScript script;
    StepTimer timer(state);
    for (auto _ : state) {
        timer.BeginIteration();
        bool opened = false;
        {
            JourneyWindow window;
            timer.Start();
            opened = window.Open(folder);
            timer.Stop();
            if (opened && window.EventCount() != folder.Events())
                script.Fail("the opened project does not hold every generated event");
        }
        timer.EndIteration();
        if (!opened)
            script.Fail("the host did not open the generated project");
        if (!WentAsScripted(state, script, timer))
            break;
    }
}

// Opens a window on the benchmark's project (outside the timing), then runs `session`
// once per iteration: it scripts the dialogs, runs the host's step, starts and stops the
// timer around what is measured and reports what went wrong through script.Fail.
template <class Session>
void EachSession(benchmark::State& state, Session session)
{
    JourneyScript script;
    JourneyWindow window;
    if (!OpenWindow(state, window))
        return;
    StepTimer timer(state);
    for (auto _ : state) {
        timer.BeginIteration();
        session(script, window, timer);
        timer.EndIteration();
        if (!WentAsScripted(state, script, timer))
            break;
    }
}

// Events > Events list until the list reaches the modal runner, initialised and filled.
void BM_JourneyOpenEventsList(benchmark::State& state)
{
    int const events = FolderOf(state).Events();
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        script.ThenAs<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
            timer.Stop();
            if (ListRowCount(list) != events)
                script.Fail("the events list does not show every event");
            return ClickButton(script, list, "cancelButton");
        });
        timer.Start();
        window.Window().OnEventsList();
    });
}

// In the list: Modify on the middle row until the event editor reaches the modal runner.
void BM_JourneyModifyOpenEditor(benchmark::State& state)
{
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        script.ThenAs<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
            SelectMiddleRow(script, list);
            script.ThenAs<ZoEDlgEventCfg>([&](ZoEDlgEventCfg& editor) {
                timer.Stop();
                return ClickButton(script, editor, "cancelButton");
            });
            timer.Start();
            ClickButton(script, list, "modifyButton");
            return ClickButton(script, list, "cancelButton");
        });
        window.Window().OnEventsList();
    });
}

// In the editor, with the description changed: OK until the list's Modify has returned
// (the change is in the list's document, the list refilled and the row selected again).
// The generated event is valid: the editor asks no question on its way.
void BM_JourneyModifyCommit(benchmark::State& state)
{
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        script.ForgetMessages();
        script.ThenAs<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
            ModifyMiddleDescription(script, list, NextDescription(), [&] { timer.Start(); });
            timer.Stop();
            if (SelectedRowCount(list) != 1)
                script.Fail("the modified event's row is not selected again");
            if (script.MessageCount() != 0)
                script.Fail("the editor asked a question about a valid event");
            return ClickButton(script, list, "cancelButton");
        });
        window.Window().OnEventsList();
    });
}

// In the list: Delete on the middle row (answered Yes), then Cancel, until the host has put
// the documents back and OnEventsList has returned.
void BM_JourneyDeleteCancel(benchmark::State& state)
{
    int const events = FolderOf(state).Events();
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        script.ForgetMessages();
        script.ThenAs<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
            SelectMiddleRow(script, list);
            timer.Start();
            ClickButton(script, list, "deleteButton");
            if (!list.IsModified())
                script.Fail("the delete did not change the list");
            return ClickButton(script, list, "cancelButton");
        });
        window.Window().OnEventsList();
        timer.Stop();
        if (script.Asked(kDeleteQuestion) != 1)
            script.Fail("the list did not ask before deleting");
        if (window.EventCount() != events)
            script.Fail("Cancel did not put the deleted event back");
    });
}

// In the list, after a real change (a description, through the editor): OK until
// OnEventsList has returned, the events and devices files saved atomically.
void BM_JourneySave(benchmark::State& state)
{
    QString description;
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        description = NextDescription();
        int listResult = QDialog::Rejected;
        script.ThenAs<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
            ModifyMiddleDescription(script, list, description);
            timer.Start();
            listResult = ClickButton(script, list, "okButton");
            return listResult;
        });
        window.Window().OnEventsList();
        timer.Stop();
        if (listResult != QDialog::Accepted)
            script.Fail("the events list did not end with OK after a change");
        else if (window.Window().HasUnsavedChanges())
            script.Fail("the host did not save the changed documents");
    });
    // Once, after the run: the file on disk holds the last change.
    QFile events(FolderOf(state).FilePath(zo::project::ProjectDoc::Events));
    if (!state.error_occurred() && events.open(QIODevice::ReadOnly)
        && !events.readAll().contains(description.toUtf8()))
        state.SkipWithError("Events.zocfg does not hold the saved change");
}

// Events > Event groups until the dialog reaches the modal runner, every group's members
// collected from the events.
void BM_JourneyOpenGroups(benchmark::State& state)
{
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        script.ThenAs<ZoEDlgEventGroupsCfg>([&](ZoEDlgEventGroupsCfg& dialog) {
            timer.Stop();
            if (dialog.findChild<QTreeView*>("groupsList")->model()->rowCount() == 0)
                script.Fail("the groups dialog shows no group");
            return ClickButton(script, dialog, "cancelButton");
        });
        timer.Start();
        window.Window().OnEventGroups();
    });
}

// In the groups dialog, the first group selected: Add member, the first event offered
// chosen in the selection dialog, then OK, until OnEventGroups has returned and the events
// file is saved.
void BM_JourneyGroupsAddMemberSave(benchmark::State& state)
{
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        int groupsResult = QDialog::Rejected;
        script.ThenAs<ZoEDlgEventGroupsCfg>([&](ZoEDlgEventGroupsCfg& dialog) {
            auto* groups = dialog.findChild<QTreeView*>("groupsList");
            auto* members = dialog.findChild<QTreeView*>("membersList");
            groups->selectionModel()->select(groups->model()->index(0, 0),
                                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
            int const before = members->model()->rowCount();
            script.ThenAs<ZoDlgSelect>([&](ZoDlgSelect& select) {
                auto* list = select.findChild<QTreeView*>("selectList");
                list->selectionModel()->select(list->model()->index(0, 0),
                                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
                return ClickButton(script, select, "okButton");
            });
            timer.Start();
            ClickButton(script, dialog, "addMemberButton");
            if (members->model()->rowCount() != before + 1)
                script.Fail("the chosen event did not join the group");
            groupsResult = ClickButton(script, dialog, "okButton");
            return groupsResult;
        });
        window.Window().OnEventGroups();
        timer.Stop();
        if (groupsResult != QDialog::Accepted)
            script.Fail("the groups dialog did not end with OK after a change");
        else if (window.Window().HasUnsavedChanges())
            script.Fail("the host did not save the events document");
    });
}

// Edit > Undo then Edit > Redo of a delete in the events list (made and saved outside the
// timing), until both have returned, each with the events and devices files saved; a last
// undo (outside the timing) brings the event back. The step holds only the deleted event,
// so both cost what the save costs.
void BM_JourneyUndoRedo(benchmark::State& state)
{
    EachSession(state, [&](JourneyScript& script, JourneyWindow& window, StepTimer& timer) {
        MainWindow& host = window.Window();
        int const before = window.EventCount();
        script.ThenAs<ZoEDlgEventsCfg>([&](ZoEDlgEventsCfg& list) {
            SelectMiddleRow(script, list);
            ClickButton(script, list, "deleteButton");
            return ClickButton(script, list, "okButton");
        });
        host.OnEventsList();
        if (window.EventCount() != before - 1 || !host.History()->CanUndo())
            script.Fail("the delete was not kept as a step of the history");
        timer.Start();
        host.OnUndo();
        int const undone = window.EventCount();
        host.OnRedo();
        timer.Stop();
        if (undone != before || window.EventCount() != before - 1)
            script.Fail("undo or redo did not put the events back as they were");
        if (host.HasUnsavedChanges())
            script.Fail("the host did not save after undo and redo");
        // The deleted event comes back (outside the timing): the folder keeps every event.
        host.OnUndo();
        if (window.EventCount() != before)
            script.Fail("the last undo did not put the deleted event back");
    });
}

} // namespace

ZO_JOURNEY_BENCHMARK(BM_JourneyOpenProject);
ZO_JOURNEY_BENCHMARK(BM_JourneyOpenEventsList);
ZO_JOURNEY_BENCHMARK(BM_JourneyModifyOpenEditor);
ZO_JOURNEY_BENCHMARK(BM_JourneyModifyCommit);
ZO_JOURNEY_BENCHMARK(BM_JourneyDeleteCancel);
ZO_JOURNEY_BENCHMARK(BM_JourneySave);
ZO_JOURNEY_BENCHMARK(BM_JourneyOpenGroups);
ZO_JOURNEY_BENCHMARK(BM_JourneyGroupsAddMemberSave);
// Writes the shared folder as the saves above do: last of this file.
ZO_JOURNEY_BENCHMARK(BM_JourneyUndoRedo);
