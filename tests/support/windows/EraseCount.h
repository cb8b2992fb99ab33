// Counts how often a window erases its background.
#pragma once

#include <windows.h>

#include <commctrl.h>

/// Watches one window until the end of its scope.
class EraseCount {
public:
    explicit EraseCount(HWND window) : m_window(window) {
        SetWindowSubclass(m_window, Watch, reinterpret_cast<UINT_PTR>(this), 0);
    }
    ~EraseCount() { RemoveWindowSubclass(m_window, Watch, reinterpret_cast<UINT_PTR>(this)); }
    EraseCount(const EraseCount&) = delete;
    EraseCount& operator=(const EraseCount&) = delete;

    int count = 0;

private:
    static LRESULT CALLBACK Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR self,
                                  DWORD_PTR /*data*/) {
        reinterpret_cast<EraseCount*>(self)->count += message == WM_ERASEBKGND ? 1 : 0;
        return DefSubclassProc(window, message, wParam, lParam);
    }

    HWND m_window;
};
