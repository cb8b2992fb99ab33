#include "FolderSnapshot.h"

#include <stdexcept>
#include <string_view>

namespace {

std::string ReadAll(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("a test file cannot be read");
    }
    std::string content(GetFileSize(file, nullptr), '\0');
    DWORD done = 0;
    ReadFile(file, content.data(), static_cast<DWORD>(content.size()), &done, nullptr);
    CloseHandle(file);
    content.resize(done);
    return content;
}

void Collect(const std::wstring& root, const std::wstring& inside,
             std::map<std::wstring, FileSnapshot>& files) {
    WIN32_FIND_DATAW data = {};
    const HANDLE search = FindFirstFileW((root + inside + L"*").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring_view name = data.cFileName;
        if (name == L"." || name == L"..") {
            continue;
        }
        const std::wstring path = inside + data.cFileName;
        FileSnapshot& file = files[path];
        file.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        file.isHidden = (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
        if (file.isFolder) {
            Collect(root, path + L"\\", files);
        } else {
            file.content = ReadAll(root + path);
            file.modified = static_cast<std::uint64_t>(data.ftLastWriteTime.dwHighDateTime) << 32 |
                            data.ftLastWriteTime.dwLowDateTime;
        }
    } while (FindNextFileW(search, &data));
    FindClose(search);
}

} // namespace

void PrintTo(const FileSnapshot& file, std::ostream* stream) {
    *stream << (file.isFolder ? "folder" : "file of ") << file.content.size() << " bytes, modified "
            << file.modified << (file.isHidden ? ", hidden" : "");
}

std::map<std::wstring, FileSnapshot> TakeSnapshot(const std::wstring& folder) {
    std::map<std::wstring, FileSnapshot> files;
    Collect(L"\\\\?\\" + folder + L"\\", {}, files);
    return files;
}

void RemoveTree(const std::wstring& folder) {
    const auto files = TakeSnapshot(folder);
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        const std::wstring path = L"\\\\?\\" + folder + L"\\" + file->first;
        if (file->second.isFolder) {
            RemoveDirectoryW(path.c_str());
        } else {
            DeleteFileW(path.c_str());
        }
    }
    RemoveDirectoryW(folder.c_str());
}
