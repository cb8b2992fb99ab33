#include "window/NewsBar.h"

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
    return Window::Create(windowClass, 0, L"", WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

void NewsBar::Show(const std::wstring& text, const std::vector<Button>& buttons) {
    RemoveButtons();
    m_text = text;
    SetWindowTextW(Handle(), text.c_str());
    for (const Button& button : buttons) {
        const HWND window =
            CreateWindowExW(0, L"BUTTON", button.text.c_str(), WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, 0, 0, 0,
                            0, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(button.command)),
                            GetModuleHandleW(nullptr), nullptr);
        if (window) {
            SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
            SetWindowSubclass(window, LeaveFocus, 1, 0);
            m_buttons.push_back(window);
        }
    }
    ShowWindow(Handle(), text.empty() ? SW_HIDE : SW_SHOWNA);
    PlaceButtons();
    InvalidateRect(Handle(), nullptr, TRUE);
}

int NewsBar::HeightFor(int width) const {
    if (m_text.empty()) {
        return 0;
    }
    int height = TextHeight(width - ButtonsWidth() - 2 * Scale(kTextMargin));
    for (const HWND button : m_buttons) {
        height = std::max<int>(height, ButtonSize(button).cy);
    }
    return height + 2 * Scale(kBarPadding);
}

LRESULT NewsBar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        MakeFont();
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
    const HGDIOBJ oldFont = SelectObject(dc, m_font.get());
    SetTextColor(dc, GetSysColor(COLOR_INFOTEXT));
    SetBkMode(dc, TRANSPARENT);
    InflateRect(&area, -Scale(kTextMargin), 0);
    area.right -= ButtonsWidth();
    area.top = std::max(0L, (area.bottom - TextHeight(area.right - area.left)) / 2);
    DrawTextW(dc, m_text.c_str(), -1, &area, DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(dc, oldFont);
    EndPaint(Handle(), &paint);
}

// At the right end, in their order.
void NewsBar::PlaceButtons() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    int right = area.right - Scale(kBarPadding);
    for (auto button = m_buttons.rbegin(); button != m_buttons.rend(); ++button) {
        const SIZE size = ButtonSize(*button);
        MoveWindow(*button, right - size.cx, (area.bottom - size.cy) / 2, size.cx, size.cy, TRUE);
        right -= size.cx + Scale(kBarPadding);
    }
}

void NewsBar::RemoveButtons() {
    for (const HWND button : std::exchange(m_buttons, {})) {
        DestroyWindow(button);
    }
}

void NewsBar::MakeFont() {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    m_font.reset(CreateFontIndirectW(&metrics.lfMessageFont));
}

SIZE NewsBar::ButtonSize(HWND button) const {
    const TextContext context(Handle(), m_font.get());
    wchar_t text[64] = L"";
    const int length = GetWindowTextW(button, text, ARRAYSIZE(text));
    SIZE size = {};
    GetTextExtentPoint32W(context.Dc(), text, length, &size);
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
    const TextContext context(Handle(), m_font.get());
    RECT area = {0, 0, std::max(1, width), 0};
    DrawTextW(context.Dc(), m_text.c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return area.bottom;
}

} // namespace viewer
