// `zoevents check` as a build server runs it: the real program, started on a generated
// project folder, load included, its output thrown away. Beside it in the same run:
// BM_JourneyOpenProject (the editor's open of the same folder) and BM_JourneyPeakMemory
// (what the editor holds for it).
#include "ProjectFolderGenerator.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

using namespace zo::bench;

namespace {

constexpr double kMB = 1e6;

struct ProgramRun {
    int status = -1;       // the exit status; -1 when it did not run or did not exit
    double peakBytes = 0;  // the program's peak resident set
};

// Runs `zoevents check FOLDER` with its output going to /dev/null.
ProgramRun RunCheck(std::string const& folder)
{
    ProgramRun run;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string program = ZO_CLI_PROGRAM;
    std::string command = "check";
    std::string path = folder;
    char* argv[] = {program.data(), command.data(), path.data(), nullptr};
    pid_t pid = 0;
    int const spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return run;
    int status = 0;
    rusage usage{};
    if (wait4(pid, &status, 0, &usage) == pid && WIFEXITED(status)) {
        run.status = WEXITSTATUS(status);
        run.peakBytes = static_cast<double>(usage.ru_maxrss) * 1024.0;
    }
    return run;
}

void BM_CheckCommandProcess(benchmark::State& state)
{
    GeneratedProjectFolder const& folder = SharedProjectFolder(static_cast<int>(state.range(0)));
    std::string const path = folder.Path().toStdString();
    double peak = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        ProgramRun const run = RunCheck(path);
        state.SetIterationTime(static_cast<double>(timer.nsecsElapsed()) / 1e9);
        // The generated project has warnings and no errors: 0 is its only right status.
        if (run.status != 0) {
            state.SkipWithError(("zoevents check ended with status " + std::to_string(run.status)).c_str());
            break;
        }
        peak = std::max(peak, run.peakBytes);
    }
    state.counters["peak_RSS_MB"] = peak / kMB;
    state.counters["peak_RSS_x_file"] = folder.FileBytes() > 0 ? peak / folder.FileBytes() : 0;
}

} // namespace

// 1,000,000 events once: the program takes tens of seconds there.
BENCHMARK(BM_CheckCommandProcess)->Arg(10000)->Arg(100000)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CheckCommandProcess)->Arg(1000000)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
