// What a file is, without opening it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace docview {

/// Result of one attribute query. Size, time and kind are meaningless when the file does not exist.
struct FileStatus {
    bool exists = false;
    bool noAnswer =
        false; ///< it does not exist as far as is known: the computer that holds it did not answer
    bool isFolder = false;
    std::uint64_t size = 0;  ///< bytes
    FILETIME lastWrite = {}; ///< UTC
};

/// Asks the file system. No disk is asked for that a drive lacks.
FileStatus StatusOfFile(const std::wstring& path);

} // namespace docview
