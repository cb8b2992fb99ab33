#include "HeapUse.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

// HeapWalk is documented to show every block. Wine 10's shows the groups of its low-fragmentation heap, each
// with room for up to 32 blocks, as one block that is in use, whatever is in use of it. There the functions
// that allocate and free are watched from the first count on; they begin as Wine's functions do that others
// may redirect.

namespace {

constexpr DWORD kMostHeaps = 64;
constexpr std::array<BYTE, 8> kRedirectable = {0x48, 0x8D, 0xA4, 0x24, 0, 0, 0, 0};
constexpr size_t kJumpSize = 14;
constexpr size_t kTableSize = size_t{1} << 18;

using Allocate = void*(NTAPI*)(HANDLE, ULONG, SIZE_T);
using Free = BOOLEAN(NTAPI*)(HANDLE, ULONG, void*);

struct Heaps {
    std::array<HANDLE, kMostHeaps> handles{};
    DWORD count = GetProcessHeaps(kMostHeaps, handles.data());

    [[nodiscard]] auto end() const { return handles.begin() + std::min(count, kMostHeaps); }
    [[nodiscard]] bool Have(HANDLE heap) const { return std::find(handles.begin(), end(), heap) != end(); }
};

void Add(HeapUse& use, SIZE_T bytes) {
    use.bytes += static_cast<std::int64_t>(bytes);
    ++use.blocks;
}

HeapUse Walk(HANDLE heap) {
    HeapUse use;
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) {
            Add(use, entry.cbData);
        }
    }
    HeapUnlock(heap);
    return use;
}

struct Block {
    HANDLE heap;
    void* start; ///< null: none here
};

// Lies outside the heaps and allocates nothing, since the functions that it watches call it.
class Watch {
public:
    /// False when the functions cannot be redirected.
    bool Start(const HeapUse& use) {
        m_older = use;
        const HMODULE system = GetModuleHandleW(L"ntdll.dll");
        BYTE* const allocate = Redirectable(system, "RtlAllocateHeap");
        BYTE* const release = Redirectable(system, "RtlFreeHeap");
        if (!allocate || !release) {
            return false;
        }
        m_blocks = static_cast<Block*>(
            VirtualAlloc(nullptr, kTableSize * sizeof(Block), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        m_allocate = Behind<Allocate>(allocate);
        m_free = Behind<Free>(release);
        Redirect(allocate, &OnAllocate);
        Redirect(release, &OnFree);
        return true;
    }

    HeapUse Count() {
        AcquireSRWLockExclusive(&m_lock);
        HeapUse use = m_older;
        for (size_t i = 0; i < kTableSize; ++i) {
            if (m_blocks[i].start) {
                Add(use, HeapSize(m_blocks[i].heap, 0, m_blocks[i].start));
            }
        }
        ReleaseSRWLockExclusive(&m_lock);
        return use;
    }

    [[nodiscard]] const Heaps& Watched() const { return m_heaps; }

private:
    static BYTE* Redirectable(HMODULE system, const char* name) {
        const FARPROC address = GetProcAddress(system, name);
        BYTE* function = nullptr;
        std::memcpy(&function, &address, sizeof function);
        const auto isFiller = [](BYTE byte) { return byte == 0xCC; };
        return std::equal(kRedirectable.begin(), kRedirectable.end(), function) &&
                       std::all_of(function - kJumpSize, function, isFiller)
                   ? function
                   : nullptr;
    }

    template <typename Function>
    static Function Behind(BYTE* start) {
        BYTE* const next = start + kRedirectable.size();
        Function function = nullptr;
        std::memcpy(&function, &next, sizeof function);
        return function;
    }

    // A short jump to the filler in front of the function, and there a jump to anywhere.
    template <typename Function>
    static void Redirect(BYTE* function, Function target) {
        std::array<BYTE, kJumpSize> jump = {0xFF, 0x25, 0, 0, 0, 0};
        std::memcpy(&jump[6], &target, sizeof target);
        DWORD protection = 0;
        VirtualProtect(function - kJumpSize, kJumpSize + 2, PAGE_EXECUTE_READWRITE, &protection);
        std::copy(jump.begin(), jump.end(), function - kJumpSize);
        const std::array<BYTE, 2> back = {0xEB, static_cast<BYTE>(-static_cast<int>(kJumpSize + 2))};
        std::memcpy(function, back.data(), back.size());
        VirtualProtect(function - kJumpSize, kJumpSize + 2, protection, &protection);
        FlushInstructionCache(GetCurrentProcess(), function - kJumpSize, kJumpSize + 2);
    }

    static void* NTAPI OnAllocate(HANDLE heap, ULONG flags, SIZE_T size);
    static BOOLEAN NTAPI OnFree(HANDLE heap, ULONG flags, void* start);

    static size_t Next(size_t place) { return (place + 1) % kTableSize; }
    static size_t Home(const void* start) {
        return (reinterpret_cast<size_t>(start) >> 4) * size_t{0x9E3779B1} % kTableSize;
    }

    // Where the block stands in the table, or the free place where it would.
    [[nodiscard]] size_t Find(const void* start) const {
        size_t place = Home(start);
        while (m_blocks[place].start && m_blocks[place].start != start) {
            place = Next(place);
        }
        return place;
    }

    // Frees a place and moves up what stands behind it because it was taken.
    void Remove(size_t place) {
        for (size_t other = Next(place); m_blocks[other].start; other = Next(other)) {
            const size_t home = Home(m_blocks[other].start);
            if ((other - home) % kTableSize >= (other - place) % kTableSize) {
                m_blocks[place] = m_blocks[other];
                place = other;
            }
        }
        m_blocks[place].start = nullptr;
        --m_count;
    }

    void Note(HANDLE heap, void* start) {
        AcquireSRWLockExclusive(&m_lock);
        if (++m_count == kTableSize) {
            std::abort();
        }
        m_blocks[Find(start)] = {heap, start};
        ReleaseSRWLockExclusive(&m_lock);
    }

    void Forget(HANDLE heap, const void* start) {
        const SIZE_T size = HeapSize(heap, 0, start);
        AcquireSRWLockExclusive(&m_lock);
        const size_t place = Find(start);
        if (m_blocks[place].start) {
            Remove(place);
        } else {
            m_older.bytes -= static_cast<std::int64_t>(size);
            --m_older.blocks;
        }
        ReleaseSRWLockExclusive(&m_lock);
    }

    SRWLOCK m_lock = SRWLOCK_INIT;
    Heaps m_heaps; ///< those of the beginning; what is made later is walked through
    Block* m_blocks = nullptr;
    size_t m_count = 0;
    HeapUse m_older; ///< what is left of what was there at the beginning
    Allocate m_allocate = nullptr;
    Free m_free = nullptr;
};

Watch* watch = nullptr;

void* NTAPI Watch::OnAllocate(HANDLE heap, ULONG flags, SIZE_T size) {
    void* const start = watch->m_allocate(heap, flags, size);
    if (start && watch->m_heaps.Have(heap)) {
        watch->Note(heap, start);
    }
    return start;
}

BOOLEAN NTAPI Watch::OnFree(HANDLE heap, ULONG flags, void* start) {
    if (start && watch->m_heaps.Have(heap)) {
        watch->Forget(heap, start);
    }
    return watch->m_free(heap, flags, start);
}

HeapUse WalkAll(const Watch* except) {
    HeapUse use;
    const Heaps heaps;
    for (auto heap = heaps.handles.begin(); heap != heaps.end(); ++heap) {
        if (except && except->Watched().Have(*heap)) {
            continue;
        }
        const HeapUse one = Walk(*heap);
        use.bytes += one.bytes;
        use.blocks += one.blocks;
    }
    return use;
}

/// Whether a walk misses some of many blocks of one size.
bool WalkHidesBlocks() {
    constexpr SIZE_T kSize = 1000;
    std::array<void*, 100> blocks = {};
    const HANDLE heap = GetProcessHeap();
    const HeapUse before = Walk(heap);
    for (void*& block : blocks) {
        block = HeapAlloc(heap, 0, kSize);
    }
    const HeapUse after = Walk(heap);
    for (void* const block : blocks) {
        HeapFree(heap, 0, block);
    }
    return after.blocks - before.blocks < static_cast<std::int64_t>(blocks.size());
}

} // namespace

HeapUse HeapUse::Count() {
    static Watch started;
    static const bool walkHides = WalkHidesBlocks();
    if (walkHides && !watch) {
        watch = &started;
        if (!started.Start(WalkAll(nullptr))) {
            throw std::runtime_error("what is in use of the heaps cannot be counted");
        }
    }
    HeapUse use = WalkAll(watch);
    if (watch) {
        const HeapUse watched = watch->Count();
        use.bytes += watched.bytes;
        use.blocks += watched.blocks;
    }
    return use;
}
