// COleControl: its window, its verbs, drawing.
#include "Control.h"
#include "ControlParts.h"
#include "windows/DialogKeys.h"
#include "windows/WindowMessages.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(COleControl, CWnd)
    ON_WM_CREATE()
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_STDOLEVERB(OLEIVERB_PRIMARY, &COleControl::OnEdit)
    ON_STDOLEVERB(OLEIVERB_UIACTIVATE, &COleControl::OnEdit)
    ON_STDOLEVERB(OLEIVERB_SHOW, &COleControl::OnVerbShow)
    ON_STDOLEVERB(OLEIVERB_INPLACEACTIVATE, &COleControl::OnVerbShow)
    ON_STDOLEVERB(OLEIVERB_HIDE, &COleControl::OnVerbHide)
    ON_STDOLEVERB(OLEIVERB_PROPERTIES, &COleControl::OnProperties)
END_MESSAGE_MAP()

BOOL COleControl::OnEdit(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect) {
    if (FAILED(m_parts->activation.ActivateUI(hWndParent, lpRect, true))) {
        return FALSE;
    }
    const bool byTab = lpMsg && lpMsg->message == WM_KEYDOWN && lpMsg->wParam == VK_TAB;
    if (const HWND dialog = ::GetWindow(m_hWnd, GW_CHILD); byTab && dialog) {
        AfxEnterDialog(dialog, ::GetKeyState(VK_SHIFT) < 0);
    }
    return TRUE;
}

BOOL COleControl::OnVerbShow(LPMSG, HWND hWndParent, LPCRECT lpRect) {
    return SUCCEEDED(m_parts->activation.Activate(hWndParent, lpRect));
}

BOOL COleControl::OnVerbHide(LPMSG, HWND, LPCRECT) {
    m_parts->activation.DeactivateUI();
    if (m_hWnd) {
        ShowWindow(SW_HIDE);
    }
    return TRUE;
}

BOOL COleControl::PreCreateWindow(CREATESTRUCT& cs) {
    return CWnd::PreCreateWindow(cs);
}

BOOL COleControl::IsSubclassedControl() {
    return FALSE;
}

LRESULT COleControl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const OleKeepAlive alive(*this);
    if (message == WM_MOUSEACTIVATE) {
        ActivateOnMouse();
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

void COleControl::ActivateOnMouse() {
    if (m_parts->activation.IsActive() && !m_parts->activation.IsUIActive()) {
        m_parts->activation.ActivateUI(nullptr, nullptr,
                                       false); // the click itself decides where the focus goes
    }
}

int COleControl::OnCreate(LPCREATESTRUCT lpCreateStruct) {
    return CWnd::OnCreate(lpCreateStruct);
}

void COleControl::OnSize(UINT nType, int cx, int cy) {
    CWnd::OnSize(nType, cx, cy);
    InvalidateControl();
}

void COleControl::OnSetFocus(CWnd* pOldWnd) {
    CWnd::OnSetFocus(pOldWnd);
    if (const HWND child = ::GetWindow(m_hWnd, GW_CHILD)) {
        ::SetFocus(child);
    }
}

BOOL COleControl::PreTranslateMessage(MSG* pMsg) {
    const HWND dialog = m_hWnd ? ::GetWindow(m_hWnd, GW_CHILD) : nullptr;
    return (dialog && AfxTranslateDialogKey(dialog, *pMsg)) || CWnd::PreTranslateMessage(pMsg);
}

void COleControl::OnPaint() {
    CPaintDC dc(this);
    CRect bounds;
    GetClientRect(bounds);
    OnDraw(&dc, bounds, dc.m_ps.rcPaint);
}

void COleControl::OnDraw(CDC* pDC, const CRect& rcBounds, const CRect& rcInvalid) {
    static_cast<void>(pDC);
    static_cast<void>(rcBounds);
    static_cast<void>(rcInvalid);
}

void COleControl::OnDrawMetafile(CDC* pDC, const CRect& rcBounds) {
    OnDraw(pDC, rcBounds, rcBounds);
}

void COleControl::DoSuperclassPaint(CDC* pDC, const CRect& rcBounds) {
    if (!m_hWnd || !pDC) {
        return;
    }
    // The class paints its whole window, whatever its size, from the origin.
    const int saved = pDC->SaveDC();
    ::IntersectClipRect(pDC->m_hDC, rcBounds.left, rcBounds.top, rcBounds.right, rcBounds.bottom);
    POINT origin{};
    ::GetViewportOrgEx(pDC->m_hDC, &origin);
    ::SetViewportOrgEx(pDC->m_hDC, origin.x + rcBounds.left, origin.y + rcBounds.top, nullptr);
    DefWindowProc(WM_PAINT, reinterpret_cast<WPARAM>(pDC->m_hDC), 0);
    pDC->RestoreDC(saved);
}

void COleControl::InvalidateControl(LPCRECT lpRect, BOOL bErase) {
    if (m_hWnd) {
        // A window covered by its children gets no WM_PAINT; RDW_INTERNALPAINT draws the whole control
        // anyway.
        const UINT flags = RDW_INVALIDATE | (bErase ? RDW_ERASE : 0U) | (lpRect ? 0U : RDW_INTERNALPAINT);
        RedrawWindow(lpRect, nullptr, flags);
    } else {
        m_parts->viewObject.NotifyChange();
    }
    m_parts->dataObject.NotifyChange();
}

BOOL COleControl::OnSetObjectRects(LPCRECT lpRectPos, LPCRECT lpRectClip) {
    if (!m_hWnd) {
        return FALSE;
    }
    const CRect position(lpRectPos);
    MoveWindow(position.left, position.top, std::max(position.Width(), 0), std::max(position.Height(), 0));
    CRect visible;
    if (lpRectClip && ::IntersectRect(visible, position, lpRectClip) && !::EqualRect(visible, position)) {
        visible.OffsetRect(-position.left, -position.top);
        ::SetWindowRgn(m_hWnd, ::CreateRectRgnIndirect(visible), TRUE);
        m_parts->clipped = true;
    } else if (m_parts->clipped) {
        ::SetWindowRgn(m_hWnd, nullptr, TRUE);
        m_parts->clipped = false;
    }
    return TRUE;
}
