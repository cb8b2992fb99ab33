// The system's own mouse, for tests.
#pragma once

#include <windows.h>

#include <functional>

/// Handles messages until the condition holds; false when it does not in time (milliseconds).
bool PumpUntil(const std::function<bool()>& condition, ULONGLONG patience = 60000);

/// Sends a mouse message of SendInput that bears its place on the screen, in pixels. A message without one
/// can go astray: the display server's report that a window came up under its own pointer may move the mouse
/// just before. `time`: of the message, in milliseconds since the system started; 0 for now.
void SendMouse(DWORD flags, POINT screen, DWORD time = 0);

/// Moves the mouse and presses its left button as a person does: through the system's input queue. Counts
/// what reaches the windows of the calling thread while it lives. One at a time.
class RealMouse {
public:
    RealMouse();
    ~RealMouse();
    RealMouse(const RealMouse&) = delete;
    RealMouse& operator=(const RealMouse&) = delete;

    /// Moves to a point in client coordinates of a window.
    void MoveTo(HWND window, POINT client);
    /// The same until the window receives the move, at that point or the pixel right of it: a window manager
    /// may still be placing the window. False when it never does.
    [[nodiscard]] bool Reach(HWND window, POINT client);
    /// Buttons are pressed and released at the place of the last move.
    void Press(DWORD button = MOUSEEVENTF_LEFTDOWN) const;
    void Release(DWORD button = MOUSEEVENTF_LEFTUP) const;
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
    POINT m_place = {}; // on the screen
};
