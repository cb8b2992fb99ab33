#include "files/DiskFile.h"

#include "common/LongPath.h"
#include "common/SystemError.h"
#include "files/FileFailure.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace mxovshare {

// Opening a pipe does not wait for its other end.
common::UniqueHandle OpenDiskFile(const std::wstring& path) {
    common::UniqueHandle file(open(common::FilePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat about = {};
    if (!file || fstat(file.get(), &about) != 0) {
        ThrowFileFailure(L"cannot open", path, common::LastError());
    }
    if (S_ISDIR(about.st_mode)) {
        ThrowFileFailure(L"cannot open", path, EISDIR);
    }
    if (!S_ISREG(about.st_mode)) {
        throw FileFailure(L"cannot open \"" + path + L"\": it is a device");
    }
    return file;
}

bool SetFileSize(HANDLE file, std::uint64_t size) {
    return ftruncate(file, static_cast<off_t>(size)) == 0;
}

OpenFile::OpenFile(HANDLE handle, std::wstring path) : m_handle(handle), m_path(std::move(path)) {
    struct stat about = {};
    if (fstat(m_handle, &about) != 0) {
        ThrowFileFailure(L"cannot read", m_path, common::LastError());
    }
    m_size = static_cast<std::uint64_t>(about.st_size);
}

void OpenFile::Read(std::uint64_t offset, std::span<std::uint8_t> to) const {
    while (!to.empty()) {
        const ssize_t count = pread(m_handle, to.data(), to.size(), static_cast<off_t>(offset));
        if (count == 0) {
            throw FileChanged(m_path);
        }
        if (count < 0 && errno != EINTR) {
            ThrowFileFailure(L"cannot read", m_path, common::LastError());
        }
        const auto done = static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        offset += done;
        to = to.subspan(done);
    }
}

void OpenFile::Write(std::uint64_t offset, Bytes data) {
    while (!data.empty()) {
        const ssize_t count = pwrite(m_handle, data.data(), data.size(), static_cast<off_t>(offset));
        if (count < 0 && errno != EINTR) {
            ThrowFileFailure(L"cannot write", m_path, common::LastError());
        }
        const auto done = static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        offset += done;
        data = data.subspan(done);
    }
    std::uint64_t known = m_size;
    while (known < offset && !m_size.compare_exchange_weak(known, offset)) {
    }
}

void OpenFile::SetSize(std::uint64_t size) {
    if (!SetFileSize(m_handle, size)) {
        ThrowFileFailure(L"cannot write", m_path, common::LastError());
    }
    m_size = size;
}

} // namespace mxovshare
