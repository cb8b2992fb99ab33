// Small files that are read or written in one piece.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace common {

/// Reads the first `count` bytes of a file, fewer when it is shorter, and its size. Returns ERROR_SUCCESS or
/// the system's code for a failure.
[[nodiscard]] DWORD ReadBeginning(const std::wstring& path, std::size_t count, std::string& bytes,
                                  std::uint64_t& size);

/// Writes a file beside the one that it then replaces. Returns ERROR_SUCCESS, or the system's code for a
/// failure that leaves the old file as it is.
[[nodiscard]] DWORD ReplaceFileWith(const std::wstring& path, std::string_view bytes);

} // namespace common
