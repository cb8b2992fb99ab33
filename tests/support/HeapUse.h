// What is in use of the heaps that a process has, by counting what is allocated and freed.
#pragma once

#include <cstdint>

struct HeapUse {
    std::int64_t bytes = 0;
    std::int64_t blocks = 0;

    /// What is in use now, of all heaps.
    static HeapUse Count();
};
