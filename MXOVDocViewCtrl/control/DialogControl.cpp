#include "DialogControl.h"

#include "common/ComPtr.h"
#include "common/DialogKeys.h"

BOOL DialogControl::PreTranslateMessage(MSG* message) {
    const HWND dialog = DialogWindow();
    return (dialog && common::TranslateDialogKey(dialog, *message)) ||
           COleControl::PreTranslateMessage(message);
}

BOOL DialogControl::OnDoVerb(LONG verb, LPMSG message, HWND parent, LPCRECT rect) {
    const BOOL done = COleControl::OnDoVerb(verb, message, parent, rect);
    const bool byTab = message && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    const HWND dialog = DialogWindow();
    if (done && byTab && dialog && (verb == OLEIVERB_UIACTIVATE || verb == OLEIVERB_PRIMARY)) {
        common::EnterDialog(dialog, GetKeyState(VK_SHIFT) < 0);
    }
    return done;
}

BOOL DialogControl::PreCreateWindow(CREATESTRUCT& cs) {
    cs.style |= WS_CLIPCHILDREN;
    cs.dwExStyle |= WS_EX_CONTROLPARENT;
    return COleControl::PreCreateWindow(cs);
}

void DialogControl::CoverWith(CDialog& dialog) {
    const auto watch = [](HWND window, LPARAM control) -> BOOL {
        return common::WatchWindow(window, &WatchedMessageProc, reinterpret_cast<void*>(control));
    };
    m_dialog = &dialog;
    ::EnumChildWindows(m_hWnd, watch, reinterpret_cast<LPARAM>(this));
}

BEGIN_MESSAGE_MAP(DialogControl, COleControl)
    ON_WM_MOUSEACTIVATE()
    ON_WM_SETFOCUS()
    ON_WM_SIZE()
END_MESSAGE_MAP()

int DialogControl::OnMouseActivate(CWnd* desktop, UINT hitTest, UINT message) {
    MSG click = {m_hWnd, WM_MOUSEACTIVATE, 0, 0, 0, {}};
    ActivateUI(&click); // the click itself decides where the focus goes
    return COleControl::OnMouseActivate(desktop, hitTest, message);
}

void DialogControl::OnSetFocus(CWnd* before) {
    COleControl::OnSetFocus(before);
    if (const HWND dialog = DialogWindow()) {
        ::SetFocus(dialog);
    }
}

void DialogControl::OnSize(UINT type, int cx, int cy) {
    COleControl::OnSize(type, cx, cy);
    InvalidateControl();
    // The dialog covers the window, which would get no WM_PAINT; drawing is what moves the dialog.
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_INTERNALPAINT);
}

void DialogControl::RestoreDialog(const CRect& drawn) {
    if (!m_hWnd) {
        return;
    }
    CRect client;
    GetClientRect(client);
    if (!::EqualRect(client, drawn)) {
        RedrawWindow(nullptr, nullptr, RDW_INTERNALPAINT | RDW_UPDATENOW);
    }
}

LRESULT DialogControl::WatchedMessageProc(const common::WatchedMessage& message, void* control) noexcept {
    if (message.message != WM_SETFOCUS) {
        return message.PassOn();
    }
    auto* self = static_cast<DialogControl*>(control);                // outlives its windows
    const common::ComPtr<IDispatch> alive(self->GetIDispatch(FALSE)); // the container may release the control
    const LRESULT result = message.PassOn();
    if (::IsChild(self->m_hWnd, ::GetFocus())) {
        self->ActivateUI(nullptr);
    }
    return result;
}

// By the interface: no exception leaves it.
void DialogControl::ActivateUI(LPMSG cause) noexcept {
    const auto object = common::Query<IOleObject>(GetIDispatch(FALSE), IID_IOleObject);
    if (object) {
        object->DoVerb(OLEIVERB_UIACTIVATE, cause, GetClientSite(), 0, nullptr, nullptr);
    }
}
