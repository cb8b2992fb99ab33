// Long work that the user waits for.
#pragma once

#include "session/WorkProgress.h"

#include <functional>
#include <string>

#include <windows.h>

namespace viewer {

/// Runs `work` on a thread of its own and returns at its end. When it takes long, a window named `title`
/// shows its progress over `owner`, which takes no input meanwhile, and cancels it. Work that does not end
/// within two seconds after that is left to itself, so it shares what it uses; false is returned then.
[[nodiscard]] bool WaitForWork(HWND owner, const std::wstring& title,
                               std::function<void(WorkProgress&)> work);

} // namespace viewer
