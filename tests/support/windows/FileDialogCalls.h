// Records how this program sets up the system's file dialog, which is then cancelled without being shown.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include <shobjidl.h>

/// Replaces the methods of the system's dialog until the end of its scope. One at a time.
class FileDialogCalls {
public:
    FileDialogCalls();
    ~FileDialogCalls();
    FileDialogCalls(const FileDialogCalls&) = delete;
    FileDialogCalls& operator=(const FileDialogCalls&) = delete;

    int shown = 0; ///< how often it would have been shown
    bool opens = false;
    HWND owner = nullptr;
    std::wstring extension;
    std::wstring name;
    std::vector<std::wstring> types; ///< each with its pattern after "|"
    FILEOPENDIALOGOPTIONS options = 0;
};
