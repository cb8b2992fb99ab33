#include "package/Paths.h"

#include "package/Handles.h"

namespace viewer {

namespace {

bool RemoveEntry(const std::wstring& path, DWORD attributes);

bool RemoveContents(const std::wstring& folder) {
    WIN32_FIND_DATAW found = {};
    const UniqueSearch search = OwnSearch(FindFirstFileW((folder + L"\\*").c_str(), &found));
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

std::wstring FullPath(const std::wstring& path) {
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    return full.empty() ? path : full;
}

std::wstring LongForm(const std::wstring& path) {
    if (path.starts_with(L"\\\\?\\")) {
        return path;
    }
    return path.starts_with(L"\\\\") ? L"\\\\?\\UNC" + path.substr(1) : L"\\\\?\\" + path;
}

std::wstring FileName(const std::wstring& path) {
    return path.substr(path.find_last_of(L"\\/") + 1);
}

std::wstring FileStem(const std::wstring& path) {
    const std::wstring name = FileName(path);
    const std::size_t dot = name.find_last_of(L'.');
    return dot == 0 || dot == std::wstring::npos ? name : name.substr(0, dot);
}

bool FileExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool FolderExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool SamePath(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

std::wstring ProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path.substr(0, path.find_last_of(L'\\'));
        }
        path.resize(path.size() * 2);
    }
}

bool RemoveFolder(const std::wstring& folder) noexcept {
    try {
        const std::wstring path = LongForm(folder);
        const DWORD attributes = GetFileAttributesW(path.c_str());
        return attributes == INVALID_FILE_ATTRIBUTES || RemoveEntry(path, attributes);
    } catch (...) {
        return false;
    }
}

std::wstring ErrorText(unsigned long code) {
    wchar_t buffer[512] = L"";
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                  0, buffer, ARRAYSIZE(buffer), nullptr);
    while (length > 0 && buffer[length - 1] <= L' ') {
        --length;
    }
    return length > 0 ? std::wstring(buffer, length) : L"error " + std::to_wstring(code);
}

} // namespace viewer
