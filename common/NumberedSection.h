// Names of numbered sections of an information file.
#pragma once

#include <algorithm>
#include <limits>
#include <set>
#include <string>

namespace common {

/// Name of the next section "PREFIX_n": n is one more than the highest in use, or, when an int holds no more,
/// the highest number that no section has. `names` returns the names of all sections that begin with the
/// prefix; it is called in that case only.
template <class Names>
[[nodiscard]] std::wstring NextSection(const std::wstring& prefix, int highest, Names names) {
    constexpr int kLargest = std::numeric_limits<int>::max();
    const std::wstring start = prefix + L"_";
    if (highest < kLargest) {
        return start + std::to_wstring(highest + 1);
    }
    std::set<std::wstring> used; // numbers, since prefixes may differ in case
    for (const std::wstring& name : names()) {
        used.insert(name.substr(std::min(start.size(), name.size())));
    }
    int number = kLargest;
    while (used.contains(std::to_wstring(number))) {
        --number;
    }
    return start + std::to_wstring(number);
}

} // namespace common
