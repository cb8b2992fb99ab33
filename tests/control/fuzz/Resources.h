// What the process holds of the system, counted in ways that Wine answers too.
#pragma once

#include <cstddef>
#include <map>
#include <string>

/// Counts at one moment.
struct Resources {
    std::map<int, int> gdiObjects; ///< by type
    int userObjects = 0;
    int handles = 0;
    size_t heapBytes = 0;

    /// Counts now; takes up to a second.
    static Resources Count();
    /// What is larger here than in `before`, in words; empty when nothing is. Heap bytes may differ by
    /// `slack`.
    [[nodiscard]] std::string GrowthSince(const Resources& before, size_t slack) const;
};
