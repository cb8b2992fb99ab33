// Owner of a file handle.
#pragma once

#include <windows.h>

#include <utility>

namespace mxovshare {

/// Closes its handle at the end; may be empty.
class FileHandle {
public:
    FileHandle() = default;
    explicit FileHandle(HANDLE handle) : m_handle(handle) {}
    FileHandle(FileHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~FileHandle() { Close(); }

    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_handle; }

    /// False when the system reports a failure; the handle is gone either way.
    bool Close() {
        const HANDLE handle = std::exchange(m_handle, INVALID_HANDLE_VALUE);
        return handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != FALSE;
    }

private:
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

} // namespace mxovshare
