#include "ini/FileStamp.h"

#include "host/FileHandle.h"

#include <algorithm>

namespace mxovshare {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kLongestPause = 8; // milliseconds; all pauses of one reading are twice that
constexpr int kAttempts = 4;       // to read a file that changes meanwhile

constexpr std::uint64_t Wide(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32 | low;
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
        if (file || error != ERROR_SHARING_VIOLATION || pause > kLongestPause) {
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
        if (ReadFile(file, bytes.data() + at, block, &count, nullptr) == FALSE || count == 0)
            return false;
        at += count;
    }
    return true;
}

} // namespace

FileStamp StampOf(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION information = {};
    if (GetFileInformationByHandle(file, &information) == FALSE)
        return {};
    return {true, Wide(information.nFileSizeHigh, information.nFileSizeLow),
            Wide(information.ftLastWriteTime.dwHighDateTime, information.ftLastWriteTime.dwLowDateTime),
            Wide(information.nFileIndexHigh, information.nFileIndexLow), information.dwVolumeSerialNumber};
}

FileStamp StampOf(const std::wstring& path) {
    const FileHandle file(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return file ? StampOf(file.Get()) : FileStamp();
}

FileReading ReadWholeFile(const std::wstring& path, std::size_t limit, std::string& bytes, FileStamp& stamp) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const FileHandle file = OpenForReading(path);
        if (!file)
            return IsMissing(GetLastError()) ? FileReading::Missing : FileReading::Failed;
        stamp = StampOf(file.Get());
        if (!stamp.exists || stamp.size > limit || GetFileType(file.Get()) != FILE_TYPE_DISK)
            return FileReading::Failed;
        bytes.resize(static_cast<std::size_t>(stamp.size));
        if (ReadBytes(file.Get(), bytes) && StampOf(file.Get()) == stamp)
            return FileReading::Done;
    }
    return FileReading::Failed;
}

} // namespace mxovshare
