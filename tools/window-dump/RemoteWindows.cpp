#include "RemoteWindows.h"

#include "RemoteListView.h"

#include <set>

std::wstring ClassName(HWND window) {
    wchar_t name[256] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name;
}

std::wstring Text(HWND window, const std::wstring& className) {
    // A message costs a change to the other process and back: not for windows whose text the system keeps.
    static const std::set<std::wstring> kept = {L"#32770", L"Button", L"Static", L"SysHeader32",
                                                L"SysListView32"};
    static wchar_t text[0x10000];
    *text = L'\0';
    if (kept.contains(className)) {
        InternalGetWindowText(window, text, ARRAYSIZE(text));
    } else {
        Ask(window, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text));
    }
    return text;
}

std::vector<HWND> Children(HWND window) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

HWND FindDescendant(HWND window, int id) {
    for (const HWND child : Children(window)) {
        if (GetDlgCtrlID(child) == id) {
            return child;
        }
        if (const HWND found = FindDescendant(child, id)) {
            return found;
        }
    }
    return nullptr;
}

std::vector<HWND> TopLevelWindows(HWND frame) {
    std::vector<HWND> windows = {frame};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& found = *reinterpret_cast<std::vector<HWND>*>(parameter);
            DWORD wanted = 0;
            DWORD process = 0;
            GetWindowThreadProcessId(found.front(), &wanted);
            GetWindowThreadProcessId(window, &process);
            if (process == wanted && window != found.front() && IsWindowVisible(window)) {
                found.push_back(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

HWND FocusOfThread(HWND window) {
    GUITHREADINFO thread = {};
    thread.cbSize = sizeof thread;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread);
    return thread.hwndFocus;
}
