// Windows of another process as JSON.
#pragma once

#include <windows.h>

#include <string>

/// The frame and the other visible top-level windows of its process with everything inside them, all at one
/// moment. Throws std::runtime_error when one does not answer.
[[nodiscard]] std::string WindowsJson(HWND frame);

/// A top-level window alone, or, for null, an object without a text.
[[nodiscard]] std::string TopLevelJson(HWND window);
