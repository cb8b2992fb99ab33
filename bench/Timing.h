// Medians of repeated runs, and the table in which they are printed side by side.
#pragma once

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace bench {

inline double MedianOf(std::vector<double> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// Milliseconds since some moment, the same in all processes.
inline double Now() {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// Duration of one call, in milliseconds.
template <typename Work>
double Time(Work work) {
    const double start = Now();
    work();
    return Now() - start;
}

/// Median duration of `runs` calls, in milliseconds. `prepare` runs before each call and is not timed.
template <typename Prepare, typename Work>
double Median(int runs, Prepare prepare, Work work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        prepare();
        times.push_back(Time(work));
    }
    return MedianOf(std::move(times));
}

template <typename Work>
double Median(int runs, Work work) {
    return Median(
        runs, [] {}, work);
}

} // namespace bench
