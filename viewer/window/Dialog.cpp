#include "window/Dialog.h"

#include "window/Window.h"

#include <utility>

namespace viewer {

void Dialog::ShowModal(int id, HWND owner) {
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), owner, Procedure,
                    reinterpret_cast<LPARAM>(this));
}

bool Dialog::End() const {
    EndDialog(m_handle, IDCANCEL);
    return true;
}

bool Dialog::Create(int id, HWND owner) {
    return CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), owner, Procedure,
                              reinterpret_cast<LPARAM>(this)) != nullptr;
}

INT_PTR CALLBACK Dialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    }
    auto* self = reinterpret_cast<Dialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    try {
        return self && self->Dispatch(dialog, message, wParam, lParam);
    } catch (...) {
        return TRUE;
    }
}

bool Dialog::Dispatch(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        m_handle = dialog;
        m_dpi = GetDpiForWindow(dialog);
        CentreOn(dialog, GetWindow(dialog, GW_OWNER));
        ShowFocusInDialog(dialog);
        return OnInit();
    case WM_DPICHANGED:
        OnDpiChanged(std::exchange(m_dpi, HIWORD(wParam)), HIWORD(wParam));
        return false;
    case WM_NCDESTROY:
        m_handle = nullptr;
        return false;
    default:
        return OnMessage(message, wParam, lParam);
    }
}

} // namespace viewer
