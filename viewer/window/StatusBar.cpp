#include "window/StatusBar.h"

#include "window/Painting.h"
#include "window/Window.h"

#include <algorithm>

#include <commctrl.h>

namespace viewer {

namespace {

constexpr int kFactPadding = 40; // at 96 dots per inch, with the grip for sizing

} // namespace

bool StatusBar::Create(HWND parent, int id) {
    m_bar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0,
                            parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                            GetModuleHandleW(nullptr), nullptr);
    ChangeDpi(GetDpiForWindow(parent));
    return m_bar != nullptr;
}

void StatusBar::Show(const std::wstring& text, const std::wstring& fact) {
    KillTimer(GetParent(m_bar), kNoteTimer);
    SetPart(0, text);
    SetPart(1, fact);
    if (fact != m_fact) {
        m_fact = fact;
        RECT area = {};
        GetClientRect(GetParent(m_bar), &area);
        Arrange(area.right);
    }
}

void StatusBar::ShowNote(const std::wstring& text) {
    constexpr UINT kNoteTime = 5000; // milliseconds
    SetPart(0, text);
    SetTimer(GetParent(m_bar), kNoteTimer, kNoteTime, nullptr);
}

void StatusBar::Arrange(int parentWidth) {
    const int factWidth = TextSize(m_bar, m_font.get(), m_fact).cx + ScaleFor(m_dpi, kFactPadding);
    const int parts[] = {std::max(0, parentWidth - factWidth), -1};
    SendMessageW(m_bar, WM_SIZE, 0, 0);
    SendMessageW(m_bar, SB_SETPARTS, ARRAYSIZE(parts), reinterpret_cast<LPARAM>(parts));
}

void StatusBar::ChangeDpi(UINT dpi) {
    m_dpi = dpi;
    common::UniqueFont font = MakeMessageFont(dpi);
    SendMessageW(m_bar, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    m_font = std::move(font);
}

int StatusBar::Height() const {
    RECT area = {};
    GetWindowRect(m_bar, &area);
    return static_cast<int>(area.bottom - area.top);
}

void StatusBar::SetPart(int part, const std::wstring& text) {
    SendMessageW(m_bar, SB_SETTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(text.c_str()));
}

} // namespace viewer
