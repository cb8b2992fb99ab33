// Device contexts: a wrapper saves the device context when it takes it and restores it when it detaches it,
// so that nothing stays selected behind it.
//
// Covered: the documented members below, on one device context (there is no separate attribute context, hence
// no metafile recording). Temporary objects (FromHandle) neither own nor restore: what a WM_CTLCOLOR handler
// sets stays set.
#pragma once

#include "core/CString.h"
#include "Gdi.h"

class CWnd;

class CDC : public CObject {
    DECLARE_DYNAMIC(CDC)

public:
    CDC() = default;
    ~CDC() override;

    static CDC* PASCAL FromHandle(HDC hDC);

    operator HDC() const noexcept { return m_hDC; }
    /// Takes ownership of a device context and saves its state. FALSE for null, or when one is attached
    /// already.
    BOOL Attach(HDC hDC) noexcept;
    /// Restores the state of Attach and returns the device context, which the caller owns.
    HDC Detach() noexcept;
    /// A memory device context for the device of pDC; null stands for the screen.
    BOOL CreateCompatibleDC(CDC* pDC) noexcept;
    /// Restores and deletes the device context; the destructor does it too.
    BOOL DeleteDC() noexcept;

    virtual int SaveDC() noexcept { return ::SaveDC(m_hDC); }
    virtual BOOL RestoreDC(int nSavedDC) noexcept { return ::RestoreDC(m_hDC, nSavedDC); }

    /// The object selected before, as a temporary object; null on failure.
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);
    virtual CFont* SelectObject(CFont* pFont);
    CBitmap* SelectObject(CBitmap* pBitmap);

    int SetBkMode(int nBkMode) noexcept { return ::SetBkMode(m_hDC, nBkMode); }
    int GetBkMode() const noexcept { return ::GetBkMode(m_hDC); }
    virtual COLORREF SetBkColor(COLORREF crColor) noexcept { return ::SetBkColor(m_hDC, crColor); }
    COLORREF GetBkColor() const noexcept { return ::GetBkColor(m_hDC); }
    virtual COLORREF SetTextColor(COLORREF crColor) noexcept { return ::SetTextColor(m_hDC, crColor); }
    COLORREF GetTextColor() const noexcept { return ::GetTextColor(m_hDC); }

    CPoint MoveTo(int x, int y) noexcept;
    CPoint MoveTo(POINT point) noexcept { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y) noexcept { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT point) noexcept { return LineTo(point.x, point.y); }
    BOOL Rectangle(int x1, int y1, int x2, int y2) noexcept { return ::Rectangle(m_hDC, x1, y1, x2, y2); }
    BOOL Rectangle(LPCRECT lpRect) noexcept;
    BOOL RoundRect(LPCRECT lpRect, POINT point) noexcept;
    void FillRect(LPCRECT lpRect, CBrush* pBrush) noexcept;
    /// Fills with one colour, which becomes the background colour.
    void FillSolidRect(LPCRECT lpRect, COLORREF clr) noexcept;
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr) noexcept;
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop) noexcept;
    COLORREF GetPixel(int x, int y) const noexcept { return ::GetPixel(m_hDC, x, y); }

    virtual BOOL TextOut(int x, int y, LPCTSTR lpszString, int nCount) noexcept;
    BOOL TextOut(int x, int y, const CString& str) noexcept { return TextOut(x, y, str, str.GetLength()); }
    virtual int DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat) noexcept;
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat) noexcept;
    CSize GetTextExtent(LPCTSTR lpszString, int nCount) const noexcept;
    CSize GetTextExtent(const CString& str) const noexcept { return GetTextExtent(str, str.GetLength()); }

    HDC m_hDC = nullptr;

private:
    int m_saved = 0; ///< level to restore to; 0 when nothing was saved
};

/// Between BeginPaint and EndPaint; only in answer to WM_PAINT. Throws a CResourceException when there is no
/// context.
class CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)

public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps{};

protected:
    HWND m_hWnd;
};

/// The client area of a window; null stands for the screen. Throws a CResourceException when there is no
/// context.
class CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)

public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};
