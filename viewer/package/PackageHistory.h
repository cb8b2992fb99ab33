// The edit history of an unpacked package.
#pragma once

#include <string>
#include <vector>

namespace viewer {

/// One entry, texts as stored.
struct HistoryLine {
    std::wstring time;
    std::wstring operation;
    std::wstring by;
    std::wstring remarks;
    bool operator==(const HistoryLine&) const = default;
};

/// All entries of the package in `folder`, which ends with a separator, the newest first.
[[nodiscard]] std::vector<HistoryLine> ReadHistory(const std::wstring& folder);

} // namespace viewer
