// What an unpacked package holds now.
#pragma once

#include <care/Information.h>

namespace viewer {

/// Lists the files of a package that was unpacked into `folder` and reads its information file. Checksums are
/// not read, and what office programs keep beside open documents is left out.
[[nodiscard]] mxovshare::PackageResult ReadUnpacked(const std::wstring& folder,
                                                    care::PackageContent& content);

} // namespace viewer
