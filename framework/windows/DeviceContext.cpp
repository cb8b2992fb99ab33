#include "DeviceContext.h"

#include "core/Temporary.h"
#include "Wnd.h"

#include <utility>

using namespace framework;

IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CClientDC, CDC)

CDC::~CDC() {
    DeleteDC();
}

CDC* PASCAL CDC::FromHandle(HDC hDC) {
    return TemporaryOf<CDC, &CDC::m_hDC>(hDC);
}

BOOL CDC::Attach(HDC hDC) noexcept {
    if (!hDC || m_hDC) {
        return FALSE;
    }
    m_hDC = hDC;
    m_saved = ::SaveDC(hDC);
    return TRUE;
}

HDC CDC::Detach() noexcept {
    if (const int saved = std::exchange(m_saved, 0)) {
        ::RestoreDC(m_hDC, saved);
    }
    return std::exchange(m_hDC, nullptr);
}

BOOL CDC::CreateCompatibleDC(CDC* pDC) noexcept {
    return Attach(::CreateCompatibleDC(pDC ? pDC->m_hDC : nullptr));
}

BOOL CDC::DeleteDC() noexcept {
    return m_hDC && ::DeleteDC(Detach());
}

CPen* CDC::SelectObject(CPen* pPen) {
    return CPen::FromHandle(static_cast<HPEN>(::SelectObject(m_hDC, pPen->m_hObject)));
}

CBrush* CDC::SelectObject(CBrush* pBrush) {
    return CBrush::FromHandle(static_cast<HBRUSH>(::SelectObject(m_hDC, pBrush->m_hObject)));
}

CFont* CDC::SelectObject(CFont* pFont) {
    return CFont::FromHandle(static_cast<HFONT>(::SelectObject(m_hDC, pFont->m_hObject)));
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap) {
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, pBitmap->m_hObject)));
}

CPoint CDC::MoveTo(int x, int y) noexcept {
    CPoint before;
    ::MoveToEx(m_hDC, x, y, &before);
    return before;
}

BOOL CDC::Rectangle(LPCRECT lpRect) noexcept {
    return Rectangle(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

BOOL CDC::RoundRect(LPCRECT lpRect, POINT point) noexcept {
    return ::RoundRect(m_hDC, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, point.x, point.y);
}

void CDC::FillRect(LPCRECT lpRect, CBrush* pBrush) noexcept {
    ::FillRect(m_hDC, lpRect, *pBrush);
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr) noexcept {
    SetBkColor(clr);
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr) noexcept {
    const CRect rect(x, y, x + cx, y + cy);
    FillSolidRect(rect, clr);
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc,
                 DWORD dwRop) noexcept {
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC ? pSrcDC->m_hDC : nullptr, xSrc, ySrc, dwRop);
}

BOOL CDC::TextOut(int x, int y, LPCTSTR lpszString, int nCount) noexcept {
    return ::TextOut(m_hDC, x, y, lpszString, nCount);
}

int CDC::DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat) noexcept {
    return ::DrawText(m_hDC, lpszString, nCount, lpRect, nFormat);
}

int CDC::DrawText(const CString& str, LPRECT lpRect, UINT nFormat) noexcept {
    return DrawText(str, str.GetLength(), lpRect, nFormat);
}

CSize CDC::GetTextExtent(LPCTSTR lpszString, int nCount) const noexcept {
    CSize size;
    ::GetTextExtentPoint32(m_hDC, lpszString, nCount, &size);
    return size;
}

CPaintDC::CPaintDC(CWnd* pWnd) : m_hWnd(pWnd->m_hWnd) {
    if (!Attach(::BeginPaint(m_hWnd, &m_ps))) {
        AfxThrowResourceException();
    }
}

CPaintDC::~CPaintDC() {
    Detach();
    ::EndPaint(m_hWnd, &m_ps);
}

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd ? pWnd->m_hWnd : nullptr) {
    if (!Attach(::GetDC(m_hWnd))) {
        AfxThrowResourceException();
    }
}

CClientDC::~CClientDC() {
    ::ReleaseDC(m_hWnd, Detach());
}
