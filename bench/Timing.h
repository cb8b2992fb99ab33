// Medians of repeated runs, and the table in which they are printed side by side.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

/// Median duration of `runs` calls, in milliseconds. `prepare` runs before each call and is not timed.
template <typename Prepare, typename Work>
double Median(int runs, Prepare prepare, Work work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        prepare();
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
        times.push_back(spent.count());
    }
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    return times[static_cast<size_t>(runs / 2)];
}

template <typename Work>
double Median(int runs, Work work) {
    return Median(
        runs, [] {}, work);
}

} // namespace bench
