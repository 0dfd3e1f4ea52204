// The benchmarks' main: the events list model may load icons, which needs a GUI
// application; it runs offscreen unless a platform is chosen.
#include "BenchFixtures.h"

#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    // Before anything else loads a document, so that the memory of a loaded document is
    // seen on a process that has not cached blocks of closed ones.
    zo::bench::MeasureFirstLoad(100000);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
