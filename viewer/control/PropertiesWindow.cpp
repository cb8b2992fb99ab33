#include "control/PropertiesWindow.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace viewer {

namespace {

constexpr int kPropertiesBox = 1030; // a control that only this window has
constexpr LONG kPropertiesGap = 6;   // pixels, as the control keeps it

// The part of a monitor that task bars leave free.
RECT WorkArea(const RECT& place) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

// The left edge of a window beside one of the areas, the first that leaves room for it.
LONG LeftBeside(std::initializer_list<RECT> areas, LONG width, const RECT& work) {
    for (const RECT& area : areas) {
        const LONG right = area.right + kPropertiesGap;
        const LONG left = area.left - kPropertiesGap - width;
        if (right >= work.left && right + width <= work.right) {
            return right;
        }
        if (left >= work.left && left + width <= work.right) {
            return left;
        }
    }
    return std::max(work.left, work.right - width);
}

} // namespace

bool IsProperties(HWND window, HWND frame) {
    wchar_t name[8] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return GetWindow(window, GW_OWNER) == frame && name == std::wstring_view(L"#32770") &&
           GetDlgItem(window, kPropertiesBox);
}

void PlaceProperties(HWND window, const RECT& control, const RECT& frame) {
    const RECT work = WorkArea(control);
    RECT area = {};
    GetWindowRect(window, &area);
    const LONG left = LeftBeside({frame, control}, area.right - area.left, work);
    const LONG lowest = work.bottom - (area.bottom - area.top);
    const LONG top = std::max(work.top, std::min(std::max(control.top, work.top), lowest));
    SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CloseProperties(HWND frame) {
    if (!IsWindowEnabled(frame)) {
        return;
    }
    const auto close = [](HWND window, LPARAM owner) -> BOOL {
        if (IsProperties(window, reinterpret_cast<HWND>(owner))) {
            DestroyWindow(window);
        }
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), close, reinterpret_cast<LPARAM>(frame));
}

} // namespace viewer
