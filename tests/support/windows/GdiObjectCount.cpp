#include "GdiObjectCount.h"

#include <windows.h>

#include <cstddef>
#include <numeric>

extern "C" const BYTE* WINAPI RtlGetCurrentPeb();

std::array<int, 256> GdiObjectsByType() {
    struct Entry {
        ULONG64 object;
        USHORT process;
        USHORT count;
        USHORT unique;
        BYTE type; // 0 in a free entry
        BYTE flags;
        ULONG64 userPointer;
    };
    constexpr size_t kTableOffset = 0xF8; // of the process environment block
    constexpr size_t kEntries = 0x10000;
    const auto* table = *reinterpret_cast<const Entry* const*>(RtlGetCurrentPeb() + kTableOffset);
    std::array<int, 256> counts{};
    for (size_t i = 0; i < kEntries; ++i) {
        if (table[i].type != 0) {
            ++counts[table[i].type];
        }
    }
    return counts;
}

int GdiObjectCount() {
    const std::array<int, 256> counts = GdiObjectsByType();
    return std::accumulate(counts.begin(), counts.end(), 0);
}
