#include "files/FolderPath.h"

#include "common/LongPath.h"

#include <algorithm>

namespace mxovshare {

std::wstring FolderPath(const std::wstring& folder) {
    return common::LongPath(folder);
}

std::wstring JoinPath(const std::wstring& folder, const std::wstring& name) {
    std::wstring path = folder.ends_with(L'/') || folder.ends_with(L'\\') ? folder : folder + L"/";
    path += name;
    std::ranges::replace(path.begin() + static_cast<std::ptrdiff_t>(folder.size()), path.end(), L'\\', L'/');
    return path;
}

} // namespace mxovshare
