// Modal dialogs inside a container. Internal: no part of the documented classes.
#pragma once

#include "common/ComPtr.h"
#include "core/ThreadState.h"
#include "WindowProcedure.h"

#include <vector>

#include <ole2.h>

/// Around a modal dialog: the frames of the containers in which controls of this thread are active, and that
/// belong to the same top-level window as `owner`, disable their modeless dialogs meanwhile. Each is enabled
/// again, also when its control was closed under the dialog.
class AfxModalScope {
public:
    explicit AfxModalScope(HWND owner) noexcept {
        AfxGuard([&] { Collect(::GetAncestor(owner, GA_ROOTOWNER)); });
        Enable(FALSE);
    }
    ~AfxModalScope() { Enable(TRUE); }
    AfxModalScope(const AfxModalScope&) = delete;
    AfxModalScope& operator=(const AfxModalScope&) = delete;

private:
    void Collect(HWND root) {
        const AFX_THREAD_STATE* thread = AFX_MODULE_STATE::Thread();
        if (!thread || !root) {
            return;
        }
        for (const auto& [handle, window] : thread->windows) {
            IOleInPlaceFrame* frame = AfxWindowAccess::InPlaceFrame(*window);
            if (frame && ::GetAncestor(handle, GA_ROOTOWNER) == root) {
                m_frames.emplace_back(frame);
            }
        }
    }
    void Enable(BOOL enable) noexcept {
        for (const common::ComPtr<IOleInPlaceFrame>& frame : m_frames) {
            frame->EnableModeless(enable);
        }
    }

    std::vector<common::ComPtr<IOleInPlaceFrame>> m_frames;
};
