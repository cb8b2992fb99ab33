// CButton and CStatic: the controls of user32.
//
// Covered: creation and the documented members below.
#pragma once

#include "Wnd.h"

class CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)

public:
    CButton() = default;

    virtual BOOL Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    /// 0 off, 1 on, 2 undetermined.
    int GetCheck() const noexcept { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) noexcept { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
    /// Shows a bitmap, which stays the caller's; returns the one shown before.
    HBITMAP SetBitmap(HBITMAP hBitmap) noexcept;
    HBITMAP GetBitmap() const noexcept;

private:
    using CWnd::Create;
};

class CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)

public:
    CStatic() = default;

    virtual BOOL Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                        UINT nID = 0xffff);

    /// Shows a bitmap, which stays the caller's; returns the one shown before.
    HBITMAP SetBitmap(HBITMAP hBitmap) noexcept;
    HBITMAP GetBitmap() const noexcept;

private:
    using CWnd::Create;
};
