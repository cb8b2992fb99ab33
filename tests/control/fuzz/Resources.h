// What the process holds of the system, counted in ways that Wine answers too.
#pragma once

#include <array>
#include <cstddef>
#include <string>

/// Counts at one moment.
struct Resources {
    std::array<int, 256> gdiObjects{}; ///< by type; no block of the heap that is counted
    int userObjects = 0;
    int handles = 0;
    size_t heapBytes = 0;

    /// Counts now; takes up to a second.
    static Resources Count();
    /// How much more or less there is than in `before`, in words.
    [[nodiscard]] std::string Difference(const Resources& before) const;
    /// What is larger here than in `before`, in words; empty when nothing is. Heap bytes may differ by
    /// `slack`.
    [[nodiscard]] std::string GrowthSince(const Resources& before, size_t slack) const;
};
