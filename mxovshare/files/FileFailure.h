// How an operation on a file of the file system fails.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace mxovshare {

/// Thrown when a file of the file system is the reason; the message is complete.
struct FileFailure {
    std::wstring message;
};

/// The system's description of an error code, in one line without a full stop.
std::wstring SystemReason(DWORD error);

/// Throws the failure of `doing` (such as "cannot read") with a file for the system's reason.
[[noreturn]] void ThrowFileFailure(std::wstring_view doing, const std::wstring& path, DWORD error);

} // namespace mxovshare
