#include "CountedMemory.h"

#include <cstdlib>
#include <new>

namespace counted {

std::atomic<long long> countdown = 0;
std::atomic<bool> fired = false;
std::atomic<long long> outstanding = 0;
std::atomic<long long> peak = 0;

} // namespace counted

using namespace counted;

namespace {

constexpr std::size_t kHeader = 16; // keeps the alignment of blocks

void* Allocate(std::size_t size) {
    if (countdown > 0 && --countdown == 0) {
        fired = true;
        return nullptr;
    }
    void* const block = std::malloc(size + kHeader);
    if (block == nullptr) {
        return nullptr;
    }
    *static_cast<std::size_t*>(block) = size;
    const long long now = outstanding += static_cast<long long>(size);
    for (long long before = peak; before < now && !peak.compare_exchange_weak(before, now);) {
    }
    return static_cast<char*>(block) + kHeader;
}

void Free(void* pointer) {
    if (pointer != nullptr) {
        void* const block = static_cast<char*>(pointer) - kHeader;
        outstanding -= static_cast<long long>(*static_cast<std::size_t*>(block));
        std::free(block);
    }
}

void* AllocateOrThrow(std::size_t size) {
    void* const block = Allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

} // namespace

void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* pointer) noexcept {
    Free(pointer);
}
void operator delete[](void* pointer) noexcept {
    Free(pointer);
}
void operator delete(void* pointer, std::size_t) noexcept {
    Free(pointer);
}
void operator delete[](void* pointer, std::size_t) noexcept {
    Free(pointer);
}
