// Identifies the content of a file without reading it, and reads whole files.
#pragma once

#include "LockPatience.h"

#include <cstdint>
#include <string>

namespace mxovshare {

/// State of a file at one moment; all zero for a file that is not there or cannot be asked. The change time
/// moves with every write and rename, and so with every other file that takes the place, whatever is done to
/// its write time.
struct FileStamp {
    bool exists = false;
    std::int64_t size = 0;
    std::int64_t created = 0; ///< times in 100 nanoseconds, UTC
    std::int64_t written = 0;
    std::int64_t changed = 0;

    bool operator==(const FileStamp&) const = default;
};

/// The stamp of a file by its full path. Opens nothing, unless the path leads through a link.
FileStamp StampOf(const std::wstring& path);
/// The stamp of an open file.
FileStamp StampOf(HANDLE file);

/// Reads a whole file of at most `limit` bytes with the stamp that belongs to them, waiting up to `patience`
/// milliseconds while another program has it locked. Returns ERROR_SUCCESS, ERROR_FILE_NOT_FOUND for a file
/// that is missing, or the system's code for another failure; anything but a file on a disk is one.
DWORD ReadWholeFile(const std::wstring& path, std::size_t limit, std::string& bytes, FileStamp& stamp,
                    DWORD patience = kLockPatience);

} // namespace mxovshare
