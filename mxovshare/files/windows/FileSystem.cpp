#include "files/FileSystem.h"

#include "common/LongPath.h"

namespace mxovshare {

namespace {

// Unpacked files are meant to be edited, so none is read-only.
DWORD AttributesOfNew(bool isHidden) {
    return FILE_ATTRIBUTE_ARCHIVE | (isHidden ? FILE_ATTRIBUTE_HIDDEN : 0);
}

} // namespace

const DWORD kNoRoom = ERROR_DISK_FULL;

PathStatus StatusOfPath(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(common::LongPath(path).c_str(), GetFileExInfoStandard, &data)) {
        return {.error = GetLastError()};
    }
    return {.exists = true,
            .isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
            .size = std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow,
            .written = data.ftLastWriteTime};
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(common::LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

DWORD MakeFolder(const std::wstring& path) {
    return CreateDirectoryW(common::LongPath(path).c_str(), nullptr) ? ERROR_SUCCESS : GetLastError();
}

void RemoveFolder(const std::wstring& path) {
    RemoveDirectoryW(path.c_str());
}

void RemoveFile(const std::wstring& path) {
    DeleteFileW(path.c_str());
}

std::optional<std::uint64_t> RoomIn(const std::wstring& folder) {
    ULARGE_INTEGER room = {};
    if (!GetDiskFreeSpaceExW(folder.c_str(), &room, nullptr, nullptr)) {
        return {};
    }
    return room.QuadPart;
}

common::UniqueHandle CreateNewFile(const std::wstring& path, bool isHidden, DWORD& error) {
    common::UniqueHandle file =
        common::OwnFile(CreateFileW(common::LongPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_NEW, AttributesOfNew(isHidden), nullptr));
    error = file ? ERROR_SUCCESS : GetLastError();
    return file;
}

// With the attributes, since Wine 10 takes "hidden" from a file whose time alone is set.
void SetWritten(HANDLE file, const FILETIME& written, bool isHidden) {
    FILE_BASIC_INFO information = {};
    information.LastWriteTime = {{written.dwLowDateTime, static_cast<LONG>(written.dwHighDateTime)}};
    information.FileAttributes = AttributesOfNew(isHidden);
    SetFileInformationByHandle(file, FileBasicInfo, &information, sizeof information);
}

} // namespace mxovshare
