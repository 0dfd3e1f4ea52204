// The journey benchmarks' main.
#include "BenchApp.h"

int main(int argc, char** argv)
{
    return zo::bench::RunBenchmarks(argc, argv);
}
