#include "control/ControlEvents.h"

#include "common/WindowWatch.h"
#include "control/ControlParts.h"

#include <commctrl.h>

namespace viewer {

namespace {

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
    // Without memory the viewer misses what happens in the control, and everything else works.
    static_cast<void>(common::WatchWindow(dialog, WatchDialog, this) &&
                      common::WatchWindow(GetDlgItem(dialog, part::kSaveButton), WatchSaveButton, this));
}

LRESULT ControlEvents::WatchSaveButton(const common::WatchedMessage& message, void* self) noexcept {
    if (message.message == WM_ENABLE) {
        const auto& events = *static_cast<const ControlEvents*>(self);
        PostMessageW(events.m_window, events.m_messages.changed, 0, 0);
    }
    return message.PassOn();
}

LRESULT ControlEvents::WatchDialog(const common::WatchedMessage& message, void* self) noexcept {
    const auto& events = *static_cast<const ControlEvents*>(self);
    if (IsAddCommand(message.message, message.wParam)) {
        SendMessageW(events.m_window, events.m_messages.adding, 0, 0);
        const LRESULT result = message.PassOn();
        PostMessageW(events.m_window, events.m_messages.added, 0, 0);
        return result;
    }
    if (message.message == WM_NOTIFY) {
        events.OnNotify(*reinterpret_cast<const NMHDR*>(message.lParam));
    }
    return message.PassOn();
}

void ControlEvents::OnNotify(const NMHDR& header) const {
    const int list = static_cast<int>(header.idFrom) - part::kFirstList;
    const int row = list >= 0 && list < part::kSectionCount ? SelectedRow(header) : -1;
    if (row >= 0) {
        PostMessageW(m_window, m_messages.selected, static_cast<WPARAM>(list), row);
    }
}

} // namespace viewer
