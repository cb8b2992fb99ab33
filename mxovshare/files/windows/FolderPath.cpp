#include "files/FolderPath.h"

#include "common/LongPath.h"

namespace mxovshare {

namespace {

bool IsSeparator(wchar_t unit) {
    return unit == L'\\' || unit == L'/';
}

} // namespace

std::wstring FolderPath(const std::wstring& folder) {
    std::wstring path = common::LongPath(folder);
    while (path.size() > 1 && IsSeparator(path.back()) && path[path.size() - 2] != L':') {
        path.pop_back();
    }
    return path;
}

std::wstring JoinPath(const std::wstring& folder, const std::wstring& name) {
    return !folder.empty() && IsSeparator(folder.back()) ? folder + name : folder + L"\\" + name;
}

} // namespace mxovshare
