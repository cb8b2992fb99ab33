// The time now.
#pragma once

#include <windows.h>

#include <ctime>

namespace common {

/// In UTC.
[[nodiscard]] FILETIME SystemTime() noexcept;

/// The ticks of a time of the file system, in UTC.
[[nodiscard]] FILETIME ToFileTime(long long seconds, long nanoseconds) noexcept;

/// The reverse.
[[nodiscard]] timespec ToTimeSpec(const FILETIME& time) noexcept;

} // namespace common
