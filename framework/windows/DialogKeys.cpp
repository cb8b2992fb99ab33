#include "DialogKeys.h"

#include <array>

namespace {

/// The control on which Tab (forward) or Shift+Tab would end a round through the dialog.
HWND TabEnd(HWND dialog, bool forward) noexcept {
    const HWND first = ::GetNextDlgTabItem(dialog, nullptr, FALSE);
    return forward && first ? ::GetNextDlgTabItem(dialog, first, TRUE) : first;
}

LRESULT DialogCode(HWND control, MSG& message) noexcept {
    return ::SendMessage(control, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
}

/// The letter behind the first single ampersand; 0 when there is none.
TCHAR Mnemonic(LPCTSTR text) noexcept {
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

bool HasMnemonic(HWND dialog, TCHAR key) noexcept {
    TCHAR pressed[] = {key, 0};
    ::CharUpper(pressed);
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        constexpr int kLongest = 256;
        std::array<TCHAR, kLongest> text{};
        if (!::IsWindowVisible(child) || !::IsWindowEnabled(child) ||
            (::SendMessage(child, WM_GETDLGCODE, 0, 0) & DLGC_WANTCHARS) ||
            !::GetWindowText(child, text.data(), kLongest)) {
            continue;
        }
        TCHAR own[] = {Mnemonic(text.data()), 0};
        ::CharUpper(own);
        if (own[0] == pressed[0]) {
            return true;
        }
    }
    return false;
}

bool TranslateTab(HWND dialog, HWND focus, MSG& message) noexcept {
    const bool forward = ::GetKeyState(VK_SHIFT) >= 0;
    if (::GetKeyState(VK_CONTROL) < 0 || (DialogCode(focus, message) & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) ||
        focus == TabEnd(dialog, forward)) {
        return false;
    }
    return ::IsDialogMessage(dialog, &message);
}

bool TranslateEnter(HWND focus, MSG& message) noexcept {
    if (!(DialogCode(focus, message) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) {
        return false;
    }
    ::SendMessage(focus, BM_CLICK, 0, 0);
    return true;
}

bool TranslateArrow(HWND dialog, HWND focus, MSG& message) noexcept {
    if (DialogCode(focus, message) & (DLGC_WANTARROWS | DLGC_WANTALLKEYS)) {
        ::DispatchMessage(&message); // a container may have arrows of its own; these are the control's
        return true;
    }
    return ::IsDialogMessage(dialog, &message);
}

bool TranslateKeyDown(HWND dialog, HWND focus, MSG& message) noexcept {
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

} // namespace

bool AfxTranslateDialogKey(HWND dialog, MSG& message) noexcept {
    const HWND focus = message.hwnd;
    if (!focus || !::IsChild(dialog, focus)) {
        return false;
    }
    switch (message.message) {
    case WM_KEYDOWN:
        return TranslateKeyDown(dialog, focus, message);
    case WM_SYSCHAR:
        return HasMnemonic(dialog, static_cast<TCHAR>(message.wParam)) && ::IsDialogMessage(dialog, &message);
    default:
        return false;
    }
}

void AfxEnterDialog(HWND dialog, bool last) noexcept {
    const HWND control = TabEnd(dialog, last);
    if (control) {
        ::SendMessage(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    } else {
        ::SetFocus(dialog);
    }
}
