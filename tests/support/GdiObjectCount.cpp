#include "GdiObjectCount.h"

#include <windows.h>

#include <cstddef>

extern "C" const BYTE* WINAPI RtlGetCurrentPeb();

std::map<int, int> GdiObjectsByType() {
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
    std::map<int, int> counts;
    for (size_t i = 0; i < kEntries; ++i) {
        if (table[i].type != 0)
            ++counts[table[i].type];
    }
    return counts;
}

int GdiObjectCount() {
    int count = 0;
    for (const auto& [type, objects] : GdiObjectsByType())
        count += objects;
    return count;
}
