#include "document/DocumentButtons.h"

#include "document/DocumentCommands.h"
#include "window/Painting.h"
#include "window/Window.h"

#include <algorithm>

namespace viewer {

namespace {

// At 96 dots per inch.
constexpr int kLeastButtonWidth = 60;
constexpr int kPadding = 10;
constexpr int kButtonGap = 6;

bool IsShown(HWND window) {
    return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

} // namespace

void DocumentButtons::Create(HWND parent) {
    for (const auto& [number, text] : DocumentCommands()) {
        const HWND button = CreateWindowExW(
            0, L"BUTTON", text.c_str(), WS_CHILD | WS_TABSTOP | BS_PUSHBUTTON, 0, 0, 0, 0, parent,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), GetModuleHandleW(nullptr), nullptr);
        m_buttons.push_back(button);
    }
}

void DocumentButtons::SetFont(HFONT font, UINT dpi) {
    m_font = font;
    m_dpi = dpi;
    for (const HWND button : m_buttons) {
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
}

void DocumentButtons::Show(const DocumentDetails* document) {
    for (const HWND button : m_buttons) {
        const bool shown = document && IsOffered(GetDlgCtrlID(button), *document);
        ShowWindow(button, shown ? SW_SHOWNA : SW_HIDE);
    }
}

int DocumentButtons::Place(int left, int top, int right) {
    int x = left;
    int height = 0;
    for (const HWND button : m_buttons) {
        if (!IsShown(button)) {
            continue;
        }
        const int gap = ScaleFor(m_dpi, kButtonGap);
        const SIZE size = SizeOf(button);
        if (x > left && x + size.cx > right) {
            x = left;
            top += size.cy + gap;
        }
        MoveWindow(button, x, top, size.cx, size.cy, TRUE);
        x += size.cx + gap;
        height = size.cy + gap;
    }
    return top + height;
}

SIZE DocumentButtons::SizeOf(HWND button) const {
    wchar_t text[64] = L"";
    GetWindowTextW(button, text, ARRAYSIZE(text));
    RECT area = {};
    DrawTextW(TextContext(button, m_font).Dc(), text, -1, &area, DT_CALCRECT | DT_SINGLELINE);
    const int padding = ScaleFor(m_dpi, kPadding);
    return {std::max<LONG>(ScaleFor(m_dpi, kLeastButtonWidth), area.right + 2 * padding),
            area.bottom + padding};
}

} // namespace viewer
