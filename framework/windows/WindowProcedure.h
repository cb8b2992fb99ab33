// The framework's window procedure and how windows come to it. Internal: no part of the documented classes.
#pragma once

#include "core/ModuleState.h"
#include "Wnd.h"

struct AFX_THREAD_STATE;

/// The procedure of every window that a CWnd created or subclassed.
LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Calls `function` and lets nothing out. FALSE when it threw.
template <class Function>
bool AfxGuard(Function function) noexcept {
    try {
        function();
        return true;
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): the documented exceptions are pointers
    } catch (CException* exception) {
        exception->Delete();
    } catch (...) {
        return false;
    }
    return false;
}

/// Binds the next window that the calling thread creates to an object, before the window's first message.
class AfxCreation {
public:
    explicit AfxCreation(CWnd* pWnd) noexcept;
    ~AfxCreation();
    AfxCreation(const AfxCreation&) = delete;
    AfxCreation& operator=(const AfxCreation&) = delete;

    /// The creation came to nothing: the object's PostNcDestroy has run when this returns, and may have
    /// deleted it.
    void Fail();

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam) noexcept;
    static bool Bind(CWnd& window, HWND hWnd) noexcept;
    void Unhook() noexcept;

    AfxActivationScope m_activation;
    AFX_THREAD_STATE* m_thread;
    CWnd* m_window;
    CWnd* m_outerWindow = nullptr;
    HHOOK m_outerHook = nullptr;
};

/// What the framework's own functions may do with any CWnd.
struct AfxWindowAccess {
    /// Makes AfxWndProc the window's procedure, the one before becoming the object's super procedure.
    static BOOL TakeOver(CWnd& window) noexcept;
    static LRESULT WindowProc(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam) {
        return window.WindowProc(message, wParam, lParam);
    }
    static void PostNcDestroy(CWnd& window) { window.PostNcDestroy(); }
    /// Takes an object that missed WM_NCDESTROY off its window, which is gone.
    static void Forget(CWnd& window) noexcept;
};
