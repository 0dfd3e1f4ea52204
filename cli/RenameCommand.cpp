#include "RenameCommand.h"

#include "CliText.h"
#include "CommandProject.h"
#include "check/ZoCheckReport.h"
#include "platform/tools/ZoUtf.h"
#include "uses/ZoRename.h"

#include <QDir>

using zo::project::ProjectDoc;

namespace {

struct RenameArguments {
    ZoRenameRequest request;
    bool dryRun = false;
    bool kindGiven = false;
    QString folder;
};

bool ParseArguments(QStringList const& arguments, RenameArguments& parsed, QString& error)
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString const& argument = arguments[i];
        if (argument == "--device" || argument == "--variable" || argument == "--event") {
            if (parsed.kindGiven || i + 2 >= arguments.size()) {
                error = parsed.kindGiven ? ZoCliMessage(65011) : ZoCliMessage(65010, argument.toStdWString().c_str());
                return false;
            }
            parsed.kindGiven = true;
            ZoRenameRequest& request = parsed.request;
            request.oldName = arguments[++i].toStdWString();
            request.newName = arguments[++i].toStdWString();
            request.kind = argument == "--device" ? ZoRenameKind::Device
                : argument == "--event"          ? ZoRenameKind::Event
                                                 : ZoRenameKind::Variable;
            if (request.kind == ZoRenameKind::Variable) {
                std::size_t const point = request.oldName.rfind(L'.');
                if (point == std::wstring::npos || point == 0 || point + 1 == request.oldName.size()) {
                    error = ZoCliMessage(65012);
                    return false;
                }
                request.device = request.oldName.substr(0, point);
                request.oldName.erase(0, point + 1);
            }
        } else if (argument == "--dry-run") {
            parsed.dryRun = true;
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
    if (parsed.folder.isEmpty() || !parsed.kindGiven) {
        error = ZoCliMessage(parsed.folder.isEmpty() ? 65009 : 65013);
        return false;
    }
    return true;
}

// "Events.zocfg:12: event "X": condition: BEFORE -> AFTER (2)".
std::string ChangeLine(ZoFinding const& place, ZoRenameChange const& change)
{
    std::string line = ZoToUtf8(zo::project::FileName(place.file));
    if (place.line > 0)
        line += ":" + std::to_string(place.line);
    line += ": " + ZoCliText(ZoSubjectText(place));
    if (std::wstring const field = ZoFieldText(place); !field.empty())
        line += ": " + ZoCliText(field);
    return line + ": " + ZoCliText(change.before) + " -> " + ZoCliText(change.after) + " (" +
           std::to_string(change.count) + ")";
}

} // namespace

int RunRenameCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    RenameArguments parsed;
    QString usage;
    if (!ParseArguments(arguments, parsed, usage))
        return CommandLineError("rename", usage, kRenameUsage, err);
    std::unique_ptr<ProjectFolder> project = OpenCommandProject("rename", parsed.folder, err);
    if (!project)
        return 2;
    ZoRenamePlan plan;
    std::wstring error;
    if (!ZoPlanRename(project->Events(), project->Devices(), parsed.request, plan, error)) {
        WriteLine(err, "zoevents rename: " + ZoCliText(error));
        return 1;
    }
    // The lines are those of the files as they are before the rename.
    std::vector<ZoFinding> places;
    places.reserve(plan.changes.size());
    for (ZoRenameChange const& change : plan.changes)
        places.push_back(change.place);
    FindLinesIn(project->Folder(), places);
    for (std::size_t i = 0; i < places.size(); ++i)
        WriteLine(out, ChangeLine(places[i], plan.changes[i]));
    std::fflush(out);
    std::wstring const summary = ZoCliMessage(plan.references == 1 ? 65020 : 65021, static_cast<int>(plan.references),
                                              static_cast<int>(plan.changes.size())).toStdWString();
    if (parsed.dryRun) {
        WriteLine(err, ZoCliMessage(65022, summary.c_str()).toStdString());
        return 0;
    }
    std::vector<ProjectDoc> touched;
    if (plan.touchesEvents)
        touched.push_back(ProjectDoc::Events);
    if (plan.touchesDevices)
        touched.push_back(ProjectDoc::Devices);
    ZoApplyRename(plan.changes);
    if (!project->Save(touched, error)) {
        WriteLine(err, "zoevents rename: " + ZoCliText(error));
        return 2;
    }
    WriteLine(err, ZoCliMessage(65023, summary.c_str()).toStdString());
    return 0;
}
