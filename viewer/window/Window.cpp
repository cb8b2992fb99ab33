#include "window/Window.h"

namespace viewer {

namespace {

constexpr WPARAM kShowFocus = MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS);

bool IsReturn(const MSG& message) {
    return message.message == WM_KEYDOWN && message.wParam == VK_RETURN;
}

bool IsButton(HWND window) {
    return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0;
}

} // namespace

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
    return ScaleFor(m_dpi, length);
}

void Window::ChangeDpi(UINT dpi) {
    if (dpi != m_dpi) {
        m_dpi = dpi;
        OnMetricsChanged();
        InvalidateRect(m_window, nullptr, TRUE);
    }
}

LRESULT Window::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETTINGCHANGE:
        if (wParam == SPI_SETNONCLIENTMETRICS) {
            OnMetricsChanged();
        }
        [[fallthrough]];
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        InvalidateRect(m_window, nullptr, TRUE);
        break;
    case WM_CHANGEUISTATE:
    case WM_UPDATEUISTATE:
        wParam = WithFocusSeen(wParam);
        break;
    default:
        break;
    }
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->m_window = window;
        self->m_dpi = GetDpiForWindow(window);
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

WPARAM WithFocusSeen(WPARAM request) {
    switch (LOWORD(request)) {
    case UIS_SET:
        return MAKEWPARAM(UIS_SET, HIWORD(request) & ~UISF_HIDEFOCUS);
    case UIS_INITIALIZE:
        return kShowFocus;
    default:
        return request;
    }
}

void ShowFocusIn(HWND window) {
    SendMessageW(window, WM_UPDATEUISTATE, kShowFocus, 0);
}

void ShowFocusInDialog(HWND dialog) {
    PostMessageW(dialog, WM_UPDATEUISTATE, kShowFocus, 0);
}

bool TranslateKeyInside(HWND window, MSG& message) {
    if (message.hwnd != window && !IsChild(window, message.hwnd)) {
        return false;
    }
    if (IsReturn(message) && IsButton(message.hwnd)) {
        SendMessageW(message.hwnd, BM_CLICK, 0, 0);
        return true;
    }
    return IsDialogMessageW(window, &message);
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
