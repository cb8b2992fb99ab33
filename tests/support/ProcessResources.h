// What the process holds of the system, for tests of growth, counted in ways that Wine answers too: under
// Wine the documented functions return 0.
#pragma once

#include <array>
#include <cstdint>
#include <string>

/// Counts at one moment, or how much they grew.
struct ProcessResources {
    std::array<int, 256> gdiObjects{}; ///< by type; no block of the heap that is counted
    int userObjects = 0;               ///< windows, menus, hooks and the like, of the whole session
    int handles = 0;                   ///< kernel handles
    std::int64_t heapBytes = 0;        ///< in use, of all heaps
    std::int64_t heapBlocks = 0;

    /// What is held now; takes up to a second.
    static ProcessResources Count();

    ProcessResources operator-(const ProcessResources& before) const;
    [[nodiscard]] int AllGdiObjects() const;
    /// The numbers in one line, with their signs: of a difference.
    [[nodiscard]] std::string Text() const;
    /// What is larger here than in `before`, in words; empty when nothing is. Heap bytes may differ by
    /// `slack`.
    [[nodiscard]] std::string GrowthSince(const ProcessResources& before, std::int64_t slack) const;
};
