// Full paths, and the form of a path that may be longer than MAX_PATH.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace common {

/// Whether a path is passed to the file system as it is ("\\?\") or names a device ("\\.\").
[[nodiscard]] inline bool IsDevicePath(std::wstring_view path) noexcept {
    return path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\");
}

/// The absolute form of `path`, relative to the current folder; empty for one that names nothing.
[[nodiscard]] inline std::wstring FullPath(const std::wstring& path) {
    std::wstring full(MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length > full.size()) {
        full.resize(length);
        length = GetFullPathNameW(path.c_str(), length, full.data(), nullptr);
    }
    full.resize(length < full.size() ? length : 0);
    return full;
}

/// An absolute path behind "\\?\", where its length is not limited. A path that has such a form stays as it
/// is.
[[nodiscard]] inline std::wstring ExtendedPath(const std::wstring& full) {
    if (IsDevicePath(full)) {
        return full;
    }
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

/// The full path of `path` as the file functions take it whatever its length: from 240 characters on behind
/// "\\?\". A path that has such a form already stays as it is; empty for one that names nothing.
[[nodiscard]] inline std::wstring LongPath(const std::wstring& path) {
    constexpr std::size_t kLongestPlain = 240; // below MAX_PATH: a folder must leave room for a short name
    if (path.empty() || IsDevicePath(path)) {
        return path;
    }
    std::wstring full = FullPath(path);
    return full.size() < kLongestPlain ? full : ExtendedPath(full);
}

} // namespace common
