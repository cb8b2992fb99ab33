#include "window/Window.h"

namespace viewer {

Window::~Window() {
    if (m_window) {
        SetWindowLongPtrW(m_window, GWLP_USERDATA, 0); // the part that handles messages is gone
        DestroyWindow(m_window);
    }
}

bool Window::Create(WNDCLASSEXW windowClass, DWORD exStyle, const wchar_t* text, DWORD style, HWND parent,
                    int id) {
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    if (!RegisterClassExW(&windowClass) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
        return false;
    }
    const bool child = (style & WS_CHILD) != 0;
    const int place = child ? 0 : CW_USEDEFAULT;
    return CreateWindowExW(exStyle, windowClass.lpszClassName, text, style, place, place, place, place,
                           parent, child ? reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)) : nullptr,
                           windowClass.hInstance, this) != nullptr;
}

int Window::Scale(int length) const {
    return MulDiv(length, static_cast<int>(GetDpiForWindow(m_window)), USER_DEFAULT_SCREEN_DPI);
}

LRESULT Window::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SYSCOLORCHANGE || message == WM_THEMECHANGED || message == WM_SETTINGCHANGE) {
        InvalidateRect(m_window, nullptr, TRUE);
    }
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    LRESULT result = 0;
    try {
        result = self->OnMessage(message, wParam, lParam);
    } catch (...) {
        // Only memory can run out here; the message counts as handled and the window stays as it is.
        result = message == WM_CREATE ? -1 : 0;
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->m_window = nullptr;
    }
    return result;
}

void PassToDescendants(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    MSG passed = {nullptr, message, wParam, lParam, 0, {}};
    const auto pass = [](HWND descendant, LPARAM data) -> BOOL {
        const MSG& change = *reinterpret_cast<const MSG*>(data);
        SendMessageW(descendant, change.message, change.wParam, change.lParam);
        return TRUE;
    };
    EnumChildWindows(window, pass, reinterpret_cast<LPARAM>(&passed));
}

void CentreOn(HWND dialog, HWND owner) {
    RECT outer = {};
    RECT inner = {};
    GetWindowRect(owner, &outer);
    GetWindowRect(dialog, &inner);
    const int left = (outer.left + outer.right - (inner.right - inner.left)) / 2;
    const int top = (outer.top + outer.bottom - (inner.bottom - inner.top)) / 2;
    SetWindowPos(dialog, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace viewer
