// The dialog keys of a modeless dialog in a host that knows nothing of it.
#pragma once

#include <windows.h>

/// While it lives, Tab, the arrow keys, Alt with a letter, Return and Escape work in a dialog of the calling
/// thread as in any dialog: the host's message loop does not hand them to IsDialogMessage. One at a time.
class DialogKeyboard {
public:
    DialogKeyboard() = default;
    ~DialogKeyboard() { Stop(); }
    DialogKeyboard(const DialogKeyboard&) = delete;
    DialogKeyboard& operator=(const DialogKeyboard&) = delete;

    void Start(HWND dialog);
    void Stop();

private:
    static LRESULT CALLBACK Hook(int code, WPARAM removal, LPARAM parameter) noexcept;

    HHOOK m_hook = nullptr;
};
