#pragma once
#include "JourneyScript.h"
#include "StepTimer.h"

#include <benchmark/benchmark.h>

#include <string>

namespace zo::bench {

// After an iteration (its timer ended): marks the benchmark failed, with the reason, when the
// script recorded a failure, left a dialog step unused or the step was never timed. Call
// `break` on false.
inline bool WentAsScripted(benchmark::State& state, JourneyScript const& script, StepTimer const& timer)
{
    std::string why = script.Failure();
    if (why.empty() && script.HasUnusedSteps())
        why = "a scripted dialog did not appear";
    if (why.empty() && !timer.Measured())
        why = "the timed step did not happen";
    if (why.empty())
        return true;
    state.SkipWithError(why.c_str());
    return false;
}

} // namespace zo::bench
