#pragma once
// The main of both benchmark binaries: the dialogs and the list's icons need a GUI
// application, which runs offscreen unless a platform is chosen.
#include <QApplication>
#include <benchmark/benchmark.h>

#include <functional>

namespace zo::bench {

// Runs the benchmarks the command line asks for; `first` runs before any of them.
inline int RunBenchmarks(int argc, char** argv, std::function<void()> const& first = {})
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    if (first)
        first();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace zo::bench
