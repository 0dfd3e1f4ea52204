#include "CommandProject.h"

#include "ProjectFileReader.h"
#include "actions/ZoUsersDocument.h"
#include "check/ZoCheckLines.h"

#include <QDir>

using zo::project::ProjectDoc;

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
