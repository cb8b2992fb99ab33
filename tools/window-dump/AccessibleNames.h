// What screen readers call the parts of a window.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

struct AccessibleName {
    HWND window = nullptr;
    std::optional<std::wstring> name; ///< nothing where the platform has no object for the window's class
};

/// The names of all visible windows below one, as the platform's accessibility interface reports them.
std::vector<AccessibleName> AccessibleNames(HWND window);
