#pragma once
#include <benchmark/benchmark.h>

// The project sizes of the journey: 10,000 and 100,000 events, five iterations each, and
// 1,000,000 events, three iterations (a step there can take seconds). The figures are the
// steps' own time, measured by hand around each step.
#define ZO_JOURNEY_BENCHMARK(function)                                                                  \
    BENCHMARK(function)->Arg(10000)->Arg(100000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond); \
    BENCHMARK(function)->Arg(1000000)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond)
