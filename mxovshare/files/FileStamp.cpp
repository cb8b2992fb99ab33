#include "FileStamp.h"

#include "FileHandle.h"

#include <windows.h>

#include <winternl.h>

#include <algorithm>

extern "C" NTSTATUS NTAPI NtQueryFullAttributesFile(POBJECT_ATTRIBUTES, PFILE_NETWORK_OPEN_INFORMATION);

namespace mxovshare {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kLongestReadPause = 8; // milliseconds; all pauses of one reading are twice that
constexpr int kAttempts = 4;           // to read a file that changes meanwhile

// The native form of a full path.
std::wstring NativePath(const std::wstring& path) {
    if (path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\")) {
        return L"\\??\\" + path.substr(4);
    }
    return path.starts_with(L"\\\\") ? L"\\??\\UNC\\" + path.substr(2) : L"\\??\\" + path;
}

FileStamp StampOfTarget(const std::wstring& path) {
    const FileHandle file(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    FILE_BASIC_INFO times = {};
    LARGE_INTEGER size = {};
    if (!file || GetFileInformationByHandleEx(file.Get(), FileBasicInfo, &times, sizeof(times)) == FALSE ||
        GetFileSizeEx(file.Get(), &size) == FALSE) {
        return {};
    }
    return {true, size.QuadPart, times.CreationTime.QuadPart, times.LastWriteTime.QuadPart,
            times.ChangeTime.QuadPart};
}

bool IsMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
           error == ERROR_BAD_PATHNAME;
}

FileHandle OpenForReading(const std::wstring& path) {
    for (DWORD pause = 1;; pause *= 2) {
        FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
        const DWORD error = GetLastError();
        if (file || error != ERROR_SHARING_VIOLATION || pause > kLongestReadPause) {
            SetLastError(error);
            return file;
        }
        Sleep(pause);
    }
}

bool ReadBytes(HANDLE file, std::string& bytes) {
    constexpr std::size_t kBlock = 16 << 20;
    for (std::size_t at = 0; at < bytes.size();) {
        DWORD count = 0;
        const auto block = static_cast<DWORD>(std::min(bytes.size() - at, kBlock));
        if (ReadFile(file, bytes.data() + at, block, &count, nullptr) == FALSE || count == 0) {
            return false;
        }
        at += count;
    }
    return true;
}

} // namespace

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

FileReading ReadWholeFile(const std::wstring& path, std::size_t limit, std::string& bytes, FileStamp& stamp) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        stamp = StampOf(path);
        const FileHandle file = OpenForReading(path);
        if (!file) {
            return IsMissing(GetLastError()) ? FileReading::Missing : FileReading::Failed;
        }
        LARGE_INTEGER size = {};
        if (GetFileType(file.Get()) != FILE_TYPE_DISK || GetFileSizeEx(file.Get(), &size) == FALSE ||
            static_cast<std::uint64_t>(size.QuadPart) > limit) {
            return FileReading::Failed;
        }
        bytes.resize(static_cast<std::size_t>(size.QuadPart));
        if (ReadBytes(file.Get(), bytes) && stamp.exists && StampOf(path) == stamp) {
            return FileReading::Done;
        }
    }
    return FileReading::Failed;
}

} // namespace mxovshare
