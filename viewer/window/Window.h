// The base of the viewer's own windows.
#pragma once

#include <windows.h>

namespace viewer {

/// A window whose messages arrive in a member function. The object outlives its window.
class Window {
public:
    Window() = default;
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    [[nodiscard]] HWND Handle() const { return m_window; }

    /// The dots per inch that the window is laid out for: at first those that the system reports for it.
    [[nodiscard]] UINT Dpi() const { return m_dpi; }

    /// Lays the window and the windows inside out for other dots per inch; its owner then places it.
    void ChangeDpi(UINT dpi);

    /// A length given for 96 dots per inch, in the pixels of this window.
    [[nodiscard]] int Scale(int length) const;

protected:
    /// Registers the class (its name, style, brush, icon and menu) with this base's procedure and creates the
    /// window.
    bool Create(WNDCLASSEXW windowClass, DWORD exStyle, const wchar_t* text, DWORD style, HWND parent,
                int id = 0);

    /// Handles a message; what it does not know goes to `Default`.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// The dots per inch or the system's fonts have changed: makes fonts and pictures anew and passes the
    /// dots on to the windows inside.
    virtual void OnMetricsChanged() {}

    /// What the system does with a message; when its colours or its look have changed, the window repaints.
    /// The focus inside stays visible, also for users of the mouse.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND m_window = nullptr;
    UINT m_dpi = USER_DEFAULT_SCREEN_DPI;
};

/// A length given for 96 dots per inch, in pixels for others.
[[nodiscard]] inline int ScaleFor(UINT dpi, int length) {
    return MulDiv(length, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI);
}

/// The request of WM_CHANGEUISTATE or WM_UPDATEUISTATE, without hiding the focus.
[[nodiscard]] WPARAM WithFocusSeen(WPARAM request);

/// Makes the focus inside a window visible, also for users of the mouse.
void ShowFocusIn(HWND window);

/// The same for a dialog that is being created, which hides the focus at the end of that.
void ShowFocusInDialog(HWND dialog);

/// Handles a key as a dialog does for the controls inside a window; Enter presses the button that has the
/// focus. False when the message is for another window or is no such key.
[[nodiscard]] bool TranslateKeyInside(HWND window, MSG& message);

/// Sends a message that the system sends to top-level windows alone, such as a change of its colours, to all
/// windows inside.
void PassToDescendants(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Moves a dialog to the middle of its owner.
void CentreOn(HWND dialog, HWND owner);

} // namespace viewer
