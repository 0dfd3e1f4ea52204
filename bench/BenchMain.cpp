// The benchmarks' main.
#include "BenchApp.h"
#include "BenchFixtures.h"

int main(int argc, char** argv)
{
    // Before anything else loads a document, so that the memory of a loaded document is
    // seen on a process that has not cached blocks of closed ones.
    return zo::bench::RunBenchmarks(argc, argv, [] { zo::bench::MeasureFirstLoad(100000); });
}
