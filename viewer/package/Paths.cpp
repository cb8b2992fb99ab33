#include "package/Paths.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/Paths.h"

namespace viewer {

namespace {

bool RemoveEntry(const std::wstring& path, DWORD attributes);

bool RemoveContents(const std::wstring& folder) {
    WIN32_FIND_DATAW found = {};
    const common::UniqueSearch search = common::OwnSearch(FindFirstFileW((folder + L"\\*").c_str(), &found));
    if (!search) {
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    }
    bool removed = true;
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") {
            removed = RemoveEntry(folder + L"\\" + name, found.dwFileAttributes) && removed;
        }
    } while (FindNextFileW(search.get(), &found));
    return removed;
}

bool RemoveEntry(const std::wstring& path, DWORD attributes) {
    if (attributes & FILE_ATTRIBUTE_READONLY) {
        SetFileAttributesW(path.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
    }
    if (!(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        return DeleteFileW(path.c_str());
    }
    if (!(attributes & FILE_ATTRIBUTE_REPARSE_POINT) && !RemoveContents(path)) {
        return false;
    }
    return RemoveDirectoryW(path.c_str());
}

} // namespace

std::wstring FileName(const std::wstring& path) {
    return path.substr(path.find_last_of(L"\\/") + 1);
}

std::wstring ParentFolder(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L"\\/");
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

std::wstring FileStem(const std::wstring& path) {
    const std::wstring name = FileName(path);
    const std::size_t dot = name.find_last_of(L'.');
    return dot == 0 || dot == std::wstring::npos ? name : name.substr(0, dot);
}

bool IsPackageName(const std::wstring& path) {
    constexpr std::wstring_view kExtension = L".mxov";
    return path.size() > kExtension.size() &&
           common::IsSamePath(std::wstring_view(path).substr(path.size() - kExtension.size()), kExtension);
}

bool FileExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool FolderExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

FILETIME LastWriteOf(const std::wstring& file) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    GetFileAttributesExW(common::LongPath(file).c_str(), GetFileExInfoStandard, &data);
    return data.ftLastWriteTime;
}

std::vector<FolderEntry> EntriesOf(const std::wstring& folder) {
    std::vector<FolderEntry> entries;
    WIN32_FIND_DATAW found = {};
    const std::wstring pattern = common::LongPath(folder + L"\\*");
    const common::UniqueSearch search = common::OwnSearch(FindFirstFileW(pattern.c_str(), &found));
    for (bool more = bool(search); more; more = FindNextFileW(search.get(), &found)) {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") {
            entries.push_back({name, (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                               (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0});
        }
    }
    return entries;
}

bool MakeFolders(const std::wstring& folder) {
    if (folder.empty() || FolderExists(folder)) {
        return !folder.empty();
    }
    MakeFolders(ParentFolder(folder));
    return CreateDirectoryW(folder.c_str(), nullptr) || FolderExists(folder);
}

bool RemoveFolder(const std::wstring& folder) noexcept {
    try {
        const std::wstring path = common::ExtendedPath(folder);
        const DWORD attributes = GetFileAttributesW(path.c_str());
        return attributes == INVALID_FILE_ATTRIBUTES || RemoveEntry(path, attributes);
    } catch (...) {
        return false;
    }
}

} // namespace viewer
