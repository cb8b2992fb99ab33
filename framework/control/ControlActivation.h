// In-place activation of a control: its window in the container's, and its user interface in the container's
// frame.
//
// Every call to the container may come back with any other call, up to the release of the control; the caller
// holds a reference to the control.
#pragma once

#include "common/ComPtr.h"
#include "common/WindowWatch.h"

#include <vector>

#include <ole2.h>

class COleControl;

namespace framework {

struct ControlParts;

class ControlActivation {
public:
    explicit ControlActivation(ControlParts& parts) noexcept;

    [[nodiscard]] bool IsActive() const noexcept { return m_active; }
    [[nodiscard]] bool IsUIActive() const noexcept { return m_uiActive; }

    /// Creates and shows the window in the container's. Parent and rectangle stand in for a container that
    /// does not name them. OLE_E_NOT_INPLACEACTIVE when the container refuses, E_FAIL when the
    /// window cannot be created.
    HRESULT Activate(HWND parent, LPCRECT rect);
    /// Activates, and makes the control the container's active object; `takeFocus` moves the keyboard into
    /// it.
    HRESULT ActivateUI(HWND parent, LPCRECT rect, bool takeFocus);
    /// Deactivates the user interface; the window stays.
    void DeactivateUI();
    /// Destroys the window; the control can be activated again.
    void Deactivate();
    /// Asks a container in which the control is active for a new size, in pixels.
    void AskForSize(SIZE pixels);
    /// Calls SetActiveObject of the container's frame and document with this control or null. Nothing is
    /// named once the container has deactivated the user interface.
    void NameActiveObject(bool named);
    /// Disables the modeless dialogs of the container's frame, until the matching LeaveModal, which reaches
    /// the same frame even when the control was deactivated meanwhile.
    void EnterModal();
    void LeaveModal();

private:
    struct Place {
        HWND parent = nullptr;
        RECT position{};
        RECT clip{};
    };

    bool Enter(HWND parent, LPCRECT rect, Place& place);
    bool CreateWindowAt(const Place& place);
    void Leave();
    void WatchFocus();
    void FollowFocus();
    void ReportFocus(bool focused);
    static LRESULT WatchedMessageProc(const common::WatchedMessage& message, void* activation) noexcept;

    COleControl& m_control;
    ControlParts& m_parts;
    common::ComPtr<IOleInPlaceSite> m_site;
    common::ComPtr<IOleInPlaceFrame> m_frame;
    common::ComPtr<IOleInPlaceUIWindow> m_document;
    std::vector<common::ComPtr<IOleInPlaceFrame>> m_modalFrames; ///< one for each EnterModal that is open
    bool m_active = false;
    bool m_uiActive = false;
    bool m_focusReported = false; ///< the container's last OnFocus was TRUE
};

} // namespace framework
