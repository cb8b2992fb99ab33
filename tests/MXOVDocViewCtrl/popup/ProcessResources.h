// What this process holds of the system, for tests of growth. The documented functions return 0 under Wine.
#pragma once

#include <cstdint>

struct ProcessResources {
    int gdiObjects = 0;
    int handles = 0;            ///< kernel handles
    int userObjects = 0;        ///< windows, menus, hooks and the like, of the whole session
    std::int64_t heapBytes = 0; ///< in use, of all heaps
    std::int64_t heapBlocks = 0;

    /// What is held now.
    static ProcessResources Count();

    ProcessResources operator-(const ProcessResources& before) const;
};
