// The allocations of a test program, counted; one of them can be made to fail.
#pragma once

#include <atomic>

namespace counted {

extern std::atomic<long long> countdown;   ///< 1: the next allocation fails; 0 and below: none does
extern std::atomic<bool> fired;            ///< one failed
extern std::atomic<long long> outstanding; ///< bytes
extern std::atomic<long long> peak;        ///< of them

/// The most bytes that `work` has at a time, beyond those that are there already.
template <class Work>
long long PeakOf(Work work) {
    const long long before = outstanding;
    peak = before;
    work();
    return peak - before;
}

} // namespace counted
