#include "files/DiskFile.h"

#include "common/LongPath.h"
#include "files/FileFailure.h"

#include <algorithm>

#include <winternl.h>

// The calls below ReadFile and WriteFile. Those, given an offset, also report to a completion port that no
// file here has, which can take forty times as long as the reading of a few bytes.
extern "C" {
NTSTATUS NTAPI NtReadFile(HANDLE, HANDLE, PIO_APC_ROUTINE, PVOID, PIO_STATUS_BLOCK, PVOID, ULONG,
                          PLARGE_INTEGER, PULONG);
NTSTATUS NTAPI NtWriteFile(HANDLE, HANDLE, PIO_APC_ROUTINE, PVOID, PIO_STATUS_BLOCK, const void*, ULONG,
                           PLARGE_INTEGER, PULONG);
}

namespace mxovshare {

namespace {

constexpr std::size_t kLargestTransfer = std::size_t{16} << 20;

LARGE_INTEGER At(std::uint64_t offset) {
    LARGE_INTEGER place = {};
    place.QuadPart = static_cast<LONGLONG>(offset);
    return place;
}

} // namespace

common::UniqueHandle OpenDiskFile(const std::wstring& path) {
    common::UniqueHandle handle = common::OwnFile(CreateFileW(
        common::LongPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) {
        ThrowFileFailure(L"cannot open", path, GetLastError());
    }
    if (GetFileType(handle.get()) != FILE_TYPE_DISK) {
        throw FileFailure(L"cannot open \"" + path + L"\": it is a device");
    }
    return handle;
}

bool SetFileSize(HANDLE file, std::uint64_t size) {
    const LARGE_INTEGER wanted = At(size);
    LARGE_INTEGER now = {};
    if (!SetFilePointerEx(file, wanted, nullptr, FILE_BEGIN) || !SetEndOfFile(file) ||
        !GetFileSizeEx(file, &now)) {
        return false;
    }
    SetLastError(ERROR_WRITE_FAULT);
    return now.QuadPart == wanted.QuadPart;
}

OpenFile::OpenFile(HANDLE handle, std::wstring path) : m_handle(handle), m_path(std::move(path)) {
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(m_handle, &size)) {
        ThrowFileFailure(L"cannot read", m_path, GetLastError());
    }
    m_size = static_cast<std::uint64_t>(size.QuadPart);
}

void OpenFile::Read(std::uint64_t offset, std::span<std::uint8_t> to) const {
    while (!to.empty()) {
        LARGE_INTEGER place = At(offset);
        IO_STATUS_BLOCK result = {};
        const auto size = static_cast<ULONG>(std::min(to.size(), kLargestTransfer));
        const NTSTATUS status =
            NtReadFile(m_handle, nullptr, nullptr, nullptr, &result, to.data(), size, &place, nullptr);
        const DWORD error = NT_SUCCESS(status) ? ERROR_SUCCESS : RtlNtStatusToDosError(status);
        if (error == ERROR_HANDLE_EOF || (error == ERROR_SUCCESS && result.Information == 0)) {
            throw FileChanged(m_path);
        }
        if (error != ERROR_SUCCESS) {
            ThrowFileFailure(L"cannot read", m_path, error);
        }
        offset += result.Information;
        to = to.subspan(result.Information);
    }
}

void OpenFile::Write(std::uint64_t offset, Bytes data) {
    while (!data.empty()) {
        LARGE_INTEGER place = At(offset);
        IO_STATUS_BLOCK result = {};
        const auto size = static_cast<ULONG>(std::min(data.size(), kLargestTransfer));
        const NTSTATUS status =
            NtWriteFile(m_handle, nullptr, nullptr, nullptr, &result, data.data(), size, &place, nullptr);
        if (!NT_SUCCESS(status)) {
            ThrowFileFailure(L"cannot write", m_path, RtlNtStatusToDosError(status));
        }
        // A full disk can look like success.
        if (result.Information != size) {
            ThrowFileFailure(L"cannot write", m_path, ERROR_DISK_FULL);
        }
        offset += size;
        data = data.subspan(size);
    }
    std::uint64_t known = m_size;
    while (known < offset && !m_size.compare_exchange_weak(known, offset)) {
    }
}

void OpenFile::SetSize(std::uint64_t size) {
    if (!SetFileSize(m_handle, size)) {
        ThrowFileFailure(L"cannot write", m_path, GetLastError());
    }
    m_size = size;
}

} // namespace mxovshare
