// COleControl: its window, its verbs, drawing.
#include "Control.h"
#include "ControlParts.h"
#include "windows/WindowMessages.h"

#include <algorithm>

using namespace framework;

BEGIN_MESSAGE_MAP(COleControl, CWnd)
    ON_WM_CREATE()
    ON_WM_PAINT()
    ON_STDOLEVERB(OLEIVERB_PRIMARY, OnEdit)
    ON_STDOLEVERB(OLEIVERB_UIACTIVATE, OnEdit)
    ON_STDOLEVERB(OLEIVERB_SHOW, OnVerbShow)
    ON_STDOLEVERB(OLEIVERB_INPLACEACTIVATE, OnVerbShow)
    ON_STDOLEVERB(OLEIVERB_HIDE, OnVerbHide)
    ON_STDOLEVERB(OLEIVERB_PROPERTIES, OnProperties)
END_MESSAGE_MAP()

BOOL COleControl::OnEdit(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect) {
    const bool byClick = lpMsg && lpMsg->message == WM_MOUSEACTIVATE; // it decides where the focus goes
    return SUCCEEDED(m_parts->activation.ActivateUI(hWndParent, lpRect, !byClick));
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
    return CWnd::WindowProc(message, wParam, lParam);
}

int COleControl::OnCreate(LPCREATESTRUCT lpCreateStruct) {
    return CWnd::OnCreate(lpCreateStruct);
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
