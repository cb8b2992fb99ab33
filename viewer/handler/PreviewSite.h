// What a preview handler knows of the window around it.
#pragma once

#include "common/ComObject.h"

#include <shobjidl.h>

namespace viewer {

/// Posts the keys that the handler does not use, and that the viewer has a use for, to a window, as if they
/// had been pressed there.
class PreviewSite final : public common::ComObject<IPreviewHandlerFrame> {
public:
    explicit PreviewSite(HWND window) : m_window(window) {}

    HRESULT STDMETHODCALLTYPE GetWindowContext(PREVIEWHANDLERFRAMEINFO* info) noexcept override {
        if (!info) {
            return E_POINTER;
        }
        *info = {}; // it passes all keys
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) noexcept override {
        return message && IsOfViewer(*message) &&
                       PostMessageW(m_window, message->message, message->wParam, message->lParam)
                   ? S_OK
                   : S_FALSE;
    }

private:
    // The keys of its commands, and Tab, which leaves the preview.
    static bool IsOfViewer(const MSG& message) noexcept {
        if (message.message != WM_KEYDOWN) {
            return message.message == WM_SYSKEYDOWN;
        }
        const bool isFunction = message.wParam >= VK_F1 && message.wParam <= VK_F24;
        const bool isLetter = message.wParam == 'O' || message.wParam == 'S' || message.wParam == 'W';
        return message.wParam == VK_TAB || isFunction || (isLetter && GetKeyState(VK_CONTROL) < 0);
    }

    HWND m_window;
};

} // namespace viewer
