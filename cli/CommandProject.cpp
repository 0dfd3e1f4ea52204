#include "CommandProject.h"

#include "CliText.h"
#include "ProjectFileReader.h"
#include "actions/ZoUsersDocument.h"
#include "check/ZoCheckLines.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
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

namespace {

// Calls read(data, size, consumed) on the mapped file of doc in folder; the pages read are
// handed back as the scan goes on, so that a large file is never resident whole beside the
// project or the findings. Only a regular file no larger than a project file may be is
// read, and opening it never waits (a pipe, a device), whatever was put in the folder since
// the open looked. False when the file is not read.
template <class Read>
bool ReadMapped(QString const& folder, ProjectDoc doc, Read const& read)
{
    QByteArray const path = QFile::encodeName(QDir(folder).filePath(QString::fromWCharArray(zo::project::FileName(doc))));
    int const descriptor = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        return false;
    struct stat status {};
    bool const readable = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0
        && status.st_size <= MaxProjectFileBytes();
    std::size_t const size = readable ? static_cast<std::size_t>(status.st_size) : 0;
    void* const data = readable ? mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0) : MAP_FAILED;
    ::close(descriptor);
    if (data == MAP_FAILED)
        return false;
    std::size_t const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    read(static_cast<char const*>(data), size,
         [data, page](std::size_t consumed) { madvise(data, consumed / page * page, MADV_DONTNEED); });
    munmap(data, size);
    return true;
}

} // namespace

std::future<ZoChildLines> StartFindingEventLines(QString const& folder)
{
    return std::async(std::launch::async, [folder] {
        ZoChildLines lines;
        ReadMapped(folder, ProjectDoc::Events, [&lines](char const* data, std::size_t size, auto const& consumed) {
            lines = ZoFindChildLines(data, size, consumed);
        });
        return lines;
    });
}

// The files are mapped one at a time, once the project's tree is gone, so that a large
// project is never held twice; the open has already refused what cannot be read. Findings
// that have a line already keep it.
void FindLinesIn(QString const& folder, std::vector<ZoFinding>& findings)
{
    for (ProjectDoc doc : {ProjectDoc::Events, ProjectDoc::TimeTables, ProjectDoc::Devices})
        ReadMapped(folder, doc, [&](char const* data, std::size_t size, auto const& consumed) {
            ZoFindLines(findings, doc, data, size, consumed);
        });
}
