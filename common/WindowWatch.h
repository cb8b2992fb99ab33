// Sees the messages of windows that others have made.
#pragma once

#include <windows.h>

#include <map>
#include <vector>

namespace common {

/// A message on its way to a watched window.
struct WatchedMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    std::size_t watchers; ///< that follow

    /// Passes the message on: to the watcher before, at last to the window's own procedure. After
    /// WM_NCDESTROY the window is gone.
    LRESULT PassOn() const noexcept;
};

/// Handles each message of a watched window, normally by passing it on.
using WindowWatcher = LRESULT (*)(const WatchedMessage& message, void* context) noexcept;

namespace watched {

struct Watcher {
    WindowWatcher handle;
    void* context;
};

struct Window {
    WNDPROC before;
    std::vector<Watcher> watchers;
};

// Windows of one thread, like everything that a single-threaded apartment owns. SetWindowSubclass would keep
// this in properties of the window, which some systems ask another process for with each message: filling a
// list took thirty times as long.
inline std::map<HWND, Window> windows;

inline LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto found = windows.find(window);
    const std::size_t watchers = found != windows.end() ? found->second.watchers.size() : 0;
    return WatchedMessage{window, message, wParam, lParam, watchers}.PassOn();
}

} // namespace watched

inline LRESULT WatchedMessage::PassOn() const noexcept {
    const auto found = watched::windows.find(window);
    if (found == watched::windows.end()) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (watchers > 0) {
        const watched::Watcher next = found->second.watchers[watchers - 1];
        return next.handle({window, message, wParam, lParam, watchers - 1}, next.context);
    }
    const WNDPROC before = found->second.before;
    if (message == WM_NCDESTROY) {
        watched::windows.erase(found);
    }
    return CallWindowProcW(before, window, message, wParam, lParam);
}

/// Watches a window of this thread from now on until it is destroyed; the last watcher sees a message first.
/// `context` is passed to the watcher and has to outlive the window. False without memory.
[[nodiscard]] inline bool WatchWindow(HWND window, WindowWatcher watcher, void* context) noexcept {
    try {
        watched::Window& entry = watched::windows[window];
        entry.watchers.push_back({watcher, context});
        if (!entry.before) {
            entry.before = reinterpret_cast<WNDPROC>(
                SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&watched::Procedure)));
        }
        return true;
    } catch (...) {
        const auto found = watched::windows.find(window);
        if (found != watched::windows.end() && !found->second.before) {
            watched::windows.erase(found);
        }
        return false;
    }
}

} // namespace common
