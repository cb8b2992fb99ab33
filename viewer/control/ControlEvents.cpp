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

// The row that a list's notification reports as selected or clicked; -1 for none.
int SelectedRow(const NMHDR& header) {
    if (header.code == LVN_ITEMCHANGED) {
        const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
        const bool selected = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
        return selected ? change.iItem : -1;
    }
    return header.code == static_cast<UINT>(NM_CLICK) ? reinterpret_cast<const NMITEMACTIVATE&>(header).iItem
                                                      : -1;
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
    } else if (message == WM_NOTIFY) {
        events.OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
    }
    return DefSubclassProc(control, message, wParam, lParam);
}

void ControlEvents::OnNotify(const NMHDR& header) const {
    const int list = static_cast<int>(header.idFrom) - part::kFirstList;
    const int row = list >= 0 && list < part::kSectionCount ? SelectedRow(header) : -1;
    if (row >= 0) {
        PostMessageW(m_window, m_messages.selected, static_cast<WPARAM>(list), row);
    }
}

} // namespace viewer
