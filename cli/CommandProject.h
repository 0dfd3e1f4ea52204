#pragma once
#include "ProjectFolder.h"
#include "check/ZoCheckFinding.h"
#include "check/ZoCheckLines.h"

#include <QString>

#include <cstdio>
#include <future>
#include <memory>
#include <vector>

// What the program's commands share around a project folder.

// Writes "zoevents COMMAND: problem" and the command's usage to err; returns the exit status 2.
int CommandLineError(char const* command, QString const& problem, char const* usage, std::FILE* err);
// Opens the project folder of a command; null after writing "zoevents COMMAND: reason" to err.
std::unique_ptr<ProjectFolder> OpenCommandProject(char const* command, QString const& folder, std::FILE* err);

// Loads the users file as the mail and SMS editors read it; a missing or broken file
// counts as no users.
void LoadUsersOf(ProjectFolder& project);

// The lines of the findings that have none yet, from the files as they are on disk now
// (read one at a time, once the project's tree is gone, so that a large project is never
// held twice).
void FindLinesIn(QString const& folder, std::vector<ZoFinding>& findings);
// The lines of the events file's events and groups, found on another thread while the
// project is checked (ZoApplyChildLines then gives them to the findings).
std::future<ZoChildLines> StartFindingEventLines(QString const& folder);
