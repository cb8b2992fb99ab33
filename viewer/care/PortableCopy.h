// A copy of what is open that depends on no file outside.
#pragma once

#include "session/WorkProgress.h"

#include <care/Bundle.h>

#include <string>

namespace viewer {

struct PortableCopy {
    mxovshare::PackageResult result;
    care::Bundle bundle;         ///< what became a copy, and what stays outside
    std::uint64_t size = 0;      ///< of the new package, bytes
    bool hidesDocuments = false; ///< its version is one that shows no additional documents
};

/// Packs a package that was unpacked into `folder` with its linked documents into `target`, which is replaced
/// in one step. The folder is left alone. Computers that links lead to are asked, so this may take long.
[[nodiscard]] PortableCopy WritePortableCopy(const std::wstring& folder, const std::wstring& target,
                                             WorkProgress& progress);

/// What was copied, what is missing, and how large it is, for the user.
[[nodiscard]] std::wstring PortableSummary(const PortableCopy& copy);

} // namespace viewer
