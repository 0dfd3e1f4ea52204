#pragma once
#include "ProjectSummary.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QStackedWidget;

// The main window's central panel: an invitation to open a folder while no project is
// open, else the project's name, folder and counts, with buttons for the event dialogs.
//
// Object names: openFolderButton, projectNameLabel, projectFolderLabel, eventsCountLabel,
// eventGroupsCountLabel, timeTablesCountLabel, eventDevicesCountLabel, projectDetailsLabel,
// eventsButton, editEventButton.
class ProjectPanel : public QWidget {
    Q_OBJECT
public:
    explicit ProjectPanel(QWidget* parent = nullptr);

    void ShowEmpty();
    void ShowProject(ProjectSummary const& summary);

signals:
    void openFolderRequested();
    void eventsRequested();
    void editEventRequested();

private:
    QWidget* CreateEmptyPage();
    QWidget* CreateProjectPage();
    QWidget* CreateTile(char const* objectName, unsigned captionId, QLabel** number);

    QStackedWidget* m_pages = nullptr;
    QLabel* m_name = nullptr;
    QLabel* m_folder = nullptr;
    QLabel* m_events = nullptr;
    QLabel* m_groups = nullptr;
    QLabel* m_tables = nullptr;
    QLabel* m_devices = nullptr;
    QLabel* m_details = nullptr;
    QPushButton* m_editEvent = nullptr;
};
