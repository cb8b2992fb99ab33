// What tells one content of a file from another without reading it, and reading whole files.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace mxovshare {

/// State of a file at one moment; all zero for a file that is not there or cannot be asked.
struct FileStamp {
    bool exists = false;
    std::uint64_t size = 0;
    std::uint64_t writeTime = 0; ///< in 100 nanoseconds, UTC
    std::uint64_t identity = 0;  ///< of the file on its volume
    std::uint32_t volume = 0;

    bool operator==(const FileStamp&) const = default;
};

FileStamp StampOf(HANDLE file);
FileStamp StampOf(const std::wstring& path);

enum class FileReading { Done, Missing, Failed };

/// Reads a whole file of at most `limit` bytes with the stamp that belongs to them, waiting briefly while
/// another program has it locked. Anything but a file on a disk fails.
FileReading ReadWholeFile(const std::wstring& path, std::size_t limit, std::string& bytes, FileStamp& stamp);

} // namespace mxovshare
