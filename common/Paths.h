// Comparing paths, and where a module lies.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace common {

/// Whether two names or full paths are the same but for case, as the file system compares them.
[[nodiscard]] inline bool IsSamePath(std::wstring_view left, std::wstring_view right) noexcept {
    const int length = static_cast<int>(left.size());
    return left.size() == right.size() &&
           (length == 0 ||
            CompareStringOrdinal(left.data(), length, right.data(), length, TRUE) == CSTR_EQUAL);
}

/// Compares two names as the file system does: less than, equal to or greater than 0.
[[nodiscard]] inline int ComparePaths(std::wstring_view left, std::wstring_view right) noexcept {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) -
           CSTR_EQUAL;
}

/// `text` in lower case, by the rules of the system.
[[nodiscard]] inline std::wstring LowerCase(std::wstring text) {
    CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

/// Path of a loaded module, of the program for null; empty when there is no such module.
[[nodiscard]] inline std::wstring ModulePath(HMODULE module) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

/// Folder of a loaded module, of the program for null, without a separator at the end.
[[nodiscard]] inline std::wstring ModuleFolder(HMODULE module) {
    const std::wstring path = ModulePath(module);
    const std::size_t end = path.rfind(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

} // namespace common
