// The system's text for an error code.
#pragma once

#include <windows.h>

#include <iterator>
#include <string>

namespace common {

/// The system's description of an error code, in one line without a full stop; "error N" when it has none.
[[nodiscard]] inline std::wstring SystemErrorText(DWORD error) {
    constexpr DWORD kFlags =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    wchar_t buffer[512];
    const DWORD length =
        FormatMessageW(kFlags, nullptr, error, 0, buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
    std::wstring text(buffer, length);
    text.erase(text.find_last_not_of(L" .\r\n") + 1);
    return text.empty() ? L"error " + std::to_wstring(error) : text;
}

/// The code of the last failure on this thread.
[[nodiscard]] inline DWORD LastError() noexcept {
    return GetLastError();
}

} // namespace common
