#include "PackagePath.h"

namespace docview {

namespace {

constexpr std::wstring_view kSeparators = L"\\/";

/// Whether a part of a path leads one folder up. The system drops dots and blanks at the end of names, so
/// that
/// ".. " may do so too.
bool LeadsUp(std::wstring_view part) {
    return part.starts_with(L"..") && part.find_first_not_of(L". ") == std::wstring_view::npos;
}

} // namespace

bool LeavesPackageFolder(std::wstring_view path) {
    int depth = 0;
    while (!path.empty() && depth >= 0) {
        const std::wstring_view part = path.substr(0, path.find_first_of(kSeparators));
        path.remove_prefix(part.size() < path.size() ? part.size() + 1 : part.size());
        if (LeadsUp(part)) {
            --depth;
        } else if (!part.empty() && part != L".") {
            ++depth;
        }
    }
    return depth < 0;
}

bool IsNetworkPath(std::wstring_view path) {
    return path.size() >= 2 && kSeparators.find(path[0]) != std::wstring_view::npos &&
           kSeparators.find(path[1]) != std::wstring_view::npos;
}

} // namespace docview
