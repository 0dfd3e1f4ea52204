// zoevents: the project editor's command-line program, for build servers and scripts.
// Subcommands:
//   check   every fault of a project folder (docs/check.md)
//   uses    every place that uses a device, variable, event, time table... (docs/uses.md)
//   rename  a device, a variable code or an event, with every reference to it
//   export, import   the events as a spreadsheet (docs/spreadsheet.md)
//   stamp   events from a template over devices (docs/templates.md)
//   when    when an event may fire, and which events may fire at a moment (docs/timeline.md)
#include "CheckCommand.h"
#include "CliText.h"
#include "RenameCommand.h"
#include "SheetCommands.h"
#include "StampCommand.h"
#include "UsesCommand.h"
#include "WhenCommand.h"
#include "platform/tools/ZoLanguage.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

// "%s": the languages that have a text table.
constexpr char const* kUsage = "usage: zoevents [--lang %s] COMMAND [OPTIONS] FOLDER\n"
                               "commands:\n"
                               "  check   report every fault of a project folder (see docs/check.md)\n"
                               "  uses    list every place that uses a reference (see docs/uses.md)\n"
                               "  rename  rename a device, a variable code or an event everywhere\n"
                               "  export  write the events as a spreadsheet (see docs/spreadsheet.md)\n"
                               "  import  apply an edited spreadsheet of the events, with a preview\n"
                               "  stamp   make events from a template over devices (see docs/templates.md)\n"
                               "  when    when an event may fire (see docs/timeline.md)\n"
                               "run 'zoevents COMMAND --help' for the options of a command";

std::string Usage()
{
    std::string usage = kUsage;
    usage.replace(usage.find("%s"), 2, ZoTextLanguages().join(u'|').toStdString());
    return usage;
}

} // namespace

int main(int argc, char* argv[])
{
    ZoApplyLanguage(ZoTakeLanguageOption(argc, argv));
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName("zoevents");
    QCoreApplication::setApplicationVersion(ZO_VERSION);
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    if (arguments.isEmpty() || arguments.first() == "--help" || arguments.first() == "-h") {
        WriteLine(arguments.isEmpty() ? stderr : stdout, Usage());
        return arguments.isEmpty() ? 2 : 0;
    }
    if (arguments.first() == "--version") {
        WriteLine(stdout, std::string("zoevents ") + ZO_VERSION);
        return 0;
    }
    QString const command = arguments.takeFirst();
    if (command == "check") {
        if (arguments.contains("--help") || arguments.contains("-h")) {
            WriteLine(stdout, kCheckUsage);
            return 0;
        }
        return RunCheckCommand(arguments, stdout, stderr);
    }
    struct Command {
        char const* name;
        char const* usage;
        int (*run)(QStringList const&, std::FILE*, std::FILE*);
    };
    for (Command const& other : {Command{"uses", kUsesUsage, RunUsesCommand},
                                 Command{"rename", kRenameUsage, RunRenameCommand},
                                 Command{"export", kExportUsage, RunExportCommand},
                                 Command{"import", kImportUsage, RunImportCommand},
                                 Command{"stamp", kStampUsage, RunStampCommand},
                                 Command{"when", kWhenUsage, RunWhenCommand}}) {
        if (command != QLatin1String(other.name))
            continue;
        if (arguments.contains("--help") || arguments.contains("-h")) {
            WriteLine(stdout, other.usage);
            return 0;
        }
        return other.run(arguments, stdout, stderr);
    }
    WriteLine(stderr, "zoevents: " + ZoCliMessage(65006, command.toStdWString().c_str()).toStdString());
    WriteLine(stderr, Usage());
    return 2;
}
