// Finding a file again whose folder is not known.
#pragma once

#include "session/WorkProgress.h"

#include <string>
#include <vector>

namespace viewer {

/// The files of this name below `folder`, at most as many as a menu shows. Links to folders are not followed.
/// Fewer when the progress is cancelled.
[[nodiscard]] std::vector<std::wstring> FindBelow(const std::wstring& folder, const std::wstring& name,
                                                  WorkProgress& progress);

} // namespace viewer
