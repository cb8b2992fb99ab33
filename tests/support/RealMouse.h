// The system's own mouse, for tests.
#pragma once

#include <windows.h>

#include <functional>

/// Handles messages until the condition holds; false when it does not in time (milliseconds).
bool PumpUntil(const std::function<bool()>& condition, ULONGLONG patience = 10000);

/// Moves the mouse and presses its left button as a person does: through the system's input queue. Counts
/// what reaches the windows of the calling thread while it lives. One at a time.
class RealMouse {
public:
    RealMouse();
    ~RealMouse();
    RealMouse(const RealMouse&) = delete;
    RealMouse& operator=(const RealMouse&) = delete;

    /// Moves to a point in client coordinates of a window.
    void MoveTo(HWND window, POINT client) const;
    /// The same until the window receives the move, at that point or the pixel right of it: a window manager
    /// may still be placing the window. False when it never does.
    [[nodiscard]] bool Reach(HWND window, POINT client) const;
    void Press() const;
    void Release() const;
    void Click() const;
    /// Both clicks bear one time, however busy the machine is.
    void DoubleClick() const;

    /// Whether this many button messages have come in.
    bool Delivered(int buttonMessages) const;

    /// The window that got the last button message.
    HWND LastReceiver() const;

private:
    static LRESULT CALLBACK Watch(int code, WPARAM message, LPARAM info);

    HHOOK m_hook;
};
