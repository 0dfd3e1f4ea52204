#include "CheckCommand.h"

#include "CliText.h"
#include "CommandProject.h"
#include "FindingsOutput.h"
#include "check/ZoProjectChecker.h"

#include <chrono>
#include <optional>

namespace {

// Events checked between two writes of their findings.
constexpr std::size_t kEventsPerStep = 1024;

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
                error = ZoCliMessage(65014);
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
                error = ZoCliMessage(65015);
                return false;
            }
        } else if (argument.startsWith("--")) {
            error = ZoCliMessage(65007, argument.toStdWString().c_str());
            return false;
        } else if (parsed.folder.isEmpty()) {
            parsed.folder = argument;
        } else {
            error = ZoCliMessage(65008);
            return false;
        }
    }
    if (parsed.folder.isEmpty()) {
        error = ZoCliMessage(65009);
        return false;
    }
    return true;
}

} // namespace

int RunCheckCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    CheckArguments parsed;
    QString usage;
    if (!ParseArguments(arguments, parsed, usage))
        return CommandLineError("check", usage, kCheckUsage, err);
    std::unique_ptr<ProjectFolder> project = OpenCommandProject("check", parsed.folder, err);
    if (!project)
        return 2;
    // Most findings are about an event: their lines are found on the second processor while
    // this one checks. Not before the open, which may finish a save that was cut short and
    // so put another file in place.
    std::future<ZoChildLines> eventLines = StartFindingEventLines(project->Folder());
    LoadUsersOf(*project);
    ZoProjectDocs docs;
    docs.events = project->Events().Root();
    docs.timeTables = project->TimeTables().Root();
    docs.devices = project->Devices().Root();
    docs.users = project->Users().Root();
    docs.folder = project->Folder().toStdWString();
    ZoCheckOptions options;
    options.from = parsed.from;
    QString const folder = project->Folder();
    FindingsOutput output(out, parsed.json, folder);
    // The events' findings are written a step at a time, as soon as their lines are known,
    // so that a large project's findings are never all held at once. The last step's (the
    // project-wide ones, also in the other files) wait for the tree to go.
    std::vector<ZoFinding> findings;
    std::optional<ZoChildLines> lines;
    {
        ZoProjectChecker checker(docs, options);
        checker.BeginProject();
        while (!checker.StepProject(kEventsPerStep, findings)) {
            if (!lines && eventLines.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
                lines = eventLines.get();
            if (lines) {
                ZoApplyChildLines(findings, zo::project::ProjectDoc::Events, *lines);
                output.Write(findings);
                findings.clear();
            }
        }
    }
    project.reset();
    if (!lines)
        lines = eventLines.get();
    ZoApplyChildLines(findings, zo::project::ProjectDoc::Events, *lines);
    FindLinesIn(folder, findings);
    output.Write(findings);
    ZoCheckCounts const counts = output.Finish();
    if (!parsed.json)
        WriteLine(err, ZoCliCounts(counts));
    if (counts.errors > 0 || (parsed.warningsAsErrors && counts.warnings > 0))
        return 1;
    return 0;
}
