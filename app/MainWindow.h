#pragma once
#include "project/ProjectFiles.h"
#include "RecentFolders.h"

#include <QMainWindow>

#include <initializer_list>
#include <memory>

class ProjectFolder;
class ProjectPanel;
class QAction;
class QMenu;

// The host editor's window: opens a project folder, shows what it holds, runs the event
// dialogs on its documents and saves the documents that a dialog changed, atomically.
//
// Object names of the actions: openFolderAction, recentMenu, clearRecentAction, saveAction,
// quitAction, eventsAction, editEventAction, eventGroupsAction, timeTablesAction,
// timeSlotAction, eventVariablesAction, aboutAction.
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
    void OnEventsList();
    void OnEditEvent();
    void OnEventGroups();
    void OnEventVariables();
    void OnTimeTables();
    void OnTimeSlot();
    void OnAbout();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CreateActions();
    void CreateMenus();
    void UpdateRecentMenu();
    void UpdateActions();
    void UpdateTitle();
    void UpdatePanel();
    // Saves these documents and any whose earlier save failed; tells the user on failure.
    bool SaveDocuments(std::initializer_list<zo::project::ProjectDoc> docs);
    // Before the project is closed: offers to save unsaved changes; false to stay.
    bool MaySaveChanges();

    RecentFolders m_recent;
    std::unique_ptr<ProjectFolder> m_project;
    unsigned m_unsaved = 0; // bit per ProjectDoc
    ProjectPanel* m_panel = nullptr;
    QMenu* m_recentMenu = nullptr;
    QAction* m_openFolder = nullptr;
    QAction* m_clearRecent = nullptr;
    QAction* m_save = nullptr;
    QAction* m_quit = nullptr;
    QAction* m_events = nullptr;
    QAction* m_editEvent = nullptr;
    QAction* m_eventGroups = nullptr;
    QAction* m_timeTables = nullptr;
    QAction* m_timeSlot = nullptr;
    QAction* m_eventVariables = nullptr;
    QAction* m_about = nullptr;
};
