// Whether a run goes on: what it does at the moment, and its end when a step does not end.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

/// What is being done: written often, put into words only for a report.
struct Step {
    const char* what = "the start"; ///< outlives the step
    uint64_t number = 0;
    std::array<long long, 4> details{}; ///< `what` names them
};
inline Step doing;
/// Counts the steps that were begun.
inline std::atomic<uint64_t> steps = 0;

inline void BeginStep(const char* what, uint64_t number, std::array<long long, 4> details = {}) {
    doing = {what, number, details};
    steps.fetch_add(1, std::memory_order_relaxed);
}

/// The step in words.
std::string Words(const Step& step);

/// Starts a thread that ends the program with kHung, and reports what was being done, when no step has begun
/// for so many seconds.
void WatchProgress(unsigned seconds);

inline constexpr unsigned kHung = 98;
