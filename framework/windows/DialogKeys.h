// Keyboard messages of a dialog that lives inside a container's window.
#pragma once

#include "core/Types.h"

/// Handles the keys that move about in a dialog: Tab and Shift+Tab (not past its last or first control, which
/// is the container's business), arrows, Alt with a control's letter, and Enter on a push button. TRUE when
/// the message was such a key and is done with. Enter elsewhere and Escape never reach the dialog as a
/// command; a key that the focused control wants for itself, and every other one, is left to be dispatched.
bool AfxTranslateDialogKey(HWND dialog, MSG& message) noexcept;

/// Gives the keyboard to the first control of a dialog that takes it, or to the last.
void AfxEnterDialog(HWND dialog, bool last) noexcept;
