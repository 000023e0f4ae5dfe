#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

/// What a piece of work took, in seconds: by the clock on the wall, and of this thread's processor
/// time, which other programs on the machine do not stretch.
struct Duration
{
    double wall = 0.0;
    double processor = 0.0;
};

inline double processorTime()
{
    timespec now = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

template <typename Work>
Duration durationOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    const double processor = processorTime();
    work();
    return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
            processorTime() - processor};
}

inline double median(std::vector<Duration> durations, double Duration::*which)
{
    const auto middle = durations.begin() + static_cast<std::ptrdiff_t>(durations.size() / 2);
    std::nth_element(durations.begin(), middle, durations.end(),
                     [which](const Duration &a, const Duration &b) { return a.*which < b.*which; });
    return *middle.*which;
}

/// Times \a work and \a yardstick in turn, so that both meet the same noise of a busy machine, and
/// reports the ratio of their medians, by processor time and by the clock. \a prepare runs untimed
/// before each and gives what \a work takes.
template <typename Prepare, typename Work, typename Yardstick>
void compare(benchmark::State &state, Prepare prepare, Work work, Yardstick yardstick)
{
    std::vector<Duration> worked;
    std::vector<Duration> measured;
    for ([[maybe_unused]] auto step : state) {
        auto prepared = prepare();
        worked.push_back(durationOf([&] { work(prepared); }));
        measured.push_back(durationOf(yardstick));
        state.SetIterationTime(worked.back().wall);
    }
    constexpr double milliseconds = 1e3;
    const double mine = median(worked, &Duration::processor);
    const double theirs = median(measured, &Duration::processor);
    state.counters["ratio"] = mine / theirs;
    state.counters["ratio_by_clock"] =
        median(worked, &Duration::wall) / median(measured, &Duration::wall);
    state.counters["cpu_ms"] = mine * milliseconds;
    state.counters["yardstick_ms"] = theirs * milliseconds;
}
