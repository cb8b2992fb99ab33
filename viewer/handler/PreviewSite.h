// What a preview handler knows of the window around it.
#pragma once

#include "common/ComObject.h"

#include <shobjidl.h>

namespace viewer {

/// Passes the keys that the handler does not use to the window that it shows its document in, as if they had
/// been pressed there.
class PreviewSite final : public common::ComObject<IPreviewHandlerFrame> {
public:
    explicit PreviewSite(HWND window) : m_window(window) {}

    HRESULT STDMETHODCALLTYPE GetWindowContext(PREVIEWHANDLERFRAMEINFO* info) noexcept override {
        if (!info) {
            return E_POINTER;
        }
        *info = {}; // it sends all keys
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) noexcept override {
        return message && PostMessageW(m_window, message->message, message->wParam, message->lParam)
                   ? S_OK
                   : S_FALSE;
    }

private:
    HWND m_window;
};

} // namespace viewer
