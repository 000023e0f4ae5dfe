#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

/// How long \a work takes, in seconds.
template <typename Work>
double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Times \a work and \a yardstick in turn, so that both meet the same noise of a busy machine, and
/// reports the ratio of their medians. \a prepare runs untimed before each and gives what \a work
/// takes.
template <typename Prepare, typename Work, typename Yardstick>
void compare(benchmark::State &state, Prepare prepare, Work work, Yardstick yardstick)
{
    std::vector<double> worked;
    std::vector<double> measured;
    for ([[maybe_unused]] auto step : state) {
        auto prepared = prepare();
        worked.push_back(secondsOf([&] { work(prepared); }));
        measured.push_back(secondsOf(yardstick));
        state.SetIterationTime(worked.back());
    }
    constexpr double milliseconds = 1e3;
    state.counters["ratio"] = median(worked) / median(measured);
    state.counters["median_ms"] = median(worked) * milliseconds;
    state.counters["yardstick_ms"] = median(measured) * milliseconds;
}
