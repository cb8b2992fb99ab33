#include "ControlActivation.h"

#include "Control.h"
#include "ControlParts.h"

#include <algorithm>
#include <utility>

namespace framework {

ControlActivation::ControlActivation(ControlParts& parts) noexcept
    : m_control(parts.control), m_parts(parts) {}

HRESULT ControlActivation::Activate(HWND parent, LPCRECT rect) {
    if (m_active && m_control.m_hWnd) {
        m_control.ShowWindow(SW_SHOW);
        return S_OK;
    }
    Deactivate(); // the container destroyed the window without deactivating us
    common::ComPtr<IOleInPlaceSite> site =
        common::Query<IOleInPlaceSite>(m_control.GetClientSite(), IID_IOleInPlaceSite);
    if (!site || site->CanInPlaceActivate() != S_OK || FAILED(site->OnInPlaceActivate())) {
        return OLE_E_NOT_INPLACEACTIVE;
    }
    m_site = std::move(site);
    m_active = true;
    Place place;
    if (!Enter(parent, rect, place) || !CreateWindowAt(place)) {
        Deactivate();
        return E_FAIL;
    }
    return S_OK;
}

bool ControlActivation::Enter(HWND parent, LPCRECT rect, Place& place) {
    const common::ComPtr<IOleInPlaceSite> site = m_site.Copy();
    if (FAILED(site->GetWindow(&place.parent)) || !::IsWindow(place.parent)) {
        place.parent = parent;
    }
    common::ComPtr<IOleInPlaceFrame> frame;
    common::ComPtr<IOleInPlaceUIWindow> document;
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof(info);
    if (FAILED(site->GetWindowContext(frame.Receive(), document.Receive(), &place.position, &place.clip,
                                      &info))) {
        static_cast<void>(frame.Detach()); // a failing call returns no references
        static_cast<void>(document.Detach());
        if (!rect) {
            return false;
        }
        place.position = place.clip = *rect;
    }
    if (!m_active || !::IsWindow(place.parent)) { // the container may have deactivated the control meanwhile
        return false;
    }
    m_frame = std::move(frame);
    m_document = std::move(document);
    return true;
}

bool ControlActivation::CreateWindowAt(const Place& place) {
    const RECT& at = place.position;
    constexpr DWORD kStyle = WS_CHILD | WS_CLIPSIBLINGS;
    if (!m_control.CreateEx(0, L"STATIC", nullptr, kStyle, at.left, at.top,
                            std::max<int>(at.right - at.left, 0), std::max<int>(at.bottom - at.top, 0),
                            place.parent, nullptr)) {
        return false;
    }
    WatchFocus();
    m_control.OnSetObjectRects(&place.position, &place.clip);
    m_control.ShowWindow(SW_SHOW);
    const common::ComPtr<IOleClientSite> client(m_control.GetClientSite());
    if (client) {
        client->ShowObject();
    }
    return m_active && m_control.m_hWnd;
}

HRESULT ControlActivation::ActivateUI(HWND parent, LPCRECT rect, bool takeFocus) {
    const HRESULT activated = Activate(parent, rect);
    if (FAILED(activated)) {
        return activated;
    }
    if (!m_uiActive) {
        const common::ComPtr<IOleInPlaceSite> site = m_site.Copy();
        m_uiActive = true;
        if (FAILED(site->OnUIActivate())) {
            m_uiActive = false;
            return E_FAIL;
        }
        NameActiveObject(true);
        if (!m_uiActive) {
            return S_OK; // the container has deactivated it meanwhile
        }
        ReportFocus(true);
    }
    if (takeFocus && m_uiActive && m_control.m_hWnd && !::IsChild(m_control.m_hWnd, ::GetFocus())) {
        m_control.SetFocus();
    }
    return S_OK;
}

void ControlActivation::NameActiveObject(bool named) {
    CString name;
    if (named) {
        name.LoadString(m_control.GetUserTypeNameID());
    }
    const common::ComPtr<IOleInPlaceFrame> frame = m_frame.Copy();
    const common::ComPtr<IOleInPlaceUIWindow> document = m_document.Copy();
    const bool uiActive = m_uiActive;
    for (IOleInPlaceUIWindow* window : {static_cast<IOleInPlaceUIWindow*>(frame.Get()), document.Get()}) {
        // Any of these calls may activate or deactivate the control, which then has named the right object.
        if (window && m_uiActive == uiActive && (uiActive || !named)) {
            window->SetActiveObject(named ? &m_parts.inPlaceActiveObject : nullptr,
                                    named ? name.GetString() : nullptr);
        }
    }
    for (IOleInPlaceUIWindow* window : {static_cast<IOleInPlaceUIWindow*>(frame.Get()), document.Get()}) {
        if (window && named && m_uiActive) {
            window->SetBorderSpace(nullptr); // no tools of the control's own
        }
    }
}

void ControlActivation::DeactivateUI() {
    if (!m_uiActive) {
        return;
    }
    m_uiActive = false;
    NameActiveObject(false);
    const common::ComPtr<IOleInPlaceSite> site = m_site.Copy();
    if (site) {
        site->OnUIDeactivate(FALSE);
    }
    ReportFocus(false);
}

void ControlActivation::WatchFocus() {
    const auto watch = [](HWND window, LPARAM activation) -> BOOL {
        return common::WatchWindow(window, &WatchedMessageProc, reinterpret_cast<void*>(activation));
    };
    const auto self = reinterpret_cast<LPARAM>(this);
    if (watch(m_control.m_hWnd, self)) { // without memory nobody learns of the focus
        ::EnumChildWindows(m_control.m_hWnd, watch, self);
    }
}

LRESULT ControlActivation::WatchedMessageProc(const common::WatchedMessage& message,
                                              void* activation) noexcept {
    if (message.message != WM_SETFOCUS && message.message != WM_KILLFOCUS) {
        return message.PassOn();
    }
    auto* self = static_cast<ControlActivation*>(activation); // outlives the control's windows
    const OleKeepAlive alive(self->m_control);
    const LRESULT result = message.PassOn();
    OleProtect([self]() -> HRESULT {
        self->FollowFocus();
        return S_OK;
    });
    return result;
}

void ControlActivation::FollowFocus() {
    const HWND window = m_control.m_hWnd;
    if (m_uiActive && window) {
        const HWND focus = ::GetFocus(); // the messages come after the change
        ReportFocus(focus == window || ::IsChild(window, focus));
    }
}

void ControlActivation::ReportFocus(bool focused) {
    if (std::exchange(m_focusReported, focused) == focused) {
        return;
    }
    const common::ComPtr<IOleControlSite> site(m_parts.site.Control());
    if (site) {
        site->OnFocus(focused);
    }
}

void ControlActivation::Deactivate() {
    DeactivateUI();
    if (!m_active) {
        return;
    }
    m_active = false;
    if (m_control.m_hWnd) {
        m_control.DestroyWindow();
    }
    Leave();
}

void ControlActivation::Leave() {
    m_frame.Reset();
    m_document.Reset();
    const common::ComPtr<IOleInPlaceSite> site = std::move(m_site);
    if (site) {
        site->OnInPlaceDeactivate();
    }
}

void ControlActivation::EnterModal() {
    m_modalFrames.push_back(m_frame.Copy());
    if (const common::ComPtr<IOleInPlaceFrame>& frame = m_modalFrames.back()) {
        frame.Copy()->EnableModeless(FALSE);
    }
}

void ControlActivation::LeaveModal() {
    if (m_modalFrames.empty()) {
        return;
    }
    const common::ComPtr<IOleInPlaceFrame> frame = std::move(m_modalFrames.back());
    m_modalFrames.pop_back();
    if (frame) {
        frame->EnableModeless(TRUE);
    }
}

void ControlActivation::AskForSize(SIZE pixels) {
    if (!m_active || !m_control.m_hWnd) {
        return;
    }
    RECT position{};
    ::GetWindowRect(m_control.m_hWnd, &position);
    ::MapWindowPoints(nullptr, ::GetParent(m_control.m_hWnd), reinterpret_cast<POINT*>(&position), 2);
    if (position.right - position.left == pixels.cx && position.bottom - position.top == pixels.cy) {
        return;
    }
    position.right = position.left + pixels.cx;
    position.bottom = position.top + pixels.cy;
    const common::ComPtr<IOleInPlaceSite> site = m_site.Copy();
    site->OnPosRectChange(&position);
}

} // namespace framework
