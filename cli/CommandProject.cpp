#include "CommandProject.h"

#include "CliText.h"
#include "actions/ZoUsersDocument.h"
#include "check/ZoCheckLines.h"

#include <QDir>
#include <QFile>

#include <sys/mman.h>
#include <unistd.h>

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

// The files are mapped one at a time, once the project's tree is gone, so that a large
// project is never held twice; the open has already refused what cannot be read.
void FindLinesIn(QString const& folder, std::vector<ZoFinding>& findings)
{
    for (ProjectDoc doc : {ProjectDoc::Events, ProjectDoc::TimeTables, ProjectDoc::Devices}) {
        QFile file(QDir(folder).filePath(QString::fromWCharArray(zo::project::FileName(doc))));
        if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
            continue;
        if (uchar* data = file.map(0, file.size())) {
            // The pages read are handed back as the scan goes on: a large file is never
            // resident whole beside the findings.
            std::size_t const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
            ZoFindLines(findings, doc, reinterpret_cast<char const*>(data), static_cast<std::size_t>(file.size()),
                        [data, page](std::size_t consumed) { madvise(data, consumed / page * page, MADV_DONTNEED); });
            file.unmap(data);
        }
    }
}
