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

/// Whether somebody else replaced or changed the package file since it was opened or saved here.
[[nodiscard]] bool IsSavedElsewhere(const PackageState& state);

} // namespace viewer
