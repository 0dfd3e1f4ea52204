#include "SheetCommands.h"

#include "CliText.h"
#include "ProjectFolder.h"
#include "actions/ZoUsersDocument.h"
#include "spreadsheet/EventsExport.h"
#include "spreadsheet/EventsImport.h"
#include "spreadsheet/SheetFile.h"

#include <memory>

namespace {

struct SheetArguments {
    QStringList positional;
    QString output;
    bool dryRun = false;
    bool deleteMissing = false;
    bool createGroups = false;
};

// Reads the command line; false with the reason in error.
bool ParseArguments(QStringList const& arguments, bool import, SheetArguments& parsed, QString& error)
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString const& argument = arguments[i];
        if (!import && (argument == "-o" || argument == "--output")) {
            if (i + 1 >= arguments.size()) {
                error = ZoCliMessage(65016, argument.toStdWString().c_str());
                return false;
            }
            parsed.output = arguments[++i];
        } else if (import && argument == "--dry-run") {
            parsed.dryRun = true;
        } else if (import && argument == "--delete-missing") {
            parsed.deleteMissing = true;
        } else if (import && argument == "--create-groups") {
            parsed.createGroups = true;
        } else if (argument.startsWith("-") && argument != "-") {
            error = ZoCliMessage(65007, argument.toStdWString().c_str());
            return false;
        } else {
            parsed.positional.push_back(argument);
        }
    }
    qsizetype const expected = import ? 2 : 1;
    if (parsed.positional.size() != expected) {
        error = ZoCliMessage(import ? 65017 : 65018);
        return false;
    }
    return true;
}

void WriteWide(std::FILE* file, std::wstring const& text)
{
    WriteLine(file, ZoCliText(text));
}

// Reads the command line and opens the project folder; null (with the reason on err)
// when either fails.
std::unique_ptr<ProjectFolder> Start(QStringList const& arguments, bool import, SheetArguments& parsed,
                                     std::FILE* err)
{
    std::string const command = import ? "zoevents import: " : "zoevents export: ";
    QString usage;
    if (!ParseArguments(arguments, import, parsed, usage)) {
        WriteLine(err, command + usage.toStdString());
        WriteLine(err, import ? kImportUsage : kExportUsage);
        return nullptr;
    }
    std::wstring error;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(parsed.positional.front(), error);
    if (!project)
        WriteLine(err, command + ZoCliText(error));
    return project;
}

} // namespace

int RunExportCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    SheetArguments parsed;
    std::unique_ptr<ProjectFolder> const project = Start(arguments, false, parsed, err);
    if (!project)
        return 2;
    std::wstring error;
    std::string sheet;
    std::size_t const count = ZoExportEvents(project->Events().Root(), project->TimeTables().Root(), sheet);
    if (parsed.output.isEmpty() || parsed.output == "-") {
        std::fwrite(sheet.data(), 1, sheet.size(), out);
        std::fflush(out);
    } else if (!ZoWriteSheetFile(parsed.output, sheet, error)) {
        WriteLine(err, "zoevents export: " + ZoCliText(error));
        return 2;
    }
    WriteLine(err, ZoCliMessage(count == 1 ? 65024 : 65025, static_cast<int>(count)).toStdString());
    return 0;
}

int RunImportCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    SheetArguments parsed;
    std::unique_ptr<ProjectFolder> const project = Start(arguments, true, parsed, err);
    if (!project)
        return 2;
    std::wstring error;
    std::string sheet;
    if (!ZoReadSheetFile(parsed.positional[1], sheet, error)) {
        WriteLine(err, "zoevents import: " + ZoCliText(error));
        return 2;
    }
    // The users, for the check of the mail and SMS actions; a missing file holds none.
    XmlDocument& users = project->Users();
    if (!ZoLoadUsersFile(users, project->FilePath(zo::project::ProjectDoc::Users).toStdWString()))
        users.Create(kUsersRootTag);

    ZoImportTarget target;
    target.events = &project->Events();
    target.timeTables = &project->TimeTables();
    target.devices = &project->Devices();
    target.users = users.Root();
    target.folder = project->Folder().toStdWString();
    ZoImportOptions options;
    options.deleteMissing = parsed.deleteMissing;
    options.createGroups = parsed.createGroups;
    ZoImportPlan plan = ZoPlanImport(sheet, target, options);
    sheet = std::string(); // the plan holds what it needs
    ZoCheckImport(plan, target);
    for (std::wstring const& line : ZoImportReport(plan))
        WriteWide(out, line);
    std::fflush(out);
    if (plan.Refused()) {
        WriteLine(err, "zoevents import: "
                           + ZoCliMessage(plan.faults.size() == 1 ? 65026 : 65027, static_cast<int>(plan.faults.size()))
                                 .toStdString());
        return 1;
    }
    if (parsed.dryRun || !plan.ChangesAnything()) {
        WriteLine(err, ZoCliMessage(parsed.dryRun ? 65028 : 65029).toStdString());
        return 0;
    }
    ZoApplyImport(plan, target);
    if (!project->Save({zo::project::ProjectDoc::Events, zo::project::ProjectDoc::Devices}, error)) {
        WriteLine(err, "zoevents import: " + ZoCliText(error));
        return 2;
    }
    WriteLine(err, ZoCliMessage(65030).toStdString());
    return 0;
}
