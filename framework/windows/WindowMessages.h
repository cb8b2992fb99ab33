// The ON_WM_ entries of message maps. Names and signatures of the handlers are fixed by the message.
//
// Covered: the messages below; ON_MESSAGE reaches every other one.
#pragma once

#include "Wnd.h"

/// Entry code of all WM_CTLCOLOR messages together.
constexpr UINT kAfxCtlColor = 0x0019;

template <class Class, auto Handler>
BOOL AfxCallCreate(CCmdTarget& target, AFX_MSG_ARGS& args) {
    args.result = AfxBoundHandler<Class, int(LPCREATESTRUCT), Handler>::Call(
        target, reinterpret_cast<LPCREATESTRUCT>(args.lParam));
    return TRUE;
}

/// void f(UINT, int, int)
template <class Class, auto Handler>
BOOL AfxCallSize(CCmdTarget& target, AFX_MSG_ARGS& args) {
    AfxBoundHandler<Class, void(UINT, int, int), Handler>::Call(target, static_cast<UINT>(args.wParam),
                                                                LOWORD(args.lParam), HIWORD(args.lParam));
    return TRUE;
}

/// void f(UINT, CPoint)
template <class Class, auto Handler>
BOOL AfxCallMouse(CCmdTarget& target, AFX_MSG_ARGS& args) {
    AfxBoundHandler<Class, void(UINT, CPoint), Handler>::Call(target, static_cast<UINT>(args.wParam),
                                                              CPoint(args.lParam));
    return TRUE;
}

/// LRESULT f(CPoint)
template <class Class, auto Handler>
BOOL AfxCallHitTest(CCmdTarget& target, AFX_MSG_ARGS& args) {
    args.result = AfxBoundHandler<Class, LRESULT(CPoint), Handler>::Call(target, CPoint(args.lParam));
    return TRUE;
}

/// void f(CWnd*, CPoint)
template <class Class, auto Handler>
BOOL AfxCallContextMenu(CCmdTarget& target, AFX_MSG_ARGS& args) {
    AfxBoundHandler<Class, void(CWnd*, CPoint), Handler>::Call(
        target, CWnd::FromHandle(reinterpret_cast<HWND>(args.wParam)), CPoint(args.lParam));
    return TRUE;
}

/// void f(CWnd*)
template <class Class, auto Handler>
BOOL AfxCallFocus(CCmdTarget& target, AFX_MSG_ARGS& args) {
    AfxBoundHandler<Class, void(CWnd*), Handler>::Call(target,
                                                       CWnd::FromHandle(reinterpret_cast<HWND>(args.wParam)));
    return TRUE;
}

/// void f(BOOL, UINT)
template <class Class, auto Handler>
BOOL AfxCallShow(CCmdTarget& target, AFX_MSG_ARGS& args) {
    AfxBoundHandler<Class, void(BOOL, UINT), Handler>::Call(target, static_cast<BOOL>(args.wParam),
                                                            static_cast<UINT>(args.lParam));
    return TRUE;
}

/// BOOL f(CDC*)
template <class Class, auto Handler>
BOOL AfxCallErase(CCmdTarget& target, AFX_MSG_ARGS& args) {
    args.result = AfxBoundHandler<Class, BOOL(CDC*), Handler>::Call(
        target, CDC::FromHandle(reinterpret_cast<HDC>(args.wParam)));
    return TRUE;
}

/// HBRUSH f(CDC*, CWnd*, UINT); no brush leaves the message to default processing.
template <class Class, auto Handler>
BOOL AfxCallCtlColor(CCmdTarget& target, AFX_MSG_ARGS& args) {
    const HBRUSH brush = AfxBoundHandler<Class, HBRUSH(CDC*, CWnd*, UINT), Handler>::Call(
        target, CDC::FromHandle(reinterpret_cast<HDC>(args.wParam)),
        CWnd::FromHandle(reinterpret_cast<HWND>(args.lParam)), args.message - WM_CTLCOLORMSGBOX);
    args.result = reinterpret_cast<LRESULT>(brush);
    return brush != nullptr;
}

#define AFX_WINDOW_ENTRY(message, thunk, memberFxn)                                                          \
    AFX_MSGMAP_ENTRY{message, 0, 0, &thunk<ThisClass, &ThisClass::memberFxn>},

#define ON_WM_CREATE() AFX_WINDOW_ENTRY(WM_CREATE, AfxCallCreate, OnCreate)
#define ON_WM_DESTROY() AFX_WINDOW_ENTRY(WM_DESTROY, AfxCallVoid, OnDestroy)
#define ON_WM_NCDESTROY() AFX_WINDOW_ENTRY(WM_NCDESTROY, AfxCallVoid, OnNcDestroy)
#define ON_WM_PAINT() AFX_WINDOW_ENTRY(WM_PAINT, AfxCallVoid, OnPaint)
#define ON_WM_ERASEBKGND() AFX_WINDOW_ENTRY(WM_ERASEBKGND, AfxCallErase, OnEraseBkgnd)
#define ON_WM_CTLCOLOR() AFX_WINDOW_ENTRY(kAfxCtlColor, AfxCallCtlColor, OnCtlColor)
#define ON_WM_SIZE() AFX_WINDOW_ENTRY(WM_SIZE, AfxCallSize, OnSize)
#define ON_WM_SHOWWINDOW() AFX_WINDOW_ENTRY(WM_SHOWWINDOW, AfxCallShow, OnShowWindow)
#define ON_WM_CONTEXTMENU() AFX_WINDOW_ENTRY(WM_CONTEXTMENU, AfxCallContextMenu, OnContextMenu)
#define ON_WM_SETFOCUS() AFX_WINDOW_ENTRY(WM_SETFOCUS, AfxCallFocus, OnSetFocus)
#define ON_WM_KILLFOCUS() AFX_WINDOW_ENTRY(WM_KILLFOCUS, AfxCallFocus, OnKillFocus)
#define ON_WM_MOUSEMOVE() AFX_WINDOW_ENTRY(WM_MOUSEMOVE, AfxCallMouse, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_WINDOW_ENTRY(WM_LBUTTONDOWN, AfxCallMouse, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_WINDOW_ENTRY(WM_LBUTTONUP, AfxCallMouse, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_WINDOW_ENTRY(WM_LBUTTONDBLCLK, AfxCallMouse, OnLButtonDblClk)
#define ON_WM_NCHITTEST() AFX_WINDOW_ENTRY(WM_NCHITTEST, AfxCallHitTest, OnNcHitTest)
