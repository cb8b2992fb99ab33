#include "window/StatusBar.h"

#include <algorithm>

#include <commctrl.h>

namespace viewer {

bool StatusBar::Create(HWND parent, int id) {
    m_bar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0,
                            parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                            GetModuleHandleW(nullptr), nullptr);
    return m_bar != nullptr;
}

void StatusBar::Show(const std::wstring& text, const std::wstring& fact) {
    KillTimer(GetParent(m_bar), kNoteTimer);
    SetPart(0, text);
    SetPart(1, fact);
}

void StatusBar::ShowNote(const std::wstring& text) {
    constexpr UINT kNoteTime = 5000; // milliseconds
    SetPart(0, text);
    SetTimer(GetParent(m_bar), kNoteTimer, kNoteTime, nullptr);
}

void StatusBar::Arrange(int parentWidth, int factWidth) {
    const int parts[] = {std::max(0, parentWidth - factWidth), -1};
    SendMessageW(m_bar, WM_SIZE, 0, 0);
    SendMessageW(m_bar, SB_SETPARTS, ARRAYSIZE(parts), reinterpret_cast<LPARAM>(parts));
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
