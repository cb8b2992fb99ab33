// CWnd: a window and its messages.
//
// A window that belongs to a CWnd (created or subclassed by it) is in the calling thread's permanent map, and
// its messages go through WindowProc to the message map and, unhandled, to the window procedure that was
// there before. FromHandle returns temporary objects for other windows, which live until the message or the
// call from outside during which they were asked for ends; do not keep them. No exception leaves a window
// procedure: one thrown by a handler ends the message, WM_CREATE with -1, WM_PAINT with the window validated.
//
// Covered: creation (with a last look at class and style), subclassing, message, command and notification
// routing, data exchange, and the documented window functions and handlers below. Base class handlers use the
// parameters that the message came with, as documented. Not covered: windowless children, reflection to the
// child of anything but WM_NOTIFY, menus, scrolling, idle updating, tool tips, help, window classes of the
// framework's own (CreateEx needs a class name).
#pragma once

#include "core/CmdTarget.h"
#include "core/CString.h"
#include "DeviceContext.h"

class CDataExchange;

namespace framework {

struct WindowAccess;

} // namespace framework

class CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)

public:
    CWnd() = default;
    /// Destroys the window if it still exists.
    ~CWnd() override;

    /// The object of a window: the permanent one, else a temporary one; null for a null handle.
    static CWnd* PASCAL FromHandle(HWND hWnd);
    /// The permanent object of a window, or null.
    static CWnd* PASCAL FromHandlePermanent(HWND hWnd) noexcept;
    HWND GetSafeHwnd() const noexcept { return m_hWnd; }
    operator HWND() const noexcept { return m_hWnd; }

    /// Makes this the window's permanent object without taking over its messages. FALSE for a null handle,
    /// when this object has a window, or when the window has an object.
    BOOL Attach(HWND hWndNew);
    /// Gives the window up. Messages that still arrive through this object's subclassing go on to the
    /// procedure before.
    HWND Detach() noexcept;

    virtual BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                        CWnd* pParentWnd, UINT nID, LPVOID lpParam = nullptr);
    virtual BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                          const RECT& rect, CWnd* pParentWnd, UINT nID, LPVOID lpParam = nullptr);
    virtual BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                          int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu,
                          LPVOID lpParam = nullptr);
    /// Last look at what a window is created from; a control changes the class name here. FALSE refuses.
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    virtual BOOL DestroyWindow();

    /// Takes an existing window over: attaches it, calls PreSubclassWindow, then routes its messages through
    /// this object.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    /// The window is attached but sends its messages elsewhere yet. Called for subclassed and for created
    /// windows.
    virtual void PreSubclassWindow() {}
    /// Where the window procedure below this object is kept; default processing calls it.
    virtual WNDPROC* GetSuperWndProcAddr() noexcept { return &m_pfnSuper; }

    /// Exchanges data with the controls: FALSE to the screen, TRUE from it. FALSE when a value is refused.
    /// Notifications that the children send meanwhile reach no handler.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept;
    virtual BOOL PreTranslateMessage(MSG* pMsg);

    DWORD GetStyle() const noexcept { return static_cast<DWORD>(::GetWindowLong(m_hWnd, GWL_STYLE)); }
    /// TRUE when a bit changed; nFlags other than 0 are passed to SetWindowPos together with "no move, no
    /// size".
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0) noexcept;
    int GetDlgCtrlID() const noexcept { return ::GetDlgCtrlID(m_hWnd); }

    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
    void GetDlgItem(int nID, HWND* phWnd) const noexcept { *phWnd = ::GetDlgItem(m_hWnd, nID); }
    CWnd* GetWindow(UINT nCmd) const { return FromHandle(::GetWindow(m_hWnd, nCmd)); }

    void SetWindowText(LPCTSTR lpszString) noexcept { ::SetWindowText(m_hWnd, lpszString); }
    int GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const noexcept;
    void GetWindowText(CString& rString) const;
    int GetWindowTextLength() const noexcept { return ::GetWindowTextLength(m_hWnd); }
    void SetDlgItemText(int nID, LPCTSTR lpszString) noexcept { ::SetDlgItemText(m_hWnd, nID, lpszString); }
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE) noexcept;
    CFont* GetFont() const;

    void GetWindowRect(LPRECT lpRect) const noexcept { ::GetWindowRect(m_hWnd, lpRect); }
    void GetClientRect(LPRECT lpRect) const noexcept { ::GetClientRect(m_hWnd, lpRect); }
    void ClientToScreen(LPPOINT lpPoint) const noexcept { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const noexcept;
    void ScreenToClient(LPPOINT lpPoint) const noexcept { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const noexcept;
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE) noexcept;
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE) noexcept;
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags) noexcept;

    BOOL ShowWindow(int nCmdShow) noexcept { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const noexcept { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL bEnable = TRUE) noexcept { return ::EnableWindow(m_hWnd, bEnable); }
    BOOL IsWindowEnabled() const noexcept { return ::IsWindowEnabled(m_hWnd); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* PASCAL GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* PASCAL GetCapture() { return FromHandle(::GetCapture()); }

    CDC* GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
    CDC* GetWindowDC() { return CDC::FromHandle(::GetWindowDC(m_hWnd)); }
    int ReleaseDC(CDC* pDC) noexcept { return ::ReleaseDC(m_hWnd, pDC->m_hDC); }
    void Invalidate(BOOL bErase = TRUE) noexcept { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) noexcept {
        ::InvalidateRect(m_hWnd, lpRect, bErase);
    }
    void UpdateWindow() noexcept { ::UpdateWindow(m_hWnd); }
    BOOL RedrawWindow(LPCRECT lpRectUpdate = nullptr, HRGN hrgnUpdate = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE) noexcept;
    void SetRedraw(BOOL bRedraw = TRUE) noexcept { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(bRedraw)); }

    int MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption = nullptr, UINT nType = MB_OK) const noexcept;

    HWND m_hWnd = nullptr; ///< null when there is no window

protected:
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Looks for a handler of the message; TRUE with *pResult set when one took it.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// A notification of this control that came to its parent, before the parent looks for a handler of its
    /// own; TRUE when a reflected entry of this object's map took it.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// Default processing: the procedure below this object, or the system's.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Default processing of the message that is being handled, with the parameters it came with.
    LRESULT Default();
    static const MSG* PASCAL GetCurrentMessage() noexcept;
    /// The DDX calls of a dialog; called by UpdateData only.
    virtual void DoDataExchange(CDataExchange* pDX);
    /// The window is gone and detached; a self-deleting object deletes itself here.
    virtual void PostNcDestroy() {}

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnNcDestroy();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint pos);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg LRESULT OnNcHitTest(CPoint point);

    DECLARE_MESSAGE_MAP()

private:
    friend struct framework::WindowAccess;
    WNDPROC m_pfnSuper = nullptr; ///< the procedure below this object; null when there is none
};
