// How long locked files are waited for.
#pragma once

#include <windows.h>

namespace mxovshare {

/// How long an operation waits for a locked file, in milliseconds in all.
inline constexpr DWORD kLockPatience = 2000;

} // namespace mxovshare
