// Unsaved changes that viewers left which crashed.
#pragma once

#include "session/SessionStore.h"

#include <memory>

namespace viewer {

/// Asks about the changes in each session that was kept or left from a crash. Returns the session that the
/// user continues with, or null; the others are kept or removed as the user answers.
[[nodiscard]] std::unique_ptr<PackageSession> AskToContinue(HWND owner, SessionStore& sessions);

} // namespace viewer
