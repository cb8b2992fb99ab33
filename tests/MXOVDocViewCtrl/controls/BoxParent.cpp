#include "BoxParent.h"

#include <ostream>

namespace {

constexpr wchar_t kClassName[] = L"BoxParent";

void RegisterParentClass(WNDPROC procedure) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    RegisterClassW(&windowClass); // fails harmlessly for the second parent
}

HWND AddChild(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style, const RECT& place,
              int identifier) {
    return CreateWindowExW(0, className, text, WS_CHILD | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(identifier)), nullptr, nullptr);
}

} // namespace

BoxParent::BoxParent() {
    RegisterParentClass(Procedure);
    m_window = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kClassName, L"", WS_POPUP | WS_VISIBLE, 100,
                               100, kWidth, kHeight, nullptr, nullptr, nullptr, this);
    Paint();
}

BoxParent::~BoxParent() {
    DestroyWindow(m_window);
}

HWND BoxParent::AddGroupBox(const RECT& place, const wchar_t* title, int identifier) const {
    return AddChild(m_window, L"Button", title, WS_VISIBLE | BS_GROUPBOX, place, identifier);
}

HWND BoxParent::AddControl(const RECT& place, int identifier, DWORD style) const {
    return AddChild(m_window, L"Static", L"", style, place, identifier);
}

void BoxParent::Paint() const {
    RedrawWindow(m_window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

LRESULT CALLBACK BoxParent::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const create = reinterpret_cast<CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* const self = reinterpret_cast<BoxParent*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_COMMAND && self != nullptr) {
        const Command command{wParam, reinterpret_cast<HWND>(lParam)};
        self->m_commands.push_back(command);
        if (self->onCommand) {
            self->onCommand(command);
        }
        return 0;
    }
    if (message == WM_ERASEBKGND && self != nullptr) {
        RECT client;
        GetClientRect(window, &client);
        HBRUSH brush = CreateSolidBrush(kFace);
        FillRect(reinterpret_cast<HDC>(wParam), &client, brush);
        DeleteObject(brush);
        ++self->m_erasures;
        return 1;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

RECT PlaceOf(HWND window) {
    RECT rect;
    GetWindowRect(window, &rect);
    MapWindowPoints(HWND_DESKTOP, GetParent(window), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

bool operator==(const RECT& left, const RECT& right) {
    return EqualRect(&left, &right) != FALSE;
}

std::ostream& operator<<(std::ostream& stream, const RECT& rect) {
    return stream << '(' << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom << ')';
}

bool IsShown(HWND window) {
    return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

LRESULT SendMouse(HWND window, UINT message, POINT point, WPARAM keys) {
    return SendMessageW(window, message, keys, MAKELPARAM(point.x, point.y));
}

void Click(HWND window, POINT point) {
    SendMouse(window, WM_LBUTTONDOWN, point, MK_LBUTTON);
    SendMouse(window, WM_LBUTTONUP, point);
}

RECT InvalidPart(HWND window) {
    RECT rect{};
    GetUpdateRect(window, &rect, FALSE);
    return rect;
}

void PumpMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
