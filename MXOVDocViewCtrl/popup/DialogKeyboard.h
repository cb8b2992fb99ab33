// The dialog keys of a modeless dialog in a host that knows nothing of it.
#pragma once

#include <windows.h>

/// While it lives, Tab, the arrow keys, Alt with a letter, Return and Escape work in a dialog of the calling
/// thread as in any dialog: the host's message loop does not hand them to IsDialogMessage. Alt+F4 and Close
/// in the window's menu end it, which a modeless dialog does not do by itself. Function keys, and Ctrl with a
/// letter that edits nothing, are the host's. One at a time.
class DialogKeyboard {
public:
    DialogKeyboard() = default;
    ~DialogKeyboard() { Stop(); }
    DialogKeyboard(const DialogKeyboard&) = delete;
    DialogKeyboard& operator=(const DialogKeyboard&) = delete;

    using CloseAction = void (*)();

    /// `close` is called when the user closes the dialog; it must not throw.
    void Start(HWND dialog, CloseAction close);
    void Stop();

private:
    static LRESULT CALLBACK Hook(int code, WPARAM removal, LPARAM parameter) noexcept;

    HHOOK m_hook = nullptr;
};
