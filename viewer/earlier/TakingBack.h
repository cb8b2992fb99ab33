// The changes that bring an earlier version back into what is open.
#pragma once

#include "mxovchange.h"
#include "versions/Version.h"

#include <care/Information.h>

namespace viewer {

/// An earlier version that was unpacked into a folder.
struct RestoredVersion {
    const Version& version;
    std::wstring folder; ///< without a separator at the end
    const care::Sections& sections;
};

/// What makes what is open the same as the version. The history stays as it is: what was done since then is
/// part of it.
[[nodiscard]] mxovshare::PackageChanges TakeAllBack(const RestoredVersion& restored,
                                                    const care::PackageContent& open);

/// What brings one file back. An additional document that was removed is listed again, as it was described.
[[nodiscard]] mxovshare::PackageChanges
TakeFileBack(const RestoredVersion& restored, const std::wstring& name, const care::PackageContent& open);

/// The name of the information file of a version; empty for none.
[[nodiscard]] std::wstring InformationNameOf(const Version& version);

} // namespace viewer
