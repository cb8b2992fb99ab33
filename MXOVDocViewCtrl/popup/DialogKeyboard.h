// Dialog keys for a modeless dialog whose host's message loop does not call IsDialogMessage.
#pragma once

#include <windows.h>

namespace docview {

/// Between Start and Stop, Tab, the arrow keys, Alt with a letter, Return and Escape work in a dialog of the
/// calling thread as in any dialog. Alt+F4 and Close in the window menu close it, which a modeless dialog
/// does not do by itself. Function keys, and Ctrl with a letter that is no editing command, are left to the
/// host. Serves one dialog at a time.
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

} // namespace docview
