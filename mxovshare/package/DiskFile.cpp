#include "package/DiskFile.h"

#include "host/LongPath.h"
#include "package/PackageWork.h"

#include <algorithm>

namespace mxovshare {

namespace {

constexpr std::size_t kLargestTransfer = std::size_t{16} << 20;

OVERLAPPED At(std::uint64_t offset) {
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

FileHandle OpenForReading(const std::wstring& path) {
    FileHandle handle(CreateFileW(LongPath(path).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle)
        ThrowFileFailure(L"cannot open", path, GetLastError());
    if (GetFileType(handle.Get()) != FILE_TYPE_DISK)
        throw FileFailure{L"cannot open \"" + path + L"\": it is a device"};
    return handle;
}

} // namespace

OpenFile::OpenFile(HANDLE handle, std::wstring path) : m_handle(handle), m_path(std::move(path)) {
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(m_handle, &size))
        ThrowFileFailure(L"cannot read", m_path, GetLastError());
    m_size = static_cast<std::uint64_t>(size.QuadPart);
}

void OpenFile::Read(std::uint64_t offset, std::span<std::uint8_t> to) const {
    while (!to.empty()) {
        OVERLAPPED place = At(offset);
        DWORD done = 0;
        if (!ReadFile(m_handle, to.data(), static_cast<DWORD>(std::min(to.size(), kLargestTransfer)), &done,
                      &place))
            ThrowFileFailure(L"cannot read", m_path, GetLastError());
        if (done == 0)
            throw FileFailure{L"cannot read \"" + m_path + L"\": it became shorter meanwhile"};
        offset += done;
        to = to.subspan(done);
    }
}

void OpenFile::Write(std::uint64_t offset, Bytes data) {
    while (!data.empty()) {
        OVERLAPPED place = At(offset);
        const auto size = static_cast<DWORD>(std::min(data.size(), kLargestTransfer));
        DWORD done = 0;
        if (!WriteFile(m_handle, data.data(), size, &done, &place))
            ThrowFileFailure(L"cannot write", m_path, GetLastError());
        // A full disk can look like success.
        if (done != size)
            ThrowFileFailure(L"cannot write", m_path, ERROR_DISK_FULL);
        offset += done;
        data = data.subspan(done);
        m_size = std::max(m_size, offset);
    }
}

void OpenFile::SetSize(std::uint64_t size) {
    LARGE_INTEGER place = {};
    place.QuadPart = static_cast<LONGLONG>(size);
    if (!SetFilePointerEx(m_handle, place, nullptr, FILE_BEGIN) || !SetEndOfFile(m_handle))
        ThrowFileFailure(L"cannot write", m_path, GetLastError());
    m_size = size;
}

DiskSource::DiskSource(const std::wstring& path)
    : m_handle(OpenForReading(path)), m_file(m_handle.Get(), path) {}

} // namespace mxovshare
