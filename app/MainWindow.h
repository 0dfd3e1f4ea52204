#pragma once
#include "config/XmlDocument.h"
#include "project/ProjectFiles.h"
#include "RecentFolders.h"

#include <QMainWindow>

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

class ChangeHistory;
class ProblemsWindow;
class ProjectCheckRunner;
class UsesWindow;
class ProjectFolder;
class ProjectPanel;
class ZoProjectChecker;
struct ZoFinding;
class QAction;
class QMenu;

// The host editor's window: opens a project folder, shows what it holds, runs the event
// dialogs on its documents and saves the documents that a dialog changed, atomically.
//
// Object names of the actions: openFolderAction, recentMenu, clearRecentAction, saveAction,
// quitAction, undoAction, redoAction, eventsAction, editEventAction, eventGroupsAction, timeTablesAction,
// timeSlotAction, eventVariablesAction, checkProjectAction, whereUsedAction, renameAction,
// exportSheetAction, importSheetAction, aboutAction.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(RecentFolders recent = RecentFolders(), QWidget* parent = nullptr);
    ~MainWindow() override;

    // Opens the project of folder, replacing the open one; shows the reason and keeps the
    // open project when the folder cannot be opened.
    bool OpenFolder(QString const& folder);
    ProjectFolder* Project() const { return m_project.get(); }
    // Whether a dialog changed documents that could not be saved yet.
    bool HasUnsavedChanges() const { return m_unsaved != 0; }

    void OnOpenFolder();
    void OnSave();
    // Edit > Undo (Ctrl+Z) and Redo (Ctrl+Shift+Z, Ctrl+Y): the changes applied since the
    // folder was opened, one step per dialog's OK, import or rename; saved as they change.
    void OnUndo();
    void OnRedo();
    ChangeHistory* History() const { return m_history.get(); }
    void OnEventsList();
    void OnEditEvent();
    void OnEventGroups();
    void OnEventVariables();
    void OnTimeTables();
    void OnTimeSlot();
    // Events > Check Project (F7): checks the whole project and shows the Problems window.
    void OnCheckProject();
    // Events > Export to Spreadsheet… and Import from Spreadsheet… (docs/spreadsheet.md):
    // the file is chosen in a file dialog; the import shows its preview (SheetImportDlg)
    // and, on its OK, applies it as one change and saves the events and the devices.
    void OnExportSheet();
    void OnImportSheet();
    // Events > Templates, Stamp from Template, Update from Templates (MainWindowTemplates.cpp).
    void OnTemplates();
    void OnStampTemplate();
    void OnUpdateFromTemplates();
    // Events > Time Table Coverage.
    void OnTimeTableCoverage();
    void OnAbout();
    // The Problems window, once Check Project has opened it (null before).
    ProblemsWindow* Problems() const { return m_problems; }
    // The check that runs in idle time after every save.
    ProjectCheckRunner* CheckRunner() const { return m_checkRunner; }
    // Events > Where Used… (Ctrl+Shift+U): the where-used window, with reference looked up
    // when one is given.
    void OnWhereUsed(QString const& reference = {});
    UsesWindow* Uses() const { return m_uses; }
    // Events > Rename… (F2): the rename dialog, preset when a kind and old name are given; the
    // changes it plans are applied in one journal and the files they touch saved together.
    void OnRename();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CreateActions();
    void CreateMenus();
    // The templates' three actions, appended to the Events menu.
    void AddTemplateActions(QMenu* events);
    void UpdateRecentMenu();
    void UpdateActions();
    void UpdateTitle();
    void UpdatePanel();
    // Saves these documents and any whose earlier save failed; tells the user on failure.
    bool SaveDocuments(std::vector<zo::project::ProjectDoc> const& docs);
    // After an undo or redo of these documents: the catalog, the files and the views follow.
    void AfterHistory(std::vector<zo::project::ProjectDoc> const& docs);
    // Runs a dialog that changes the document as the user works: recorded as one step of the
    // history (named by the text stepName), kept by OK, asked about (discardQuestion) when
    // cancelled after a change and then put back on Yes; what is kept is saved. True when a
    // change was kept.
    bool RunJournaled(zo::project::ProjectDoc doc, unsigned discardQuestion, unsigned stepName,
                      std::function<int()> const& run);
    // Before the project is closed: offers to save unsaved changes; false to stay.
    bool MaySaveChanges();
    // Runs the event editor on a working copy of the events, on the event find() picks in
    // it, opened at control (and moment) when given; the copy replaces the events and they
    // are saved when that event changed. True then.
    using EventFinder = std::function<XmlDocument::XmlNode*(XmlDocument::XmlNode*)>;
    bool EditEvent(EventFinder const& find, QString const& control = {}, int moment = -1);
    // A row of the Problems window: opens its event at its field, then checks it again.
    void OnOpenProblem(ZoFinding const& finding);
    // After a change of the documents: checks the project again in idle time (the counts
    // for the status bar after a save; an open Problems window is filled again).
    void StartCheck();
    void OnCheckFinished();
    // Opens the event a finding or use is about at its field; true when the event changed.
    bool OpenAtFinding(ZoFinding const& finding);
    // The where-used window's requests (MainWindowUses.cpp).
    void OnFindUses(QString const& reference);
    void OnOpenUse(ZoFinding const& use);
    // A modal where-used window over the live documents (from a dialog whose changes are not
    // applied yet: the events list, the choosers); the use Enter picked, if any.
    std::optional<ZoFinding> PickUse(QWidget* parent, QString const& reference);
    // The events list's "Where Used…": the uses of event, the event picked among them.
    XmlDocument::XmlNode const* ChooseAmongUses(QWidget* parent, XmlDocument::XmlNode const* event);

    RecentFolders m_recent;
    std::unique_ptr<ProjectFolder> m_project;
    unsigned m_unsaved = 0; // bit per ProjectDoc
    std::unique_ptr<ChangeHistory> m_history; // of m_project, so destroyed before it
    ProjectPanel* m_panel = nullptr;
    QMenu* m_recentMenu = nullptr;
    QAction* m_openFolder = nullptr;
    QAction* m_clearRecent = nullptr;
    QAction* m_save = nullptr;
    QAction* m_quit = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_events = nullptr;
    QAction* m_editEvent = nullptr;
    QAction* m_eventGroups = nullptr;
    QAction* m_timeTables = nullptr;
    QAction* m_timeSlot = nullptr;
    QAction* m_eventVariables = nullptr;
    QAction* m_checkProject = nullptr;
    QAction* m_whereUsed = nullptr;
    QAction* m_rename = nullptr;
    QAction* m_exportSheet = nullptr;
    QAction* m_importSheet = nullptr;
    QList<QAction*> m_templateActions;
    QAction* m_coverage = nullptr;
    QAction* m_about = nullptr;
    ProblemsWindow* m_problems = nullptr;
    UsesWindow* m_uses = nullptr;
    std::unique_ptr<ZoProjectChecker> m_checker; // of the findings the Problems window shows
    ProjectCheckRunner* m_checkRunner = nullptr;
    bool m_countsAfterSave = false; // the status bar shows the counts when the check ends
};
