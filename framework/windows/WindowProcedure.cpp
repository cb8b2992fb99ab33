#include "WindowProcedure.h"

#include "core/Apartment.h"
#include "core/ModuleState.h"
#include "core/ThreadState.h"

#include <utility>

namespace framework {

namespace {

/// Keeps the thread's current message for the time of one.
class MessageScope {
public:
    MessageScope(ThreadState& thread, const MSG& message) noexcept
        : m_thread(thread), m_outer(std::exchange(thread.message, message)) {}
    ~MessageScope() {
        m_thread.message = m_outer;
        if (!m_outer.hwnd && !m_thread.condemned.empty()) {
            const std::vector<std::unique_ptr<CObject>> deleted = std::move(m_thread.condemned);
            m_thread.condemned.clear();
        }
        if (!m_outer.hwnd) {
            Apartment::ReleaseDeferred();
        }
    }
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;

private:
    ThreadState& m_thread;
    MSG m_outer;
};

/// Messages of a window without an object: on to the procedure before the object that is gone, or the
/// system's.
LRESULT CallWithoutObject(ThreadState& thread, HWND hWnd, UINT message, WPARAM wParam,
                          LPARAM lParam) noexcept {
    const auto orphan = thread.orphans.find(hWnd);
    if (orphan == thread.orphans.end()) {
        return ::DefWindowProc(hWnd, message, wParam, lParam);
    }
    const WNDPROC before = orphan->second;
    if (message == WM_NCDESTROY) {
        thread.orphans.erase(orphan);
    }
    return ::CallWindowProc(before, hWnd, message, wParam, lParam);
}

/// The answer to a message whose handler threw.
LRESULT AnswerAfterException(HWND hWnd, UINT message) noexcept {
    switch (message) {
    case WM_CREATE:
        return -1;
    case WM_PAINT:
        ::ValidateRect(hWnd, nullptr); // else it would be sent for ever
        return 0;
    default:
        return 0;
    }
}

LRESULT CallObject(ThreadState& thread, CWnd& window, const MSG& message) noexcept {
    const MessageScope scope(thread, message);
    LRESULT result = 0;
    const bool done = Guard(
        [&] { result = WindowAccess::WindowProc(window, message.message, message.wParam, message.lParam); });
    if (message.message == WM_NCDESTROY) {
        // Only an object that still exists is in the map.
        if (CWnd* left = CWnd::FromHandlePermanent(message.hwnd)) {
            WindowAccess::Forget(*left);
        }
    }
    return done ? result : AnswerAfterException(message.hwnd, message.message);
}

} // namespace

LRESULT CALLBACK WndProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    ThreadState* thread = ModuleState::Thread();
    if (!thread) {
        return ::DefWindowProc(hWnd, message, wParam, lParam);
    }
    const TemporaryScope temporaries;
    CWnd* window = CWnd::FromHandlePermanent(hWnd);
    if (!window) {
        return CallWithoutObject(*thread, hWnd, message, wParam, lParam);
    }
    return CallObject(*thread, *window, MSG{hWnd, message, wParam, lParam, 0, {}});
}

BOOL WindowAccess::TakeOver(CWnd& window) noexcept {
    const auto before = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtr(window.m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WndProc)));
    if (before && before != &WndProc) {
        *window.GetSuperWndProcAddr() = before;
    }
    return before != nullptr;
}

void WindowAccess::Forget(CWnd& window) noexcept {
    *window.GetSuperWndProcAddr() = nullptr;
    window.Detach();
}

WindowCreation::WindowCreation(CWnd* pWnd) noexcept : m_thread(ModuleState::Thread()), m_window(pWnd) {
    if (m_thread) {
        m_outerWindow = std::exchange(m_thread->creating, pWnd);
        m_outerHook = std::exchange(m_thread->creationHook,
                                    ::SetWindowsHookEx(WH_CBT, &Hook, nullptr, ::GetCurrentThreadId()));
    }
}

WindowCreation::~WindowCreation() {
    if (m_thread) {
        Unhook();
        m_thread->creating = m_outerWindow;
        m_thread->creationHook = m_outerHook;
    }
}

void WindowCreation::Unhook() noexcept {
    if (const HHOOK hook = std::exchange(m_thread->creationHook, nullptr)) {
        ::UnhookWindowsHookEx(hook);
    }
}

void WindowCreation::Fail() {
    if (!m_thread) {
        return;
    }
    Unhook();
    if (std::exchange(m_thread->creating, nullptr)) {
        WindowAccess::PostNcDestroy(*m_window); // there never was a window
        return;
    }
    // Another hook may have refused the window after it was bound; only an object that still exists is in the
    // map.
    for (const auto& [handle, object] : m_thread->windows) {
        if (object == m_window) {
            WindowAccess::Forget(*m_window);
            WindowAccess::PostNcDestroy(*m_window);
            return;
        }
    }
}

bool WindowCreation::Bind(CWnd& window, HWND hWnd) noexcept {
    return Guard([&] {
        if (!window.SubclassWindow(hWnd)) {
            AfxThrowResourceException();
        }
    });
}

LRESULT CALLBACK WindowCreation::Hook(int code, WPARAM wParam, LPARAM lParam) noexcept {
    ThreadState* thread = ModuleState::Thread();
    const HHOOK hook = thread ? thread->creationHook : nullptr;
    if (code == HCBT_CREATEWND && thread && thread->creating) {
        const auto hWnd = reinterpret_cast<HWND>(wParam);
        // The system makes its input-method window in the middle of a creation.
        if (!(::GetClassLongPtr(hWnd, GCL_STYLE) & CS_IME)) {
            CWnd& window = *std::exchange(thread->creating, nullptr);
            if (!Bind(window, hWnd)) {
                thread->creating = &window;
                return 1;
            }
        }
    }
    const LRESULT result = ::CallNextHookEx(hook, code, wParam, lParam);
    if (thread && hook && hook == thread->creationHook && !thread->creating) {
        ::UnhookWindowsHookEx(hook); // not kept through the life of a modal dialog
        thread->creationHook = nullptr;
    }
    return result;
}

} // namespace framework
