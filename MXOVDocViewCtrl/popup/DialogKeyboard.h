// Dialog keys for a modeless dialog whose host's message loop does not call IsDialogMessage.
#pragma once

#include "common/Handles.h"

namespace docview {

/// From Start on and as long as it exists, Tab, the arrow keys, Alt with a letter, Return and Escape work in
/// a dialog of the calling thread as in any dialog. Alt+F4 and Close in the window menu close it, which a
/// modeless dialog does not do by itself. Function keys, and Ctrl with a letter that is no editing command,
/// are left to the host. Serves one dialog at a time.
class DialogKeyboard {
public:
    using CloseAction = void (*)();

    /// `close` is called when the user closes the dialog; it must not throw.
    void Start(HWND dialog, CloseAction close);

private:
    static LRESULT CALLBACK Hook(int code, WPARAM removal, LPARAM parameter) noexcept;

    common::UniqueHook m_hook;
};

} // namespace docview
