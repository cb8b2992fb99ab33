#include "LongPath.h"

#include <windows.h>

namespace mxovshare {
namespace {

constexpr std::size_t kLongestPlain =
    240; // some room below MAX_PATH, since folders must leave place for a short name

std::wstring FullPath(const std::wstring& path) {
    std::wstring full(MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length > full.size()) {
        full.resize(length);
        length = GetFullPathNameW(path.c_str(), length, full.data(), nullptr);
    }
    full.resize(length < full.size() ? length : 0);
    return full;
}

} // namespace

std::wstring LongPath(const std::wstring& path) {
    if (path.empty() || path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\")) {
        return path;
    }
    std::wstring full = FullPath(path);
    if (full.size() < kLongestPlain || full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) {
        return full;
    }
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + full.substr(2) : L"\\\\?\\" + full;
}

} // namespace mxovshare
