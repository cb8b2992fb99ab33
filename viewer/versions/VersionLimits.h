// How many earlier versions stay.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace viewer {

struct VersionLimits {
    std::size_t versions = 10;                       ///< of each package; beyond them one of each day
    std::uint64_t bytes = std::uint64_t{2048} << 20; ///< of all packages together
};

/// Those of a package's versions that are too many: beyond the newest `most` all but the last one of each
/// day, in the user's time. `ids` are sorted.
[[nodiscard]] std::vector<std::wstring> SurplusVersions(const std::vector<std::wstring>& ids,
                                                        std::size_t most);

} // namespace viewer
