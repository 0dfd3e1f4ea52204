#include "UsesCommand.h"

#include "CliText.h"
#include "CommandProject.h"
#include "FindingsOutput.h"
#include "uses/ZoWhereUsed.h"


namespace {

struct UsesArguments {
    bool json = false;
    QString folder;
    QString reference;
};

bool ParseArguments(QStringList const& arguments, UsesArguments& parsed, QString& error)
{
    QStringList plain;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString const& argument = arguments[i];
        if (argument == "--format" || argument.startsWith("--format=")) {
            QString const format = argument == "--format" ? (i + 1 < arguments.size() ? arguments[++i] : QString())
                                                          : argument.mid(9);
            if (format != "text" && format != "json") {
                error = ZoCliMessage(65014);
                return false;
            }
            parsed.json = format == "json";
        } else if (argument.startsWith("--")) {
            error = ZoCliMessage(65007, argument.toStdWString().c_str());
            return false;
        } else {
            plain.append(argument);
        }
    }
    if (plain.size() != 2) {
        error = ZoCliMessage(65019);
        return false;
    }
    parsed.folder = plain[0];
    parsed.reference = plain[1];
    return true;
}

} // namespace

int RunUsesCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    UsesArguments parsed;
    QString usage;
    if (!ParseArguments(arguments, parsed, usage))
        return CommandLineError("uses", usage, kUsesUsage, err);
    std::unique_ptr<ProjectFolder> project = OpenCommandProject("uses", parsed.folder, err);
    if (!project)
        return 2;
    LoadUsersOf(*project);
    ZoUseDocs const docs{project->Events().Root(), project->TimeTables().Root(), project->Devices().Root(),
                         project->Users().Root()};
    ZoUseTarget target;
    std::wstring error;
    if (!ZoReadUseTarget(parsed.reference.toStdWString(), docs, target, error)) {
        WriteLine(err, "zoevents uses: " + ZoCliText(error));
        return 2;
    }
    std::vector<ZoFinding> uses = ZoFindUses(docs, target);
    QString const folder = project->Folder();
    project.reset();
    FindLinesIn(folder, uses);
    FindingsOutput output(out, parsed.json, folder);
    output.Write(uses);
    output.Finish();
    if (!parsed.json)
        WriteLine(err, ZoCliMessage(uses.size() == 1 ? 64747 : 64748, static_cast<int>(uses.size())).toStdString());
    return uses.empty() ? 1 : 0;
}
