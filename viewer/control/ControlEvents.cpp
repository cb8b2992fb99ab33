#include "control/ControlEvents.h"

#include "control/ControlParts.h"

#include <commctrl.h>

namespace viewer {

namespace {

constexpr UINT_PTR kDialogWatch = 1;
constexpr UINT_PTR kSaveWatch = 2;

bool IsAddCommand(UINT message, WPARAM wParam) {
    return message == WM_COMMAND && wParam == MAKEWPARAM(part::kAddButton, BN_CLICKED);
}

} // namespace

void ControlEvents::Start(HWND dialog, HWND window, const Messages& messages) {
    m_window = window;
    m_messages = messages;
    const auto self = reinterpret_cast<DWORD_PTR>(this);
    SetWindowSubclass(dialog, Watch, kDialogWatch, self);
    SetWindowSubclass(GetDlgItem(dialog, part::kSaveButton), Watch, kSaveWatch, self);
}

LRESULT CALLBACK ControlEvents::Watch(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR self) {
    const auto& events = *reinterpret_cast<const ControlEvents*>(self);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(control, Watch, id);
    } else if (id == kSaveWatch) {
        if (message == WM_ENABLE) {
            PostMessageW(events.m_window, events.m_messages.changed, 0, 0);
        }
    } else if (IsAddCommand(message, wParam)) {
        SendMessageW(events.m_window, events.m_messages.adding, 0, 0);
        const LRESULT result = DefSubclassProc(control, message, wParam, lParam);
        PostMessageW(events.m_window, events.m_messages.added, 0, 0);
        return result;
    }
    return DefSubclassProc(control, message, wParam, lParam);
}

} // namespace viewer
