// What the user does in the control, as messages to the host's window. The control itself raises no events.
#pragma once

#include "common/WindowWatch.h"

namespace viewer {

class ControlEvents {
public:
    /// The numbers of the messages.
    struct Messages {
        UINT changed;  ///< posted when "&Save" was enabled or disabled
        UINT adding;   ///< sent before the "+" button adds a document
        UINT added;    ///< posted after it has, or the user has cancelled
        UINT selected; ///< posted when a document was selected; wParam is its list, from 0, lParam its row
    };

    ControlEvents() = default;
    ControlEvents(const ControlEvents&) = delete;
    ControlEvents& operator=(const ControlEvents&) = delete;

    /// Sends messages to `window` from now on. `dialog` is the one inside the control; it does not outlive
    /// the object.
    void Start(HWND dialog, HWND window, const Messages& messages);

private:
    static LRESULT WatchSaveButton(const common::WatchedMessage& message, void* self) noexcept;
    static LRESULT WatchDialog(const common::WatchedMessage& message, void* self) noexcept;
    void OnNotify(const NMHDR& header) const;

    HWND m_window = nullptr;
    Messages m_messages = {};
};

} // namespace viewer
