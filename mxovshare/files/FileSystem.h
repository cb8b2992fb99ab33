// Single questions to the file system and single changes of it.
#pragma once

#include "common/Handles.h"

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace mxovshare {

/// What the file system reports of a path.
struct PathStatus {
    bool exists = false;
    bool isFolder = false;
    std::uint64_t size = 0;      ///< bytes
    FILETIME written = {};       ///< UTC
    DWORD error = ERROR_SUCCESS; ///< why nothing is known
};

/// Paths may have any length.
[[nodiscard]] PathStatus StatusOfPath(const std::wstring& path);
[[nodiscard]] bool IsFolder(const std::wstring& path);

/// The code for a disk without room.
extern const DWORD kNoRoom;

/// Creates a folder in one that exists. Returns ERROR_SUCCESS or the system's code for a failure.
[[nodiscard]] DWORD MakeFolder(const std::wstring& path);
void RemoveFolder(const std::wstring& path);
void RemoveFile(const std::wstring& path);

/// Bytes that this user may still write in a folder; none when that is not known.
[[nodiscard]] std::optional<std::uint64_t> RoomIn(const std::wstring& folder);

/// Creates a file to be written, which must not exist; empty after a failure, whose code `error` then is.
[[nodiscard]] common::UniqueHandle CreateNewFile(const std::wstring& path, bool isHidden, DWORD& error);

/// Sets when an open file was last written, and once more whether it is hidden.
void SetWritten(HANDLE file, const FILETIME& written, bool isHidden);

} // namespace mxovshare
