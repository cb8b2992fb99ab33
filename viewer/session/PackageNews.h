// News for the user about an open package that other programs changed.
#pragma once

#include "session/PackageWatch.h"

#include <string>
#include <vector>

namespace viewer {

enum class NewsAction { Save, Reload, Compare };

struct PackageNews {
    std::wstring text; ///< one or two sentences; empty for no news
    std::vector<NewsAction> actions;
    bool operator==(const PackageNews&) const = default;
};

/// The most important news in the state of a package.
[[nodiscard]] PackageNews FindNews(const PackageState& state, const std::wstring& packageFile);

/// That a package with these entries holds programs, and which; nothing when it holds none.
[[nodiscard]] PackageNews FindPrograms(const std::vector<mxovshare::PackageEntry>& entries);

/// Whether somebody else replaced or changed the package file since it was opened or saved here.
[[nodiscard]] bool IsSavedElsewhere(const PackageState& state);

} // namespace viewer
