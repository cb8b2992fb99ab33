// Keyboard messages of a dialog that lives inside a container's window.
#pragma once

#include <windows.h>

#include <array>

namespace common {

namespace dialogkeys {

/// The control on which Tab (forward) or Shift+Tab would end a round through the dialog.
inline HWND TabEnd(HWND dialog, bool forward) noexcept {
    const HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
    return forward && first ? GetNextDlgTabItem(dialog, first, TRUE) : first;
}

inline LRESULT DialogCode(HWND control, MSG& message) noexcept {
    return SendMessageW(control, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
}

/// The letter behind the first single ampersand; 0 when there is none.
inline wchar_t Mnemonic(const wchar_t* text) noexcept {
    for (; *text; ++text) {
        if (text[0] == L'&' && text[1] != L'&') {
            return text[1];
        }
        if (text[0] == L'&') {
            ++text;
        }
    }
    return 0;
}

inline bool HasMnemonic(HWND dialog, wchar_t key) noexcept {
    wchar_t pressed[] = {key, 0};
    CharUpperW(pressed);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        constexpr int kLongest = 256;
        std::array<wchar_t, kLongest> text{};
        if (!IsWindowVisible(child) || !IsWindowEnabled(child) ||
            (SendMessageW(child, WM_GETDLGCODE, 0, 0) & DLGC_WANTCHARS) ||
            !GetWindowTextW(child, text.data(), kLongest)) {
            continue;
        }
        wchar_t own[] = {Mnemonic(text.data()), 0};
        CharUpperW(own);
        if (own[0] == pressed[0]) {
            return true;
        }
    }
    return false;
}

inline bool TranslateTab(HWND dialog, HWND focus, MSG& message) noexcept {
    const bool forward = GetKeyState(VK_SHIFT) >= 0;
    if (GetKeyState(VK_CONTROL) < 0 || (DialogCode(focus, message) & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) ||
        focus == TabEnd(dialog, forward)) {
        return false;
    }
    return IsDialogMessageW(dialog, &message);
}

inline bool TranslateEnter(HWND focus, MSG& message) noexcept {
    if (!(DialogCode(focus, message) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) {
        return false;
    }
    SendMessageW(focus, BM_CLICK, 0, 0);
    return true;
}

inline bool TranslateArrow(HWND dialog, HWND focus, MSG& message) noexcept {
    if (DialogCode(focus, message) & (DLGC_WANTARROWS | DLGC_WANTALLKEYS)) {
        DispatchMessageW(&message); // a container may have arrows of its own; these are the control's
        return true;
    }
    return IsDialogMessageW(dialog, &message);
}

inline bool TranslateKeyDown(HWND dialog, HWND focus, MSG& message) noexcept {
    switch (message.wParam) {
    case VK_TAB:
        return TranslateTab(dialog, focus, message);
    case VK_RETURN:
        return TranslateEnter(focus, message);
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        return TranslateArrow(dialog, focus, message);
    default:
        return false;
    }
}

} // namespace dialogkeys

/// Handles the keys that move about in a dialog: Tab and Shift+Tab (not past its last or first control, which
/// is the container's business), arrows, Alt with a control's letter, and Enter on a push button. TRUE when
/// the message was such a key and is done with. Enter elsewhere and Escape never reach the dialog as a
/// command; a key that the focused control wants for itself, and every other one, is left to be dispatched.
inline bool TranslateDialogKey(HWND dialog, MSG& message) noexcept {
    const HWND focus = message.hwnd;
    if (!focus || !IsChild(dialog, focus)) {
        return false;
    }
    switch (message.message) {
    case WM_KEYDOWN:
        return dialogkeys::TranslateKeyDown(dialog, focus, message);
    case WM_SYSCHAR:
        return dialogkeys::HasMnemonic(dialog, static_cast<wchar_t>(message.wParam)) &&
               IsDialogMessageW(dialog, &message);
    default:
        return false;
    }
}

/// Gives the keyboard to the first control of a dialog that takes it, or to the last.
inline void EnterDialog(HWND dialog, bool last) noexcept {
    if (const HWND control = dialogkeys::TabEnd(dialog, last)) {
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    } else {
        SetFocus(dialog);
    }
}

} // namespace common
