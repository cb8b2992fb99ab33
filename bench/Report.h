// The lines that every bench prints: what was timed, its ratio to something else of the same run, and whether
// a limit holds. `run --check` reads the last words of a line.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace bench {

/// Ends the program when a step of it failed, which it names.
inline void Require(bool done, const char* what) {
    if (!done) {
        std::printf("%s failed\n", what);
        std::exit(1);
    }
}

/// A line without a ratio, in milliseconds.
inline void Row(const char* what, double milliseconds) {
    std::printf("%-62s %10.2f ms\n", what, milliseconds);
}

/// A line with the ratio to `reference`, in milliseconds too.
inline void Compared(const char* what, double milliseconds, double reference) {
    std::printf("%-62s %10.2f ms  %6.3f times\n", what, milliseconds, milliseconds / reference);
}

inline const char* Verdict(bool kept) {
    return kept ? "kept" : "not kept";
}

/// A line whose ratio has a limit.
inline void Limited(const char* what, double milliseconds, double reference, double limit) {
    const double ratio = milliseconds / reference;
    std::printf("%-62s %10.2f ms  %6.3f times  limit %.2f %s\n", what, milliseconds, ratio, limit,
                Verdict(ratio <= limit));
}

/// A line whose time itself has a limit, in milliseconds.
inline void LimitedTime(const char* what, double milliseconds, double limit) {
    std::printf("%-62s %10.2f ms  limit %.0f ms %s\n", what, milliseconds, limit,
                Verdict(milliseconds <= limit));
}

/// A plain number with a limit, such as an exponent of growth.
inline void LimitedNumber(const char* what, double number, double limit) {
    std::printf("%-62s %10.3f  limit %.2f %s\n", what, number, limit, Verdict(number <= limit));
}

} // namespace bench
