#include "ProcessResources.h"

#include "GdiObjectCount.h"

#include <windows.h>

#include <vector>

#include <winternl.h>

namespace {

int HandleCount() {
    struct Entry {
        ULONG owner;
        BYTE type;
        BYTE flags;
        USHORT handle;
        void* object;
        ULONG access;
    };
    struct Table {
        ULONG count;
        Entry entries[1];
    };
    constexpr auto kHandleTable = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    std::vector<BYTE> buffer(1 << 20);
    ULONG needed = 0;
    while (NtQuerySystemInformation(kHandleTable, buffer.data(), static_cast<ULONG>(buffer.size()), &needed) <
           0) {
        if (buffer.size() > (1U << 28))
            return -1;
        buffer.resize(buffer.size() * 2);
    }
    const auto* table = reinterpret_cast<const Table*>(buffer.data());
    const ULONG process = GetCurrentProcessId();
    int count = 0;
    for (ULONG i = 0; i < table->count; ++i)
        count += table->entries[i].owner == process;
    return count;
}

/// Found by taking all that are left.
int UserObjectCount() {
    constexpr int kMost = 0x10000;
    std::vector<HMENU> menus;
    menus.reserve(kMost);
    while (const HMENU menu = CreateMenu())
        menus.push_back(menu);
    for (const HMENU menu : menus)
        DestroyMenu(menu);
    return kMost - static_cast<int>(menus.size());
}

void CountHeaps(std::int64_t& bytes, std::int64_t& blocks) {
    std::vector<HANDLE> heaps(256);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    for (const HANDLE heap : heaps) {
        HeapLock(heap);
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heap, &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) {
                bytes += entry.cbData;
                ++blocks;
            }
        }
        HeapUnlock(heap);
    }
}

} // namespace

ProcessResources ProcessResources::Count() {
    ProcessResources held;
    held.userObjects = UserObjectCount();
    held.gdiObjects = GdiObjectCount();
    held.handles = HandleCount();
    CountHeaps(held.heapBytes, held.heapBlocks);
    return held;
}

ProcessResources ProcessResources::operator-(const ProcessResources& before) const {
    return {gdiObjects - before.gdiObjects, handles - before.handles, userObjects - before.userObjects,
            heapBytes - before.heapBytes, heapBlocks - before.heapBlocks};
}
