// Files of the file system as byte sources and sinks.
#pragma once

#include "ByteSource.h"
#include "common/Handles.h"
#include "FileStamp.h"

#include <atomic>
#include <string>

namespace mxovshare {

/// Opens a file for reading with full sharing. Throws FileFailure, for a device as well.
[[nodiscard]] common::UniqueHandle OpenDiskFile(const std::wstring& path);

/// Cuts or extends an open file, and looks whether it has that size then: Wine makes some files a byte longer
/// when the first attempt fails. False with the system's code for a failure.
[[nodiscard]] bool SetFileSize(HANDLE file, std::uint64_t size);

/// Reads and writes an open file that the caller owns, on any thread. `path` names it in failures.
class OpenFile : public ByteSource, public ByteSink {
public:
    OpenFile(HANDLE handle, std::wstring path);

    /// The size when it was opened, or the end of what was written beyond that.
    std::uint64_t Size() const override { return m_size; }
    void Read(std::uint64_t offset, std::span<std::uint8_t> to) const override;
    void Write(std::uint64_t offset, Bytes data) override;
    void SetSize(std::uint64_t size) override;

private:
    HANDLE m_handle;
    std::wstring m_path;
    std::atomic<std::uint64_t> m_size = 0;
};

/// A file opened for reading with full sharing. Throws FileFailure when that fails, FileChanged when a read
/// finds the file truncated.
class DiskSource : public ByteSource {
public:
    explicit DiskSource(const std::wstring& path);

    std::uint64_t Size() const override { return m_file.Size(); }
    void Read(std::uint64_t offset, std::span<std::uint8_t> to) const override { m_file.Read(offset, to); }

    /// Throws FileChanged when the file was written since it was opened, so that what was read may mix two
    /// states.
    void RequireUnchanged() const;
    /// Whether enough time has passed since the file's last change that RequireUnchanged misses no other one.
    bool IsSettled() const;

private:
    common::UniqueHandle m_handle;
    OpenFile m_file;
    std::wstring m_path;
    FileStamp m_stamp; // when it was opened
};

} // namespace mxovshare
