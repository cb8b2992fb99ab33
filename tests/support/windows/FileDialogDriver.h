// Works the system's file dialog through its own windows while a test is inside its modal loop.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

/// Acts on the next file dialog of this thread, again and again until it is gone: its first messages may come
/// before it takes any. Not while it still acts. One at a time.
class FileDialogDriver {
public:
    explicit FileDialogDriver(std::function<void(HWND)> act);
    ~FileDialogDriver();
    FileDialogDriver(const FileDialogDriver&) = delete;
    FileDialogDriver& operator=(const FileDialogDriver&) = delete;

    /// Types a path and confirms it.
    static void Choose(HWND dialog, const std::wstring& path);
    static void Cancel(HWND dialog);
    /// The check box with a label, or null.
    static HWND CheckBox(HWND dialog, const std::wstring& label);

private:
    UINT_PTR m_timer;
};
