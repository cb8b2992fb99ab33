// What tells one content of a file from another without reading it, and reading whole files.
#pragma once

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

enum class FileReading { Done, Missing, Failed };

/// Reads a whole file of at most `limit` bytes with the stamp that belongs to them, waiting briefly while
/// another program has it locked. Anything but a file on a disk fails.
FileReading ReadWholeFile(const std::wstring& path, std::size_t limit, std::string& bytes, FileStamp& stamp);

} // namespace mxovshare
