// The ON_WM_ entries of message maps. Names and signatures of the handlers are fixed by the message.
//
// Covered: the messages below; ON_MESSAGE reaches every other one.
#pragma once

#include "Wnd.h"

namespace framework {

/// Entry code of all WM_CTLCOLOR messages together.
constexpr UINT kCtlColorEntry = 0x0019;

template <class Class, auto Handler>
BOOL CallCreate(CCmdTarget& target, MessageArguments& args) {
    args.result = BoundHandler<Class, int(LPCREATESTRUCT), Handler>::Call(
        target, reinterpret_cast<LPCREATESTRUCT>(args.lParam));
    return TRUE;
}

/// void f(UINT, int, int)
template <class Class, auto Handler>
BOOL CallSize(CCmdTarget& target, MessageArguments& args) {
    BoundHandler<Class, void(UINT, int, int), Handler>::Call(target, static_cast<UINT>(args.wParam),
                                                             LOWORD(args.lParam), HIWORD(args.lParam));
    return TRUE;
}

/// void f(UINT, CPoint)
template <class Class, auto Handler>
BOOL CallMouse(CCmdTarget& target, MessageArguments& args) {
    BoundHandler<Class, void(UINT, CPoint), Handler>::Call(target, static_cast<UINT>(args.wParam),
                                                           CPoint(args.lParam));
    return TRUE;
}

/// LRESULT f(CPoint)
template <class Class, auto Handler>
BOOL CallHitTest(CCmdTarget& target, MessageArguments& args) {
    args.result = BoundHandler<Class, LRESULT(CPoint), Handler>::Call(target, CPoint(args.lParam));
    return TRUE;
}

/// void f(CWnd*, CPoint)
template <class Class, auto Handler>
BOOL CallContextMenu(CCmdTarget& target, MessageArguments& args) {
    BoundHandler<Class, void(CWnd*, CPoint), Handler>::Call(
        target, CWnd::FromHandle(reinterpret_cast<HWND>(args.wParam)), CPoint(args.lParam));
    return TRUE;
}

/// void f(CWnd*)
template <class Class, auto Handler>
BOOL CallFocus(CCmdTarget& target, MessageArguments& args) {
    BoundHandler<Class, void(CWnd*), Handler>::Call(target,
                                                    CWnd::FromHandle(reinterpret_cast<HWND>(args.wParam)));
    return TRUE;
}

/// int f(CWnd*, UINT, UINT)
template <class Class, auto Handler>
BOOL CallMouseActivate(CCmdTarget& target, MessageArguments& args) {
    args.result = BoundHandler<Class, int(CWnd*, UINT, UINT), Handler>::Call(
        target, CWnd::FromHandle(reinterpret_cast<HWND>(args.wParam)), LOWORD(args.lParam),
        HIWORD(args.lParam));
    return TRUE;
}

/// BOOL f(CDC*)
template <class Class, auto Handler>
BOOL CallErase(CCmdTarget& target, MessageArguments& args) {
    args.result = BoundHandler<Class, BOOL(CDC*), Handler>::Call(
        target, CDC::FromHandle(reinterpret_cast<HDC>(args.wParam)));
    return TRUE;
}

/// HBRUSH f(CDC*, CWnd*, UINT); no brush leaves the message to default processing.
template <class Class, auto Handler>
BOOL CallCtlColor(CCmdTarget& target, MessageArguments& args) {
    const HBRUSH brush = BoundHandler<Class, HBRUSH(CDC*, CWnd*, UINT), Handler>::Call(
        target, CDC::FromHandle(reinterpret_cast<HDC>(args.wParam)),
        CWnd::FromHandle(reinterpret_cast<HWND>(args.lParam)), args.message - WM_CTLCOLORMSGBOX);
    args.result = reinterpret_cast<LRESULT>(brush);
    return brush != nullptr;
}

} // namespace framework

#define FRAMEWORK_WINDOW_ENTRY(message, thunk, memberFxn)                                                    \
    framework::MessageEntry{message, 0, 0, &thunk<ThisClass, &ThisClass::memberFxn>},

#define ON_WM_CREATE() FRAMEWORK_WINDOW_ENTRY(WM_CREATE, framework::CallCreate, OnCreate)
#define ON_WM_NCDESTROY() FRAMEWORK_WINDOW_ENTRY(WM_NCDESTROY, framework::CallVoid, OnNcDestroy)
#define ON_WM_PAINT() FRAMEWORK_WINDOW_ENTRY(WM_PAINT, framework::CallVoid, OnPaint)
#define ON_WM_ERASEBKGND() FRAMEWORK_WINDOW_ENTRY(WM_ERASEBKGND, framework::CallErase, OnEraseBkgnd)
#define ON_WM_CTLCOLOR()                                                                                     \
    FRAMEWORK_WINDOW_ENTRY(framework::kCtlColorEntry, framework::CallCtlColor, OnCtlColor)
#define ON_WM_SIZE() FRAMEWORK_WINDOW_ENTRY(WM_SIZE, framework::CallSize, OnSize)
#define ON_WM_CONTEXTMENU() FRAMEWORK_WINDOW_ENTRY(WM_CONTEXTMENU, framework::CallContextMenu, OnContextMenu)
#define ON_WM_SETFOCUS() FRAMEWORK_WINDOW_ENTRY(WM_SETFOCUS, framework::CallFocus, OnSetFocus)
#define ON_WM_MOUSEACTIVATE()                                                                                \
    FRAMEWORK_WINDOW_ENTRY(WM_MOUSEACTIVATE, framework::CallMouseActivate, OnMouseActivate)
#define ON_WM_MOUSEMOVE() FRAMEWORK_WINDOW_ENTRY(WM_MOUSEMOVE, framework::CallMouse, OnMouseMove)
#define ON_WM_LBUTTONDOWN() FRAMEWORK_WINDOW_ENTRY(WM_LBUTTONDOWN, framework::CallMouse, OnLButtonDown)
#define ON_WM_LBUTTONUP() FRAMEWORK_WINDOW_ENTRY(WM_LBUTTONUP, framework::CallMouse, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() FRAMEWORK_WINDOW_ENTRY(WM_LBUTTONDBLCLK, framework::CallMouse, OnLButtonDblClk)
#define ON_WM_NCHITTEST() FRAMEWORK_WINDOW_ENTRY(WM_NCHITTEST, framework::CallHitTest, OnNcHitTest)
