// Small files that are read or written in one piece.
#pragma once

#include "common/Handles.h"
#include "common/LongPath.h"

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace common {

/// Reads the first `count` bytes of a file, fewer when it is shorter, and its size. Returns ERROR_SUCCESS or
/// the system's code for a failure.
[[nodiscard]] inline DWORD ReadBeginning(const std::wstring& path, std::size_t count, std::string& bytes,
                                         std::uint64_t& size) {
    const UniqueHandle file = OwnFile(CreateFileW(LongPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
    DWORD done = 0;
    LARGE_INTEGER length = {};
    bytes.resize(count);
    if (!file || !GetFileSizeEx(file.get(), &length) ||
        !ReadFile(file.get(), bytes.data(), static_cast<DWORD>(count), &done, nullptr)) {
        return GetLastError();
    }
    bytes.resize(done);
    size = static_cast<std::uint64_t>(length.QuadPart);
    return ERROR_SUCCESS;
}

namespace detail {

inline bool WriteNew(const std::wstring& path, std::string_view bytes) {
    const UniqueHandle file = OwnFile(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD count = 0;
    return file &&
           WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) != FALSE &&
           count == bytes.size() && FlushFileBuffers(file.get()) != FALSE;
}

} // namespace detail

/// Writes a file beside the one that it then replaces. Returns ERROR_SUCCESS, or the system's code for a
/// failure that leaves the old file as it is.
[[nodiscard]] inline DWORD ReplaceFileWith(const std::wstring& path, std::string_view bytes) {
    const std::wstring full = LongPath(path);
    const std::wstring incomplete = full + L".mxov-new";
    if (detail::WriteNew(incomplete, bytes) &&
        MoveFileExW(incomplete.c_str(), full.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE) {
        return ERROR_SUCCESS;
    }
    const DWORD error = GetLastError();
    DeleteFileW(incomplete.c_str());
    return error;
}

} // namespace common
