// Files of the file system as byte sources and sinks.
#pragma once

#include "ByteSource.h"
#include "FileHandle.h"

#include <atomic>
#include <string>

namespace mxovshare {

/// Reads and writes an open file that somebody else owns, on any thread. `path` names it in failures.
class OpenFile : public ByteSource, public ByteSink {
public:
    OpenFile(HANDLE handle, std::wstring path);

    /// The size when it was opened, or what was written beyond that.
    std::uint64_t Size() const override { return m_size; }
    void Read(std::uint64_t offset, std::span<std::uint8_t> to) const override;
    void Write(std::uint64_t offset, Bytes data) override;
    void SetSize(std::uint64_t size) override;

private:
    HANDLE m_handle;
    std::wstring m_path;
    std::atomic<std::uint64_t> m_size = 0;
};

/// A file opened for reading, while others may do as they like with it. Throws FileFailure when it cannot be.
class DiskSource : public ByteSource {
public:
    explicit DiskSource(const std::wstring& path);

    std::uint64_t Size() const override { return m_file.Size(); }
    void Read(std::uint64_t offset, std::span<std::uint8_t> to) const override { m_file.Read(offset, to); }

private:
    FileHandle m_handle;
    OpenFile m_file;
};

} // namespace mxovshare
