// The system's text for an error code.
#pragma once

#include <string>

#include <windows.h>

namespace common {

/// The system's description of an error code of <cerrno>, in one line without a full stop.
[[nodiscard]] std::wstring SystemErrorText(DWORD error);

/// The code of the last failure on this thread.
[[nodiscard]] DWORD LastError() noexcept;

} // namespace common
