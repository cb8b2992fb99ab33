#include "files/FileStamp.h"

#include "common/Handles.h"
#include "files/FileSystem.h"
#include "files/LockWait.h"

#include <windows.h>

#include <winternl.h>

#include <algorithm>

extern "C" NTSTATUS NTAPI NtQueryFullAttributesFile(POBJECT_ATTRIBUTES, PFILE_NETWORK_OPEN_INFORMATION);

namespace mxovshare {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr int kAttempts = 4; // to read a file that changes meanwhile

// The native form of a full path.
std::wstring NativePath(const std::wstring& path) {
    if (path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\")) {
        return L"\\??\\" + path.substr(4);
    }
    return path.starts_with(L"\\\\") ? L"\\??\\UNC\\" + path.substr(2) : L"\\??\\" + path;
}

FileStamp StampOfTarget(const std::wstring& path) {
    const common::UniqueHandle file =
        common::OwnFile(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return file ? StampOf(file.get()) : FileStamp{};
}

bool IsMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
           error == ERROR_BAD_PATHNAME;
}

// Why a file could not be opened. The system reports a folder like a file that is in use.
DWORD OpeningError(const std::wstring& path, DWORD error) {
    if (IsMissing(error)) {
        return ERROR_FILE_NOT_FOUND;
    }
    return error == ERROR_ACCESS_DENIED && IsFolder(path) ? ERROR_DIRECTORY : error;
}

// ERROR_HANDLE_EOF when the file became shorter.
DWORD ReadBytes(HANDLE file, std::string& bytes) {
    constexpr std::size_t kBlock = 16 << 20;
    for (std::size_t at = 0; at < bytes.size();) {
        DWORD count = 0;
        const auto block = static_cast<DWORD>(std::min(bytes.size() - at, kBlock));
        if (ReadFile(file, bytes.data() + at, block, &count, nullptr) == FALSE) {
            return GetLastError();
        }
        if (count == 0) {
            return ERROR_HANDLE_EOF;
        }
        at += count;
    }
    return ERROR_SUCCESS;
}

// One attempt. A file that changes again and again counts as locked.
DWORD ReadNow(const std::wstring& path, std::size_t limit, std::string& bytes, FileStamp& stamp) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        stamp = StampOf(path);
        const common::UniqueHandle file = common::OwnFile(CreateFileW(
            path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file) {
            return OpeningError(path, GetLastError());
        }
        LARGE_INTEGER size = {};
        if (GetFileType(file.get()) != FILE_TYPE_DISK || GetFileSizeEx(file.get(), &size) == FALSE) {
            return ERROR_INVALID_HANDLE;
        }
        if (static_cast<std::uint64_t>(size.QuadPart) > limit) {
            return ERROR_FILE_TOO_LARGE;
        }
        bytes.resize(static_cast<std::size_t>(size.QuadPart));
        const DWORD error = ReadBytes(file.get(), bytes);
        if (error != ERROR_SUCCESS && error != ERROR_HANDLE_EOF) {
            return error;
        }
        if (error == ERROR_SUCCESS && stamp.exists && StampOf(path) == stamp) {
            return ERROR_SUCCESS;
        }
    }
    return ERROR_LOCK_VIOLATION;
}

} // namespace

FileStamp StampOf(HANDLE file) {
    FILE_BASIC_INFO times = {};
    LARGE_INTEGER size = {};
    if (GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof(times)) == FALSE ||
        GetFileSizeEx(file, &size) == FALSE) {
        return {};
    }
    return {true, size.QuadPart, times.CreationTime.QuadPart, times.LastWriteTime.QuadPart,
            times.ChangeTime.QuadPart};
}

FileStamp StampOf(const std::wstring& path) {
    std::wstring native = NativePath(path);
    const std::size_t length = native.size() * sizeof(wchar_t);
    if (path.empty() || length > 0xFFFE) {
        return {};
    }
    UNICODE_STRING name = {static_cast<USHORT>(length), static_cast<USHORT>(length), native.data()};
    OBJECT_ATTRIBUTES object = {};
    InitializeObjectAttributes(&object, &name, OBJ_CASE_INSENSITIVE, nullptr, nullptr);
    FILE_NETWORK_OPEN_INFORMATION file = {};
    if (!NT_SUCCESS(NtQueryFullAttributesFile(&object, &file))) {
        return {};
    }
    if ((file.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        return StampOfTarget(path);
    }
    return {true, file.EndOfFile.QuadPart, file.CreationTime.QuadPart, file.LastWriteTime.QuadPart,
            file.ChangeTime.QuadPart};
}

DWORD ReadWholeFile(const std::wstring& path, std::size_t limit, std::string& bytes, FileStamp& stamp,
                    DWORD patience) {
    LockWait wait(patience);
    for (;;) {
        const DWORD error = ReadNow(path, limit, bytes, stamp);
        if (!wait.Retry(error)) {
            return error;
        }
    }
}

} // namespace mxovshare
