// zoevents: the project editor's command-line program, for build servers and scripts.
// Subcommands:
//   check   every fault of a project folder (docs/check.md)
//   when    when an event may fire, and which events may fire at a moment (docs/timeline.md)
#include "CheckCommand.h"
#include "CliText.h"
#include "WhenCommand.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

constexpr char const* kUsage = "usage: zoevents COMMAND [OPTIONS] FOLDER\n"
                               "commands:\n"
                               "  check   report every fault of a project folder (see docs/check.md)\n"
                               "  when    when an event may fire (see docs/timeline.md)\n"
                               "run 'zoevents COMMAND --help' for the options of a command";

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName("zoevents");
    QCoreApplication::setApplicationVersion(ZO_VERSION);
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    if (arguments.isEmpty() || arguments.first() == "--help" || arguments.first() == "-h") {
        WriteLine(arguments.isEmpty() ? stderr : stdout, kUsage);
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
    if (command == "when") {
        if (arguments.contains("--help") || arguments.contains("-h")) {
            WriteLine(stdout, kWhenUsage);
            return 0;
        }
        return RunWhenCommand(arguments, stdout, stderr);
    }
    WriteLine(stderr, "zoevents: unknown command '" + command.toStdString() + "'");
    WriteLine(stderr, kUsage);
    return 2;
}
