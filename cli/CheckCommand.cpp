#include "CheckCommand.h"

#include "CliText.h"
#include "ProjectFileReader.h"
#include "ProjectFolder.h"
#include "actions/ZoUsersDocument.h"
#include "check/ZoCheckLines.h"
#include "check/ZoCheckReport.h"
#include "check/ZoProjectChecker.h"

#include <QDir>
#include <QFile>

#include <sys/mman.h>
#include <unistd.h>

using zo::project::ProjectDoc;

namespace {

struct CheckArguments {
    bool json = false;
    bool warningsAsErrors = false;
    QDate from;
    QString folder;
};

// Reads the command line; false with the reason in error.
bool ParseArguments(QStringList const& arguments, CheckArguments& parsed, QString& error)
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString const& argument = arguments[i];
        auto const value = [&](QString& out) {
            if (i + 1 >= arguments.size())
                return false;
            out = arguments[++i];
            return true;
        };
        QString text;
        if (argument == "--format") {
            if (!value(text) || (text != "text" && text != "json")) {
                error = "--format takes text or json";
                return false;
            }
            parsed.json = text == "json";
        } else if (argument.startsWith("--format=")) {
            QStringList const rest{"--format", argument.mid(9)};
            if (!ParseArguments(rest, parsed, error))
                return false;
        } else if (argument == "--warnings-as-errors") {
            parsed.warningsAsErrors = true;
        } else if (argument == "--from") {
            if (!value(text) || !(parsed.from = QDate::fromString(text, Qt::ISODate)).isValid()) {
                error = "--from takes a date written YYYY-MM-DD";
                return false;
            }
        } else if (argument.startsWith("--")) {
            error = "unknown option " + argument;
            return false;
        } else if (parsed.folder.isEmpty()) {
            parsed.folder = argument;
        } else {
            error = "one project folder only";
            return false;
        }
    }
    if (parsed.folder.isEmpty()) {
        error = "no project folder given";
        return false;
    }
    return true;
}

// The lines of the findings, from the files as they are on disk now (mapped one at a time,
// once the project's tree is gone, so that a large project is never held twice; the open
// has already refused what cannot be read).
void FindLines(QString const& folder, std::vector<ZoFinding>& findings)
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

} // namespace

int RunCheckCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    CheckArguments parsed;
    QString usage;
    if (!ParseArguments(arguments, parsed, usage)) {
        WriteLine(err, "zoevents check: " + usage.toStdString());
        WriteLine(err, kCheckUsage);
        return 2;
    }
    std::wstring error;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(parsed.folder, error);
    if (!project) {
        WriteLine(err, "zoevents check: " + ZoCliText(error));
        return 2;
    }
    ZoCliLoadUsers(*project);
    ZoProjectDocs docs;
    docs.events = project->Events().Root();
    docs.timeTables = project->TimeTables().Root();
    docs.devices = project->Devices().Root();
    docs.users = project->Users().Root();
    docs.folder = project->Folder().toStdWString();
    ZoCheckOptions options;
    options.from = parsed.from;
    std::vector<ZoFinding> findings = ZoCheckProject(docs, options);
    QString const folder = project->Folder();
    project.reset();
    FindLines(folder, findings);

    if (parsed.json) {
        std::string const json = ZoFindingsJson(QDir::toNativeSeparators(folder).toStdWString(), findings);
        std::fwrite(json.data(), 1, json.size(), out);
    } else {
        for (ZoFinding const& finding : findings)
            WriteLine(out, ZoFindingLine(finding));
    }
    std::fflush(out);
    ZoCheckCounts const counts = ZoCountFindings(findings);
    if (!parsed.json)
        WriteLine(err, ZoCliCounts(counts));
    if (counts.errors > 0 || (parsed.warningsAsErrors && counts.warnings > 0))
        return 1;
    return 0;
}
