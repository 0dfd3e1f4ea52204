#pragma once
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>

// A benchmark measured against a floor run as often in the same process: our code is timed
// in the benchmark loop, the floor as many rounds afterwards, and both are reported per
// round with their ratio.
namespace zo::bench {

// Milliseconds one call of step takes.
template <class Step>
double MillisecondsOf(Step&& step)
{
    auto const start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Milliseconds that `rounds` calls of step take together.
template <class Step>
double MillisecondsOfRounds(std::int64_t rounds, Step&& step)
{
    double total = 0;
    for (std::int64_t i = 0; i < rounds; ++i)
        total += MillisecondsOf(step);
    return total;
}

// Counters oursName and floorName (milliseconds per round) and ratioName (ours / floor).
inline void ReportAgainstFloor(benchmark::State& state, std::int64_t rounds, char const* oursName, double ours,
                               char const* floorName, double floor, char const* ratioName)
{
    double const perRound = rounds > 0 ? 1.0 / static_cast<double>(rounds) : 0;
    state.counters[oursName] = ours * perRound;
    state.counters[floorName] = floor * perRound;
    state.counters[ratioName] = floor > 0 ? ours / floor : 0;
}

} // namespace zo::bench
