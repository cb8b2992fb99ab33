// A window that takes no input.
#pragma once

#include <windows.h>

namespace viewer {

class DisabledWindow {
public:
    explicit DisabledWindow(HWND window) : m_window(EnableWindow(window, FALSE) ? nullptr : window) {}
    ~DisabledWindow() {
        if (m_window) {
            EnableWindow(m_window, TRUE);
        }
    }
    DisabledWindow(const DisabledWindow&) = delete;
    DisabledWindow& operator=(const DisabledWindow&) = delete;

private:
    HWND m_window; // null when it was disabled before
};

} // namespace viewer
