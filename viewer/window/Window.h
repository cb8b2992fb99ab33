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

    /// A length given for 96 dots per inch, in the pixels of this window.
    [[nodiscard]] int Scale(int length) const;

protected:
    /// Registers the class (its name, style, brush, icon and menu) with this base's procedure and creates the
    /// window.
    bool Create(WNDCLASSEXW windowClass, DWORD exStyle, const wchar_t* text, DWORD style, HWND parent,
                int id = 0);

    /// Handles a message; what it does not know goes to `Default`.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// What the system does with a message; when its colours or its look have changed, the window repaints.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND m_window = nullptr;
};

/// Sends a message that the system sends to top-level windows alone, such as a change of its colours, to all
/// windows inside.
void PassToDescendants(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Moves a dialog to the middle of its owner.
void CentreOn(HWND dialog, HWND owner);

} // namespace viewer
