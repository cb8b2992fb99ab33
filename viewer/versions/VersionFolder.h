// The folder in which the earlier versions of one package lie: a list of files for each version, and packages
// of the files that were new in one.
#pragma once

#include "mxovpackage.h"
#include "versions/Version.h"

namespace viewer {

/// What a folder holds.
struct VersionList {
    std::vector<Version> versions;     ///< the oldest first
    std::vector<std::wstring> damaged; ///< identifiers of those that cannot be read
};

/// The identifiers of the versions in a folder, the oldest first.
[[nodiscard]] std::vector<std::wstring> VersionIds(const std::wstring& folder);

/// Reads all versions of a folder; none when it is not there.
[[nodiscard]] VersionList ReadVersions(const std::wstring& folder);

/// Path of the package with the files that were new in a version.
[[nodiscard]] std::wstring ContentsPath(const std::wstring& folder, const std::wstring& id);

/// Removes a version from its folder. Contents that no other one needs are left to `SweepVersions`.
void DropVersion(const std::wstring& folder, const std::wstring& id) noexcept;

/// Removes what no version needs: contents of dropped ones once they make a quarter of their package, and
/// what a crash left. Removes the folder when nothing remains. No version is kept there meanwhile.
void SweepVersions(const std::wstring& folder);

} // namespace viewer
