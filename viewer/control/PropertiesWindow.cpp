#include "control/PropertiesWindow.h"

#include <string_view>

namespace viewer {

namespace {

bool IsDialog(HWND window) {
    wchar_t name[8] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name == std::wstring_view(L"#32770");
}

} // namespace

void CloseProperties(HWND frame) {
    if (!IsWindowEnabled(frame)) {
        return;
    }
    const auto close = [](HWND window, LPARAM owner) -> BOOL {
        if (GetWindow(window, GW_OWNER) == reinterpret_cast<HWND>(owner) && IsDialog(window)) {
            DestroyWindow(window);
        }
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), close, reinterpret_cast<LPARAM>(frame));
}

} // namespace viewer
