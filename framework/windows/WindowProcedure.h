// The framework's window procedure and how windows come to it. Internal: no part of the documented classes.
#pragma once

#include "core/ModuleState.h"
#include "Wnd.h"

namespace framework {

struct ThreadState;

/// The procedure of every window that a CWnd created or subclassed.
LRESULT CALLBACK WndProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Calls `function` and lets nothing out. FALSE when it threw.
template <class Function>
bool Guard(Function function) noexcept {
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
class WindowCreation {
public:
    explicit WindowCreation(CWnd* pWnd) noexcept;
    ~WindowCreation();
    WindowCreation(const WindowCreation&) = delete;
    WindowCreation& operator=(const WindowCreation&) = delete;

    /// The creation came to nothing: the object's PostNcDestroy has run when this returns, and may have
    /// deleted it.
    void Fail();

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam) noexcept;
    static bool Bind(CWnd& window, HWND hWnd) noexcept;
    void Unhook() noexcept;

    ActivationScope m_activation;
    ThreadState* m_thread;
    CWnd* m_window;
    CWnd* m_outerWindow = nullptr;
    HHOOK m_outerHook = nullptr;
};

/// What the framework's own functions may do with any CWnd.
struct WindowAccess {
    /// Makes WndProc the window's procedure, the one before becoming the object's super procedure.
    static BOOL TakeOver(CWnd& window) noexcept;
    static LRESULT WindowProc(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam) {
        return window.WindowProc(message, wParam, lParam);
    }
    static void PostNcDestroy(CWnd& window) { window.PostNcDestroy(); }
    /// Takes an object that missed WM_NCDESTROY off its window, which is gone.
    static void Forget(CWnd& window) noexcept;
};

} // namespace framework
