// A dialog box of the program's resources, whose messages an object handles.
#pragma once

#include <windows.h>

#include <string>

namespace viewer {

/// Base class. Opens centred on its owner and shows the focus. An exception thrown by a handler is
/// caught; the dialog stays open and unchanged.
class Dialog {
public:
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    /// Null while there is no window.
    [[nodiscard]] HWND Handle() const { return m_handle; }

protected:
    Dialog() = default;

    /// Shows the dialog of a template and returns once `End` was called.
    void ShowModal(int id, HWND owner);

    /// Closes it, from a handler. True always: the message is handled.
    bool End() const;

    /// Creates it, hidden, for a message loop of the caller. False when it cannot be created.
    [[nodiscard]] bool Create(int id, HWND owner);

    [[nodiscard]] HWND Item(int id) const { return GetDlgItem(m_handle, id); }
    void SetItemText(int id, const std::wstring& text) const { SetDlgItemTextW(m_handle, id, text.c_str()); }

    /// Fills the dialog. Returns whether the first control is to have the focus; false: it is set already.
    virtual bool OnInit() = 0;

    /// Whether the message was handled.
    virtual bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// Follows the dots per inch where the system, which scales the controls, does not.
    virtual void OnDpiChanged(UINT before, UINT after) = 0;

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    bool Dispatch(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_handle = nullptr;
    UINT m_dpi = USER_DEFAULT_SCREEN_DPI;
};

} // namespace viewer
