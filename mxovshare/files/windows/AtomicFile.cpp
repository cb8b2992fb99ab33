#include "files/AtomicFile.h"

#include "common/LongPath.h"
#include "files/DiskFile.h"
#include "files/LockWait.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace mxovshare {
namespace {

constexpr wchar_t kSuffix[] = L".mxov-new";
constexpr std::size_t kLongestComponent = 255; // of one component, on every file system
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                  FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

bool IsReplaceable(DWORD attributes) {
    return attributes == INVALID_FILE_ATTRIBUTES ||
           (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) == 0;
}

// One that was left behind may not have become empty when it was opened: Wine reports no error of that.
bool Empty(HANDLE file) {
    LARGE_INTEGER size = {};
    return GetFileSizeEx(file, &size) != FALSE && (size.QuadPart == 0 || SetFileSize(file, 0));
}

std::uint32_t HashOf(const std::wstring& text) {
    std::uint32_t hash = 2166136261;
    for (const wchar_t unit : text) {
        hash = (hash ^ unit) * 16777619;
    }
    return hash;
}

} // namespace

const DWORD AtomicFile::kUnknownFailure = ERROR_GEN_FAILURE;

std::wstring AtomicFile::TemporaryPath(const std::wstring& target) {
    const std::wstring path = common::LongPath(target);
    const std::size_t folder = path.find_last_of(L"\\/") + 1;
    std::wstring name = path.substr(folder);
    constexpr std::size_t kRoom = kLongestComponent - std::size(kSuffix);
    if (name.size() > kRoom) {
        name = name.substr(0, kRoom - 11) + L'~' + std::to_wstring(HashOf(name));
    }
    return common::LongPath(path.substr(0, folder) + name + kSuffix);
}

AtomicFile::AtomicFile(const std::wstring& target, DWORD patience)
    : m_target(common::LongPath(target)), m_temporary(TemporaryPath(target)), m_patience(patience) {
    if (!IsReplaceable(GetFileAttributesW(m_target.c_str()))) {
        Fail(ERROR_ACCESS_DENIED);
    } else if (!Create()) {
        Fail(GetLastError());
    }
}

bool AtomicFile::Write(const void* data, std::size_t size) {
    if (m_error != ERROR_SUCCESS) {
        return false;
    }
    constexpr std::size_t kBlock = 16 << 20;
    for (const char* place = static_cast<const char*>(data); size > 0;) {
        const auto block = static_cast<DWORD>(std::min(size, kBlock));
        DWORD written = 0;
        if (WriteFile(m_file.get(), place, block, &written, nullptr) == FALSE) {
            return Fail(GetLastError());
        }
        if (written != block) { // a full disk can look like success
            return Fail(ERROR_DISK_FULL);
        }
        place += block;
        size -= block;
    }
    return true;
}

bool AtomicFile::Create() {
    LockWait wait(m_patience);
    for (bool bared = false;;) {
        // Shared for deletion: it is renamed while it is open, so that it never is without an owner.
        m_file = common::OwnFile(CreateFileW(m_temporary.c_str(), GENERIC_READ | GENERIC_WRITE,
                                             FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_ALWAYS,
                                             FILE_ATTRIBUTE_NORMAL, nullptr));
        m_exists = m_file != nullptr;
        if (m_exists) {
            return Empty(m_file.get());
        }
        const DWORD error = GetLastError();
        // One that was left behind may have the attributes of a hidden target.
        if (error == ERROR_ACCESS_DENIED && !std::exchange(bared, true) &&
            SetFileAttributesW(m_temporary.c_str(), FILE_ATTRIBUTE_NORMAL) != FALSE) {
            continue;
        }
        if (!wait.Retry(error)) {
            return false;
        }
    }
}

bool AtomicFile::Flush() {
    return FlushFileBuffers(m_file.get()) != FALSE;
}

bool AtomicFile::KeepAttributes() {
    const DWORD attributes = GetFileAttributesW(m_target.c_str());
    if (!IsReplaceable(attributes)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    const DWORD kept = attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes & kKeptAttributes;
    return kept == 0 || SetFileAttributesW(m_temporary.c_str(), kept) != FALSE;
}

bool AtomicFile::Replace(const std::function<void()>& beforeReplace) {
    LockWait wait(m_patience);
    for (;;) {
        if (beforeReplace) {
            beforeReplace();
        }
        if (MoveFileExW(m_temporary.c_str(), m_target.c_str(),
                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE) {
            m_exists = false;
            return true;
        }
        if (!wait.Retry(GetLastError())) {
            return false;
        }
    }
}

void AtomicFile::Discard() {
    if (m_exists) { // while it is open, so that it cannot be the next owner's
        DeleteFileW(m_temporary.c_str());
    }
    m_exists = false;
    m_file.reset();
}

} // namespace mxovshare
