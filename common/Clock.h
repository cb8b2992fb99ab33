// The time now.
#pragma once

#include <windows.h>

namespace common {

/// In UTC.
[[nodiscard]] inline FILETIME SystemTime() noexcept {
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    return now;
}

} // namespace common
