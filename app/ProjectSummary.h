#pragma once
#include <QString>

class ProjectFolder;

// What the main window shows of an open project.
struct ProjectSummary {
    QString name;
    QString folder;
    int events = 0;
    int eventGroups = 0;
    int timeTables = 0;     // day, week and calendar programs together
    int eventDevices = 0;   // `device` entries of type "R$EVE", in every nested device group
    int catalogDevices = 0; // `driver` entries of the device catalog
    int screens = 0;        // "*.*.XSCN" files of the folder
    int reports = 0;        // "*.*.xrpt" files of the folder
    int users = 0;
};

ProjectSummary SummarizeProject(ProjectFolder& project);

// The `user` elements of a users file, counted as its text goes by without building a
// tree; 0 when the file cannot be read or is not well-formed.
int CountUsersInFile(QString const& path);
