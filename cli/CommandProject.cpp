#include "CommandProject.h"

#include "CliText.h"
#include "ProjectFileReader.h"
#include "actions/ZoUsersDocument.h"
#include "check/ZoCheckLines.h"

#include <QDir>

using zo::project::ProjectDoc;

int CommandLineError(char const* command, QString const& problem, char const* usage, std::FILE* err)
{
    WriteLine(err, std::string("zoevents ") + command + ": " + problem.toStdString());
    WriteLine(err, usage);
    return 2;
}

std::unique_ptr<ProjectFolder> OpenCommandProject(char const* command, QString const& folder, std::FILE* err)
{
    std::wstring error;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(folder, error);
    if (!project)
        WriteLine(err, std::string("zoevents ") + command + ": " + ZoCliText(error));
    return project;
}

void LoadUsersOf(ProjectFolder& project)
{
    XmlDocument& users = project.Users();
    if (!ZoLoadUsersFile(users, project.FilePath(ProjectDoc::Users).toStdWString()))
        users.Create(kUsersRootTag);
}

void FindLinesIn(QString const& folder, std::vector<ZoFinding>& findings)
{
    for (ProjectDoc doc : {ProjectDoc::Events, ProjectDoc::TimeTables, ProjectDoc::Devices}) {
        ProjectFileBytes bytes;
        std::wstring reason;
        QString const path = QDir(folder).filePath(QString::fromWCharArray(zo::project::FileName(doc)));
        if (ReadProjectFile(path, bytes, reason) == ProjectFileRead::Read)
            ZoFindLines(findings, doc, bytes.Data(), bytes.Size());
    }
}
