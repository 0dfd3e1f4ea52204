#include "StampCommand.h"

#include "CliText.h"
#include "CommandProject.h"
#include "ProjectFolder.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplateCheck.h"
#include "templates/TemplateDevices.h"
#include "templates/TemplateStamp.h"
#include "templates/TemplateStore.h"

using zo::project::ProjectDoc;
using namespace zo::templates;

namespace {

struct StampArguments {
    QString folder;
    QString templateKey;
    QString devices;
    QString group;
    bool hasGroup = false;
    bool dryRun = false;
};

// Reads the command line; false with the reason in error.
bool ParseArguments(QStringList const& arguments, StampArguments& parsed, QString& error)
{
    bool hasDevices = false;
    QStringList positional;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString const& argument = arguments[i];
        auto const value = [&](QString& out, char const* option) {
            if (i + 1 >= arguments.size()) {
                error = QString("%1 takes a value").arg(option);
                return false;
            }
            out = arguments[++i];
            return true;
        };
        if (argument == "--devices") {
            if (!value(parsed.devices, "--devices"))
                return false;
            hasDevices = true;
        } else if (argument == "--group") {
            if (!value(parsed.group, "--group"))
                return false;
            parsed.hasGroup = true;
        } else if (argument == "--dry-run") {
            parsed.dryRun = true;
        } else if (argument.startsWith("--")) {
            error = "unknown option " + argument;
            return false;
        } else {
            positional.push_back(argument);
        }
    }
    if (positional.size() != 2) {
        error = positional.size() < 2 ? "a project folder and a template are needed" : "one folder and one template only";
        return false;
    }
    if (!hasDevices || parsed.devices.isEmpty()) {
        error = "--devices PATTERN is needed";
        return false;
    }
    parsed.folder = positional[0];
    parsed.templateKey = positional[1];
    return true;
}

std::string Utf8(std::wstring_view text)
{
    return ZoToUtf8(text);
}

// One line of the preview: `PUMP1: "PUMP1 fault": [PUMP1.FAULT] = 1`.
std::string RowLine(StampRow const& row)
{
    std::string line = Utf8(row.device->Name()) + ": ";
    switch (row.skip) {
    case StampSkip::None:
        return line + "\"" + Utf8(row.name) + "\": " + Utf8(row.condition);
    case StampSkip::AlreadyStamped:
        return line + "skipped: already stamped from this template";
    case StampSkip::MissingVariables: {
        line += "skipped: lacks";
        char const* separator = " ";
        for (std::wstring const& code : row.missing) {
            line += separator + Utf8(code);
            separator = ", ";
        }
        return line;
    }
    }
    return line;
}

std::string Plural(int count, char const* one, char const* many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

// "templates: A, B" or "the project has no template".
std::string TemplateList(XmlNode* root)
{
    std::string text;
    for (XmlNode* candidate : Templates(root))
        text += (text.empty() ? "templates: \"" : ", \"") + std::string(candidate->ValueUtf8(L"name")) + "\"";
    return text.empty() ? "the project has no template" : text;
}

} // namespace

int RunStampCommand(QStringList const& arguments, std::FILE* out, std::FILE* err)
{
    StampArguments parsed;
    QString usage;
    if (!ParseArguments(arguments, parsed, usage))
        return CommandLineError("stamp", usage, kStampUsage, err);
    std::unique_ptr<ProjectFolder> project = OpenCommandProject("stamp", parsed.folder, err);
    if (!project)
        return 2;
    XmlNode* root = project->Events().Root();
    XmlNode* templateEvent = FindTemplate(root, parsed.templateKey.toStdWString());
    if (!templateEvent) {
        WriteLine(err, "zoevents stamp: no template \"" + parsed.templateKey.toStdString() + "\" in Events.zocfg; " +
                           TemplateList(root));
        return 2;
    }
    std::wstring groupId;
    if (parsed.hasGroup && (groupId = FindGroupId(root, parsed.group.toStdWString())).empty()) {
        WriteLine(err, "zoevents stamp: no event group \"" + parsed.group.toStdString() + "\"");
        return 2;
    }
    // The template's own faults are what every event stamped from it will have: said first.
    LoadUsersOf(*project);
    for (ZoFinding const& finding : CheckTemplate(*templateEvent, root, project->Devices().Root(),
                                                  project->TimeTables().Root(), project->Users().Root(),
                                                  project->Folder().toStdWString())) {
        std::wstring const field = ZoFieldText(finding);
        WriteLine(err, "zoevents stamp: " + std::string(ZoSeverityWord(finding.severity)) + ": template \"" +
                           parsed.templateKey.toStdString() + "\": " + (field.empty() ? "" : ZoCliText(field) + ": ") +
                           ZoCliText(finding.message) + " (" + std::string(finding.rule) + ")");
    }
    ZoDeviceCatalog catalog;
    catalog.LoadDevices(project->Devices().Root());
    std::vector<ZoDriver const*> const devices = FilterDevices(catalog, {parsed.devices, {}, false});
    if (devices.empty()) {
        WriteLine(err, "zoevents stamp: no device matches \"" + parsed.devices.toStdString() + "\"");
        return 1;
    }

    TemplateStamper stamper(root);
    stamper.Preview(templateEvent, devices);
    for (StampRow const& row : stamper.Rows())
        WriteLine(out, RowLine(row));
    std::fflush(out);
    int const count = stamper.EventCount();
    int const skipped = static_cast<int>(stamper.Rows().size()) - count;
    std::string const counts = Plural(count, "event", "events") + ", " + Plural(skipped, "device", "devices") + " skipped";
    if (parsed.dryRun || count == 0) {
        WriteLine(err, counts + (parsed.dryRun ? " (dry run: nothing saved)" : ""));
        return count > 0 ? 0 : 1;
    }
    // One change of both documents, saved together; a failed save leaves the files as they were.
    XmlDocument& events = project->Events();
    XmlDocument& devicesDoc = project->Devices();
    events.BeginJournal();
    devicesDoc.BeginJournal();
    stamper.Apply(project->DeviceGroups(), groupId);
    if (std::wstring error; !project->Save({ProjectDoc::Events, ProjectDoc::Devices}, error)) {
        events.UndoJournal();
        devicesDoc.UndoJournal();
        WriteLine(err, "zoevents stamp: " + ZoCliText(error));
        return 2;
    }
    events.EndJournal();
    devicesDoc.EndJournal();
    WriteLine(err, counts + ", saved");
    return 0;
}
