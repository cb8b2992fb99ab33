#include "common/Clock.h"

#include <cstdint>
#include <ctime>

namespace common {

namespace {

constexpr long long kFrom1601To1970 = 11'644'473'600; // seconds
constexpr long long kTicksPerSecond = 10'000'000;

} // namespace

FILETIME SystemTime() noexcept {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return ToFileTime(now.tv_sec, now.tv_nsec);
}

FILETIME ToFileTime(long long seconds, long nanoseconds) noexcept {
    const auto ticks =
        static_cast<std::uint64_t>((seconds + kFrom1601To1970) * kTicksPerSecond + nanoseconds / 100);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

timespec ToTimeSpec(const FILETIME& time) noexcept {
    const auto ticks = static_cast<long long>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
    return {.tv_sec = ticks / kTicksPerSecond - kFrom1601To1970, .tv_nsec = ticks % kTicksPerSecond * 100};
}

} // namespace common
