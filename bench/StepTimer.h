#pragma once
#include <benchmark/benchmark.h>

#include <chrono>

// Times one step of a benchmark iteration by hand. Between BeginIteration and EndIteration
// the library's timer (and so the CPU time it reports) runs only between Start and Stop,
// and the iteration's manual time is the wall time between them. Start and Stop may be
// called from inside scripted dialogs; a second Start or Stop does nothing.
namespace zo::bench {

class StepTimer {
public:
    explicit StepTimer(benchmark::State& state) : m_state(state) {}

    // First thing in an iteration: what follows is set-up, not timed.
    void BeginIteration()
    {
        m_state.PauseTiming();
        m_seconds = 0;
        m_running = false;
        m_measured = false;
    }
    void Start()
    {
        if (m_running || m_measured)
            return;
        m_state.ResumeTiming();
        m_running = true;
        m_start = Clock::now();
    }
    void Stop()
    {
        if (!m_running)
            return;
        m_seconds = std::chrono::duration<double>(Clock::now() - m_start).count();
        m_state.PauseTiming();
        m_running = false;
        m_measured = true;
    }
    // Whether a Start and Stop pair was seen in this iteration.
    bool Measured() const { return m_measured; }
    double Seconds() const { return m_seconds; }
    // Last thing in an iteration: records the step's time and hands the timer back to the loop.
    void EndIteration()
    {
        Stop();
        m_state.SetIterationTime(m_seconds);
        m_state.ResumeTiming();
    }

private:
    using Clock = std::chrono::steady_clock;
    benchmark::State& m_state;
    Clock::time_point m_start;
    double m_seconds = 0;
    bool m_running = false;
    bool m_measured = false;
};

} // namespace zo::bench
