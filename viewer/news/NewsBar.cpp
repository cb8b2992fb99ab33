#include "news/NewsBar.h"

#include "window/Painting.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace viewer {

namespace {

constexpr wchar_t kBarClass[] = L"MXOVNewsBar";
constexpr int kBarPadding = 6;  // at 96 dots per inch, as the others
constexpr int kTextMargin = 12; // left and right of the text
constexpr int kButtonPadding = 10;
constexpr int kLeastText = 160; // width beside the buttons

bool IsInside(HWND window, LPARAM place) {
    RECT area = {};
    GetClientRect(window, &area);
    return PtInRect(&area, {GET_X_LPARAM(place), GET_Y_LPARAM(place)});
}

void Click(HWND button) {
    SendMessageW(GetParent(button), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
                 reinterpret_cast<LPARAM>(button));
}

// Handles the mouse in place of the button, which would take the focus at the first press.
LRESULT CALLBACK LeaveFocus(HWND button, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                            DWORD_PTR /*data*/) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        SetCapture(button);
        SendMessageW(button, BM_SETSTATE, TRUE, 0);
        return 0;
    case WM_MOUSEMOVE:
        if (GetCapture() == button) {
            SendMessageW(button, BM_SETSTATE, IsInside(button, lParam), 0);
        }
        break;
    case WM_LBUTTONUP:
        if (GetCapture() == button) {
            ReleaseCapture();
            SendMessageW(button, BM_SETSTATE, FALSE, 0);
            if (IsInside(button, lParam)) {
                Click(button); // which may destroy the button
            }
        }
        return 0;
    case WM_NCDESTROY:
        RemoveWindowSubclass(button, LeaveFocus, id);
        break;
    default:
        break;
    }
    return DefSubclassProc(button, message, wParam, lParam);
}

} // namespace

bool NewsBar::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kBarClass;
    return Window::Create(windowClass, WS_EX_CONTROLPARENT, L"", WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN,
                          parent, id);
}

void NewsBar::Show(const std::wstring& text, const std::vector<Button>& buttons) {
    const int focused = HasFocus() ? GetDlgCtrlID(GetFocus()) : 0;
    RemoveButtons();
    m_text = text;
    SetWindowTextW(Handle(), text.c_str());
    for (const Button& button : buttons) {
        AddButton(button);
    }
    ShowWindow(Handle(), text.empty() ? SW_HIDE : SW_SHOWNA);
    PlaceButtons();
    InvalidateRect(Handle(), nullptr, TRUE);
    if (focused != 0) {
        ReturnFocus(focused);
    }
}

void NewsBar::AddButton(const Button& button) {
    const HWND window =
        CreateWindowExW(0, L"BUTTON", button.text.c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON,
                        0, 0, 0, 0, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(button.command)),
                        GetModuleHandleW(nullptr), nullptr);
    if (window) {
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
        SetWindowSubclass(window, LeaveFocus, 1, 0);
        m_buttons.push_back(window);
    }
}

// The button that had the focus is gone. A new one of its command gets it, else the parent passes it on.
void NewsBar::ReturnFocus(int command) const {
    const HWND button = GetDlgItem(Handle(), command);
    SetFocus(button ? button : GetParent(Handle()));
}

bool NewsBar::TakeFocus() const {
    if (m_buttons.empty()) {
        return false;
    }
    SetFocus(m_buttons.front());
    return true;
}

bool NewsBar::PreTranslate(MSG& message) const {
    if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE && IsChild(Handle(), message.hwnd)) {
        SetFocus(GetParent(Handle()));
        return true;
    }
    return TranslateKeyInside(Handle(), message);
}

int NewsBar::HeightFor(int width) const {
    if (m_text.empty()) {
        return 0;
    }
    const int text = TextHeight(TextWidth(width));
    const int buttons = m_buttons.empty() ? 0 : static_cast<int>(ButtonSize(m_buttons.front()).cy);
    const int height =
        IsNarrow(width) && buttons > 0 ? text + Scale(kBarPadding) + buttons : std::max(text, buttons);
    return height + 2 * Scale(kBarPadding);
}

LRESULT NewsBar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        m_font = MakeMessageFont(Dpi());
        return 0;
    case WM_SIZE:
        PlaceButtons();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_PAINT:
        OnPaint();
        return 0;
    case WM_COMMAND:
        return SendMessageW(GetParent(Handle()), WM_COMMAND, LOWORD(wParam), 0);
    default:
        return Default(message, wParam, lParam);
    }
}

void NewsBar::OnPaint() {
    PAINTSTRUCT paint = {};
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT area = {};
    GetClientRect(Handle(), &area);
    FillRect(dc, &area, GetSysColorBrush(COLOR_INFOBK));
    const RECT edge = {0, area.bottom - 1, area.right, area.bottom};
    FillRect(dc, &edge, GetSysColorBrush(COLOR_3DSHADOW));
    const int width = TextWidth(area.right);
    RECT place = {Scale(kTextMargin), Scale(kBarPadding), Scale(kTextMargin) + width, area.bottom};
    if (!IsNarrow(area.right)) {
        place.top = std::max(0L, (area.bottom - TextHeight(width)) / 2);
    }
    Write(dc, m_font.get(), GetSysColor(COLOR_INFOTEXT), m_text, place, DT_WORDBREAK);
    EndPaint(Handle(), &paint);
}

// At the right end, in their order.
void NewsBar::PlaceButtons() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    const bool isBelow = IsNarrow(area.right);
    int right = area.right - Scale(kBarPadding);
    for (auto button = m_buttons.rbegin(); button != m_buttons.rend(); ++button) {
        const SIZE size = ButtonSize(*button);
        const LONG top = isBelow ? area.bottom - Scale(kBarPadding) - size.cy : (area.bottom - size.cy) / 2;
        MoveWindow(*button, right - size.cx, top, size.cx, size.cy, TRUE);
        right -= size.cx + Scale(kBarPadding);
    }
}

void NewsBar::RemoveButtons() {
    for (const HWND button : std::exchange(m_buttons, {})) {
        DestroyWindow(button);
    }
}

void NewsBar::OnMetricsChanged() {
    m_font = MakeMessageFont(Dpi());
    for (const HWND button : m_buttons) {
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    }
    PlaceButtons();
}

SIZE NewsBar::ButtonSize(HWND button) const {
    wchar_t text[64] = L"";
    GetWindowTextW(button, text, ARRAYSIZE(text));
    const SIZE size = TextSize(Handle(), m_font.get(), text);
    return {size.cx + 2 * Scale(kButtonPadding), size.cy + Scale(kButtonPadding)};
}

int NewsBar::ButtonsWidth() const {
    int width = 0;
    for (const HWND button : m_buttons) {
        width += ButtonSize(button).cx + Scale(kBarPadding);
    }
    return width;
}

int NewsBar::TextHeight(int width) const {
    return WrappedHeight(Handle(), m_font.get(), m_text, width);
}

// Whether the buttons beside the text would leave it too little of a width.
bool NewsBar::IsNarrow(int width) const {
    return width - ButtonsWidth() - 2 * Scale(kTextMargin) < Scale(kLeastText);
}

int NewsBar::TextWidth(int width) const {
    return width - 2 * Scale(kTextMargin) - (IsNarrow(width) ? 0 : ButtonsWidth());
}

} // namespace viewer
