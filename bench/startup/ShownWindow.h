// The windows of a program that a bench has started.
#pragma once

#include <windows.h>

#include <string>

/// The first shown top-level window of a process, of a class unless that is empty; null while there is none.
inline HWND ShownWindowOf(DWORD process, const std::wstring& className = {}) {
    struct Search {
        DWORD process;
        const std::wstring& className;
        HWND found;
    } search{process, className, nullptr};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            wchar_t name[64] = L"";
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            GetClassNameW(window, name, ARRAYSIZE(name));
            if (owner == wanted.process && IsWindowVisible(window) &&
                (wanted.className.empty() || wanted.className == name)) {
                wanted.found = window;
            }
            return wanted.found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}
