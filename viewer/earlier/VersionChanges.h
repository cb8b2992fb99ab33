// How versions of a package differ from each other and from what is open.
#pragma once

#include "versions/Version.h"

#include <care/compare/Comparison.h>

namespace viewer {

/// The files of a version as the comparison of packages takes them; without the information file's sections.
[[nodiscard]] care::PackageContent ContentOf(const Version& version);

/// What changed from one version to the next one, in one line such as "Changed: a.nc, b.nc; Added: c.pdf".
[[nodiscard]] std::wstring ChangesText(const Version& before, const Version& after);

/// Whether every file of a version, the information file too, is in the content as it was, and no other.
[[nodiscard]] bool IsSame(const Version& version, const care::PackageContent& content);

/// The number of a text for a kind of change.
[[nodiscard]] unsigned KindText(care::FileChangeKind kind);

} // namespace viewer
